/* sysUpTime for what happens with every frame, where asking the system's clock each time costs too much. */
#pragma once

#include "agent/capture/frame.h"

#include <cstdint>

struct probe;

struct frame_clock {
    int64_t frame_time = 0; // of the frame for which the clock was asked, microseconds
    uint32_t up_time = 0;   // what it said
    uint32_t uses = 0;      // since then
};

/** sysUpTime of a frame that is counted now, older than 5 ms only where 256 counters or less saw frames
 * since. */
uint32_t frame_time(probe &agent, const frame &seen);
