#include "agent/rmon1/etherstats.h"

#include "agent/capture/family.h"
#include "agent/core/table.h"

namespace {

/** The owner of the rows that the agent makes itself (RFC 2819). */
constexpr const char own_rows[] = "monitor";

bool nonsense(const rmonrpc_etherstats_t &request)
{
    return request.etherStatsDataSource < 0 || !is_printable(text_of(request.etherStatsOwner));
}

bool changes_fixed(const etherstats_row &row, const rmonrpc_etherstats_t &request)
{
    return request.etherStatsDataSource != row.data_source;
}

void assign(etherstats_row &row, const rmonrpc_etherstats_t &request)
{
    row.data_source = request.etherStatsDataSource;
    row.owner = text_of(request.etherStatsOwner);
}

int32_t start(probe &agent, etherstats_row &row)
{
    if (!use_source(agent.sources, row.data_source))
        return bad_value;
    row.base = source_counters(agent.sources, row.data_source);
    row.create_time = up_time(agent);
    return no_error;
}

void stop(probe &agent, etherstats_row &row)
{
    leave_source(agent.sources, row.data_source);
}

constexpr row_rules<etherstats_row, rmonrpc_etherstats_t> rules{nonsense, changes_fixed, assign, start, stop};

void fill_counters(rmonrpc_etherstats_t &reply, const ether_counters &counted)
{
    reply.etherStatsDropEvents = counted.drop_events;
    reply.etherStatsOctets = counted.octets;
    reply.etherStatsPkts = counted.pkts;
    reply.etherStatsBroadcastPkts = counted.broadcast_pkts;
    reply.etherStatsMulticastPkts = counted.multicast_pkts;
    reply.etherStatsCRCAlignErrors = counted.crc_align_errors;
    reply.etherStatsUndersizePkts = counted.undersize_pkts;
    reply.etherStatsOversizePkts = counted.oversize_pkts;
    reply.etherStatsFragments = counted.fragments;
    reply.etherStatsJabbers = counted.jabbers;
    reply.etherStatsCollisions = counted.collisions;
    reply.etherStatsPkts64Octets = counted.pkts_64;
    reply.etherStatsPkts65to127Octets = counted.pkts_65_to_127;
    reply.etherStatsPkts128to255Octets = counted.pkts_128_to_255;
    reply.etherStatsPkts256to511Octets = counted.pkts_256_to_511;
    reply.etherStatsPkts512to1023Octets = counted.pkts_512_to_1023;
    reply.etherStatsPkts1024to1518Octets = counted.pkts_1024_to_1518;
}

} // namespace

void start_etherstats(probe &agent)
{
    for (const auto &[index, link] : agent.interfaces.rows) {
        if (!is_measured(agent.interfaces, link) || index > last_control_index)
            continue;
        etherstats_row row;
        row.data_source = index;
        row.owner = own_rows;
        if (start(agent, row) != no_error)
            continue;
        row.status = row_status::valid;
        storage<etherstats_table>(agent).emplace(index, std::move(row));
    }
}

void etherstats_interface_gone(probe &agent, int32_t index)
{
    remove_rows_on(agent, storage<etherstats_table>(agent), index, rules);
}

void etherstats_describe(rmonrpc_etherstats_t &record, int32_t index, const etherstats_row &row)
{
    record.etherStatsIndex = index;
    record.etherStatsDataSource = row.data_source;
    set_text(record.etherStatsOwner, row.owner);
    record.etherStatsStatus = static_cast<int32_t>(row.status);
}

rmonrpc_etherstats_t etherstats_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_etherstats_t reply{};
    const auto found = find_row(storage<etherstats_table>(agent), key.index, key.getType);
    if (found == storage<etherstats_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    const etherstats_row &row = found->second;
    etherstats_describe(reply, found->first, row);
    if (row.status == row_status::valid)
        fill_counters(reply, since(row.base, source_counters(agent.sources, row.data_source)));
    // All that is lost counts as drop events; there are no frames that the agent chooses not to count.
    reply.etherStatsDroppedFrames = 0;
    reply.etherStatsCreateTime = row.create_time;
    return reply;
}

int32_t etherstats_set(probe &agent, const rmonrpc_etherstats_t &request)
{
    return set_row(
        agent, storage<etherstats_table>(agent), request.etherStatsIndex, request.etherStatsStatus, request,
        rules);
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<etherstats_get>(etherstats_get_1),
    serve_set<etherstats_set>(etherstats_set_1),
};

constexpr state_part kept[] = {
    keep_rows<etherstats_table, etherstats_describe, etherstats_set, &rmonrpc_etherstats_t::etherStatsStatus>(
        "etherStats"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsIndex>("1.3.6.1.2.1.16.1.1.1.1"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsDropEvents>("1.3.6.1.2.1.16.1.1.1.3"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsOctets>("1.3.6.1.2.1.16.1.1.1.4"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts>("1.3.6.1.2.1.16.1.1.1.5"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsBroadcastPkts>("1.3.6.1.2.1.16.1.1.1.6"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsMulticastPkts>("1.3.6.1.2.1.16.1.1.1.7"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsCRCAlignErrors>("1.3.6.1.2.1.16.1.1.1.8"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsUndersizePkts>("1.3.6.1.2.1.16.1.1.1.9"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsOversizePkts>("1.3.6.1.2.1.16.1.1.1.10"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsFragments>("1.3.6.1.2.1.16.1.1.1.11"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsJabbers>("1.3.6.1.2.1.16.1.1.1.12"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsCollisions>("1.3.6.1.2.1.16.1.1.1.13"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts64Octets>("1.3.6.1.2.1.16.1.1.1.14"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts65to127Octets>("1.3.6.1.2.1.16.1.1.1.15"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts128to255Octets>("1.3.6.1.2.1.16.1.1.1.16"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts256to511Octets>("1.3.6.1.2.1.16.1.1.1.17"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts512to1023Octets>("1.3.6.1.2.1.16.1.1.1.18"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsPkts1024to1518Octets>("1.3.6.1.2.1.16.1.1.1.19"),
    counter<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsDroppedFrames>("1.3.6.1.2.1.16.1.4.1.1"),
    gauge<etherstats_get, one_index, &rmonrpc_etherstats_t::etherStatsCreateTime>("1.3.6.1.2.1.16.1.4.1.2"),
};
// clang-format on

} // namespace

extern const family etherstats_family = {
    .name = "etherstats",
    .start = start_etherstats,
    .interface_gone = etherstats_interface_gone,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
