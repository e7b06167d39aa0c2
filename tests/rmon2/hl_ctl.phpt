--TEST--
Control tables of the higher-layer hosts and of the higher-layer matrix, which differ in nothing but their names
--FILE--
<?php
require __DIR__ . '/calls.inc';

$bytes = fn(string $owner) => record(
    status: i32(-1),
    ControlIndex: i32(2),
    ControlDataSource: i32(3),
    ControlNlDroppedFrames: u32(0xfffffff4),
    ControlNlInserts: u32(0x80000005),
    ControlNlDeletes: u32(6),
    ControlNlMaxDesiredEntries: i32(-7),
    ControlAlDroppedFrames: u32(0x80000008),
    ControlAlInserts: u32(0xfffffff9),
    ControlAlDeletes: u32(10),
    ControlAlMaxDesiredEntries: i32(-11),
    ControlOwner: text($owner),
    ControlStatus: i32(13),
);
$row = fn(string $table, string $owner) => [
    0 => -1,
    'status' => -1,
    "{$table}ControlIndex" => 2,
    "{$table}ControlDataSource" => 3,
    "{$table}ControlNlDroppedFrames" => 0xfffffff4,
    "{$table}ControlNlInserts" => 0x80000005,
    "{$table}ControlNlDeletes" => 6,
    "{$table}ControlNlMaxDesiredEntries" => -7,
    "{$table}ControlAlDroppedFrames" => 0x80000008,
    "{$table}ControlAlInserts" => 0xfffffff9,
    "{$table}ControlAlDeletes" => 10,
    "{$table}ControlAlMaxDesiredEntries" => -11,
    "{$table}ControlOwner" => $owner,
    "{$table}ControlStatus" => 13,
];
$written = fn(int $index, int $dataSource, int $nlEntries, int $alEntries, string $owner, int $rowStatus) => record(
    status: i32(0),
    ControlIndex: i32($index),
    ControlDataSource: i32($dataSource),
    ControlNlDroppedFrames: u32(0),
    ControlNlInserts: u32(0),
    ControlNlDeletes: u32(0),
    ControlNlMaxDesiredEntries: i32($nlEntries),
    ControlAlDroppedFrames: u32(0),
    ControlAlInserts: u32(0),
    ControlAlDeletes: u32(0),
    ControlAlMaxDesiredEntries: i32($alEntries),
    ControlOwner: text($owner),
    ControlStatus: i32($rowStatus),
);
$arguments = [21, 22, -23, -24, 'an owner', 26];

foreach (['hlHost' => [32, 33], 'hlMatrix' => [35, 36]] as $table => [$read, $write]) {
    $name = strtolower($table);
    $label = "{$name}_ctl_get";
    $get = ["rmon_{$name}_ctl_get", [77], $read, record(index: i32(77), getType: i32(1))];
    $getnext = ["rmon_{$name}_ctl_getnext", [78], $read, record(index: i32(78), getType: i32(2))];
    check_row($get, $bytes('operator'), $row($table, 'operator'), $label);
    check_row($getnext, $bytes('operator'), $row($table, 'operator'), $label);
    check_reply($get, $bytes(''), $row($table, ''));
    check_order(
        function: [$get[0], [], $read, record(index: i32(1), getType: i32(1))],
        kinds: ['int', 'int'],
        before: [1, 2],
        after: [],
        label: $label,
    );
    check_refused_reply($get, $bytes(str_repeat('m', 256)), $label);

    $label = "rmon_{$name}_ctl_set";
    $set = [$label, $arguments, $write, $written(...$arguments)];
    check_integer($set, $label);
    check_text(
        function: $set,
        position: 4,
        request: fn(string $owner) => $written(21, 22, -23, -24, $owner, 26),
        label: $label,
    );
    check_order(
        function: [$label, [], $write, $written(1, 1, 1, 1, 'Argument6', 1)],
        kinds: ['int', 'int', 'int', 'int', 'int', 'text', 'int'],
        before: [1, 2, 3, 4, 5, 6, 7],
        after: [],
        label: $label,
    );
}
done();
?>
--EXPECT--
OK
