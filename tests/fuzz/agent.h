// SPDX-License-Identifier: MIT
/* The bundled agent, as its fuzzers and the program that makes their seeds start it: without a process of its
 * own. */
#pragma once

#include "agent/capture/probe.h"
#include "agent/rpc/server.h"

#include <cstdint>
#include <span>
#include <string>

/** A file that holds these bytes and has this path as long as the process lives or until it is filled again.
 */
struct memory_file {
    int descriptor = -1;
    std::string path;
};

void fill(memory_file &file, std::span<const uint8_t> bytes);

/** A capture file without frames. */
std::span<const uint8_t> empty_capture();

struct started_agent {
    probe agent;
    tcp_server server;
};

/** Starts an agent whose interface 1 is this capture file. What is wrong with the file, or an empty text. */
std::string start_agent(started_agent &started, const std::string &capture);

/** Sets a row of each group that counts frames to work, on interface 1, with index 1, with tables of so many
 * rows. */
void start_groups(probe &agent, int32_t rows);

void stop_agent(started_agent &started);
