--TEST--
NetFlow: learned devices, their interfaces, and switching learning on and off
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/nde.inc';

function learned_dev(string $head, int $timeLastNdePkt = 0, int $numNdePkts = 0): string
{
    return record(head: $head, timeLastNdePkt: u32($timeLastNdePkt), numNdePkts: u32($numNdePkts));
}

function learned_dev_intf(string $head, int $ifIndex = 0, int $dirFlag = 0): string
{
    return record(head: $head, ifIndex: i32($ifIndex), dirFlag: i32($dirFlag));
}

check_device_readers(
    table: 'rmon_nde_learned_dev',
    procedure: 165,
    list: 'devices',
    index: 0,
    request: learned_dev(...),
    record: fn(int $i) => learned_dev(head([10, 2, 3, $i], 91, 92, 93), 0x80000000 + $i, 0xffffff00 + $i),
    shown: fn(int $i) => [
        'address' => [10, 2, 3, $i],
        'addressLength' => 4,
        'timeLastNdePkt' => 0x80000000 + $i,
        'numNdePkts' => 0xffffff00 + $i,
    ],
);
check_device_readers(
    table: 'rmon_nde_learned_dev_intf',
    procedure: 170,
    list: 'interfaces',
    index: 1,
    request: learned_dev_intf(...),
    record: fn(int $i) => learned_dev_intf(head([10, 2, 3, 4], 91, 92, 93), -500 - $i, -3 - $i),
    shown: fn(int $i) => ['ifIndex' => -500 - $i, 'dirFlag' => -3 - $i],
);
$bytes = learned_dev_intf(head([1], 1, 1), -1);
expect_exchange(
    function: 'rmon_nde_learned_dev_intf_get',
    arguments: [[1], 4294967295],
    procedure: 170,
    request: $bytes,
    step: reply(rows()),
    value: ['interfaces' => []],
);

foreach (['rmon_nde_learned_dev_enable' => 166, 'rmon_nde_learned_dev_disable' => 167] as $function => $procedure) {
    expect_answers(function: $function, arguments: [], procedure: $procedure, request: '', label: $function);
    expect_counts($function, 1, 1);
    expect_links_only($function, []);
    expect_order($function, ['Link'], ['Link']);
}

$function = 'rmon_nde_learned_dev_status';
$status = record(state: i32(-2), startTime: u32(0x87654321));
expect_exchange(
    function: $function,
    arguments: [],
    procedure: 168,
    request: '',
    step: reply($status),
    value: ['state' => -2, 'startTime' => 0x87654321],
);
expect_exchange(
    function: $function,
    arguments: [],
    procedure: 168,
    request: '',
    step: truncated($status, -4),
    value: false,
    messages: ["$function: RPC: Can't decode result"],
);
expect_failures(function: $function, arguments: [], procedure: 168, request: '', label: $function);
expect_counts($function, 1, 1);
expect_links_only($function, []);
done();
--EXPECT--
OK
