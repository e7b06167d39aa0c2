// SPDX-License-Identifier: MIT
/*
 * Data sources: the interfaces on which something is counted.
 *
 * One pass over each frame serves all that count on its interface: the frame is
 * taken apart once, then every counter that is attached gets to see it. A source
 * is open while somebody uses it. Frames come from live capture where the process
 * has the right to it; without, the source has only what the kernel's counters
 * tell.
 */
#pragma once

#include "agent/capture/counters.h"
#include "agent/capture/ether_counters.h"
#include "agent/capture/frame.h"
#include "agent/capture/interfaces.h"
#include "agent/capture/sums.h"
#include "agent/core/loop.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include <pcap/pcap.h>

struct probe;
struct protocol_directory;
struct source_table;

/** Octets of each frame that are captured when nobody wants more: headers, and the beginning of what they
 * carry. With what the kernel keeps of a frame besides they fill 256 octets of the ring, a sixteenth of a
 * page. */
inline constexpr uint32_t usual_octets = 188;

/** MiB of a ring that has room for a second of the shortest frames at 1 Gbit/s: 1,488,095 of 256 octets. */
inline constexpr uint32_t usual_ring = 364;

struct data_source {
    source_table *table = nullptr;
    int32_t index = 0;  // ifIndex
    uint32_t users = 0; // rows that count on it
    attached_counters counters;
    bool loopback = false;
    uint32_t shortest = 0;  // octets, without check sequence, to which the adapter fills up what it sends
    bool capturing = false; // whether frames come from capture; stays so while the interface is down
    pcap_t *capture = nullptr;
    uint32_t octets = 0;       // of each frame that the capture keeps
    uint32_t ring = 0;         // MiB in which the kernel keeps frames until they are taken
    uint64_t arrived = 0;      // frames that found room in the ring, as far as the kernel was asked
    uint64_t taken = 0;        // frames that were taken from the ring
    std::deque<uint64_t> gaps; // the numbers, as taken counts, of frames in front of which some were lost
    uint64_t losses = 0;       // gaps up to the frame that is being counted
    timer gathered;            // when those that gather in the ring are taken
    int64_t later = 0; // microseconds; with them a file's frames are later than those of its last round
    kernel_counters kernel{}; // the kernel's counters when they were last asked for
    ether_counters total{};
};

struct source_table {
    probe *agent = nullptr; // once something is attached
    summed_frames late;
    event_loop *loop = nullptr;
    interface_table *interfaces = nullptr;
    protocol_directory *protocols = nullptr;
    bool may_capture = false;
    uint32_t ring = 0; // MiB for each interface; 0: usual_ring, or the interface's share of what there is
    std::map<int32_t, data_source> rows; // by ifIndex
};

/** The probe's. */
source_table &source_table_of(probe &agent);

/** sysUpTime of a frame that is counted now, older than 5 ms only where 32 frames or less came since. */
uint32_t frame_time(probe &agent, const frame &seen);

/** True when this process may capture frames. */
bool capture_permitted();

/** The table must not move from then on. */
void open_sources(
    source_table &table,
    event_loop &loop,
    interface_table &interfaces,
    protocol_directory &protocols,
    bool may_capture);

/** Begins to use a source. False when there is no Ethernet-like interface of this index. */
bool use_source(source_table &table, int32_t index);

/** Ends one use. */
void leave_source(source_table &table, int32_t index);

/**
 * Begins to use a source and has each of its frames counted for a row, which
 * must stay where it is until it is detached. Rows that count alike do so in the
 * order in which they were attached. False when there is no Ethernet-like
 * interface of this index.
 */
bool attach(probe &agent, int32_t index, count_function count, void *row, counting how = counting::each);

/** Has at least so many octets of each frame captured for a row that is attached; usual_octets are at the
 * start. */
void want_octets(probe &agent, int32_t index, count_function count, const void *row, uint32_t octets);

/** Ends what attach() began for this counter and row. */
void detach(probe &agent, int32_t index, count_function count, const void *row);

/** Takes the frames that arrived on a source up to this moment: to be called before its rows are read. */
void catch_up(probe &agent, int32_t index);

/**
 * Counts one frame of a source that is in use: of length octets without check
 * sequence, of which the first captured are there. The time is in microseconds.
 */
void take_frame(data_source &source, const uint8_t *bytes, uint32_t captured, uint32_t length, int64_t time);

/** Has the tables count all frames that were taken, because what these mean is about to change. */
void settle_all(probe &agent);

/** What was counted on a source that is in use, up to this moment. */
const ether_counters &source_counters(source_table &table, int32_t index);

/** Takes note that an interface came up, went down or changed otherwise. */
void source_changed(source_table &table, int32_t index);

void close_sources(source_table &table);
