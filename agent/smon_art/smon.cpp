#include "agent/smon_art/smon.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"

namespace {

/* ---- VLANs ----------------------------------------------------------------------------- */

void count_vlan(void *work, const frame &seen)
{
    if (seen.vlan < 0 || seen.vlan >= vlan_ids || !seen.destination)
        return;
    auto &counts = *static_cast<vlan_counts *>(work);
    uint16_t &place = counts.place[static_cast<uint32_t>(seen.vlan)];
    if (place == 0) {
        counts.seen.push_back({0, 0, 0, 0, up_time(*counts.agent)});
        place = static_cast<uint16_t>(counts.seen.size());
    }
    vlan_counters &row = counts.seen[place - 1U];
    row.pkts++;
    row.octets += seen.length;
    if (seen.destination[0] & 1) {
        row.nucast_pkts++;
        row.nucast_octets += seen.length;
    }
}

bool nonsense_vlan(const rmonrpc_smon_vlan_ctl_t &request)
{
    return request.smonVlanStatsControlDataSource > INT32_MAX
           || !is_printable(text_of(request.smonVlanStatsControlOwner));
}

bool vlan_changes_fixed(const vlan_row &row, const rmonrpc_smon_vlan_ctl_t &request)
{
    return signed_index(request.smonVlanStatsControlDataSource) != row.data_source;
}

void assign_vlan(vlan_row &row, const rmonrpc_smon_vlan_ctl_t &request)
{
    row.data_source = signed_index(request.smonVlanStatsControlDataSource);
    row.owner = text_of(request.smonVlanStatsControlOwner);
}

int32_t start_vlan(probe &agent, vlan_row &row)
{
    row.work = std::make_shared<vlan_counts>();
    row.work->agent = &agent;
    return start_counting(agent, row, count_vlan);
}

constexpr row_rules<vlan_row, rmonrpc_smon_vlan_ctl_t> vlan_rules{
    nonsense_vlan, vlan_changes_fixed, assign_vlan, start_vlan, stop_counting<count_vlan, vlan_counts>};

/* ---- priorities ------------------------------------------------------------------------ */

void count_priority(void *work, const frame &seen)
{
    if (seen.priority < 0 || seen.priority >= priorities)
        return;
    auto &counts = *static_cast<priority_counts *>(work);
    counts.pkts[static_cast<uint32_t>(seen.priority)]++;
    counts.octets[static_cast<uint32_t>(seen.priority)] += seen.length;
}

bool nonsense_priority(const rmonrpc_smon_prio_ctl_t &request)
{
    return request.smonPrioStatsControlDataSource > INT32_MAX
           || !is_printable(text_of(request.smonPrioStatsControlOwner));
}

bool priority_changes_fixed(const priority_row &row, const rmonrpc_smon_prio_ctl_t &request)
{
    return signed_index(request.smonPrioStatsControlDataSource) != row.data_source;
}

void assign_priority(priority_row &row, const rmonrpc_smon_prio_ctl_t &request)
{
    row.data_source = signed_index(request.smonPrioStatsControlDataSource);
    row.owner = text_of(request.smonPrioStatsControlOwner);
}

int32_t start_priority(probe &agent, priority_row &row)
{
    row.work = std::make_shared<priority_counts>();
    return start_counting(agent, row, count_priority);
}

constexpr row_rules<priority_row, rmonrpc_smon_prio_ctl_t> priority_rules{
    nonsense_priority, priority_changes_fixed, assign_priority, start_priority,
    stop_counting<count_priority, priority_counts>};

/* ---- reading by control index and a small number ---------------------------------------- */

/**
 * The control row and the number that a key asks for: numbers below most, of
 * which a row has those that it has seen.
 */
template <class Row, class Seen>
auto find_numbered(std::map<int32_t, Row> &table, const rmonrpc_row_key3_t &key, int32_t most, Seen seen)
{
    struct place {
        const Row *row;
        int32_t control;
        int32_t number;
    };
    if (key.getType == GET) {
        const auto found = table.find(key.index1);
        if (found != table.end() && found->second.work && key.index2 >= 0 && key.index2 < most
            && seen(*found->second.work, key.index2))
            return place{&found->second, key.index1, key.index2};
    } else if (key.getType == GETNEXT || key.getType == GETBULK) {
        for (auto at = table.lower_bound(key.index1); at != table.end(); ++at) {
            if (!at->second.work)
                continue;
            // A later row's numbers are all behind the index.
            const int32_t after = at->first == key.index1 ? std::max(key.index2, -1) : -1;
            for (int32_t number = after; number < most - 1;)
                if (seen(*at->second.work, ++number))
                    return place{&at->second, at->first, number};
        }
    }
    return place{nullptr, 0, 0};
}

} // namespace

