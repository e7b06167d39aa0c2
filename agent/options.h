// SPDX-License-Identifier: MIT
/* What is chosen at the start: on the command line, and in a configuration file. */
#pragma once

#include "agent/capture/capture_files.h"
#include "agent/rpc/networks.h"

#include "rmon/rpc/rmonrpc.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct options {
    std::string host = "127.0.0.1";
    uint16_t port = RMONRPC_PORT;
    std::vector<network> allowed;        // whose clients are taken; none: the loopback's
    std::vector<std::string> interfaces; // names of those that are measured; none: all
    bool capture = true;
    uint32_t ring = 0;   // MiB, 0: the capture's own choice
    uint64_t memory = 0; // octets of what is learned, 0: usual_memory()
    file_reading reading;
    std::optional<uint16_t> netflow; // UDP port
    std::string voice;               // scenario, empty: none
    std::string state;               // directory, empty: nothing is kept
    std::string captures;            // directory, empty: none
    std::string user;                // whom the agent becomes after the start, empty: nobody else
    std::string config;              // file, empty: none
    bool help = false;
    bool version = false;

    bool operator==(const options &) const = default;
};

/**
 * Reads the words behind the program's name, and the configuration file that
 * they name: where both have an option, the words win. An empty text on success,
 * else what is wrong, in one line.
 */
std::string read_options(options &chosen, const std::vector<std::string> &words);

/** All options, as --help shows them. */
std::string usage();
