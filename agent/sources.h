/*
 * Data sources: the interfaces on which something is counted.
 *
 * One pass over each frame serves all that count on its interface. A source is
 * open while somebody uses it. Frames come from live capture where the process
 * has the right to it; without, the source has only what the kernel's counters
 * tell.
 */
#pragma once

#include "agent/ether_counters.h"
#include "agent/interfaces.h"
#include "agent/loop.h"

#include <cstdint>
#include <map>
#include <string>

#include <pcap/pcap.h>

struct source_table;

struct data_source {
    source_table *table = nullptr;
    int32_t index = 0;  // ifIndex
    uint32_t users = 0; // rows that count on it
    bool loopback = false;
    uint32_t shortest = 0;  // octets, without check sequence, to which the adapter fills up what it sends
    bool capturing = false; // whether frames come from capture; stays so while the interface is down
    pcap_t *capture = nullptr;
    uint32_t dropped = 0;   // the capture's own count of frames that found no room, when it was last asked
    link_counters kernel{}; // the kernel's counters when they were last asked for
    ether_counters total{};
};

struct source_table {
    event_loop *loop = nullptr;
    interface_table *interfaces = nullptr;
    bool may_capture = false;
    std::map<int32_t, data_source> rows; // by ifIndex
};

/** True when this process may capture frames. */
bool capture_permitted();

/** The table must not move from then on. */
void open_sources(source_table &table, event_loop &loop, interface_table &interfaces, bool may_capture);

/** Begins to use a source. False when there is no Ethernet-like interface of this index. */
bool use_source(source_table &table, int32_t index);

/** Ends one use. */
void leave_source(source_table &table, int32_t index);

/** What was counted on a source that is in use, up to this moment. */
const ether_counters &source_counters(source_table &table, int32_t index);

/** Takes note that an interface came up, went down or changed otherwise. */
void source_changed(source_table &table, int32_t index);

void close_sources(source_table &table);
