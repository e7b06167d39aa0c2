#include "agent/rmon1/filters.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"
#include "agent/rmon1/channels.h"

#include <algorithm>

namespace {

/** Octets of each of a filter's three lists. */
constexpr uint32_t longest_data = 1518;

/* ---- the table ------------------------------------------------------------------------------ */

bool nonsense(const rmonrpc_filter_t &request)
{
    return request.filterChannelIndex > last_control_index || request.filterPktDataOffset > max_packet_octets
           || request.filterPktData.length > longest_data || request.filterPktDataMask.length > longest_data
           || request.filterPktDataNotMask.length > longest_data
           || request.filterProtocolDirDataLocalIndex > INT32_MAX
           || request.filterProtocolDirLocalIndex > INT32_MAX || !is_printable(text_of(request.filterOwner));
}

std::vector<uint8_t> octets_of(const wire::byte_list &list)
{
    const uint8_t *bytes = bytes_of(list);
    return {bytes, bytes + list.length};
}

bool same_octets(const wire::byte_list &list, const std::vector<uint8_t> &octets)
{
    return std::ranges::equal(std::span(bytes_of(list), list.length), octets);
}

bool changes_fixed(const filter_row &row, const rmonrpc_filter_t &request)
{
    return signed_index(request.filterChannelIndex) != row.channel
           || request.filterPktDataOffset != row.offset || !same_octets(request.filterPktData, row.data)
           || !same_octets(request.filterPktDataMask, row.mask)
           || !same_octets(request.filterPktDataNotMask, row.not_mask)
           || request.filterPktStatus != row.packet_status
           || request.filterPktStatusMask != row.packet_status_mask
           || request.filterPktStatusNotMask != row.packet_status_not_mask
           || signed_index(request.filterProtocolDirDataLocalIndex) != row.data_protocol
           || signed_index(request.filterProtocolDirLocalIndex) != row.protocol;
}

void assign(filter_row &row, const rmonrpc_filter_t &request)
{
    row.channel = signed_index(request.filterChannelIndex);
    row.offset = request.filterPktDataOffset;
    row.data = octets_of(request.filterPktData);
    row.mask = octets_of(request.filterPktDataMask);
    row.not_mask = octets_of(request.filterPktDataNotMask);
    row.packet_status = request.filterPktStatus;
    row.packet_status_mask = request.filterPktStatusMask;
    row.packet_status_not_mask = request.filterPktStatusNotMask;
    row.data_protocol = signed_index(request.filterProtocolDirDataLocalIndex);
    row.protocol = signed_index(request.filterProtocolDirLocalIndex);
    row.owner = text_of(request.filterOwner);
}

bool is_known(const protocol_directory &protocols, int32_t index)
{
    return index == 0 || find_protocol(protocols, index);
}

int32_t start(probe &agent, filter_row &row)
{
    const bool possible = row.channel >= first_control_index && is_known(agent.protocols, row.data_protocol)
                          && is_known(agent.protocols, row.protocol);
    return possible ? no_error : bad_value;
}

void stop(probe &, filter_row &) {}

constexpr row_rules<filter_row, rmonrpc_filter_t> rules{nonsense, changes_fixed, assign, start, stop};

/** The channel of a filter, 0 when there is no such filter. */
int32_t channel_of(const probe &agent, int32_t filter)
{
    const auto found = storage<filter_table>(agent).find(filter);
    return found == storage<filter_table>(agent).end() ? 0 : found->second.channel;
}

} // namespace

void filter_describe(rmonrpc_filter_t &record, int32_t index, const filter_row &row)
{
    record.filterIndex = static_cast<uint32_t>(index);
    record.filterChannelIndex = static_cast<uint32_t>(row.channel);
    record.filterPktDataOffset = row.offset;
    set_bytes(record.filterPktData, row.data);
    set_bytes(record.filterPktDataMask, row.mask);
    set_bytes(record.filterPktDataNotMask, row.not_mask);
    record.filterPktStatus = row.packet_status;
    record.filterPktStatusMask = row.packet_status_mask;
    record.filterPktStatusNotMask = row.packet_status_not_mask;
    set_text(record.filterOwner, row.owner);
    record.filterStatus = static_cast<int32_t>(row.status);
    record.filterProtocolDirDataLocalIndex = static_cast<uint32_t>(row.data_protocol);
    record.filterProtocolDirLocalIndex = static_cast<uint32_t>(row.protocol);
}

rmonrpc_filter_t filter_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_filter_t reply{};
    const auto found = find_row(storage<filter_table>(agent), key.index, key.getType);
    if (found == storage<filter_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    filter_describe(reply, found->first, found->second);
    return reply;
}

int32_t filter_set(probe &agent, const rmonrpc_filter_t &request)
{
    const int32_t index = signed_index(request.filterIndex);
    const int32_t before = channel_of(agent, index);
    const int32_t error =
        set_row(agent, storage<filter_table>(agent), index, request.filterStatus, request, rules);
    if (error != no_error)
        return error;
    refresh_channel(agent, before);
    refresh_channel(agent, channel_of(agent, index));
    return no_error;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<filter_get>(filter_get_1),
    serve_set<filter_set>(filter_set_1),
};

constexpr state_part kept[] = {
    keep_rows<filter_table, filter_describe, filter_set, &rmonrpc_filter_t::filterStatus>("filter"),
};

} // namespace

extern const family filters_family = {
    .name = "filters",
    .procedures = procedures,
    .kept = kept,
};
