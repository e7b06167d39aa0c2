#include "agent/capture/frame_clock.h"

#include "agent/capture/probe.h"

namespace {

constexpr int64_t fresh_microseconds = 5000;
constexpr uint32_t fresh_uses = 256;

} // namespace

uint32_t frame_time(probe &agent, const frame &seen)
{
    frame_clock &clock = agent.frame_clock;
    const int64_t since = seen.time - clock.frame_time;
    if (since >= 0 && since < fresh_microseconds && clock.uses < fresh_uses) {
        clock.uses++;
        return clock.up_time;
    }
    clock = {seen.time, up_time(agent), 0};
    return clock.up_time;
}
