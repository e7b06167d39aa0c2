// SPDX-License-Identifier: MIT
#include "agent/smon_art/smon.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"

namespace {

/* ---- VLANs ----------------------------------------------------------------------------- */

void count_vlan(void *work, const frame &seen)
{
    if (seen.vlan < 0 || seen.vlan >= vlan_ids || !seen.to_mac)
        return;
    auto &counts = *static_cast<vlan_counts *>(work);
    uint16_t &place = counts.place[static_cast<uint32_t>(seen.vlan)];
    if (place == 0) {
        counts.seen.push_back({0, 0, 0, 0, seen.up_time});
        place = static_cast<uint16_t>(counts.seen.size());
    }
    vlan_counters &row = counts.seen[place - 1U];
    row.pkts += seen.pkts;
    row.octets += seen.octets;
    if (seen.to_mac[0] & 1) {
        row.nucast_pkts += seen.pkts;
        row.nucast_octets += seen.octets;
    }
}

struct vlan_control_table {
    using table = vlan_table;
    using row = vlan_row;
    using request = rmonrpc_smon_vlan_ctl_t;
    static constexpr auto index = &request::smonVlanStatsControlIndex;
    static constexpr auto status = &request::smonVlanStatsControlStatus;
    static constexpr row_limits limits = learning_rows;
    static constexpr std::tuple fields{
        fixed<&request::smonVlanStatsControlDataSource, &row::data_source>(),
        changeable<&request::smonVlanStatsControlOwner, &row::owner>(),
    };
    static constexpr auto start = start_work<count_vlan, vlan_counts, counting::alike_with_tags>;
    static constexpr auto stop = stop_counting<count_vlan, vlan_counts>;

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        reply.smonVlanStatsControlCreateTime = shown.create_time;
    }
};

/* ---- priorities ------------------------------------------------------------------------ */

void count_priority(void *work, const frame &seen)
{
    if (seen.priority < 0 || seen.priority >= priorities)
        return;
    auto &counts = *static_cast<priority_counts *>(work);
    counts.pkts[static_cast<uint32_t>(seen.priority)] += seen.pkts;
    counts.octets[static_cast<uint32_t>(seen.priority)] += seen.octets;
}

struct priority_control_table {
    using table = priority_table;
    using row = priority_row;
    using request = rmonrpc_smon_prio_ctl_t;
    static constexpr auto index = &request::smonPrioStatsControlIndex;
    static constexpr auto status = &request::smonPrioStatsControlStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::smonPrioStatsControlDataSource, &row::data_source>(),
        changeable<&request::smonPrioStatsControlOwner, &row::owner>(),
    };
    static constexpr auto start = start_work<count_priority, priority_counts, counting::alike_with_tags>;
    static constexpr auto stop = stop_counting<count_priority, priority_counts>;

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        reply.smonPrioStatsControlCreateTime = shown.create_time;
    }
};

/* ---- reading by control index and a small number ---------------------------------------- */

/**
 * The control row and the number that a key asks for: numbers below end, of
 * which a row has those that it has seen.
 */
template <class Row, class Seen>
auto find_numbered(std::map<int32_t, Row> &table, const rmonrpc_row_key3_t &key, int32_t end, Seen seen)
{
    struct place {
        const Row *row;
        int32_t control;
        int32_t number;
    };
    if (key.getType == GET) {
        const auto found = table.find(key.index1);
        if (found != table.end() && found->second.work && key.index2 >= 0 && key.index2 < end
            && seen(*found->second.work, key.index2))
            return place{&found->second, key.index1, key.index2};
    } else if (key.getType == GETNEXT || key.getType == GETBULK) {
        for (auto at = table.lower_bound(key.index1); at != table.end(); ++at) {
            if (!at->second.work)
                continue;
            // A later row's numbers are all behind the index.
            const int32_t after = at->first == key.index1 ? std::max(key.index2, -1) : -1;
            for (int32_t number = after; number < end - 1;)
                if (seen(*at->second.work, ++number))
                    return place{&at->second, at->first, number};
        }
    }
    return place{nullptr, 0, 0};
}

