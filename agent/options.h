// SPDX-License-Identifier: MIT
/* The command line. */
#pragma once

#include "agent/capture/capture_files.h"

#include "rmon/rpc/rmonrpc.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct options {
    std::string host = "127.0.0.1";
    uint16_t port = RMONRPC_PORT;
    std::vector<std::string> interfaces; // names of those that are measured; none: all
    bool capture = true;
    uint32_t ring = 0; // MiB, 0: the capture's own choice
    file_reading reading;
    std::optional<uint16_t> netflow; // UDP port
    std::string voice;               // scenario, empty: none
    std::string state;               // directory, empty: nothing is kept
    std::string captures;            // directory, empty: none
    bool help = false;
};

/** An empty text on success, else what is wrong, in one line. */
std::string read_options(options &chosen, int count, char *const *words);

extern const char usage[];
