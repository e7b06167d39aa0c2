--TEST--
Top-N control: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers(
    table: 'rmon_hosttopn_ctl',
    procedure: 13,
    label: 'hosttopn_ctl_get',
    fields: [
        'status' => 'int',
        'hostTopNControlIndex' => 'int',
        'hostTopNHostIndex' => 'int',
        'hostTopNRateBase' => 'int',
        'hostTopNTimeRemaining' => 'int',
        'hostTopNDuration' => 'int',
        'hostTopNRequestedSize' => 'int',
        'hostTopNGrantedSize' => 'int',
        'hostTopNStartTime' => 'unsigned',
        'hostTopNOwner' => 'text',
        'hostTopNStatus' => 'int',
    ],
);

// The duration, the granted size and the start time are the agent's.
$request = fn(int $index, int $host, int $base, int $remaining, int $size, string $owner, int $status) => record(
    status: i32(0),
    hostTopNControlIndex: i32($index),
    hostTopNHostIndex: i32($host),
    hostTopNRateBase: i32($base),
    hostTopNTimeRemaining: i32($remaining),
    hostTopNDuration: i32(0),
    hostTopNRequestedSize: i32($size),
    hostTopNGrantedSize: i32(0),
    hostTopNStartTime: u32(0),
    hostTopNOwner: text($owner),
    hostTopNStatus: i32($status),
);
$arguments = [21, 22, 23, 24, 25, 'an owner', 27];
check_writer(
    function: 'rmon_hosttopn_ctl_set',
    procedure: 14,
    label: 'rmon_hosttopn_ctl_set',
    arguments: $arguments,
    request: $request,
    linkedFirst: false,
);

done();
--EXPECT--
OK
