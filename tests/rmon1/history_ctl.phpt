--TEST--
History control: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers(
    table: 'rmon_history_ctl',
    procedure: 6,
    label: 'rmon_ifentry_get',
    fields: [
        'status' => 'int',
        'historyControlIndex' => 'int',
        'historyControlDataSource' => 'int',
        'historyControlBucketsRequested' => 'int',
        'historyControlBucketsGranted' => 'int',
        'historyControlInterval' => 'int',
        'historyControlOwner' => 'text',
        'historyControlStatus' => 'int',
    ],
);

// What the agent grants is its own: 0 travels.
$request = fn(int $index, int $source, int $buckets, int $interval, string $owner, int $status) => record(
    status: i32(0),
    historyControlIndex: i32($index),
    historyControlDataSource: i32($source),
    historyControlBucketsRequested: i32($buckets),
    historyControlBucketsGranted: i32(0),
    historyControlInterval: i32($interval),
    historyControlOwner: text($owner),
    historyControlStatus: i32($status),
);
check_writer(
    function: 'rmon_history_ctl_set',
    procedure: 7,
    label: 'rmon_histroy_ctl_set',
    arguments: [21, 22, 23, 24, 'an owner', 26],
    request: $request,
    linkedFirst: false,
);

done();
--EXPECT--
OK
