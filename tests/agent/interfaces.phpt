--TEST--
The bundled agent's interface table is the kernel's
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

/** What the kernel says about an interface; null where it says nothing. */
function kernel(string $name, string $what): ?string
{
    $text = @file_get_contents("/sys/class/net/$name/$what");
    return is_string($text) ? trim($text) : null;
}

$agent = bundled_agent();
$client = client($agent);
$row = fn(int $at) => interface_row($client, $at, GETNEXT);
$rows = walk($row, 'ifIndex');

// The same interfaces, in the order of their indexes.
$names = [];
foreach (glob('/sys/class/net/*/ifindex') as $file) {
    $names[(int) file_get_contents($file)] = basename(dirname($file));
}
ksort($names);
expect_same($names, array_map(fn($row) => $row['ifDescr'], $rows), 'names by index');

foreach ($rows as $index => $row) {
    $name = $row['ifDescr'];
    $flags = (int) hexdec(substr(kernel($name, 'flags'), 2));
    $type = (int) kernel($name, 'type');
    $ethernet = $type === 1;
    $loopback = $type === 772;
    $vlan = is_file("/proc/net/vlan/$name");

    expect_same((int) kernel($name, 'mtu'), $row['ifMtu'], "ifMtu of $name");
    expect_same($flags & 1 ? 1 : 2, $row['ifAdminStatus'], "ifAdminStatus of $name");
    $address = $loopback ? '' : hex2bin(str_replace(':', '', kernel($name, 'address')));
    expect_same($address, $row['ifPhysAddress'], "ifPhysAddress of $name");
    if ($ethernet || $loopback) {
        expect_same($ethernet ? 6 : 24, $row['ifType'], "ifType of $name");
        expect_same($ethernet ? ($vlan ? 2 : 1) : 0, $row['dsrcType'], "dsrcType of $name");
    }
    $states = ['up' => 1, 'down' => 2, 'testing' => 3, 'dormant' => 5, 'notpresent' => 6, 'lowerlayerdown' => 7];
    $state = kernel($name, 'operstate');
    if (isset($states[$state])) {
        expect_same($states[$state], $row['ifOperStatus'], "ifOperStatus of $name");
    }
    $megabits = (int) (kernel($name, 'speed') ?? -1);
    $speed = $megabits < 0 ? 0 : min($megabits * 1000000, 0xffffffff);
    expect_same($speed, $row['ifSpeed'], "ifSpeed of $name");
    expect_same(0, $row['ifLastChange'], "ifLastChange of $name");
    foreach (['dsrcSlot', 'dsrcPort', 'dsrcChGrp', 'dsrcSpanMode', 'dsrcSpanDest', 'ifInUnknownProtos'] as $zero) {
        expect_same(0, $row[$zero], "$zero of $name");
    }
}

// The loopback is up wherever this test runs, which needs it.
$lo = interface_row($client, if_index('lo'), GET);
expect_same(
    [NO_ERROR, 'lo', 24, 1, 1],
    [$lo['status'], $lo['ifDescr'], $lo['ifType'], $lo['ifAdminStatus'], $lo['ifOperStatus']],
    'lo',
);

// Counters are the kernel's of that moment, modulo 2^32: they lie between what it says before and after.
$counters = [
    'ifInOctets' => 'rx_bytes', 'ifInUcastPkts' => 'rx_packets', 'ifOutOctets' => 'tx_bytes',
    'ifOutUcastPkts' => 'tx_packets', 'ifInDiscards' => 'rx_dropped', 'ifInErrors' => 'rx_errors',
    'ifOutDiscards' => 'tx_dropped', 'ifOutErrors' => 'tx_errors',
];
$all = fn() => array_map(fn($name) => (int) kernel('lo', "statistics/$name"), $counters);
$sink = sink($address);
send_datagrams($address, 10, 100);
$before = $all();
$lo = interface_row($client, if_index('lo'), GET);
$after = $all();
foreach ($counters as $name => $file) {
    $range = ($after[$name] - $before[$name]) & 0xffffffff;
    if ((($lo[$name] - $before[$name]) & 0xffffffff) > $range) {
        fail("$name is {$lo[$name]}, the kernel's $file went from {$before[$name]} to {$after[$name]}");
    }
}

// Rows are found by their index, exactly or the next; others are refused with a row of zeros.
$last = array_key_last($rows);
$none = array_fill_keys(array_keys($lo), 0);
$none = ['status' => NO_SUCH_NAME, 'ifDescr' => '', 'ifPhysAddress' => ''] + $none;
$same = fn(array $row) => array_replace($none, $row);
foreach ([
    [0, GET], [$last + 1000, GET], [-1, GET], [$last, GETNEXT], [0x7fffffff, GETNEXT], [1, 0], [1, 4], [1, -1],
] as [$index, $mode]) {
    expect_same($same([]), $same(interface_row($client, $index, $mode)), "row $index by mode $mode");
    expect_same(NO_SUCH_NAME, interface_row($client, $index, $mode)['status'], "status of row $index by mode $mode");
}
expect_same(array_key_first($rows), interface_row($client, -0x80000000, GETNEXT)['ifIndex'], 'the first row');

agent_done($agent);
--EXPECT--
OK
