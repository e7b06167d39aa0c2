--TEST--
NetFlow: learned devices, their interfaces, the switch of the learning
--FILE--
<?php
require __DIR__ . '/nde.inc';

function learned_dev(string $head, int $timeLastNdePkt = 0, int $numNdePkts = 0): string
{
    return record(head: $head, timeLastNdePkt: u32($timeLastNdePkt), numNdePkts: u32($numNdePkts));
}

function learned_dev_intf(string $head, int $ifIndex = 0, int $dirFlag = 0): string
{
    return record(head: $head, ifIndex: i32($ifIndex), dirFlag: i32($dirFlag));
}

expect_readers(
    'rmon_nde_learned_dev',
    165,
    'devices',
    0,
    learned_dev(...),
    fn(int $i) => learned_dev(head([10, 2, 3, $i], 91, 92, 93), 0x80000000 + $i, 0xffffff00 + $i),
    fn(int $i) => [
        'address' => [10, 2, 3, $i],
        'addressLength' => 4,
        'timeLastNdePkt' => 0x80000000 + $i,
        'numNdePkts' => 0xffffff00 + $i,
    ],
);
expect_readers(
    'rmon_nde_learned_dev_intf',
    170,
    'interfaces',
    1,
    learned_dev_intf(...),
    fn(int $i) => learned_dev_intf(head([10, 2, 3, 4], 91, 92, 93), -500 - $i, -3 - $i),
    fn(int $i) => ['ifIndex' => -500 - $i, 'dirFlag' => -3 - $i],
);
$bytes = learned_dev_intf(head([1], 1, 1), -1);
expect_exchange('rmon_nde_learned_dev_intf_get', [[1], 4294967295], 170, $bytes, reply(rows()), ['interfaces' => []]);

foreach (['rmon_nde_learned_dev_enable' => 166, 'rmon_nde_learned_dev_disable' => 167] as $function => $procedure) {
    expect_answers($function, [], $procedure, '', $function);
    expect_counts($function, 1, 1);
    expect_links_only($function, []);
    expect_order($function, ['Link'], ['Link']);
}

$function = 'rmon_nde_learned_dev_status';
$status = record(state: i32(-2), startTime: u32(0x87654321));
expect_exchange($function, [], 168, '', reply($status), ['state' => -2, 'startTime' => 0x87654321]);
expect_exchange($function, [], 168, '', truncated($status, -4), false, ["$function: RPC: Can't decode result"]);
expect_failures($function, [], 168, '', $function);
expect_counts($function, 1, 1);
expect_links_only($function, []);
done();
--EXPECT--
OK
