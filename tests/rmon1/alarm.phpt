--TEST--
Alarms: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_alarm',
    procedure: 38,
    row: sample([
        'status' => 'i32',
        'alarmIndex' => 'u32',
        'alarmInterval' => 'u32',
        'alarmVariable' => ['text', 'of any length', UNBOUNDED],
        'alarmSampleType' => 'i32',
        'alarmValue' => 'u32',
        'alarmStartupAlarm' => 'i32',
        'alarmRisingThreshold' => 'u32',
        'alarmFallingThreshold' => 'u32',
        'alarmRisingEventIndex' => 'u32',
        'alarmFallingEventIndex' => 'u32',
        'alarmOwner' => 'text',
        'alarmStatus' => 'i32',
    ]),
    label: 'host_ctl_get',
);

// The value is the agent's; the variable may have any length.
check_writer(
    function: 'rmon_alarm_set',
    procedure: 39,
    sent: [
        'status' => ['i32', 0],
        'alarmIndex' => ['u32', 21],
        'alarmInterval' => ['u32', 22],
        'alarmVariable' => ['text', '1.3.6.1.2.1.2.2.1.10.3', UNBOUNDED],
        'alarmSampleType' => ['i32', 24],
        'alarmValue' => ['u32', 0],
        'alarmStartupAlarm' => ['i32', 25],
        'alarmRisingThreshold' => ['u32', 4294967295],
        'alarmFallingThreshold' => ['u32', 27],
        'alarmRisingEventIndex' => ['u32', 28],
        'alarmFallingEventIndex' => ['u32', 29],
        'alarmOwner' => ['text', 'an owner'],
        'alarmStatus' => ['i32', 31],
    ],
    names: [
        'alarmIndex',
        'alarmInterval',
        'alarmVariable',
        'alarmSampleType',
        'alarmStartupAlarm',
        'alarmRisingThreshold',
        'alarmFallingThreshold',
        'alarmRisingEventIndex',
        'alarmFallingEventIndex',
        'alarmOwner',
        'alarmStatus',
    ],
    label: 'rmon_host_ctl_set',
    order: ['Link'],
);

done();
--EXPECT--
OK
