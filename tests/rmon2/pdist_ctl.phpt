--TEST--
Control table of the protocol distribution
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_pdist_ctl',
    procedure: 24,
    row: [
        'status' => ['i32', -1],
        'protocolDistControlIndex' => ['i32', 2],
        'protocolDistControlDataSource' => ['i32', -3],
        'protocolDistControlDroppedFrames' => ['u32', 0xfffffff4],
        'protocolDistControlCreateTime' => ['u32', 0x80000005],
        'protocolDistControlOwner' => ['text', 'operator'],
        'protocolDistControlStatus' => ['i32', 7],
    ],
    label: 'rmon_pdist_ctl_get',
);

// The dropped frames and the time of creation are the agent's.
check_writer(
    function: 'rmon_pdist_ctl_set',
    procedure: 25,
    sent: [
        'status' => ['i32', 0],
        'protocolDistControlIndex' => ['i32', 21],
        'protocolDistControlDataSource' => ['i32', -22],
        'protocolDistControlDroppedFrames' => ['u32', 0],
        'protocolDistControlCreateTime' => ['u32', 0],
        'protocolDistControlOwner' => ['text', 'an owner'],
        'protocolDistControlStatus' => ['i32', 24],
    ],
    names: [
        'protocolDistControlIndex',
        'protocolDistControlDataSource',
        'protocolDistControlOwner',
        'protocolDistControlStatus',
    ],
    label: 'rmon_pdist_ctl_set',
);

done();
--EXPECT--
OK
