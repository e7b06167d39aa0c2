// SPDX-License-Identifier: MIT
/* What a filter lets pass (RFC 2819, filterTable, with the protocols of RFC 2021). */
#pragma once

#include "agent/capture/frame.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct protocol_directory;

struct filter_row {
    int32_t channel = 0; // channelIndex
    uint32_t offset = 0;
    std::vector<uint8_t> data;
    std::vector<uint8_t> mask;     // ones are added behind its end
    std::vector<uint8_t> not_mask; // zeros are added behind its end
    uint32_t packet_status = 0;
    uint32_t packet_status_mask = 0;
    uint32_t packet_status_not_mask = 0;
    int32_t data_protocol =
        0; // protocolDirLocalIndex of the protocol at whose start the data begin, 0: the packet
    int32_t protocol = 0; // protocolDirLocalIndex of a protocol that the packet must have, 0: any
    std::string owner;
    row_status status = row_status::under_creation;
};

using filter_table = std::map<int32_t, filter_row>; // by filterIndex

/** Octets of a packet that filters may look at. */
inline constexpr uint32_t max_packet_octets = 65535;

/** What makes a packet a bad one (filterPktStatus, captureBufferPacketStatus); damaged ones are never seen.
 */
inline constexpr uint32_t too_long = 1;
inline constexpr uint32_t too_short = 2;
inline constexpr uint32_t after_drops =
    8; // the first packet in a buffer after some were lost; no matter to filters

inline uint32_t status_of(const frame &seen)
{
    return seen.length > 1518 ? too_long : seen.length < 64 ? too_short : 0;
}

/** Whether a packet passes a filter. */
bool filter_matches(const filter_row &filter, const frame &seen, const protocol_directory &protocols);

/** Octets of a packet that a filter looks at. */
uint32_t filter_octets(const filter_row &filter);
