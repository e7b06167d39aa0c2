#include "agent/rmon1/alarms.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"
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

constexpr uint32_t longest_interval = 24 * 3600; // seconds
constexpr std::size_t longest_variable = 1024;

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

bool nonsense(const rmonrpc_alarm_t &request)
{
    const std::string_view variable = text_of(request.alarmVariable);
    return request.alarmInterval < 1 || request.alarmInterval > longest_interval
           || request.alarmSampleType < absolute_value || request.alarmSampleType > delta_value
           || request.alarmStartupAlarm < startup_rising || request.alarmStartupAlarm > startup_either
           || request.alarmRisingThreshold < request.alarmFallingThreshold
           || request.alarmRisingEventIndex > last_control_index
           || request.alarmFallingEventIndex > last_control_index || variable.size() > longest_variable
           || !is_printable(variable) || !is_printable(text_of(request.alarmOwner));
}

bool changes_fixed(const alarm_row &row, const rmonrpc_alarm_t &request)
{
    return request.alarmInterval != row.interval || text_of(request.alarmVariable) != row.variable
           || request.alarmSampleType != row.sample_type || request.alarmStartupAlarm != row.startup
           || request.alarmRisingThreshold != row.rising_threshold
           || request.alarmFallingThreshold != row.falling_threshold
           || request.alarmRisingEventIndex != row.rising_event
           || request.alarmFallingEventIndex != row.falling_event;
}

void assign(alarm_row &row, const rmonrpc_alarm_t &request)
{
    row.interval = request.alarmInterval;
    row.variable = text_of(request.alarmVariable);
    row.sample_type = request.alarmSampleType;
    row.startup = request.alarmStartupAlarm;
    row.rising_threshold = request.alarmRisingThreshold;
    row.falling_threshold = request.alarmFallingThreshold;
    row.rising_event = request.alarmRisingEventIndex;
    row.falling_event = request.alarmFallingEventIndex;
    row.owner = text_of(request.alarmOwner);
}

int32_t start(probe &agent, alarm_row &row)
{
    const auto reading = read_variable(agent, row.variable);
    if (!reading)
        return bad_value;
    row.value.reset();
    row.may_rise = row.may_fall = true;
    row.last_sampled = grid_ms();
    row.last_reading = reading->value;
    row.sampling = call_at(agent.loop, row.last_sampled + interval_of(row), on_sampling, &agent, &row);
    if (row.sample_type == absolute_value)
        sample(agent, row, *reading, row.last_sampled);
    return no_error;
}

void stop(probe &agent, alarm_row &row)
{
    take_back(agent.loop, row.sampling);
    row.value.reset();
}

constexpr row_rules<alarm_row, rmonrpc_alarm_t> rules{nonsense, changes_fixed, assign, start, stop};

} // namespace

void alarm_describe(rmonrpc_alarm_t &record, int32_t index, const alarm_row &row)
{
    record.alarmIndex = static_cast<uint32_t>(index);
    record.alarmInterval = row.interval;
    set_text(record.alarmVariable, row.variable);
    record.alarmSampleType = row.sample_type;
    record.alarmStartupAlarm = row.startup;
    record.alarmRisingThreshold = row.rising_threshold;
    record.alarmFallingThreshold = row.falling_threshold;
    record.alarmRisingEventIndex = row.rising_event;
    record.alarmFallingEventIndex = row.falling_event;
    set_text(record.alarmOwner, row.owner);
    record.alarmStatus = static_cast<int32_t>(row.status);
}

rmonrpc_alarm_t alarm_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_alarm_t reply{};
    const auto found = find_row(storage<alarm_table>(agent), key.index, key.getType);
    if (found == storage<alarm_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    alarm_describe(reply, found->first, found->second);
    reply.alarmValue = found->second.value.value_or(0);
    return reply;
}

int32_t alarm_set(probe &agent, const rmonrpc_alarm_t &request)
{
    return set_row(
        agent, storage<alarm_table>(agent), signed_index(request.alarmIndex), request.alarmStatus, request,
        rules);
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<alarm_get>(alarm_get_1),
    serve_set<alarm_set>(alarm_set_1),
};

constexpr state_part kept[] = {
    keep_rows<alarm_table, alarm_describe, alarm_set, &rmonrpc_alarm_t::alarmStatus>("alarm"),
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
