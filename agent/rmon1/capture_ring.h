// SPDX-License-Identifier: MIT
/* Capture buffers: the packets of a channel, kept with their bytes (RFC 2819, captureBufferTable). */
#pragma once

#include "agent/capture/frame.h"
#include "agent/core/memory.h"
#include "agent/core/row_status.h"

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct data_source;

struct captured_packet {
    uint32_t id;     // number of the packet on its interface
    uint32_t length; // octets of the packet, with the check sequence
    uint32_t stored; // octets that are kept
    uint32_t at;     // where in the ring they begin
    uint32_t status; // too_long and its like
    int64_t time;    // microseconds since 1970
};

struct buffer_work {
    memory_share memory;
    std::vector<uint8_t> ring; // the packets' octets, the oldest packet's first
    uint32_t next = 0;         // where the next packet goes
    uint32_t used = 0;         // octets, overhead included
    std::deque<captured_packet> packets;
    uint32_t last_index = 0; // captureBufferIndex of the newest packet; they are numbered from 1 on
    bool wraps = false;
    bool full = false;
    uint32_t slice = 0;    // octets that are kept of each packet, 0: all
    int64_t turned_on = 0; // microseconds since 1970
    uint64_t losses = 0;   // of the interface, up to the last packet that was captured
};

struct buffer_row {
    int32_t channel = 0; // channelIndex
    int32_t full_action = 0;
    int32_t capture_slice = 0;
    int32_t download_slice = 0;
    int32_t download_offset = 0;
    int32_t octets_requested = 0; // -1: as many as there may be
    std::string owner;
    row_status status = row_status::under_creation;
    uint32_t turn_on_time = 0;         // sysUpTime
    std::shared_ptr<buffer_work> work; // null while it is not valid
};

using buffer_table = std::map<int32_t, buffer_row>; // by bufferControlIndex

/** Keeps a packet, if there is room or room can be made. */
void capture_packet(buffer_work &work, const frame &seen, const data_source &source);

/** Octets of each packet that a buffer wants. */
uint32_t captured_octets(const buffer_row &row);

/** Appends a part of what is kept of a packet. */
void copy_packet(
    const buffer_work &work,
    const captured_packet &packet,
    uint32_t offset,
    uint32_t octets,
    std::vector<uint8_t> &to);
