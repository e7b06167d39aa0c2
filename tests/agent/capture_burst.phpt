--TEST--
The bundled agent's capture has room for a burst; lost frames are reported with the packet after the gap
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

go_to_own_network(module: true);

file_put_contents('/proc/sys/net/ipv6/conf/default/disable_ipv6', '1');
ip('link add e0 address 02:00:00:00:00:01 type veth peer name e1 address 02:00:00:00:00:02');
ip('address add 10.9.0.1/24 dev e0');
ip('link set e0 up');
ip('link set e1 up');
ip('neighbor add 10.9.0.2 lladdr 02:00:00:00:00:02 dev e0');

/** Octets of Ethernet, IP and UDP before a datagram's own. */
const HEADERS = 42;

/** Sends datagrams with the numbers from first to last, in the shortest frames. */
function send_numbers(int $first, int $last): void
{
    $socket = stream_socket_client('udp://10.9.0.2:9');
    for ($number = $first; $number <= $last; $number++) {
        stream_socket_sendto($socket, pack('N', $number) . str_repeat("\0", 14));
    }
}

/** While the agent is stopped. */
function behind_its_back(BundledAgent $agent, callable $do): void
{
    proc_terminate($agent->process, 19); // SIGSTOP
    $do();
    proc_terminate($agent->process, 18); // SIGCONT
}

/** The index of an interface, as the agent knows it. */
function index_of(mixed $link, string $name): int
{
    for ($index = 0; ($row = rmon_ifentry_getnext($link, $index))['ifDescr'] !== $name; $index = $row['ifIndex']);
    return $row['ifIndex'];
}

// With the room that there is when nothing else is asked for, nothing is lost. 2 MiB have room for 8192 of these frames.
const BURST = 30000;
$agent = bundled_agent();
$link = module_link($agent);
$e1 = index_of($link, 'e1');
$row = rmon_etherstats_get($link, $e1);
expect_same([0, 0], [(int) $row['etherStatsPkts'], (int) $row['etherStatsDropEvents']], 'before the burst');
behind_its_back($agent, fn() => send_numbers(1, BURST));
$row = rmon_etherstats_get($link, $e1);
expect_same(
    [BURST, 0],
    [(int) $row['etherStatsPkts'], (int) $row['etherStatsDropEvents']],
    'frames of a burst, and lost ones',
);
rmon_close($link);
rmon_close($link);
expect_same(0, end_agent($agent), "the agent's exit code");

// With little room some are lost: that stands at the first packet behind the gap, though nobody reads the statistics.
$agent = bundled_agent('--ring', '1');
$link = module_link($agent);
foreach ([CREATE_REQUEST, VALID] as $status) {
    expect_same(NO_ERROR, rmon_channel_set($link, 1, $e1, 2, 1, 0, 0, 0, 1, '', '', $status), 'channel');
    expect_same(NO_ERROR, rmon_buffer_ctl_set($link, 1, 1, 2, 64, 0, 0, -1, '', $status), 'buffer');
}
$captured = fn(): int => rmon_buffer_ctl_get($link, 1)['bufferControlCapturedPackets'];
send_numbers(1, 5);
expect_same(5, $captured(), 'packets before the burst');
behind_its_back($agent, fn() => send_numbers(6, 6005));
$kept = $captured();
expect_same(true, $kept > 1000 && $kept < 6005, "packets that found room: $kept");
send_numbers(6006, 6010);
// Each answer says that the agent took what there was and looks at losses anew: a round in which it was stopped, and in
// which frames find room again, would tell of the gap only behind these.
expect_same($kept + 5, $captured(), 'packets before the second burst');
behind_its_back($agent, fn() => send_numbers(6011, 12010));
expect_same(true, $captured() > $kept + 1000, 'packets of the second burst');
send_numbers(12011, 12015);
$last = $captured();
expect_same(true, $last > 2 * ($kept - 5) && $last < 12015, "packets in the end: $last");

[$gaps, $told, $before] = [[], [], 0];
for ($index = 1; $index <= $last; $index++) {
    $packet = rmon_capture_buf_get($link, 1, $index);
    $number = unpack('N', pack('C*', ...array_slice($packet['captureBufferPacketData'], HEADERS, 4)))[1];
    if ($number !== $before + 1) {
        $gaps[] = $number;
    }
    if (($packet['captureBufferPacketStatus'] & 8) !== 0) {
        $told[] = $number;
    }
    $before = $number;
}
expect_same([6006, 12011], $gaps, 'packets behind a gap');
expect_same($gaps, $told, 'packets that tell of a gap');
$row = rmon_etherstats_get($link, $e1);
expect_same(12015, (int) ($row['etherStatsPkts'] + $row['etherStatsDropEvents']), 'frames that came or were lost');

// The size of the ring has limits.
foreach (['0', '2048', 'x', ''] as $size) {
    [$code, , $errors] = run(agent_program(), '--ring', $size);
    expect_same(
        [2, "rmon-agent: no size of a ring (1 to 2047): $size (--help lists the options)\n"],
        [$code, $errors],
        "--ring $size",
    );
}
agent_done($agent);
--EXPECT--
OK
