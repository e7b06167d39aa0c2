<?php
require __DIR__ . '/calls.inc';

$bytes = fn(string $owner) => record(
    status: i32(-1),
    hlMatrixControlIndex: i32(2),
    hlMatrixControlDataSource: i32(3),
    hlMatrixControlNlDroppedFrames: u32(0xfffffff4),
    hlMatrixControlNlInserts: u32(0x80000005),
    hlMatrixControlNlDeletes: u32(6),
    hlMatrixControlNlMaxDesiredEntries: i32(-7),
    hlMatrixControlAlDroppedFrames: u32(0x80000008),
    hlMatrixControlAlInserts: u32(0xfffffff9),
    hlMatrixControlAlDeletes: u32(10),
    hlMatrixControlAlMaxDesiredEntries: i32(-11),
    hlMatrixControlOwner: text($owner),
    hlMatrixControlStatus: i32(13),
);
$row = [
    0 => -1,
    'status' => -1,
    'hlMatrixControlIndex' => 2,
    'hlMatrixControlDataSource' => 3,
    'hlMatrixControlNlDroppedFrames' => 0xfffffff4,
    'hlMatrixControlNlInserts' => 0x80000005,
    'hlMatrixControlNlDeletes' => 6,
    'hlMatrixControlNlMaxDesiredEntries' => -7,
    'hlMatrixControlAlDroppedFrames' => 0x80000008,
    'hlMatrixControlAlInserts' => 0xfffffff9,
    'hlMatrixControlAlDeletes' => 10,
    'hlMatrixControlAlMaxDesiredEntries' => -11,
    'hlMatrixControlOwner' => 'operator',
    'hlMatrixControlStatus' => 13,
];
$label = 'hlmatrix_ctl_get';
$get = ['rmon_hlmatrix_ctl_get', [77], 35, record(index: i32(77), getType: i32(1))];
$getnext = ['rmon_hlmatrix_ctl_getnext', [78], 35, record(index: i32(78), getType: i32(2))];
check_row($get, $bytes('operator'), $row, $label);
check_row($getnext, $bytes('operator'), $row, $label);
check_reply($get, $bytes(''), array_replace($row, ['hlMatrixControlOwner' => '']));
check_refused_reply($get, $bytes(str_repeat('m', 256)), $label);

$label = 'rmon_hlmatrix_ctl_set';
$written = fn(int $index, int $dataSource, int $nlEntries, int $alEntries, string $owner, int $rowStatus) => record(
    status: i32(0),
    hlMatrixControlIndex: i32($index),
    hlMatrixControlDataSource: i32($dataSource),
    hlMatrixControlNlDroppedFrames: u32(0),
    hlMatrixControlNlInserts: u32(0),
    hlMatrixControlNlDeletes: u32(0),
    hlMatrixControlNlMaxDesiredEntries: i32($nlEntries),
    hlMatrixControlAlDroppedFrames: u32(0),
    hlMatrixControlAlInserts: u32(0),
    hlMatrixControlAlDeletes: u32(0),
    hlMatrixControlAlMaxDesiredEntries: i32($alEntries),
    hlMatrixControlOwner: text($owner),
    hlMatrixControlStatus: i32($rowStatus),
);
$arguments = [21, 22, -23, -24, 'an owner', 26];
$set = [$label, $arguments, 36, $written(...$arguments)];
check_integer($set, $label);
check_text($set, 4, fn(string $owner) => $written(21, 22, -23, -24, $owner, 26), $label);
check_order([$label, [], 36, $written(1, 1, 1, 1, 'Argument6', 1)], 'iiiiiti', [1, 2, 3, 4, 5, 6, 7], [], $label);
done();
?>
