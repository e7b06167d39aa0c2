--TEST--
The bundled agent's counts are exact to the frame, in a network where nobody else sends
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

go_to_own_network();

// Two Ethernet interfaces, joined; what is sent on e0 arrives at e1. Frames of more than 1518 octets pass as well.
file_put_contents('/proc/sys/net/ipv6/conf/default/disable_ipv6', '1');
ip('link add e0 address 02:00:00:00:00:01 mtu 9000 type veth peer name e1 address 02:00:00:00:00:02 mtu 9000');
ip('address add 10.9.0.1/24 broadcast 10.9.0.255 dev e0');
ip('link set e0 up');
ip('link set e1 up');
ip('neighbor add 10.9.0.2 lladdr 02:00:00:00:00:02 dev e0');
ip('route add 239.0.0.0/8 dev e0');

/** The indexes of all interfaces by name; the kernel's own list of this network is not under /sys. */
function indexes(mixed $client): array
{
    return array_column(walk(fn(int $at) => interface_row($client, $at, GETNEXT), 'ifIndex'), 'ifIndex', 'ifDescr');
}

/**
 * Datagrams of chosen sizes, one more of each than of the one before. Around
 * each stand 14 octets of Ethernet, 20 of IP, 8 of UDP and 4 of check sequence:
 * 46 in all.
 */
function send_all(): array
{
    $sent = [
        // size of the datagram, and what its frame counts as
        [0, 'UndersizePkts'], [17, 'UndersizePkts'],                // 46 and 63 octets
        [18, 'Pkts64Octets'],                                      // 64
        [19, 'Pkts65to127Octets'], [81, 'Pkts65to127Octets'],      // 65 and 127
        [82, 'Pkts128to255Octets'], [209, 'Pkts128to255Octets'],   // 128 and 255
        [210, 'Pkts256to511Octets'], [465, 'Pkts256to511Octets'],  // 256 and 511
        [466, 'Pkts512to1023Octets'], [977, 'Pkts512to1023Octets'],      // 512 and 1023
        [978, 'Pkts1024to1518Octets'], [1472, 'Pkts1024to1518Octets'],   // 1024 and 1518
        [1473, 'OversizePkts'], [8900, 'OversizePkts'],            // 1519 and 8946
    ];
    $expected = array_fill_keys(ETHER_COUNTERS, 0);
    foreach ($sent as $i => [$size, $counter]) {
        send_datagrams('10.9.0.2', $i + 1, $size);
        $expected['Pkts'] += $i + 1;
        $expected['Octets'] += ($i + 1) * ($size + 46);
        $expected[$counter] += $i + 1;
    }

    // Good frames to all and to a group; those that are too short or too long are no good ones.
    send_datagrams('10.9.0.255', 21, 100);
    send_datagrams('239.9.9.9', 34, 100);
    send_datagrams('10.9.0.255', 5, 0);
    send_datagrams('239.9.9.9', 3, 1473);
    $expected['Pkts'] += 21 + 34 + 5 + 3;
    $expected['Octets'] += (21 + 34) * 146 + 5 * 46 + 3 * 1519;
    $expected['BroadcastPkts'] += 21;
    $expected['MulticastPkts'] += 34;
    $expected['Pkts128to255Octets'] += 21 + 34;
    $expected['UndersizePkts'] += 5;
    $expected['OversizePkts'] += 3;
    return array_filter($expected);
}

$sink = sink($address);
foreach ([[], ['--no-capture']] as $options) {
    $agent = bundled_agent(...$options);
    $client = client($agent);
    ['e0' => $e0, 'e1' => $e1, 'lo' => $lo] = indexes($client);
    $how = implode($options);

    // Both ends count each frame once.
    $then = [ether_row($client, $e0), ether_row($client, $e1)];
    $expected = send_all();
    $now = [ether_row($client, $e0), ether_row($client, $e1)];
    if ($options) {
        // The kernel's counters tell of frames and octets only (and of multicast, where the driver counts it).
        $expected = array_intersect_key($expected, ['Octets' => 1, 'Pkts' => 1]);
    }
    expect_same($expected, ether_growth($then[0], $now[0]), "e0 $how");
    expect_same($expected, ether_growth($then[1], $now[1]), "e1 $how");

    // A second row on the same source counts from its own beginning.
    expect_same(NO_ERROR, set_ether($client, 700, $e1, 'second', CREATE_REQUEST), 'createRequest');
    send_datagrams('10.9.0.2', 4, 100);
    expect_same(NO_ERROR, set_ether($client, 700, $e1, 'second', VALID), 'valid');
    send_datagrams('10.9.0.2', 6, 100);
    expect_same(
        [6, 6 * 146],
        [ether_row($client, 700)['Pkts'], ether_row($client, 700)['Octets']],
        "the second row $how",
    );
    expect_same(10, ether_growth($now[1], ether_row($client, $e1))['Pkts'], "the first row $how");
    expect_same(NO_ERROR, set_ether($client, $e1, $e1, '', INVALID), 'the first row goes');
    send_datagrams('10.9.0.2', 5, 100);
    expect_same(11, ether_row($client, 700)['Pkts'], "the second row goes on $how");

    // On the loopback a frame is one frame, though it is sent and received. The agent's own talk stays below 512 octets.
    $then = ether_row($client, $lo);
    send_datagrams($address, 20, 600);
    send_datagrams($address, 30, 1300);
    send_datagrams($address, 7, 5000);
    $growth = ether_growth($then, ether_row($client, $lo));
    if (!$options) {
        $sizes = ['OversizePkts' => 7, 'Pkts512to1023Octets' => 20, 'Pkts1024to1518Octets' => 30];
        expect_same($sizes, array_intersect_key($growth, $sizes), 'lo');
    }
    // Besides the 57 frames there are the call and its answer, with their acknowledgments.
    $others = [$growth['Pkts'] - 57, $growth['Octets'] - (20 * 646 + 30 * 1346 + 7 * 5046)];
    if ($others[0] < 1 || $others[0] > 8 || $others[1] < 70 || $others[1] > 8 * 400) {
        fail("lo $how: besides what was sent, {$others[0]} frames and {$others[1]} octets");
    }
    expect_same(0, end_agent($agent), "the agent's exit code");
}

