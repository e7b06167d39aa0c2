--TEST--
Scalars of the address map
--FILE--
<?php
require __DIR__ . '/calls.inc';

check_row(
    ['rmon_addrmap_scalars_get', [], 27, ''],
    record(
        status: i32(-4),
        addressMapInserts: u32(0xfffffff1),
        addressMapDeletes: u32(0x80000002),
        addressMapMaxDesiredEntries: i32(-1),
    ),
    [
        0 => -4,
        'status' => -4,
        'addressMapInserts' => 0xfffffff1,
        'addressMapDeletes' => 0x80000002,
        'addressMapMaxDesiredEntries' => -1,
    ],
    'rmon_addrmap_scalars_get',
);

$label = 'rmon_addrmap_scalars_set';
$written = fn(int $entries) => record(
    status: i32(0),
    addressMapInserts: u32(0),
    addressMapDeletes: u32(0),
    addressMapMaxDesiredEntries: i32($entries),
);
check_integer([$label, [-20], 28, $written(-20)], $label);
check_order(
    function: [$label, [], 28, $written(1)],
    kinds: ['int', 'int'],
    before: [1, 2],
    after: [],
    label: $label,
);
done();
?>
--EXPECT--
OK
