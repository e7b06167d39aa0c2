#include "agent/rmon1/filters.h"

#include "agent/capture/counting.h"
#include "agent/capture/probe.h"
#include "agent/core/table.h"

#include <algorithm>

namespace {

/** Octets of a packet that filters may look at. */
constexpr uint32_t longest_packet = 65535;

/** Octets of each of a filter's three lists. */
constexpr uint32_t longest_data = 1518;

/* ---- matching ----------------------------------------------------------------------------- */

/**
 * Bits under the mask alone must be the same; of those that are under the mask
 * and the not-mask, where there are any, at least one must differ.
 */
struct bit_comparison {
    uint32_t unequal;    // bits that must be the same and are not
    uint32_t may_differ; // bits of which one must differ
    uint32_t differ;     // those of them that do
};

void compare_bits(bit_comparison &to, uint32_t bits, uint32_t wanted, uint32_t mask, uint32_t not_mask)
{
    const uint32_t differ = (bits ^ wanted) & mask;
    to.unequal |= differ & ~not_mask;
    to.may_differ |= mask & not_mask;
    to.differ |= differ & not_mask;
}

bool passes(const bit_comparison &compared)
{
    return compared.unequal == 0 && (compared.may_differ == 0 || compared.differ != 0);
}

/** Where a layer of a packet begins, as far as it was captured. */
struct layer {
    const uint8_t *bytes;
    uint32_t captured;
};

layer layer_from(const frame &seen, const uint8_t *bytes)
{
    return bytes ? layer{bytes, seen.captured - static_cast<uint32_t>(bytes - seen.bytes)} : layer{};
}

/**
 * Where a protocol begins in a packet that has it. The network layer's protocol
 * is known; what stands on it is the transport, and what stands on that, the
 * payload.
 */
layer layer_of(const frame &seen, int32_t protocol, const protocol_directory &protocols)
{
    int32_t above_network = 0;
    int32_t at = protocol;
    while (at != 0 && at != seen.network_index) {
        at = parent_protocol(protocols, at);
        above_network++;
    }
    if (at == 0)
        return {seen.bytes, seen.captured};
    return layer_from(
        seen, above_network == 0   ? seen.network
              : above_network == 1 ? seen.transport
                                   : seen.payload);
}

bool has_protocol(const frame &seen, int32_t protocol, const protocol_directory &protocols)
{
    for (const int32_t highest : {seen.application_index, seen.network_index})
        for (int32_t at = highest; at != 0; at = parent_protocol(protocols, at))
            if (at == protocol)
                return true;
    return false;
}

bool data_match(const filter_row &filter, const layer &packet)
{
    const std::size_t size = filter.data.size();
    if (!packet.bytes || filter.offset > packet.captured || size > packet.captured - filter.offset)
        return false;
    bit_comparison compared{};
    for (std::size_t i = 0; i < size; i++) {
        const uint32_t mask = i < filter.mask.size() ? filter.mask[i] : 0xff;
        const uint32_t not_mask = i < filter.not_mask.size() ? filter.not_mask[i] : 0;
        compare_bits(compared, packet.bytes[filter.offset + i], filter.data[i], mask, not_mask);
        if (compared.unequal)
            return false;
    }
    return passes(compared);
}

/* ---- the table ------------------------------------------------------------------------------ */

bool nonsense(const rmonrpc_filter_t &request)
{
    return request.filterChannelIndex > last_control_index || request.filterPktDataOffset > longest_packet
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
    const auto found = agent.filters.find(filter);
    return found == agent.filters.end() ? 0 : found->second.channel;
}

} // namespace

bool filter_matches(const filter_row &filter, const frame &seen, const protocol_directory &protocols)
{
    bit_comparison status{};
    compare_bits(
        status, status_of(seen), filter.packet_status, filter.packet_status_mask,
        filter.packet_status_not_mask);
    if (!passes(status))
        return false;
    if (filter.protocol != 0 && !has_protocol(seen, filter.protocol, protocols))
        return false;
    if (filter.data_protocol == 0)
        return data_match(filter, {seen.bytes, seen.captured});
    return has_protocol(seen, filter.data_protocol, protocols)
           && data_match(filter, layer_of(seen, filter.data_protocol, protocols));
}

uint32_t filter_octets(const filter_row &filter)
{
    const uint32_t octets = filter.offset + static_cast<uint32_t>(filter.data.size());
    // Where a protocol begins is another matter for each packet, but seldom far from the start.
    return std::min(filter.data_protocol != 0 ? octets + usual_octets : octets, longest_packet);
}

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
    const auto found = find_row(agent.filters, key.index, key.getType);
    if (found == agent.filters.end()) {
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
    const int32_t error = set_row(agent, agent.filters, index, request.filterStatus, request, rules);
    if (error != no_error)
        return error;
    refresh_channel(agent, before);
    refresh_channel(agent, channel_of(agent, index));
    return no_error;
}
