// SPDX-License-Identifier: MIT
#include "agent/rmon1/filter_match.h"

#include "agent/capture/protocols.h"
#include "agent/capture/sources.h"

#include <algorithm>

namespace {

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
    // Where a protocol begins differs between packets, but is seldom far from the start.
    return std::min(filter.data_protocol != 0 ? octets + usual_octets : octets, max_packet_octets);
}
