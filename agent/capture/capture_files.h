// SPDX-License-Identifier: MIT
/*
 * Capture files as input (--read): each file plays the part of an interface, or
 * of several where it has several (pcapng).
 *
 * Its frames pass by from the moment on at which reading begins, whether
 * somebody counts them or not, as on a wire: once or over and over, as fast as
 * they can be counted or at the pace at which they were recorded.
 */
#pragma once

#include "agent/core/loop.h"
#include "agent/capture/pcapng.h"
#include "agent/capture/sources.h"

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include <pcap/pcap.h>

/** What the command line says of files. */
struct file_reading {
    std::vector<std::string> files;
    bool recorded = false; // at the pace of the recording
    bool repeat = false;   // from the beginning again after the end
    bool held = false;     // reading begins with SIGUSR1

    bool operator==(const file_reading &) const = default;
};

struct capture_file {
    source_table *sources = nullptr;
    std::vector<interface *> interfaces; // whose parts it plays
    std::string path;
    bool recorded = false;
    bool repeat = false;
    bool reading = false;      // until the end
    std::vector<char> buffer;  // of the stream by which libpcap reads
    pcap_t *capture = nullptr; // libpcap's, or
    pcapng_file blocks;        // the other form, read here
    int timer = -1;            // readable when it is time for frames
    uint64_t frames = 0;       // in all
    uint64_t skipped = 0;      // that were not Ethernet's
    int64_t began = 0; // when its first frame came, in microseconds of the clock that only goes forward
    uint64_t frames_of_round = 0;
    int64_t round_began = 0;
    int64_t first_stamp = 0; // time of recording of the round's first frame, microseconds
    // For who tells rounds apart: what times are recorded, and how far those of this round are behind them.
    int64_t oldest = INT64_MAX;
    int64_t newest = 0;
    int64_t later = 0;
    // A frame that is read and whose time has not come.
    bool waiting = false;
    uint32_t from = 0; // of the interfaces
    const uint8_t *bytes = nullptr;
    uint32_t captured = 0;
    uint32_t length = 0;
    int64_t stamp = 0;
    std::vector<data_source *>
        counted; // of the interfaces, while it is their turn; null: nobody counts on it
};

using capture_files = std::list<capture_file>;

/**
 * Opens the files and makes their interfaces, 1 the first one's first. An empty text,
 * or what is wrong in one line. The list must not move from then on.
 */
std::string open_capture_files(
    capture_files &files, const file_reading &wanted, source_table &sources, interface_table &interfaces);

/** Reading begins. False, with errno, when the kernel has no timer. */
bool begin_capture_files(capture_files &files, event_loop &loop);

void close_capture_files(capture_files &files, event_loop &loop);
