--TEST--
Top-N control: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_hosttopn_ctl',
    procedure: 13,
    label: 'hosttopn_ctl_get',
    row: sample([
        'status' => 'i32',
        'hostTopNControlIndex' => 'i32',
        'hostTopNHostIndex' => 'i32',
        'hostTopNRateBase' => 'i32',
        'hostTopNTimeRemaining' => 'i32',
        'hostTopNDuration' => 'i32',
        'hostTopNRequestedSize' => 'i32',
        'hostTopNGrantedSize' => 'i32',
        'hostTopNStartTime' => 'u32',
        'hostTopNOwner' => 'text',
        'hostTopNStatus' => 'i32',
    ]),
);

// The duration, the granted size and the start time are the agent's.
check_writer(
    function: 'rmon_hosttopn_ctl_set',
    procedure: 14,
    sent: [
        'status' => ['i32', 0],
        'hostTopNControlIndex' => ['i32', 21],
        'hostTopNHostIndex' => ['i32', 22],
        'hostTopNRateBase' => ['i32', 23],
        'hostTopNTimeRemaining' => ['i32', 24],
        'hostTopNDuration' => ['i32', 0],
        'hostTopNRequestedSize' => ['i32', 25],
        'hostTopNGrantedSize' => ['i32', 0],
        'hostTopNStartTime' => ['u32', 0],
        'hostTopNOwner' => ['text', 'an owner'],
        'hostTopNStatus' => ['i32', 27],
    ],
    names: [
        'hostTopNControlIndex',
        'hostTopNHostIndex',
        'hostTopNRateBase',
        'hostTopNTimeRemaining',
        'hostTopNRequestedSize',
        'hostTopNOwner',
        'hostTopNStatus',
    ],
    label: 'rmon_hosttopn_ctl_set',
);

done();
--EXPECT--
OK
