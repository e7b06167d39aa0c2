// SPDX-License-Identifier: MIT
#include "agent/rmon2/hlmatrix.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/rmon2/hl_control.h"

namespace {

/* ---- counting ---------------------------------------------------------------------------- */

/** False when there was no room. */
bool count_in(hl_pair_counts::table &table, const tagged_key<hl_pair_key> &key, const frame &seen)
{
    hl_pair *pair = learn_sought(table.rows, key);
    if (!pair)
        return false;
    if (pair->pkts == 0)
        pair->create_time = pair->changed = seen.up_time;
    pair->changed = later(pair->changed, seen.up_time);
    pair->pkts += seen.pkts;
    pair->octets += seen.octets;
    return true;
}

void count(void *context, const frame &seen)
{
    auto &counts = *static_cast<hl_pair_counts *>(context);
    const auto begin = [&](hl_pair_counts::table &table, int32_t application) {
        return seek(
            table.rows, hl_pair_key{
                            key_address_of(seen.from), key_address_of(seen.to), seen.from.length,
                            seen.network_index, application, 0});
    };
    count_layers<&protocol::matrix>(
        counts, seen, begin, [&](auto &table, const auto &key) { return count_in(table, key, seen); });
}

/* ---- the control table ---------------------------------------------------------------------- */

struct hl_matrix_kind {
    using counts = hl_pair_counts;
    using table = hl_matrix_table;
    using row = hl_matrix_row;
    using request = rmonrpc_hlmatrix_ctl_t;
    static constexpr auto index = &request::hlMatrixControlIndex;
    static constexpr auto status = &request::hlMatrixControlStatus;
    static constexpr std::tuple fields{
        fixed<&request::hlMatrixControlDataSource, &row::data_source>(not_negative),
        changeable<&request::hlMatrixControlNlMaxDesiredEntries, &row::desired_network>({.min = -1}),
        changeable<&request::hlMatrixControlAlMaxDesiredEntries, &row::desired_application>({.min = -1}),
        changeable<&request::hlMatrixControlOwner, &row::owner>(),
    };
    static constexpr hl_layer_fields<request> network{
        &request::hlMatrixControlNlDroppedFrames,
        &request::hlMatrixControlNlInserts,
        &request::hlMatrixControlNlDeletes,
    };
    static constexpr hl_layer_fields<request> application{
        &request::hlMatrixControlAlDroppedFrames,
        &request::hlMatrixControlAlInserts,
        &request::hlMatrixControlAlDeletes,
    };
    static constexpr auto on = &protocol::matrix;
    static constexpr auto count = ::count;

    using asked_key = rmonrpc_hlmatrix_key_t;
    static constexpr auto control = &asked_key::hlMatrixControlIndex;

    /** The address lengths of a key may differ, but those of a row never do. */
    static hl_pair_key key_of(const rmonrpc_hlmatrix_key_t &asked)
    {
        hl_pair_key key{
            key_address_of(asked.sourceAddress),
            key_address_of(asked.destAddress),
            asked.sourceAddress.length,
            asked.protocolDirLocalIndex,
            asked.applicationLayer == APPLICATION_LAYER ? asked.protocolDirLocalIndex2 : 0,
            0};
        return key;
    }

