--TEST--
NetFlow flow paths: reads, whose rows hide the flag, and writes
--FILE--
<?php
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

expect_readers(
    'rmon_nde_flow_path',
    163,
    'flowPaths',
    3,
    flow_path(...),
    fn(int $i) => flow_path(head([172, 16, 0, $i, 5], 91, 92, 93), 0x80000000 + $i, -100 - $i, -200 - $i, "router $i", 77),
    fn(int $i) => [
        'address' => [172, 16, 0, $i, 5],
        'addressLength' => 5,
        'deviceName' => "router $i",
        'datasrcIndex' => 0x80000000 + $i,
        'inputIndex' => -100 - $i,
        'outputIndex' => -200 - $i,
    ],
);

foreach (['set' => [1, 'rmon_nde_flow_path_set'], 'del' => [2, 'rmon_nde_datasrc_del']] as $form => [$operation, $label]) {
    $function = "rmon_nde_flow_path_$form";
    expect_writer(
        $function,
        [7, 8, 9],
        ['IndexA', 'IndexB', 'IndexC'],
        164,
        $operation,
        fn(string $head) => flow_path($head, 7, 8, 9),
        $label,
    );
    $bytes = flow_path(head([1], operation: $operation), 0xffffffff, -1, 5);
    expect_exchange($function, [[1], -1, 4294967295, '5'], 164, $bytes, reply(i32(0)), 0);
}
done();
--EXPECT--
OK
