--TEST--
Scalars of the address map
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$row = [
    'status' => ['i32', -4],
    'addressMapInserts' => ['u32', 0xfffffff1],
    'addressMapDeletes' => ['u32', 0x80000002],
    'addressMapMaxDesiredEntries' => ['i32', -1],
];
check_function(
    function: 'rmon_addrmap_scalars_get',
    procedure: 27,
    sent: [],
    reply: wire($row),
    value: shown($row),
    label: 'rmon_addrmap_scalars_get',
);

check_writer(
    function: 'rmon_addrmap_scalars_set',
    procedure: 28,
    sent: [
        'status' => ['i32', 0],
        'addressMapInserts' => ['u32', 0],
        'addressMapDeletes' => ['u32', 0],
        'addressMapMaxDesiredEntries' => ['i32', -20],
    ],
    names: ['addressMapMaxDesiredEntries'],
    label: 'rmon_addrmap_scalars_set',
);

done();
--EXPECT--
OK
