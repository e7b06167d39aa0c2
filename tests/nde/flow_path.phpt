--TEST--
NetFlow flow paths: reads, whose rows do not show the flag, and writes
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/nde.inc';

/** A record with this beginning. */
function flow_path(
    string $head,
    int $datasrcIndex = 0,
    int $inputIndex = 0,
    int $outputIndex = 0,
    string $deviceName = '',
    int $flag = 0,
): string {
    return record(
        head: $head,
        deviceName: name($deviceName),
        datasrcIndex: u32($datasrcIndex),
        inputIndex: i32($inputIndex),
        outputIndex: i32($outputIndex),
        flag: u32($flag),
    );
}

check_device_readers(
    table: 'rmon_nde_flow_path',
    procedure: 163,
    list: 'flowPaths',
    index: 3,
    request: flow_path(...),
    record: fn(int $i) => flow_path(
        head([172, 16, 0, $i, 5], 91, 92, 93),
        0x80000000 + $i,
        -100 - $i,
        -200 - $i,
        "router $i",
        77,
    ),
    shown: fn(int $i) => [
        'address' => [172, 16, 0, $i, 5],
        'addressLength' => 5,
        'deviceName' => "router $i",
        'datasrcIndex' => 0x80000000 + $i,
        'inputIndex' => -100 - $i,
        'outputIndex' => -200 - $i,
    ],
);

foreach ([
    'set' => [1, 'rmon_nde_flow_path_set'], 'del' => [2, 'rmon_nde_datasrc_del'],
] as $form => [$operation, $label]) {
    $function = "rmon_nde_flow_path_$form";
    check_device_writer(
        function: $function,
        others: [7, 8, 9],
        order: ['IndexA', 'IndexB', 'IndexC'],
        procedure: 164,
        operation: $operation,
        request: fn(string $head) => flow_path($head, 7, 8, 9),
        label: $label,
    );
    $bytes = flow_path(head([1], operation: $operation), 0xffffffff, -1, 5);
    expect_exchange(
        function: $function,
        arguments: [[1], -1, 4294967295, '5'],
        procedure: 164,
        request: $bytes,
        step: reply(i32(0)),
        value: 0,
    );
}
done();
--EXPECT--
OK
