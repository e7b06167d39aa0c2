--TEST--
NetFlow data sources: reads and writes
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/nde.inc';

/** A record with this beginning. */
function datasrc(
    string $head,
    int $datasrcIndex = 0,
    string $datasrcName = '',
    string $deviceName = '',
    int $flag = 0,
): string {
    return record(
        head: $head,
        deviceName: name($deviceName),
        datasrcName: name($datasrcName),
        datasrcIndex: u32($datasrcIndex),
        flag: u32($flag),
    );
}

check_device_readers(
    table: 'rmon_nde_datasrc',
    procedure: 161,
    list: 'datasrcs',
    index: 1,
    request: datasrc(...),
    record: fn(int $i) => datasrc(
        head([192, 168, $i], 91, 92, 93),
        0xffffff00 + $i,
        "uplink $i",
        "router $i",
        0x90000000 + $i,
    ),
    shown: fn(int $i) => [
        'address' => [192, 168, $i],
        'addressLength' => 3,
        'deviceName' => "router $i",
        'datasrcName' => "uplink $i",
        'datasrcIndex' => 0xffffff00 + $i,
        'flag' => 0x90000000 + $i,
    ],
);

check_device_writer(
    function: 'rmon_nde_datasrc_set',
    others: ['uplink'],
    order: ['Name as text'],
    procedure: 162,
    operation: 1,
    request: fn(string $head) => datasrc($head, 0, 'uplink'),
    label: 'rmon_nde_datasrc_set',
);
// A change reports its failure as a deletion does.
check_device_writer(
    function: 'rmon_nde_datasrc_mod',
    others: [7, 'uplink'],
    order: ['Index', 'Name as text'],
    procedure: 162,
    operation: 1,
    request: fn(string $head) => datasrc($head, 7, 'uplink'),
    label: 'rmon_nde_datasrc_del',
);
check_device_writer(
    function: 'rmon_nde_datasrc_del',
    others: [7],
    order: ['Index'],
    procedure: 162,
    operation: 2,
    request: fn(string $head) => datasrc($head, 7),
    label: 'rmon_nde_datasrc_del',
);

$text = str_repeat('0123456789', 9);
foreach ([79, 80, 81, 90] as $length) {
    $sent = substr($text, 0, min($length, 80));
    $passed = substr($text, 0, $length);
    $head = head([1], operation: 1);
    expect_exchange(
        function: 'rmon_nde_datasrc_set',
        arguments: [[1], $passed],
        procedure: 162,
        request: datasrc($head, 0, $sent),
        step: reply(i32(0)),
        value: 0,
    );
    expect_exchange(
        function: 'rmon_nde_datasrc_mod',
        arguments: [[1], -2, $passed],
        procedure: 162,
        request: datasrc($head, 0xfffffffe, $sent),
        step: reply(i32(0)),
        value: 0,
    );
}

// The connection dies during a call.
the_agent()->add(hang_up());
[$value, $messages] = warnings(fn() => rmon_nde_datasrc_mod(the_link(), [1], 7, 'uplink'));
expect_same(false, $value);
expect_same(1, count($messages));
expect_same('rmon_nde_datasrc_del: RPC: ', substr($messages[0][1], 0, 27));
done();
--EXPECT--
OK
