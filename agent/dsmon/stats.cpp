// SPDX-License-Identifier: MIT
#include "agent/dsmon/stats.h"

#include "agent/capture/family.h"
#include "agent/dsmon/rules.h"

#include <bit>
#include <cstring>

namespace {

void count_stats(dsmon_stats_counts &counts, const frame &seen, uint8_t group)
{
    const bool sent = counts.has_address && seen.from_mac
                      && std::memcmp(seen.from_mac, counts.address.data(), counts.address.size()) == 0;
    dsmon_direction &direction = (sent ? counts.out : counts.in)[group];
    direction.pkts += seen.pkts;
    direction.octets += seen.octets;
}

/** The loopback has no address that would tell; all it carries is "in". */
void take_address(const probe &agent, int32_t data_source, dsmon_stats_counts &counts)
{
    constexpr std::array<uint8_t, 6> none{};
    const auto iface = agent.interfaces.rows.find(data_source);
    counts.has_address = false;
    if (iface == agent.interfaces.rows.end() || iface->second.address.size() != counts.address.size())
        return;
    std::ranges::copy(iface->second.address, counts.address.begin());
    counts.has_address = counts.address != none;
}

void begin_stats(probe &agent, const dsmon_row<dsmon_stats_counts> &row, dsmon_stats_counts &counts)
{
    counts.groups = 0;
    for (const uint8_t group : counts.work.group_of)
        counts.groups |= uint64_t{1} << group;
    take_address(agent, row.data_source, counts);
}

void forget_stats(dsmon_stats_counts &counts)
{
    counts.groups = 0;
    counts.in = {};
    counts.out = {};
}

struct dsmon_stats_kind {
    using counts = dsmon_stats_counts;
    using table = dsmon_stats_table;
    using row = dsmon_row<dsmon_stats_counts>;
    using request = rmonrpc_dsmon_stats_ctl_t;
    static constexpr auto index = &request::dsmonStatsControlIndex;
    static constexpr auto status = &request::dsmonStatsControlStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::dsmonStatsControlDataSource_ifIndex, &row::data_source>(not_negative),
        fixed<&request::dsmonStatsControlAggProfile, &row::profile>(not_negative),
        changeable<&request::dsmonStatsControlOwner, &row::owner>(),
    };
    static constexpr auto begin = begin_stats;
    static constexpr auto count = count_stats;
    static constexpr auto forget = forget_stats;

    static void show(probe &, request &reply, int32_t, const row &)
    {
        // Each group has its counters from the beginning: no frame is left out.
        reply.dsmonStatsControlDroppedFrames = 0;
    }
};

using dsmon_stats_control = dsmon_control<dsmon_stats_kind>;

void dsmon_stats_interface_changed(probe &agent, int32_t index)
{
    settle_all(agent); // what was taken came and went by the address that there was
    for (auto &[control, row] : storage<dsmon_stats_table>(agent))
        if (row.counts && row.data_source == index)
            take_address(agent, index, *row.counts);
}

/** The first group that a read may ask of a control row; of a later row all are behind the index. */
int32_t first_group(const rmonrpc_row_key3_t &key, bool asked)
{
    if (!asked)
        return 0;
    return key.getType == GET ? key.index2 : std::clamp(key.index2, -1, aggregation_groups - 1) + 1;
}

rmonrpc_dsmon_stats_t stats_row(int32_t control, uint32_t group, const dsmon_stats_counts &counts)
{
    rmonrpc_dsmon_stats_t row{};
    row.dsmonAggGroupIndex = group;
    row.dsmonStatsControlIndex = static_cast<uint32_t>(control);
    row.dsmonStatsInHCPkts = counts.in[group].pkts;
    row.dsmonStatsInHCOctets = counts.in[group].octets;
    row.dsmonStatsOutHCPkts = counts.out[group].pkts;
    row.dsmonStatsOutHCOctets = counts.out[group].octets;
    return row;
}

rmonrpc_dsmon_stats_t dsmon_stats_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    catch_up_all(agent);
    const auto none = no_such_row<rmonrpc_dsmon_stats_t>();
    if (key.getType != GET && key.getType != GETNEXT && key.getType != GETBULK)
        return none;
    const auto &controls = storage<dsmon_stats_table>(agent);
    for (auto at = controls.lower_bound(key.index1); at != controls.end(); ++at) {
        const bool asked = at->first == key.index1;
        if (!asked && key.getType == GET)
            break;
        const int32_t first = first_group(key, asked);
        if (!at->second.counts || first < 0 || first >= aggregation_groups)
            continue;
        const uint64_t groups = at->second.counts->groups >> first;
        const int32_t group = first + std::countr_zero(groups);
        if (groups != 0 && (key.getType != GET || group == first))
            return stats_row(at->first, static_cast<uint32_t>(group), *at->second.counts);
    }
    return none;
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto dsmon_stats_ctl_get = get_control<dsmon_stats_control>;

constexpr served_procedure procedures[] = {
    serve<dsmon_stats_ctl_get>(dsmon_stats_ctl_get_1),
    serve<dsmon_stats_get>(dsmon_stats_get_1),
    serve_set<set_control<dsmon_stats_control>>(dsmon_stats_ctl_set_1),
};

constexpr state_part kept[] = {
    keep_rows<dsmon_stats_control>("dsmonStatsControl"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<dsmon_stats_ctl_get, one_index, &rmonrpc_dsmon_stats_ctl_t::dsmonStatsControlDroppedFrames>("1.3.6.1.2.1.16.26.1.2.1.1.4"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsInHCPkts>("1.3.6.1.2.1.16.26.1.2.2.1.5"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsInHCOctets>("1.3.6.1.2.1.16.26.1.2.2.1.6"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsOutHCPkts>("1.3.6.1.2.1.16.26.1.2.2.1.11"),
    counter<dsmon_stats_get, two_short_indexes, &rmonrpc_dsmon_stats_t::dsmonStatsOutHCOctets>("1.3.6.1.2.1.16.26.1.2.2.1.12"),
};
// clang-format on

} // namespace

extern const family dsmon_stats_family = {
    .name = "dsmon_stats",
    .start = follow_lock<dsmon_stats_kind>,
    .interface_changed = dsmon_stats_interface_changed,
    .interface_gone = remove_rows_on<dsmon_stats_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
