// SPDX-License-Identifier: MIT
#include "agent/rmon1/matrix.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/bulk.h"
#include "agent/capture/counting.h"

#include <tuple>

namespace {

/** Conversations are found by good frames; others are counted where the conversation is known. */
void count(void *context, const frame &seen)
{
    if (!seen.from_mac)
        return;
    auto &work = *static_cast<matrix_work *>(context);
    const matrix_key key{mac_key_of(seen.from_mac), mac_key_of(seen.to_mac)};
    if (!is_good_length(seen.length)) {
        const uint32_t found = find_learned(work.learned, key);
        if (found == no_entry)
            return;
        matrix_counts &counts = work.learned.entries[found].row;
        counts.pkts += seen.pkts;
        counts.octets += seen.octets;
        counts.errors += seen.pkts;
        return;
    }
    const uint32_t deletes = work.learned.deletes;
    matrix_counts &counts = *learn(work.learned, key);
    if (work.learned.deletes != deletes)
        work.last_delete = seen.up_time;
    counts.pkts += seen.pkts;
    counts.octets += seen.octets;
}

/* ---- the control table ----------------------------------------------------------------- */

struct matrix_control_table {
    using table = matrix_table;
    using row = matrix_control;
    using request = rmonrpc_matrix_ctl_t;
    static constexpr auto index = &request::matrixControlIndex;
    static constexpr auto status = &request::matrixControlStatus;
    static constexpr row_limits limits = learning_rows;
    static constexpr std::tuple fields{
        fixed<&request::matrixControlDataSource, &row::data_source>(not_negative),
        changeable<&request::matrixControlOwner, &row::owner>(),
    };
    static constexpr auto start = start_work<count, matrix_work>;
    static constexpr auto stop = stop_counting<count, matrix_work>;
    static constexpr auto refresh = catch_up_row<row>;

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (!shown.work)
            return;
        reply.matrixControlTableSize = static_cast<int32_t>(shown.work->learned.entries.size());
        reply.matrixControlLastDeleteTime = shown.work->last_delete;
    }
};

/* ---- the rows ---------------------------------------------------------------------------- */

rmonrpc_matrix_t matrix_reply(int32_t control, const matrix_key &key, const matrix_counts &counts)
{
    rmonrpc_matrix_t reply{};
    set_mac(reply.sourceAddress, key.from);
    set_mac(reply.destAddress, key.to);
    reply.index = control;
    reply.pkts = counts.pkts;
    reply.octets = counts.octets;
    reply.errors = counts.errors;
    return reply;
}

/** What was counted of a conversation up to this moment, or null. */
const matrix_counts *find_conversation(probe &agent, int32_t control, const matrix_key &key)
{
    const auto found = storage<matrix_table>(agent).find(control);
    if (found == storage<matrix_table>(agent).end() || !found->second.work)
        return nullptr;
    catch_up(agent, found->second.data_source);
    auto &learned = found->second.work->learned;
    const uint32_t entry = find_learned(learned, key);
    return entry == no_entry ? nullptr : &learned.entries[entry].row;
}

rmonrpc_matrix_arr_t matrix_get(probe &agent, const rmonrpc_matrix_key_t &key)
{
    if (key.direction != MATRIX_SD && key.direction != MATRIX_DS)
        return {};
    std::vector<rmonrpc_matrix_t> rows;
    const matrix_key wanted_key{mac_key_of(key.sourceAddress), mac_key_of(key.destAddress)};
    if (key.getType == GET) {
        if (const matrix_counts *counts = find_conversation(agent, key.index, wanted_key))
            rows.push_back(matrix_reply(key.index, wanted_key, *counts));
        return reply_rows(rows);
    }
    const std::size_t wanted = rows_wanted(key.getType, key.count);
    if (wanted == 0 || (key.getType != GETNEXT && key.getType != GETBULK))
        return {};
    visit_after(
        storage<matrix_table>(agent), key.index, wanted_key,
        [&](matrix_control &row) {
            catch_up(agent, row.data_source);
            return row.work ? &row.work->learned : nullptr;
        },
        [&](matrix_control &row) -> ordered_view & { return row.work->by_direction[key.direction]; },
        [&](const matrix_key &a, const matrix_key &b) {
            return key.direction == MATRIX_SD ? std::tie(a.from, a.to) < std::tie(b.from, b.to)
                                              : std::tie(a.to, a.from) < std::tie(b.to, b.from);
        },
        [&](int32_t control, const learned_entry<matrix_key, matrix_counts> &entry) {
            rows.push_back(matrix_reply(control, entry.key, entry.row));
            return rows.size() < wanted;
        });
    return reply_rows(rows);
}

/* ---- the family --------------------------------------------------------------------- */

template <int32_t Direction> rmonrpc_matrix_key_t matrix_index(instance_reader &from)
{
    rmonrpc_matrix_key_t key{};
    key.index = take_index(from);
    take_pair<Direction>(from, key);
    key.getType = GET;
    return key;
}

constexpr auto matrix_ctl_get = get_control<matrix_control_table>;

constexpr served_procedure procedures[] = {
    serve<matrix_ctl_get>(matrix_ctl_get_1),
    serve_set<set_control<matrix_control_table>>(matrix_ctl_set_1),
    serve<matrix_get>(matrix_get_1),
};

constexpr state_part kept[] = {
    keep_rows<matrix_control_table>("matrix"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<matrix_ctl_get, one_index, &rmonrpc_matrix_ctl_t::matrixControlTableSize>("1.3.6.1.2.1.16.6.1.1.3"),
    gauge<matrix_ctl_get, one_index, &rmonrpc_matrix_ctl_t::matrixControlLastDeleteTime>("1.3.6.1.2.1.16.6.1.1.4"),
    counter<matrix_get, matrix_index<MATRIX_SD>, &rmonrpc_matrix_t::pkts>("1.3.6.1.2.1.16.6.2.1.4", "matrixSDPkts"),
    counter<matrix_get, matrix_index<MATRIX_SD>, &rmonrpc_matrix_t::octets>("1.3.6.1.2.1.16.6.2.1.5", "matrixSDOctets"),
    counter<matrix_get, matrix_index<MATRIX_SD>, &rmonrpc_matrix_t::errors>("1.3.6.1.2.1.16.6.2.1.6", "matrixSDErrors"),
    counter<matrix_get, matrix_index<MATRIX_DS>, &rmonrpc_matrix_t::pkts>("1.3.6.1.2.1.16.6.3.1.4", "matrixDSPkts"),
    counter<matrix_get, matrix_index<MATRIX_DS>, &rmonrpc_matrix_t::octets>("1.3.6.1.2.1.16.6.3.1.5", "matrixDSOctets"),
    counter<matrix_get, matrix_index<MATRIX_DS>, &rmonrpc_matrix_t::errors>("1.3.6.1.2.1.16.6.3.1.6", "matrixDSErrors"),
};
// clang-format on

} // namespace

extern const family matrix_family = {
    .name = "matrix",
    .interface_gone = remove_rows_on<matrix_control_table>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
