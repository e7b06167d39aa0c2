// SPDX-License-Identifier: MIT
#include "agent/rmon1/alarms.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/capture/counting.h"
#include "agent/core/variables.h"
#include "agent/rmon1/events.h"

#include <algorithm>
#include <string>

namespace {

/** What is compared with the thresholds (alarmSampleType): the variable, or by how much it grew. */
constexpr int32_t absolute_value = 1;
constexpr int32_t delta_value = 2;

/** Which alarm the first sample may raise (alarmStartupAlarm). */
constexpr int32_t startup_rising = 1;
constexpr int32_t startup_falling = 2;
constexpr int32_t startup_either = 3;

constexpr int64_t max_interval = 24 * 3600; // seconds
constexpr std::size_t max_variable_octets = 1024;

/* ---- sampling --------------------------------------------------------------------------------- */

std::string describe_crossing(const alarm_row &row, bool rising)
{
    return row.variable + (rising ? " rose to " : " fell to ") + std::to_string(*row.value) + ", threshold "
           + std::to_string(rising ? row.rising_threshold : row.falling_threshold);
}

void compare(probe &agent, alarm_row &row, uint32_t value)
{
    const std::optional<uint32_t> before = row.value;
    row.value = value;
    const bool rises = value >= row.rising_threshold
                       && (before ? *before < row.rising_threshold : row.startup != startup_falling);
    const bool falls = value <= row.falling_threshold
                       && (before ? *before > row.falling_threshold : row.startup != startup_rising);
    const bool rising = rises && row.may_rise;
    const bool falling = falls && row.may_fall;
    if (value >= row.rising_threshold)
        row.may_fall = true;
    if (value <= row.falling_threshold)
        row.may_rise = true;
    if (rising) {
        row.may_rise = false;
        fire_event(agent, row.rising_event, describe_crossing(row, true));
    }
    if (falling) {
        row.may_fall = false;
        fire_event(agent, row.falling_event, describe_crossing(row, false));
    }
}

uint32_t low_32_bits(uint64_t value)
{
    return static_cast<uint32_t>(value);
}

/** By how much a variable grew; a gauge that fell has grown by nothing, a counter that fell began anew. */
uint32_t growth(uint64_t before, const variable_reading &now)
{
    const uint64_t grown = now.value >= before ? now.value - before : now.counter ? now.value : 0;
    return static_cast<uint32_t>(std::min<uint64_t>(grown, UINT32_MAX));
}

/**
 * A growth over the time that an interval has. One that was sampled a little late is what it is; over more
 * than half an interval too long (the process was stopped, the machine slept), what it grew by in an interval
 * on average counts, so that a steady one crosses no threshold for it.
 */
uint32_t growth_in_interval(uint32_t grown, int64_t covered, int64_t interval)
{
    if (covered * 2 <= interval * 3)
        return grown;
    return static_cast<uint32_t>(
        static_cast<double>(grown) * static_cast<double>(interval) / static_cast<double>(covered));
}

int64_t interval_of(const alarm_row &row)
{
    return int64_t{row.interval} * 1000;
}

void sample(probe &agent, alarm_row &row, const variable_reading &now, int64_t at)
{
    const uint64_t before = row.last_reading;
    const int64_t covered = at - row.last_sampled;
    row.last_reading = now.value;
    row.last_sampled = at;
    const uint32_t value = row.sample_type == delta_value
                               ? growth_in_interval(growth(before, now), covered, interval_of(row))
                               : low_32_bits(now.value);
    compare(agent, row, value);
}

/** The alarm of a variable that is no more goes (RFC 2819). */
void on_sampling(void *context, void *of)
{
    auto &agent = *static_cast<probe *>(context);
    auto &row = *static_cast<alarm_row *>(of);
    const auto reading = read_variable(agent, row.variable);
    const int64_t now = grid_ms();
    if (!reading) {
        std::erase_if(storage<alarm_table>(agent), [&](const auto &one) { return &one.second == &row; });
        return;
    }
    row.sampling =
        call_at(agent.loop, next_on_grid(row.sampling.due, interval_of(row), now), on_sampling, &agent, &row);
    sample(agent, row, *reading, now);
}

/* ---- the control table --------------------------------------------------------------------------- */

struct alarm_control_table {
    using table = alarm_table;
    using row = alarm_row;
    using request = rmonrpc_alarm_t;
    static constexpr auto index = &request::alarmIndex;
    static constexpr auto status = &request::alarmStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::alarmInterval, &row::interval>({1, max_interval}),
        fixed<&request::alarmVariable, &row::variable>({.max = max_variable_octets}),
        fixed<&request::alarmSampleType, &row::sample_type>({absolute_value, delta_value}),
        fixed<&request::alarmStartupAlarm, &row::startup>({startup_rising, startup_either}),
        fixed<&request::alarmRisingThreshold, &row::rising_threshold>(),
        fixed<&request::alarmFallingThreshold, &row::falling_threshold>(),
        fixed<&request::alarmRisingEventIndex, &row::rising_event>({0, last_control_index}),
        fixed<&request::alarmFallingEventIndex, &row::falling_event>({0, last_control_index}),
        changeable<&request::alarmOwner, &row::owner>(),
    };

    static bool invalid_request(const request &asked)
    {
        return asked.alarmRisingThreshold < asked.alarmFallingThreshold;
    }

    static int32_t start(probe &agent, row &started)
    {
        const auto reading = read_variable(agent, started.variable);
        if (!reading)
            return bad_value;
        started.value.reset();
        started.may_rise = started.may_fall = true;
        started.last_sampled = grid_ms();
        started.last_reading = reading->value;
        started.sampling =
            call_at(agent.loop, started.last_sampled + interval_of(started), on_sampling, &agent, &started);
        if (started.sample_type == absolute_value)
            sample(agent, started, *reading, started.last_sampled);
        return no_error;
    }

    static void stop(probe &agent, row &stopped)
    {
        take_back(agent.loop, stopped.sampling);
        stopped.value.reset();
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        reply.alarmValue = shown.value.value_or(0);
    }
};

/* ---- the family --------------------------------------------------------------------- */

constexpr auto alarm_get = get_control<alarm_control_table>;

constexpr served_procedure procedures[] = {
    serve<alarm_get>(alarm_get_1),
    serve_set<set_control<alarm_control_table>>(alarm_set_1),
};

constexpr state_part kept[] = {
    keep_rows<alarm_control_table>("alarm"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<alarm_get, one_index, &rmonrpc_alarm_t::alarmValue>("1.3.6.1.2.1.16.3.1.1.5"),
};
// clang-format on

} // namespace

extern const family alarms_family = {
    .name = "alarms",
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