// An interface goes down and comes up again: its row goes on, its last change is shown.
$agent = bundled_agent();
$client = client($agent);
$status = fn(int $index, string $which) => interface_row($client, $index, GET)["if{$which}Status"];
$then = ether_row($client, $e1);
send_datagrams('10.9.0.2', 3, 100);
ip('link set e1 down');
expect_soon(2, fn() => $status($e1, 'Admin'), 'ifAdminStatus of e1, down');
expect_soon(2, fn() => $status($e1, 'Oper'), 'ifOperStatus of e1, down');
expect_soon(7, fn() => $status($e0, 'Oper'), 'ifOperStatus of e0, whose peer is down');
$changed = interface_row($client, $e1, GET)['ifLastChange'];
$up_time = system_group($client)['sysUpTime'];
if ($changed === 0 || $changed > $up_time || $changed < $up_time - 100 * PATIENCE) {
    fail("ifLastChange is $changed, sysUpTime a moment later $up_time");
}
expect_same(3, ether_growth($then, ether_row($client, $e1))['Pkts'], 'frames until e1 went down');
ip('link set e1 up');
expect_soon(1, fn() => $status($e1, 'Oper'), 'ifOperStatus of e1, up again');
expect_soon(1, fn() => $status($e0, 'Oper'), 'ifOperStatus of e0, whose peer is up again');
expect_same(true, interface_row($client, $e1, GET)['ifLastChange'] >= $changed, 'ifLastChange of e1, up again');
ip('neighbor replace 10.9.0.2 lladdr 02:00:00:00:00:02 dev e0');
send_datagrams('10.9.0.2', 4, 100);
expect_same(7, ether_growth($then, ether_row($client, $e1))['Pkts'], 'frames of e1 after it came up again');

// A new interface appears in the table; rows count on it once they are made. (Snooping bridges send frames of their own.)
ip('link add name br0 type bridge mcast_snooping 0');
expect_soon(true, function () use ($client, &$br0) {
    $br0 = indexes($client)['br0'] ?? 0;
    return $br0 !== 0;
}, 'the bridge in the table');
expect_same(2, system_group($client)['sysServices'] & 2, 'sysServices of a machine with a bridge');
expect_same(NO_ERROR, set_ether($client, 800, $br0, 'bridge', CREATE_REQUEST), 'createRequest');
expect_same(NO_ERROR, set_ether($client, 800, $br0, 'bridge', VALID), 'valid, while the interface is down');
expect_same(0, ether_row($client, 800)['Pkts'], 'frames on the bridge that is down');
ip('address add 10.10.0.1/24 broadcast 10.10.0.255 dev br0');
ip('link set br0 up');
expect_soon(1, fn() => $status($br0, 'Admin'), 'ifAdminStatus of the bridge');
send_datagrams('10.10.0.255', 9, 100);
expect_same(
    [9, 9],
    [ether_row($client, 800)['Pkts'], ether_row($client, 800)['BroadcastPkts']],
    'frames on the bridge',
);

// An interface goes away, and its rows with it; those under creation stay.
expect_same(NO_ERROR, set_ether($client, 801, $br0, 'bridge', CREATE_REQUEST), 'createRequest');
ip('link del br0');
ip('link del e0');
expect_soon(['lo'], fn() => array_keys(indexes($client)), 'interfaces that are left');
foreach ([$e0, $e1, 800] as $index) {
    expect_same(NO_SUCH_NAME, ether_row($client, $index)['status'], "row $index of an interface that went away");
}
expect_same(UNDER_CREATION, ether_row($client, 801)['Status'], 'the row under creation');
expect_same(BAD_VALUE, set_ether($client, 801, $br0, 'bridge', VALID), 'valid without its interface');
expect_same(BAD_VALUE, set_ether($client, 801, $e0, 'bridge', VALID), 'valid without its interface');

agent_done($agent);
--EXPECT--
OK
