--TEST--
Hosts' control: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers(
    table: 'rmon_host_ctl',
    procedure: 9,
    label: 'host_ctl_get',
    fields: [
        'status' => 'int',
        'hostControlIndex' => 'int',
        'hostControlDataSource' => 'int',
        'hostControlTableSize' => 'int',
        'hostControlLastDeleteTime' => 'unsigned',
        'hostControlOwner' => 'text',
        'hostControlStatus' => 'int',
    ],
);

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
check_writer(
    function: 'rmon_host_ctl_set',
    procedure: 10,
    label: 'rmon_host_ctl_set',
    arguments: [21, 22, 'an owner', 24],
    request: $request,
    linkedFirst: false,
);

done();
--EXPECT--
OK
