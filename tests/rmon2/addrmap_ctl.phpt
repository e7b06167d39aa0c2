--TEST--
Control table of the address map
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_addrmap_ctl',
    procedure: 29,
    row: [
        'status' => ['i32', -1],
        'addressMapControlIndex' => ['i32', 2],
        'addressMapControlDataSource' => ['i32', -3],
        'addressMapControlDroppedFrames' => ['u32', 0xfffffff4],
        'addressMapControlOwner' => ['text', 'operator'],
        'addressMapControlStatus' => ['i32', 6],
    ],
    label: 'addrmap_ctl_get',
);

// The dropped frames are the agent's.
check_writer(
    function: 'rmon_addrmap_ctl_set',
    procedure: 30,
    sent: [
        'status' => ['i32', 0],
        'addressMapControlIndex' => ['i32', 21],
        'addressMapControlDataSource' => ['i32', -22],
        'addressMapControlDroppedFrames' => ['u32', 0],
        'addressMapControlOwner' => ['text', 'an owner'],
        'addressMapControlStatus' => ['i32', 24],
    ],
    names: [
        'addressMapControlIndex',
        'addressMapControlDataSource',
        'addressMapControlOwner',
        'addressMapControlStatus',
    ],
    label: 'rmon_addrmap_ctl_set',
);

done();
--EXPECT--
OK
