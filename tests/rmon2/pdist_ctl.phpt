--TEST--
Control table of the protocol distribution
--FILE--
<?php
require __DIR__ . '/calls.inc';

$bytes = fn(string $owner) => record(
    status: i32(-1),
    protocolDistControlIndex: i32(2),
    protocolDistControlDataSource: i32(-3),
    protocolDistControlDroppedFrames: u32(0xfffffff4),
    protocolDistControlCreateTime: u32(0x80000005),
    protocolDistControlOwner: text($owner),
    protocolDistControlStatus: i32(7),
);
$row = [
    0 => -1,
    'status' => -1,
    'protocolDistControlIndex' => 2,
    'protocolDistControlDataSource' => -3,
    'protocolDistControlDroppedFrames' => 0xfffffff4,
    'protocolDistControlCreateTime' => 0x80000005,
    'protocolDistControlOwner' => 'operator',
    'protocolDistControlStatus' => 7,
];
$label = 'rmon_pdist_ctl_get';
$get = ['rmon_pdist_ctl_get', [77], 24, record(index: i32(77), getType: i32(1))];
$getnext = ['rmon_pdist_ctl_getnext', [78], 24, record(index: i32(78), getType: i32(2))];
check_row($get, $bytes('operator'), $row, $label);
check_row($getnext, $bytes('operator'), $row, $label);
check_order(
    function: ['rmon_pdist_ctl_get', [], 24, record(index: i32(1), getType: i32(1))],
    kinds: ['int', 'int'],
    before: [1, 2],
    after: [],
    label: $label,
);
check_refused_reply($get, $bytes(str_repeat('m', 256)), $label);

// An empty owner is not a missing one.
check_reply($get, $bytes(''), array_replace($row, ['protocolDistControlOwner' => '']));

$label = 'rmon_pdist_ctl_set';
$written = fn(int $index, int $dataSource, string $owner, int $rowStatus) => record(
    status: i32(0),
    protocolDistControlIndex: i32($index),
    protocolDistControlDataSource: i32($dataSource),
    protocolDistControlDroppedFrames: u32(0),
    protocolDistControlCreateTime: u32(0),
    protocolDistControlOwner: text($owner),
    protocolDistControlStatus: i32($rowStatus),
);
$arguments = [21, -22, 'an owner', 24];
$set = [$label, $arguments, 25, $written(...$arguments)];
check_integer($set, $label);
check_text(function: $set, position: 2, request: fn(string $owner) => $written(21, -22, $owner, 24), label: $label);
check_order(
    function: [$label, [], 25, $written(1, 1, 'Argument4', 1)],
    kinds: ['int', 'int', 'int', 'text', 'int'],
    before: [1, 2, 3, 4, 5],
    after: [],
    label: $label,
);
done();
?>
--EXPECT--
OK
