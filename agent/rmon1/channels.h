// SPDX-License-Identifier: MIT
/*
 * Channels: packets that filters choose (RFC 2819, channelTable). A channel
 * counts them, and while it is turned on, it tells of them by an event and
 * fills capture buffers.
 */
#pragma once

#include "agent/rmon1/filter_match.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct probe;
struct data_source;
struct buffer_work;

/** What a working channel needs for each packet. */
struct channel_work {
    probe *agent = nullptr;
    const data_source *source = nullptr;
    uint64_t matches = 0;
    uint32_t octets = 0; // of each packet, that it wants to see
    std::vector<filter_row>
        filters; // those that are valid; copied, so that a packet meets them close together
    std::vector<std::shared_ptr<buffer_work>> buffers;
};

struct channel_row {
    int32_t data_source = 0; // ifIndex
    int32_t accept_type = 0;
    int32_t data_control = 0;
    uint32_t turn_on_event = 0;
    uint32_t turn_off_event = 0;
    uint32_t event = 0;
    int32_t event_status = 0;
    std::string description;
    std::string owner;
    row_status status = row_status::under_creation;
    uint32_t create_time = 0;           // sysUpTime when the row became valid
    std::shared_ptr<channel_work> work; // null while it is not valid
};

using channel_table = std::map<int32_t, channel_row>; // by channelIndex

/** Takes over what became of a channel's filters and buffers. No such channel: nothing. */
void refresh_channel(probe &agent, int32_t index);
