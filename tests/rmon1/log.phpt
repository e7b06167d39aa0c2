--TEST--
The log of events
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'logEventIndex' => 'unsigned',
    'logIndex' => 'unsigned',
    'logTime' => 'unsigned',
    'logDescription' => 'text',
];
check_row_readers('rmon_log', 42, 'host_ctl_get', $fields, indexes: 2);

$key = record(eventIndex: i32(3), logIndex: i32(9), getType: i32(2));
$row = sample($fields);
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
