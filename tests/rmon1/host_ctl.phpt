--TEST--
Hosts' control: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers('rmon_host_ctl', 9, 'host_ctl_get', [
    'status' => 'int',
    'hostControlIndex' => 'int',
    'hostControlDataSource' => 'int',
    'hostControlTableSize' => 'int',
    'hostControlLastDeleteTime' => 'unsigned',
    'hostControlOwner' => 'text',
    'hostControlStatus' => 'int',
]);

// The table's size and the time of the last deletion are the agent's.
$request = fn(int $index, int $source, string $owner, int $status) => record(
    status: i32(0),
    hostControlIndex: i32($index),
    hostControlDataSource: i32($source),
    hostControlTableSize: i32(0),
    hostControlLastDeleteTime: u32(0),
    hostControlOwner: text($owner),
    hostControlStatus: i32($status),
);
check_writer('rmon_host_ctl_set', 10, 'rmon_host_ctl_set', [21, 22, 'an owner', 24], $request, false);

done();
--EXPECT--
OK
