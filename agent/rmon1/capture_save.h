// SPDX-License-Identifier: MIT
/*
 * Captured packets saved to files, in the one directory that --captures names.
 *
 * Of the name that is asked for only the part behind the last slash counts, and
 * of that only letters, digits, dots, dashes and underscores; the others become
 * underscores, leading dots too. ".pcap" is added where it is missing.
 */
#pragma once

#include "rmon/rpc/rmonrpc_rmon1.h"

#include <string>
#include <string_view>

struct probe;

/** The directory of --captures. */
struct capture_directory {
    int descriptor = -1;
};

/** The name of the file for a name that is asked for; empty when nothing is left of it. */
std::string capture_file_name(std::string_view asked);

/** Opens the directory, which is made when it is not there. An empty text on success, else what is wrong. */
std::string open_captures(probe &agent, const std::string &directory);

/**
 * Saves packets of a buffer in the format of libpcap. saveValue1 is the buffer's
 * bufferControlIndex, saveValue2 and saveValue3 are the first and the last
 * captureBufferIndex (0: from the first, to the last one), saveOption is 0. An
 * older file of the same name is replaced as a whole. Nothing saved: both
 * numbers of the result are 0.
 */
rmonrpc_capture_save_result_t capture_save_file(probe &agent, const rmonrpc_capture_save_key_t &key);
