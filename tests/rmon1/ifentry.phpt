--TEST--
The interface table: a row and its data source
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$sample = sample([
    'status' => 'int',
    'ifIndex' => 'int',
    'ifDescr' => 'text',
    'ifType' => 'int',
    'ifMtu' => 'int',
    'ifSpeed' => 'unsigned',
    'ifPhysAddress' => 'bytes',
    'ifAdminStatus' => 'int',
    'ifOperStatus' => 'int',
    'ifLastChange' => 'unsigned',
    'ifInOctets' => 'unsigned',
    'ifInUcastPkts' => 'unsigned',
    'ifInNUcastPkts' => 'unsigned',
    'ifInDiscards' => 'unsigned',
    'ifInErrors' => 'unsigned',
    'ifInUnknownProtos' => 'unsigned',
    'ifOutOctets' => 'unsigned',
    'ifOutUcastPkts' => 'unsigned',
    'ifOutNUcastPkts' => 'unsigned',
    'ifOutDiscards' => 'unsigned',
    'ifOutErrors' => 'unsigned',
    'ifOutQLen' => 'unsigned',
    'dsrcType' => 'unsigned',
    'dsrcSlot' => 'unsigned',
    'dsrcPort' => 'unsigned',
    'dsrcVlan' => 'unsigned',
    'dsrcChGrp' => 'int',
    'dsrcSpanMode' => 'int',
    'dsrcSpanDest' => 'int',
]);
$ethernet = array_replace($sample, [
    'ifPhysAddress' => [byte_list([0, 0x1a, 0x2b, 0x3c, 0xde, 0xff]), '00:1A:2B:3C:DE:FF'],
    'dsrcType' => [u32(1), 'ETH'],
    'dsrcSpanMode' => [i32(3), 'BOTH'],
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
    $request = record(ifIndex: i32(3), getType: i32($getType));
    check_common(
        function: $function,
        arguments: [3],
        procedure: 3,
        request: $request,
        label: 'rmon_ifentry_get',
        reply: wire($ethernet),
        result: shown($ethernet),
    );
    check_conversions($function, ['int', 'int']);
}

// The words of the data source; only Ethernet has a slot and a port.
$words = [0 => 'OTHER', 2 => 'VLAN', 3 => 'OTHER', 4 => 'NETFLOW', 9 => 'FEC', 10 => 'OTHER', 0xffffffff => 'OTHER'];
foreach ($words as $type => $word) {
    $row = array_replace($ethernet, ['dsrcType' => [u32($type), $word]]);
    $shown = shown($row);
    unset($shown['dsrcSlot'], $shown['dsrcPort']);
    $call($row, $shown);
}
foreach ([-1 => 'NONE', 0 => 'NONE', 1 => 'TX', 2 => 'RX', 3 => 'BOTH', 4 => 'NONE'] as $mode => $word) {
    $row = array_replace($ethernet, ['dsrcSpanMode' => [i32($mode), $word]]);
    $call($row, shown($row));
}

// A row without slot and port is an array like any other.
$row = array_replace($ethernet, ['dsrcType' => [u32(2), 'VLAN']]);
the_agent()->add(reply(wire($row)));
$got = rmon_ifentry_get(the_link(), 1);
expect_same(28, count($got));
expect_same(false, isset($got['dsrcSlot']) || array_key_exists('dsrcPort', $got));
$got['dsrcSlot'] = 'put in';
$got[] = 'appended';
expect_same(['dsrcSpanDest', 'dsrcSlot', 1], array_slice(array_keys($got), -3));

// An address that doesn't have six bytes is no MAC address.
foreach ([0, 1, 5, 7, 8, 16, 17, 300] as $length) {
    $row = array_replace($ethernet, ['ifPhysAddress' => [byte_list(str_repeat("\xab", $length)), '']]);
    $call($row, shown($row));
}

check_reply_text(
    function: 'rmon_ifentry_get',
    index: [1],
    procedure: 3,
    request: key_of(1, 1),
    label: 'rmon_ifentry_get',
    sample: $ethernet,
    name: 'ifDescr',
);

done();
--EXPECT--
OK
