--TEST--
The bundled agent counts what came before an interface went down, though it looks at it later only
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

$agent = bundled_agent('--interface', 'e1');
$link = module_link($agent);
for ($index = 0; ($row = rmon_ifentry_getnext($link, $index))['ifDescr'] !== 'e1'; $index = $row['ifIndex']);
$e1 = $row['ifIndex'];
$counted = fn(): int => (int) rmon_etherstats_get($link, $e1)['etherStatsPkts'];
$sent = 0;
$send = function (int $frames) use (&$sent): void {
    ip('neighbor replace 10.9.0.2 lladdr 02:00:00:00:00:02 dev e0');
    send_datagrams('10.9.0.2', $frames, 100);
    $sent += $frames;
};

foreach (['stays down' => ['down'], 'is up again' => ['down', 'up']] as $how => $changes) {
    $send(2);
    expect_same($sent, $counted(), "before it $how");
    proc_terminate($agent->process, 19); // SIGSTOP
    $send(5);
    foreach ($changes as $change) {
        ip("link set e1 $change");
    }
    proc_terminate($agent->process, 18); // SIGCONT
    expect_same($sent, $counted(), "once it $how");
    ip('link set e1 up');
    // It is captured again a second later at most; what comes until then is not seen.
    expect_soon(true, function () use ($send, $counted, &$sent): bool {
        $before = $counted();
        $send(1);
        $sent = $counted();
        return $sent > $before;
    }, "counted again after it $how");
}
agent_done($agent);
?>
--EXPECT--
OK
