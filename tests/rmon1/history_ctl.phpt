--TEST--
History control: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_history_ctl',
    procedure: 6,
    label: 'rmon_ifentry_get',
    row: sample([
        'status' => 'i32',
        'historyControlIndex' => 'i32',
        'historyControlDataSource' => 'i32',
        'historyControlBucketsRequested' => 'i32',
        'historyControlBucketsGranted' => 'i32',
        'historyControlInterval' => 'i32',
        'historyControlOwner' => 'text',
        'historyControlStatus' => 'i32',
    ]),
);

// What the agent grants is its own: 0 travels.
check_writer(
    function: 'rmon_history_ctl_set',
    procedure: 7,
    sent: [
        'status' => ['i32', 0],
        'historyControlIndex' => ['i32', 21],
        'historyControlDataSource' => ['i32', 22],
        'historyControlBucketsRequested' => ['i32', 23],
        'historyControlBucketsGranted' => ['i32', 0],
        'historyControlInterval' => ['i32', 24],
        'historyControlOwner' => ['text', 'an owner'],
        'historyControlStatus' => ['i32', 26],
    ],
    names: [
        'historyControlIndex',
        'historyControlDataSource',
        'historyControlBucketsRequested',
        'historyControlInterval',
        'historyControlOwner',
        'historyControlStatus',
    ],
    label: 'rmon_histroy_ctl_set',
);

done();
--EXPECT--
OK
