--TEST--
Alarms: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'alarmIndex' => 'unsigned',
    'alarmInterval' => 'unsigned',
    'alarmVariable' => 'text',
    'alarmSampleType' => 'int',
    'alarmValue' => 'unsigned',
    'alarmStartupAlarm' => 'int',
    'alarmRisingThreshold' => 'unsigned',
    'alarmFallingThreshold' => 'unsigned',
    'alarmRisingEventIndex' => 'unsigned',
    'alarmFallingEventIndex' => 'unsigned',
    'alarmOwner' => 'text',
    'alarmStatus' => 'int',
];
check_row_readers('rmon_alarm', 38, 'host_ctl_get', $fields, unbounded: ['alarmVariable']);

// The value is the agent's; the variable may have any length.
$request = fn(
    int $index,
    int $interval,
    string $variable,
    int $sampleType,
    int $startup,
    int $rising,
    int $falling,
    int $risingEvent,
    int $fallingEvent,
    string $owner,
    int $status,
) => record(
    status: i32(0),
    alarmIndex: u32($index),
    alarmInterval: u32($interval),
    alarmVariable: text($variable),
    alarmSampleType: i32($sampleType),
    alarmValue: u32(0),
    alarmStartupAlarm: i32($startup),
    alarmRisingThreshold: u32($rising),
    alarmFallingThreshold: u32($falling),
    alarmRisingEventIndex: u32($risingEvent),
    alarmFallingEventIndex: u32($fallingEvent),
    alarmOwner: text($owner),
    alarmStatus: i32($status),
);
$arguments = [21, 22, '1.3.6.1.2.1.2.2.1.10.3', 24, 25, 4294967295, 27, 28, 29, 'an owner', 31];
check_writer(
    function: 'rmon_alarm_set',
    procedure: 39,
    label: 'rmon_host_ctl_set',
    arguments: $arguments,
    request: $request,
    linkedFirst: true,
    unbounded: [2],
);

done();
--EXPECT--
OK
