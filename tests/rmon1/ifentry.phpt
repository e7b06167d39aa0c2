--TEST--
The interface table: a row and its data source
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$sample = sample([
    'status' => 'i32',
    'ifIndex' => 'i32',
    'ifDescr' => 'text',
    'ifType' => 'i32',
    'ifMtu' => 'i32',
    'ifSpeed' => 'u32',
    'ifPhysAddress' => 'byte_list',
    'ifAdminStatus' => 'i32',
    'ifOperStatus' => 'i32',
    'ifLastChange' => 'u32',
    'ifInOctets' => 'u32',
    'ifInUcastPkts' => 'u32',
    'ifInNUcastPkts' => 'u32',
    'ifInDiscards' => 'u32',
    'ifInErrors' => 'u32',
    'ifInUnknownProtos' => 'u32',
    'ifOutOctets' => 'u32',
    'ifOutUcastPkts' => 'u32',
    'ifOutNUcastPkts' => 'u32',
    'ifOutDiscards' => 'u32',
    'ifOutErrors' => 'u32',
    'ifOutQLen' => 'u32',
    'dsrcType' => 'u32',
    'dsrcSlot' => 'u32',
    'dsrcPort' => 'u32',
    'dsrcVlan' => 'u32',
    'dsrcChGrp' => 'i32',
    'dsrcSpanMode' => 'i32',
    'dsrcSpanDest' => 'i32',
]);
$ethernet = array_replace($sample, [
    'ifPhysAddress' => ['byte_list', [0, 0x1a, 0x2b, 0x3c, 0xde, 0xff], 'shown' => '00:1A:2B:3C:DE:FF'],
    'dsrcType' => ['u32', 1, 'shown' => 'ETH'],
    'dsrcSpanMode' => ['i32', 3, 'shown' => 'BOTH'],
]);

$call = fn(array $row, array $shown) => expect_exchange(
    function: 'rmon_ifentry_getnext',
    arguments: [0],
    procedure: 3,
    request: record(ifIndex: i32(0), getType: i32(2)),
    step: reply(wire($row)),
    value: $shown,
);

foreach (['rmon_ifentry_get' => 1, 'rmon_ifentry_getnext' => 2] as $function => $getType) {
    check_function(
        function: $function,
        procedure: 3,
        sent: ['ifIndex' => ['i32', 3], 'getType' => ['i32', $getType]],
        reply: wire($ethernet),
        value: shown($ethernet),
        label: 'rmon_ifentry_get',
    );
}

// The words of the data source; only Ethernet has a slot and a port.
$words = [0 => 'OTHER', 2 => 'VLAN', 3 => 'OTHER', 4 => 'NETFLOW', 9 => 'FEC', 10 => 'OTHER', 0xffffffff => 'OTHER'];
foreach ($words as $type => $word) {
    $shown = shown($ethernet, dsrcType: $word);
    unset($shown['dsrcSlot'], $shown['dsrcPort']);
    $call(with($ethernet, dsrcType: $type), $shown);
}
foreach ([-1 => 'NONE', 0 => 'NONE', 1 => 'TX', 2 => 'RX', 3 => 'BOTH', 4 => 'NONE'] as $mode => $word) {
    $call(with($ethernet, dsrcSpanMode: $mode), shown($ethernet, dsrcSpanMode: $word));
}

// A row without slot and port is an array like any other.
the_agent()->add(reply(wire($ethernet, dsrcType: 2)));
$got = rmon_ifentry_get(the_link(), 1);
expect_same(28, count($got));
expect_same(false, isset($got['dsrcSlot']) || array_key_exists('dsrcPort', $got));
$got['dsrcSlot'] = 'put in';
$got[] = 'appended';
expect_same(['dsrcSpanDest', 'dsrcSlot', 1], array_slice(array_keys($got), -3));

// An address that doesn't have six bytes is no MAC address.
foreach ([0, 1, 5, 7, 8, 16, 17, 300] as $length) {
    $call(with($ethernet, ifPhysAddress: str_repeat("\xab", $length)), shown($ethernet, ifPhysAddress: ''));
}

check_reply_text(
    function: 'rmon_ifentry_get',
    procedure: 3,
    sent: ONE_INDEX,
    row: $ethernet,
    text: 'ifDescr',
    label: 'rmon_ifentry_get',
);

done();
--EXPECT--
OK
