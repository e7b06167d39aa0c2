// SPDX-License-Identifier: MIT
#include "agent/rmon2/pdist.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/bulk.h"
#include "agent/capture/counting.h"
#include "agent/capture/frame.h"

#include <algorithm>

namespace {

/* ---- counting ---------------------------------------------------------------------- */

/** Has a counter for each protocol that there is now. False when there is no memory for them. */
bool follow_directory(distribution &work)
{
    // What a directory without protocols of others takes is part of the row. A persistent one is a node of a
    // set, too.
    constexpr std::size_t usual_protocols = 256, each = sizeof(protocol_counter) + 48;
    const std::size_t protocols = work.agent->protocols.rows.size();
    if (!take_memory(work.memory, std::max(protocols, usual_protocols) * each - usual_protocols * each))
        return false;
    work.counted.reserve(protocols);
    work.counted.resize(protocols);
    return true;
}

void count(void *context, const frame &seen)
{
    auto &work = *static_cast<distribution *>(context);
    const int32_t highest = seen.application_index ? seen.application_index
                            : seen.network_index   ? seen.network_index
                                                   : seen.base_index;
    const auto at = static_cast<std::size_t>(highest);
    if (at >= work.counted.size() && !follow_directory(work)) {
        work.dropped_frames += seen.pkts;
        return;
    }
    work.counted[at].pkts += seen.pkts;
    work.counted[at].octets += seen.octets;
}

void add(protocol_counter &to, const protocol_counter &more)
{
    to.pkts += more.pkts;
    to.octets += more.octets;
}

/** What was counted, by local index, with what stands above each protocol. */
std::vector<protocol_counter> totals(const probe &agent, const distribution &work)
{
    std::vector<protocol_counter> sums = work.counted;
    sums.resize(agent.protocols.rows.size());
    // What stands above a protocol has a higher index than it.
    for (std::size_t i = sums.size() - 1; i > 0; i--) {
        const int32_t below = parent_protocol(agent.protocols, static_cast<int32_t>(i));
        if (below)
            add(sums[static_cast<std::size_t>(below)], sums[i]);
    }
    return sums;
}

/* ---- the control table ---------------------------------------------------------------- */

struct distribution_control_table {
    using table = distribution_table;
    using row = distribution_row;
    using request = rmonrpc_pdist_ctl_t;
    static constexpr auto index = &request::protocolDistControlIndex;
    static constexpr auto status = &request::protocolDistControlStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::protocolDistControlDataSource, &row::data_source>(not_negative),
        changeable<&request::protocolDistControlOwner, &row::owner>(),
    };
    static constexpr auto stop = stop_counting<count, distribution>;

    static int32_t start(probe &agent, row &started)
    {
        started.work = std::make_shared<distribution>();
        started.work->agent = &agent;
        if (!follow_directory(*started.work)) {
            started.work.reset();
            return gen_err;
        }
        return start_counting(agent, started, count);
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        reply.protocolDistControlDroppedFrames = shown.work ? shown.work->dropped_frames : 0;
        reply.protocolDistControlCreateTime = shown.create_time;
    }
};

/* ---- the rows --------------------------------------------------------------------------- */

bool is_shown(const distribution &work, const std::vector<protocol_counter> &sums, int32_t index)
{
    return sums[static_cast<std::size_t>(index)].pkts > 0 || work.persistent.contains(index);
}

rmonrpc_pdist_stats_t
stats_row(const probe &agent, int32_t control, int32_t index, const std::vector<protocol_counter> &sums)
{
    const protocol_counter &sum = sums[static_cast<std::size_t>(index)];
    rmonrpc_pdist_stats_t row{};
    row.protocolDistControlIndex = control;
    row.protocolDirLocalIndex = index;
    row.protocolDistStatsPkts = sum.pkts;
    row.protocolDistStatsOctets = sum.octets;
    row.pd_flags = static_cast<uint32_t>(flags_of(*find_protocol(agent.protocols, index)));
    return row;
}

/** Appends the rows of one control row from a local index to an end, until there are as many as wanted. */
void append_rows(
    probe &agent,
    int32_t control,
    const distribution_row &row,
    int32_t from,
    int32_t end,
    std::size_t wanted,
    std::vector<rmonrpc_pdist_stats_t> &to)
{
    if (!row.work)
        return;
    catch_up(agent, row.data_source);
    const std::vector<protocol_counter> sums = totals(agent, *row.work);
    for (int32_t i = std::max(from, first_local_index); i < end && to.size() < wanted; i++) {
        if (find_protocol(agent.protocols, i) && is_shown(*row.work, sums, i))
            to.push_back(stats_row(agent, control, i, sums));
    }
}

