// SPDX-License-Identifier: MIT
#include "agent/rmon1/filter_match.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/capture/counting.h"
#include "agent/rmon1/channels.h"

#include <algorithm>

namespace {

/** Octets of each of a filter's three lists. */
constexpr uint32_t max_data = 1518;

/* ---- the table ------------------------------------------------------------------------------ */

bool is_known(const protocol_directory &protocols, int32_t index)
{
    return index == 0 || find_protocol(protocols, index);
}

struct filter_control_table {
    using table = filter_table;
    using row = filter_row;
    using request = rmonrpc_filter_t;
    static constexpr auto index = &request::filterIndex;
    static constexpr auto status = &request::filterStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::filterChannelIndex, &row::channel>({0, last_control_index}),
        fixed<&request::filterPktDataOffset, &row::offset>({0, max_packet_octets}),
        fixed<&request::filterPktData, &row::data>({.max = max_data}),
        fixed<&request::filterPktDataMask, &row::mask>({.max = max_data}),
        fixed<&request::filterPktDataNotMask, &row::not_mask>({.max = max_data}),
        fixed<&request::filterPktStatus, &row::packet_status>(),
        fixed<&request::filterPktStatusMask, &row::packet_status_mask>(),
        fixed<&request::filterPktStatusNotMask, &row::packet_status_not_mask>(),
        fixed<&request::filterProtocolDirDataLocalIndex, &row::data_protocol>(),
        fixed<&request::filterProtocolDirLocalIndex, &row::protocol>(),
        changeable<&request::filterOwner, &row::owner>(),
    };
    static constexpr auto stop = nothing_to_stop<row>;

    static int32_t start(probe &agent, row &started)
    {
        const bool possible = started.channel >= first_control_index
                              && is_known(agent.protocols, started.data_protocol)
                              && is_known(agent.protocols, started.protocol);
        return possible ? no_error : bad_value;
    }
};

/** The channel of a filter, 0 when there is no such filter. */
int32_t channel_of(const probe &agent, int32_t filter)
{
    const auto found = storage<filter_table>(agent).find(filter);
    return found == storage<filter_table>(agent).end() ? 0 : found->second.channel;
}

int32_t filter_set(probe &agent, const rmonrpc_filter_t &request)
{
    const int32_t index = signed_index(request.filterIndex);
    const int32_t before = channel_of(agent, index);
    const int32_t error = set_control<filter_control_table>(agent, request);
    if (error != no_error)
        return error;
    refresh_channel(agent, before);
    refresh_channel(agent, channel_of(agent, index));
    return no_error;
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto filter_get = get_control<filter_control_table>;

constexpr served_procedure procedures[] = {
    serve<filter_get>(filter_get_1),
    serve_set<filter_set>(filter_set_1),
};

constexpr state_part kept[] = {
    keep_rows<filter_control_table, filter_set>("filter"),
};

} // namespace

extern const family filters_family = {
    .name = "filters",
    .procedures = procedures,
    .kept = kept,
};