    static rmonrpc_hlmatrix_t
    answer(int32_t control_index, uint32_t time_mark, const hl_pair_key &key, const hl_pair &pair)
    {
        rmonrpc_hlmatrix_t row{};
        row.timeMark = time_mark;
        set_bytes(row.sourceAddress, {key.from.bytes, key.length});
        set_bytes(row.destAddress, {key.to.bytes, key.length});
        row.pkts = pair.pkts;
        row.octets = pair.octets;
        row.createTime = pair.create_time;
        row.hlMatrixControlIndex = control_index;
        row.protocolDirLocalIndex = key.network;
        row.protocolDirLocalIndex2 = key.application;
        return row;
    }
};

using hl_matrix_control = hl_control<hl_matrix_kind>;

/* ---- the rows ------------------------------------------------------------------------------- */

/** The order of the indexes, with the addresses in the order first, second. */
bool before(
    const hl_pair_key &a,
    const hl_pair_key &b,
    key_address hl_pair_key::*first,
    key_address hl_pair_key::*second)
{
    if (a.network != b.network)
        return a.network < b.network;
    if (a.length != b.length)
        return a.length < b.length;
    int order = compare_addresses(a.*first, b.*first);
    if (order == 0)
        order = compare_addresses(a.*second, b.*second);
    return order != 0 ? order < 0 : a.application < b.application;
}

bool before_by_sender(const hl_pair_key &a, const hl_pair_key &b)
{
    return before(a, b, &hl_pair_key::from, &hl_pair_key::to);
}

bool before_by_receiver(const hl_pair_key &a, const hl_pair_key &b)
{
    return before(a, b, &hl_pair_key::to, &hl_pair_key::from);
}

rmonrpc_hlmatrix_arr_t hlmatrix_get(probe &agent, const rmonrpc_hlmatrix_key_t &asked)
{
    const bool by_receiver = asked.direction == MATRIX_DS;
    const auto view = [&](hl_pair_counts::table &table) -> ordered_view & {
        return by_receiver ? table.view.by_receiver : table.view.by_sender;
    };
    return hl_read<hl_matrix_kind>(agent, asked, view, by_receiver ? before_by_receiver : before_by_sender);
}

/* ---- the family --------------------------------------------------------------------- */

template <int32_t Direction> rmonrpc_hlmatrix_key_t nl_matrix_index(instance_reader &from)
{
    rmonrpc_hlmatrix_key_t key{};
    key.hlMatrixControlIndex = take_index(from);
    key.timeMark = take_time(from);
    key.protocolDirLocalIndex = take_index(from);
    take_pair<Direction>(from, key);
    key.getType = GET;
    return key;
}

template <int32_t Direction> rmonrpc_hlmatrix_key_t al_matrix_index(instance_reader &from)
{
    rmonrpc_hlmatrix_key_t key = nl_matrix_index<Direction>(from);
    key.protocolDirLocalIndex2 = take_index(from);
    key.applicationLayer = APPLICATION_LAYER;
    return key;
}

constexpr auto hlmatrix_ctl_get = get_control<hl_matrix_control>;

constexpr served_procedure procedures[] = {
    serve<hlmatrix_ctl_get>(hlmatrix_ctl_get_1),
    serve_set<set_control<hl_matrix_control>>(hlmatrix_ctl_set_1),
    serve<hlmatrix_get>(hlmatrix_get_1),
    serve_set<hl_keep<hl_matrix_kind, true>>(nlmatrix_make_persistent_1),
    serve_set<hl_keep<hl_matrix_kind, false>>(nlmatrix_make_nonpersistent_1),
};

constexpr state_part kept[] = {
    keep_rows<hl_matrix_control>("hlMatrix"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlDroppedFrames>("1.3.6.1.2.1.16.15.1.1.3"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlInserts>("1.3.6.1.2.1.16.15.1.1.4"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlDeletes>("1.3.6.1.2.1.16.15.1.1.5"),
    gauge<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlNlMaxDesiredEntries>("1.3.6.1.2.1.16.15.1.1.6"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlDroppedFrames>("1.3.6.1.2.1.16.15.1.1.7"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlInserts>("1.3.6.1.2.1.16.15.1.1.8"),
    counter<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlDeletes>("1.3.6.1.2.1.16.15.1.1.9"),
    gauge<hlmatrix_ctl_get, one_index, &rmonrpc_hlmatrix_ctl_t::hlMatrixControlAlMaxDesiredEntries>("1.3.6.1.2.1.16.15.1.1.10"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.15.2.1.4", "nlMatrixSDPkts"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.15.2.1.5", "nlMatrixSDOctets"),
    gauge<hlmatrix_get, nl_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.15.2.1.6", "nlMatrixSDCreateTime"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.15.3.1.4", "nlMatrixDSPkts"),
    counter<hlmatrix_get, nl_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.15.3.1.5", "nlMatrixDSOctets"),
    gauge<hlmatrix_get, nl_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.15.3.1.6", "nlMatrixDSCreateTime"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.17.1.1.2", "alMatrixSDPkts"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.17.1.1.3", "alMatrixSDOctets"),
    gauge<hlmatrix_get, al_matrix_index<MATRIX_SD>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.17.1.1.4", "alMatrixSDCreateTime"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::pkts>("1.3.6.1.2.1.16.17.2.1.2", "alMatrixDSPkts"),
    counter<hlmatrix_get, al_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::octets>("1.3.6.1.2.1.16.17.2.1.3", "alMatrixDSOctets"),
    gauge<hlmatrix_get, al_matrix_index<MATRIX_DS>, &rmonrpc_hlmatrix_t::createTime>("1.3.6.1.2.1.16.17.2.1.4", "alMatrixDSCreateTime"),
};
// clang-format on

} // namespace

extern const family hlmatrix_family = {
    .name = "hlmatrix",
    .interface_gone = remove_rows_on<hl_matrix_control>,
    .protocols_changed = hl_sift<hl_matrix_kind>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
