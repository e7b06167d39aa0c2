// SPDX-License-Identifier: MIT
#include "agent/rmon1/etherstats.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"

namespace {

/** The owner of the rows that the agent makes itself (RFC 2819). */
constexpr const char own_rows[] = "monitor";

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

struct etherstats_control {
    using table = etherstats_table;
    using row = etherstats_row;
    using request = rmonrpc_etherstats_t;
    static constexpr auto index = &request::etherStatsIndex;
    static constexpr auto status = &request::etherStatsStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::etherStatsDataSource, &row::data_source>(not_negative),
        changeable<&request::etherStatsOwner, &row::owner>(),
    };

    static int32_t start(probe &agent, row &started)
    {
        if (!use_source(agent.sources, started.data_source))
            return bad_value;
        started.base = source_counters(agent.sources, started.data_source);
        started.create_time = up_time(agent);
        return no_error;
    }

    static void stop(probe &agent, row &stopped) { leave_source(agent.sources, stopped.data_source); }

    static void show(probe &agent, request &reply, int32_t, const row &shown)
    {
        if (shown.status == row_status::valid)
            fill_counters(reply, since(shown.base, source_counters(agent.sources, shown.data_source)));
        // All that is lost counts as drop events; there are no frames that the agent chooses not to count.
        reply.etherStatsDroppedFrames = 0;
        reply.etherStatsCreateTime = shown.create_time;
    }
};

/** Makes a row for each Ethernet-like interface. */
void start_etherstats(probe &agent)
{
    for (const auto &[index, iface] : agent.interfaces.rows) {
        if (!is_measured(agent.interfaces, iface) || index > last_control_index)
            continue;
        etherstats_row row;
        row.data_source = index;
        row.owner = own_rows;
        if (etherstats_control::start(agent, row) != no_error)
            continue;
        row.status = row_status::valid;
        storage<etherstats_table>(agent).emplace(index, std::move(row));
    }
}

constexpr auto etherstats_get = get_control<etherstats_control>;

/* ---- the family --------------------------------------------------------------------- */

constexpr served_procedure procedures[] = {
    serve<etherstats_get>(etherstats_get_1),
    serve_set<set_control<etherstats_control>>(etherstats_set_1),
};

constexpr state_part kept[] = {
    keep_rows<etherstats_control>("etherStats"),
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
    .interface_gone = remove_rows_on<etherstats_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