rmonrpc_smon_vlan_t smon_vlan_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    catch_up_all(agent);
    const auto found =
        find_numbered(storage<vlan_table>(agent), key, vlan_ids, [](const vlan_counts &counts, int32_t id) {
            return counts.place[static_cast<uint32_t>(id)] != 0;
        });
    if (!found.row)
        return no_such_row<rmonrpc_smon_vlan_t>();
    rmonrpc_smon_vlan_t reply{};
    const vlan_counts &counts = *found.row->work;
    const vlan_counters &counted = counts.seen[counts.place[static_cast<uint32_t>(found.number)] - 1U];
    reply.smonVlanIdStatsId = found.number;
    reply.smonVlanIdStatsTotalPkts = counted.pkts;
    reply.smonVlanIdStatsTotalOctets = counted.octets;
    reply.smonVlanIdStatsNUcastPkts = counted.nucast_pkts;
    reply.smonVlanIdStatsNUcastOctets = counted.nucast_octets;
    reply.smonVlanIdStatsCreateTime = counted.create_time;
    reply.smonVlanStatsControlIndex = found.control;
    return reply;
}

rmonrpc_smon_prio_t smon_prio_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    catch_up_all(agent);
    const auto found = find_numbered(
        storage<priority_table>(agent), key, priorities, [](const priority_counts &counts, int32_t priority) {
            return counts.pkts[static_cast<uint32_t>(priority)] != 0;
        });
    if (!found.row)
        return no_such_row<rmonrpc_smon_prio_t>();
    rmonrpc_smon_prio_t reply{};
    const auto priority = static_cast<uint32_t>(found.number);
    reply.smonPrioStatsId = found.number;
    reply.smonPrioStatsPkts = found.row->work->pkts[priority];
    reply.smonPrioStatsOctets = found.row->work->octets[priority];
    reply.smonPrioStatsControlIndex = found.control;
    return reply;
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto smon_vlan_ctl_get = get_control<vlan_control_table>;
constexpr auto smon_prio_ctl_get = get_control<priority_control_table>;

void smon_interface_gone(probe &agent, int32_t index)
{
    remove_rows_on<vlan_control_table>(agent, index);
    remove_rows_on<priority_control_table>(agent, index);
}

constexpr served_procedure procedures[] = {
    serve<smon_vlan_ctl_get>(smon_vlan_ctl_get_1),
    serve_set<set_control<vlan_control_table>>(smon_vlan_ctl_set_1),
    serve<smon_vlan_get>(smon_vlan_get_1),
    serve<smon_prio_ctl_get>(smon_prio_ctl_get_1),
    serve_set<set_control<priority_control_table>>(smon_prio_ctl_set_1),
    serve<smon_prio_get>(smon_prio_get_1),
};

constexpr state_part kept[] = {
    keep_rows<vlan_control_table>("smonVlanStatsControl"),
    keep_rows<priority_control_table>("smonPrioStatsControl"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsTotalPkts>("1.3.6.1.2.1.16.22.1.2.2.1.2"),
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsTotalOctets>("1.3.6.1.2.1.16.22.1.2.2.1.5"),
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsNUcastPkts>("1.3.6.1.2.1.16.22.1.2.2.1.8"),
    counter<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsNUcastOctets>("1.3.6.1.2.1.16.22.1.2.2.1.11"),
    gauge<smon_vlan_get, two_short_indexes, &rmonrpc_smon_vlan_t::smonVlanIdStatsCreateTime>("1.3.6.1.2.1.16.22.1.2.2.1.14"),
    counter<smon_prio_get, two_short_indexes, &rmonrpc_smon_prio_t::smonPrioStatsPkts>("1.3.6.1.2.1.16.22.1.2.4.1.2"),
    counter<smon_prio_get, two_short_indexes, &rmonrpc_smon_prio_t::smonPrioStatsOctets>("1.3.6.1.2.1.16.22.1.2.4.1.5"),
    gauge<smon_vlan_ctl_get, one_index, &rmonrpc_smon_vlan_ctl_t::smonVlanStatsControlCreateTime>("1.3.6.1.2.1.16.22.1.2.1.1.3"),
    gauge<smon_prio_ctl_get, one_index, &rmonrpc_smon_prio_ctl_t::smonPrioStatsControlCreateTime>("1.3.6.1.2.1.16.22.1.2.3.1.3"),
};
// clang-format on

} // namespace

extern const family smon_family = {
    .name = "smon",
    .interface_gone = smon_interface_gone,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
