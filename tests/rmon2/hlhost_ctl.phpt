--TEST--
Control table of the higher-layer hosts
--FILE--
<?php
require __DIR__ . '/calls.inc';

$bytes = fn(string $owner) => record(
    status: i32(-1),
    hlHostControlIndex: i32(2),
    hlHostControlDataSource: i32(3),
    hlHostControlNlDroppedFrames: u32(0xfffffff4),
    hlHostControlNlInserts: u32(0x80000005),
    hlHostControlNlDeletes: u32(6),
    hlHostControlNlMaxDesiredEntries: i32(-7),
    hlHostControlAlDroppedFrames: u32(0x80000008),
    hlHostControlAlInserts: u32(0xfffffff9),
    hlHostControlAlDeletes: u32(10),
    hlHostControlAlMaxDesiredEntries: i32(-11),
    hlHostControlOwner: text($owner),
    hlHostControlStatus: i32(13),
);
$row = [
    0 => -1,
    'status' => -1,
    'hlHostControlIndex' => 2,
    'hlHostControlDataSource' => 3,
    'hlHostControlNlDroppedFrames' => 0xfffffff4,
    'hlHostControlNlInserts' => 0x80000005,
    'hlHostControlNlDeletes' => 6,
    'hlHostControlNlMaxDesiredEntries' => -7,
    'hlHostControlAlDroppedFrames' => 0x80000008,
    'hlHostControlAlInserts' => 0xfffffff9,
    'hlHostControlAlDeletes' => 10,
    'hlHostControlAlMaxDesiredEntries' => -11,
    'hlHostControlOwner' => 'operator',
    'hlHostControlStatus' => 13,
];
$label = 'hlhost_ctl_get';
$get = ['rmon_hlhost_ctl_get', [77], 32, record(index: i32(77), getType: i32(1))];
$getnext = ['rmon_hlhost_ctl_getnext', [78], 32, record(index: i32(78), getType: i32(2))];
check_row($get, $bytes('operator'), $row, $label);
check_row($getnext, $bytes('operator'), $row, $label);
check_reply($get, $bytes(''), array_replace($row, ['hlHostControlOwner' => '']));
check_refused_reply($get, $bytes(str_repeat('m', 256)), $label);

$label = 'rmon_hlhost_ctl_set';
$written = fn(int $index, int $dataSource, int $nlEntries, int $alEntries, string $owner, int $rowStatus) => record(
    status: i32(0),
    hlHostControlIndex: i32($index),
    hlHostControlDataSource: i32($dataSource),
    hlHostControlNlDroppedFrames: u32(0),
    hlHostControlNlInserts: u32(0),
    hlHostControlNlDeletes: u32(0),
    hlHostControlNlMaxDesiredEntries: i32($nlEntries),
    hlHostControlAlDroppedFrames: u32(0),
    hlHostControlAlInserts: u32(0),
    hlHostControlAlDeletes: u32(0),
    hlHostControlAlMaxDesiredEntries: i32($alEntries),
    hlHostControlOwner: text($owner),
    hlHostControlStatus: i32($rowStatus),
);
$arguments = [21, 22, -23, -24, 'an owner', 26];
$set = [$label, $arguments, 33, $written(...$arguments)];
check_integer($set, $label);
check_text($set, 4, fn(string $owner) => $written(21, 22, -23, -24, $owner, 26), $label);
check_order([$label, [], 33, $written(1, 1, 1, 1, 'Argument6', 1)], 'iiiiiti', [1, 2, 3, 4, 5, 6, 7], [], $label);
done();
?>
--EXPECT--
OK
