--TEST--
Control table of the address map
--FILE--
<?php
require __DIR__ . '/calls.inc';

$bytes = fn(string $owner) => record(
    status: i32(-1),
    addressMapControlIndex: i32(2),
    addressMapControlDataSource: i32(-3),
    addressMapControlDroppedFrames: u32(0xfffffff4),
    addressMapControlOwner: text($owner),
    addressMapControlStatus: i32(6),
);
$row = [
    0 => -1,
    'status' => -1,
    'addressMapControlIndex' => 2,
    'addressMapControlDataSource' => -3,
    'addressMapControlDroppedFrames' => 0xfffffff4,
    'addressMapControlOwner' => 'operator',
    'addressMapControlStatus' => 6,
];
$label = 'addrmap_ctl_get';
$get = ['rmon_addrmap_ctl_get', [77], 29, record(index: i32(77), getType: i32(1))];
$getnext = ['rmon_addrmap_ctl_getnext', [78], 29, record(index: i32(78), getType: i32(2))];
check_row($get, $bytes('operator'), $row, $label);
check_row($getnext, $bytes('operator'), $row, $label);
check_reply($get, $bytes(''), array_replace($row, ['addressMapControlOwner' => '']));
check_order(
    function: ['rmon_addrmap_ctl_get', [], 29, record(index: i32(1), getType: i32(1))],
    kinds: ['int', 'int'],
    before: [1, 2],
    after: [],
    label: $label,
);
check_refused_reply($get, $bytes(str_repeat('m', 256)), $label);

$label = 'rmon_addrmap_ctl_set';
$written = fn(int $index, int $dataSource, string $owner, int $rowStatus) => record(
    status: i32(0),
    addressMapControlIndex: i32($index),
    addressMapControlDataSource: i32($dataSource),
    addressMapControlDroppedFrames: u32(0),
    addressMapControlOwner: text($owner),
    addressMapControlStatus: i32($rowStatus),
);
$arguments = [21, -22, 'an owner', 24];
$set = [$label, $arguments, 30, $written(...$arguments)];
check_integer($set, $label);
check_text(function: $set, position: 2, request: fn(string $owner) => $written(21, -22, $owner, 24), label: $label);
check_order(
    function: [$label, [], 30, $written(1, 1, 'Argument4', 1)],
    kinds: ['int', 'int', 'int', 'text', 'int'],
    before: [1, 2, 3, 4, 5],
    after: [],
    label: $label,
);
done();
?>
--EXPECT--
OK
