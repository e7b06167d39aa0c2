--TEST--
The log of events
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$row = sample([
    'status' => 'i32',
    'logEventIndex' => 'u32',
    'logIndex' => 'u32',
    'logTime' => 'u32',
    'logDescription' => 'text',
]);
check_row_readers(
    table: 'rmon_log',
    procedure: 42,
    row: $row,
    label: 'host_ctl_get',
    key: TWO_INDEXES,
);

$key = record(eventIndex: i32(3), logIndex: i32(9), getType: i32(2));
expect_exchange(
    function: 'rmon_log_getnext',
    arguments: [3, 9],
    procedure: 42,
    request: $key,
    step: reply(wire($row)),
    value: shown($row),
);

done();
--EXPECT--
OK