/** The counts of a control row that works, or null. */
distribution *find_work(probe &agent, int32_t control)
{
    const auto found = storage<distribution_table>(agent).find(control);
    return found == storage<distribution_table>(agent).end() ? nullptr : found->second.work.get();
}

void pdist_protocol_gone(probe &agent, const protocol &which)
{
    const auto at = static_cast<std::size_t>(which.local_index);
    for (auto &[control, row] : storage<distribution_table>(agent)) {
        if (!row.work || at >= row.work->counted.size())
            continue;
        add(row.work->counted[static_cast<std::size_t>(which.parent)], row.work->counted[at]);
        row.work->counted[at] = {};
        row.work->persistent.erase(which.local_index);
    }
}

rmonrpc_pdist_stats_arr_t pdist_stats_get(probe &agent, const rmonrpc_row_key4_t &key)
{
    std::vector<rmonrpc_pdist_stats_t> rows;
    const int32_t end = local_index_end(agent.protocols);
    if (key.getType == GET) {
        const auto found = storage<distribution_table>(agent).find(key.index1);
        if (found != storage<distribution_table>(agent).end() && key.index2 > 0 && key.index2 < end)
            append_rows(agent, found->first, found->second, key.index2, key.index2 + 1, 1, rows);
    } else if (key.getType == GETNEXT || key.getType == GETBULK) {
        const std::size_t wanted = rows_wanted(key.getType, key.count);
        const int32_t after = std::clamp(key.index2, 0, end);
        auto at = storage<distribution_table>(agent).lower_bound(key.index1);
        for (; at != storage<distribution_table>(agent).end() && rows.size() < wanted; at++)
            append_rows(
                agent, at->first, at->second, at->first == key.index1 ? after + 1 : 0, end, wanted, rows);
    }
    return reply_rows(rows);
}

rmonrpc_others_counters_t pdist_get_others(probe &agent, const rmonrpc_row_key1_t &key)
{
    const distribution *work = find_work(agent, key.index);
    if (!work)
        return no_such_row<rmonrpc_others_counters_t>();
    catch_up(agent, storage<distribution_table>(agent)[key.index].data_source);
    protocol_counter others{};
    for (std::size_t i = 0; i < work->counted.size(); i++) {
        const protocol *which = find_protocol(agent.protocols, static_cast<int32_t>(i));
        if (!which || which->flags & base_protocol)
            add(others, work->counted[i]);
    }
    rmonrpc_others_counters_t reply{};
    reply.packets = others.pkts;
    reply.octets = others.octets;
    return reply;
}

int32_t pdist_make_persistent(probe &agent, const rmonrpc_row_key4_t &key)
{
    distribution *work = find_work(agent, key.index1);
    if (!work || !find_protocol(agent.protocols, key.index2))
        return no_such_name;
    work->persistent.insert(key.index2);
    return no_error;
}

int32_t pdist_make_nonpersistent(probe &agent, const rmonrpc_row_key4_t &key)
{
    distribution *work = find_work(agent, key.index1);
    return work && work->persistent.erase(key.index2) ? no_error : no_such_name;
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto pdist_ctl_get = get_control<distribution_control_table>;

constexpr served_procedure procedures[] = {
    serve<pdist_ctl_get>(pdist_ctl_get_1),
    serve_set<set_control<distribution_control_table>>(pdist_ctl_set_1),
    serve<pdist_stats_get>(pdist_stats_get_1),
    serve_set<pdist_make_persistent>(pdist_make_persistent_1),
    serve_set<pdist_make_nonpersistent>(pdist_make_nonpersistent_1),
    serve<pdist_get_others>(pdist_get_others_1),
};

constexpr state_part kept[] = {
    keep_rows<distribution_control_table>("protocolDist"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<pdist_ctl_get, one_index, &rmonrpc_pdist_ctl_t::protocolDistControlDroppedFrames>("1.3.6.1.2.1.16.12.1.1.3"),
    gauge<pdist_ctl_get, one_index, &rmonrpc_pdist_ctl_t::protocolDistControlCreateTime>("1.3.6.1.2.1.16.12.1.1.4"),
    counter<pdist_stats_get, two_indexes, &rmonrpc_pdist_stats_t::protocolDistStatsPkts>("1.3.6.1.2.1.16.12.2.1.1"),
    counter<pdist_stats_get, two_indexes, &rmonrpc_pdist_stats_t::protocolDistStatsOctets>("1.3.6.1.2.1.16.12.2.1.2"),
};
// clang-format on

} // namespace

extern const family pdist_family = {
    .name = "pdist",
    .interface_gone = remove_rows_on<distribution_control_table>,
    .protocol_gone = pdist_protocol_gone,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
