--TEST--
The bundled agent stays idle without frames, while an interface is down, and after it has gone
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/idle.inc';

go_to_own_network();
ip('link add e0 type veth peer name e1');
foreach (['e0', 'e1'] as $name) {
    ip("link set $name up addrgenmode none");
}
// Wait until the frames that the kernel itself sends when an interface comes up are over.
$agent = bundled_agent();
expect_soon(true, function () use ($agent) {
    $before = wake_ups($agent);
    sleep(1); // the time for which it is watched
    return wake_ups($agent) - $before < 10;
}, 'silence on the interfaces');
expect_idle($agent, 'with live capture');
ip('link set e1 down');
expect_idle($agent, 'with an interface that is down');
ip('link set e1 up');
expect_idle($agent, 'with an interface that is up again');
ip('link del e0');
expect_idle($agent, 'without the interface');
agent_done($agent);
?>
--EXPECT--
OK
