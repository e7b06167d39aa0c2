<?php
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

expect_readers(
    'rmon_nde_datasrc',
    161,
    'datasrcs',
    1,
    datasrc(...),
    fn(int $i) => datasrc(head([192, 168, $i], 91, 92, 93), 0xffffff00 + $i, "uplink $i", "router $i", 0x90000000 + $i),
    fn(int $i) => [
        'address' => [192, 168, $i],
        'addressLength' => 3,
        'deviceName' => "router $i",
        'datasrcName' => "uplink $i",
        'datasrcIndex' => 0xffffff00 + $i,
        'flag' => 0x90000000 + $i,
    ],
);

expect_writer(
    'rmon_nde_datasrc_set',
    ['uplink'],
    ['Name as text'],
    162,
    1,
    fn(string $head) => datasrc($head, 0, 'uplink'),
    'rmon_nde_datasrc_set',
);
// A change reports its failure as a deletion does.
expect_writer(
    'rmon_nde_datasrc_mod',
    [7, 'uplink'],
    ['Index', 'Name as text'],
    162,
    1,
    fn(string $head) => datasrc($head, 7, 'uplink'),
    'rmon_nde_datasrc_del',
);
expect_writer(
    'rmon_nde_datasrc_del',
    [7],
    ['Index'],
    162,
    2,
    fn(string $head) => datasrc($head, 7),
    'rmon_nde_datasrc_del',
);

$text = str_repeat('0123456789', 9);
foreach ([79, 80, 81, 90] as $length) {
    $sent = substr($text, 0, min($length, 80));
    $passed = substr($text, 0, $length);
    $head = head([1], operation: 1);
    expect_exchange('rmon_nde_datasrc_set', [[1], $passed], 162, datasrc($head, 0, $sent), reply(i32(0)), 0);
    expect_exchange('rmon_nde_datasrc_mod', [[1], -2, $passed], 162, datasrc($head, 0xfffffffe, $sent), reply(i32(0)), 0);
}

// The connection dies during a call.
the_agent()->add(hang_up());
[$value, $messages] = warnings(fn() => rmon_nde_datasrc_mod(the_link(), [1], 7, 'uplink'));
expect_same(false, $value);
expect_same(1, count($messages));
expect_same('rmon_nde_datasrc_del: RPC: ', substr($messages[0][1], 0, 27));
done();
