// SPDX-License-Identifier: MIT
#include "agent/capture/probe.h"

#include "agent/core/log.h"
#include "agent/rpc/procedures.h"

#include <ctime>

namespace {

/** Hundredths of a second, the time that the machine slept included. */
int64_t hundredths()
{
    timespec now;
    clock_gettime(CLOCK_BOOTTIME, &now);
    return int64_t{now.tv_sec} * 100 + now.tv_nsec / 10000000;
}

/** How long a reading of the clock is good for. */
constexpr int64_t fresh_microseconds = 5000;
constexpr uint32_t fresh_uses = 32;

} // namespace

const stored_objects &stored_objects_of(const probe &agent)
{
    return agent.stored;
}

state_store &state_store_of(probe &agent)
{
    return agent.state;
}

void note_change(probe &agent)
{
    agent.state.set = true;
}

event_loop &loop_of(probe &agent)
{
    return agent.loop;
}

source_table &source_table_of(probe &agent)
{
    return agent.sources;
}

void start_clock(probe &agent)
{
    agent.started = hundredths();
}

uint32_t up_time(const probe &agent)
{
    return static_cast<uint32_t>(hundredths() - agent.started);
}

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

void tell_of_silence(const probe &agent, int32_t data_source, std::string_view table, int32_t index)
{
    const auto iface = agent.interfaces.rows.find(data_source);
    const auto source = agent.sources.rows.find(data_source);
    if (iface == agent.interfaces.rows.end())
        return;
    const bool capturing = source != agent.sources.rows.end()
                               ? source->second.capturing
                               : agent.sources.may_capture || iface->second.file;
    if (!capturing)
        say(log_level::warning, std::string(table) + ' ' + std::to_string(index)
                                    + " counts nothing: there is no capture on " + iface->second.name);
}
