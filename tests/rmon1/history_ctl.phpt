--TEST--
History control: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers('rmon_history_ctl', 6, 'rmon_ifentry_get', [
    'status' => 'int',
    'historyControlIndex' => 'int',
    'historyControlDataSource' => 'int',
    'historyControlBucketsRequested' => 'int',
    'historyControlBucketsGranted' => 'int',
    'historyControlInterval' => 'int',
    'historyControlOwner' => 'text',
    'historyControlStatus' => 'int',
]);

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
check_writer('rmon_history_ctl_set', 7, 'rmon_histroy_ctl_set', [21, 22, 23, 24, 'an owner', 26], $request, false);

done();
--EXPECT--
OK
