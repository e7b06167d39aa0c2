--TEST--
The bundled agent lets frames gather instead of waking up for each, and a read has all of them
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/idle.inc';

go_to_own_network(module: true);

file_put_contents('/proc/sys/net/ipv6/conf/default/disable_ipv6', '1');
ip('link add e0 address 02:00:00:00:00:01 type veth peer name e1 address 02:00:00:00:00:02');
ip('address add 10.9.0.1/24 dev e0');
ip('link set e0 up');
ip('link set e1 up');
ip('neighbor add 10.9.0.2 lladdr 02:00:00:00:00:02 dev e0');

const FRAMES = 5000;
const PAUSE = 100; // microseconds at least between two of them, in which an agent that is idle has taken the first one

// In 2 ms it wakes up once for frames that gathered. Frames that come more seldom wake it up twice each: when they come,
// and to see that no more did. The rest is the tick's, and the reads'.
const WAKE_UPS_IN_A_MS = 1;
const OTHER_WAKE_UPS = 50;

$agent = bundled_agent('--interface', 'e1');
$link = module_link($agent);
for ($index = 0; ($row = rmon_ifentry_getnext($link, $index))['ifDescr'] !== 'e1'; $index = $row['ifIndex']);
$index = $row['ifIndex'];
$counted = fn(): int => (int) rmon_etherstats_get($link, $index)['etherStatsPkts'];
expect_same(0, $counted(), 'frames at the start');
$socket = stream_socket_client('udp://10.9.0.2:9');

[$start, $before] = [hrtime(true), wake_ups($agent)];
for ($sent = 0; $sent < FRAMES; $sent++) {
    fwrite($socket, 'frame');
    usleep(PAUSE);
}
$milliseconds = (hrtime(true) - $start) / 1e6;
$woken = wake_ups($agent) - $before;
expect_same(FRAMES, $counted(), 'frames at the end');
if ($woken > $milliseconds * WAKE_UPS_IN_A_MS + OTHER_WAKE_UPS) {
    fail(sprintf('woken up %d times within %d ms', $woken, $milliseconds));
}

// Each read has what came before it.
for ($i = 1; $i <= 200; $i++) {
    fwrite($socket, 'frame');
    expect_same(FRAMES + $i, $counted(), "after frame $i");
}
agent_done($agent);
?>
--EXPECT--
OK
