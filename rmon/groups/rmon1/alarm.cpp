// SPDX-License-Identifier: MIT
/*
 * Alarms, events and the log of events (RFC 2819, alarmTable, eventTable and
 * logTable). All report under the labels of the hosts' control table.
 */

#include "rmon/answers.h"

using namespace rmon;

namespace {

constexpr const char *read_label = "host_ctl_get";
constexpr const char *write_label = "rmon_host_ctl_set";

using A = rmonrpc_alarm_t;

using alarm_row = row_shape<
    status<&A::status>,
    field<&A::alarmIndex>,
    field<&A::alarmInterval>,
    field<&A::alarmVariable>,
    field<&A::alarmSampleType>,
    field<&A::alarmValue>,
    field<&A::alarmStartupAlarm>,
    field<&A::alarmRisingThreshold>,
    field<&A::alarmFallingThreshold>,
    field<&A::alarmRisingEventIndex>,
    field<&A::alarmFallingEventIndex>,
    field<&A::alarmOwner>,
    field<&A::alarmStatus>>;

void alarm_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<alarm_row>(call, ask(call, alarm_get_1, link, key, read_label));
}

using E = rmonrpc_event_t;

using event_row = row_shape<
    status<&E::status>,
    field<&E::eventIndex>,
    field<&E::eventDescription>,
    field<&E::eventType>,
    field<&E::eventCommunity>,
    field<&E::eventLastTimeSent>,
    field<&E::eventOwner>,
    field<&E::eventStatus>>;

void event_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<event_row>(call, ask(call, event_get_1, link, key, read_label));
}

using L = rmonrpc_log_t;

using log_row = row_shape<
    status<&L::status>,
    field<&L::logEventIndex>,
    field<&L::logIndex>,
    field<&L::logTime>,
    field<&L::logDescription>>;

void log_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key3_t key{0, 0, getType};
    if (take(call, link, key.index1, key.index2))
        return_row<log_row>(call, ask(call, log_get_1, link, key, read_label));
}

} // namespace

PHP_FUNCTION(rmon_alarm_get) { alarm_get(CALL, GET); }
PHP_FUNCTION(rmon_alarm_getnext) { alarm_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_alarm_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    A row{};
    if (take_linked(
            call, link, row.alarmIndex, row.alarmInterval, row.alarmVariable, row.alarmSampleType,
            row.alarmStartupAlarm, row.alarmRisingThreshold, row.alarmFallingThreshold,
            row.alarmRisingEventIndex, row.alarmFallingEventIndex, row.alarmOwner, row.alarmStatus))
        return_integer(call, ask(call, alarm_set_1, link, row, write_label));
}

PHP_FUNCTION(rmon_event_get) { event_get(CALL, GET); }
PHP_FUNCTION(rmon_event_getnext) { event_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_event_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    E row{};
    if (take_linked(
            call, link, row.eventIndex, row.eventDescription, row.eventType, row.eventCommunity,
            row.eventOwner, row.eventStatus))
        return_integer(call, ask(call, event_set_1, link, row, write_label));
}

PHP_FUNCTION(rmon_log_get) { log_get(CALL, GET); }
PHP_FUNCTION(rmon_log_getnext) { log_get(CALL, GETNEXT); }
