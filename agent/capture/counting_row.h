// SPDX-License-Identifier: MIT
/*
 * Control rows that count the frames of a data source.
 *
 * What a row counts lives in its work, on the heap: it begins when the row
 * becomes valid, ends when the row is valid no more, and does not move
 * meanwhile, so that the source can hand it each frame.
 */
#pragma once

#include "agent/core/row_status.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

template <class Work> struct counting_row {
    int32_t data_source = 0; // ifIndex
    std::string owner;
    row_status status = row_status::under_creation;
    uint32_t create_time = 0;   // sysUpTime when the row became valid
    std::shared_ptr<Work> work; // null while it does not count
};