void smon_interface_gone(probe &agent, int32_t index)
{
    remove_rows_on(agent, storage<vlan_table>(agent), index, vlan_rules);
    remove_rows_on(agent, storage<priority_table>(agent), index, priority_rules);
}

void describe_vlan_row(rmonrpc_smon_vlan_ctl_t &record, int32_t index, const vlan_row &row)
{
    record.smonVlanStatsControlIndex = index;
    record.smonVlanStatsControlDataSource = static_cast<uint32_t>(row.data_source);
    set_text(record.smonVlanStatsControlOwner, row.owner);
}

rmonrpc_smon_vlan_ctl_t smon_vlan_ctl_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_smon_vlan_ctl_t reply{};
    const auto found = find_row(storage<vlan_table>(agent), key.index, key.getType);
    if (found == storage<vlan_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    describe_vlan_row(reply, found->first, found->second);
    reply.smonVlanStatsControlCreateTime = found->second.create_time;
    reply.smonVlanStatsControlStatus = static_cast<int32_t>(found->second.status);
    return reply;
}

int32_t smon_vlan_ctl_set(probe &agent, const rmonrpc_smon_vlan_ctl_t &request)
{
    return set_row(
        agent, storage<vlan_table>(agent), request.smonVlanStatsControlIndex,
        request.smonVlanStatsControlStatus, request, vlan_rules, learning_rows);
}

rmonrpc_smon_vlan_t smon_vlan_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    catch_up_all(agent);
    const auto found =
        find_numbered(storage<vlan_table>(agent), key, vlan_ids, [](const vlan_counts &counts, int32_t id) {
            return counts.place[static_cast<uint32_t>(id)] != 0;
        });
    rmonrpc_smon_vlan_t reply{};
    if (!found.row) {
        reply.status = no_such_name;
        return reply;
    }
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

void describe_priority_row(rmonrpc_smon_prio_ctl_t &record, int32_t index, const priority_row &row)
{
    record.smonPrioStatsControlIndex = index;
    record.smonPrioStatsControlDataSource = static_cast<uint32_t>(row.data_source);
    set_text(record.smonPrioStatsControlOwner, row.owner);
}

rmonrpc_smon_prio_ctl_t smon_prio_ctl_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_smon_prio_ctl_t reply{};
    const auto found = find_row(storage<priority_table>(agent), key.index, key.getType);
    if (found == storage<priority_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    describe_priority_row(reply, found->first, found->second);
    reply.smonPrioStatsControlCreateTime = found->second.create_time;
    reply.smonPrioStatsControlStatus = static_cast<int32_t>(found->second.status);
    return reply;
}

int32_t smon_prio_ctl_set(probe &agent, const rmonrpc_smon_prio_ctl_t &request)
{
    return set_row(
        agent, storage<priority_table>(agent), request.smonPrioStatsControlIndex,
        request.smonPrioStatsControlStatus, request, priority_rules);
}

rmonrpc_smon_prio_t smon_prio_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    catch_up_all(agent);
    const auto found = find_numbered(
        storage<priority_table>(agent), key, priorities, [](const priority_counts &counts, int32_t priority) {
            return counts.pkts[static_cast<uint32_t>(priority)] != 0;
        });
    rmonrpc_smon_prio_t reply{};
    if (!found.row) {
        reply.status = no_such_name;
        return reply;
    }
    const auto priority = static_cast<uint32_t>(found.number);
    reply.smonPrioStatsId = found.number;
    reply.smonPrioStatsPkts = found.row->work->pkts[priority];
    reply.smonPrioStatsOctets = found.row->work->octets[priority];
    reply.smonPrioStatsControlIndex = found.control;
    return reply;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<smon_vlan_ctl_get>(smon_vlan_ctl_get_1),
    serve_set<smon_vlan_ctl_set>(smon_vlan_ctl_set_1),
    serve<smon_vlan_get>(smon_vlan_get_1),
    serve<smon_prio_ctl_get>(smon_prio_ctl_get_1),
    serve_set<smon_prio_ctl_set>(smon_prio_ctl_set_1),
    serve<smon_prio_get>(smon_prio_get_1),
};

constexpr state_part kept[] = {
    keep_rows<
        vlan_table,
        describe_vlan_row,
        smon_vlan_ctl_set,
        &rmonrpc_smon_vlan_ctl_t::smonVlanStatsControlStatus>("smonVlanStatsControl"),
    keep_rows<
        priority_table,
        describe_priority_row,
        smon_prio_ctl_set,
        &rmonrpc_smon_prio_ctl_t::smonPrioStatsControlStatus>("smonPrioStatsControl"),
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
