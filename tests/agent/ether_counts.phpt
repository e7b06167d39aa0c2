--TEST--
The bundled agent counts what goes over the loopback, by capture and by the kernel's counters
--SKIPIF--
<?php

declare(strict_types=1);

require __DIR__ . '/../needs.inc';
needs_agent();
require __DIR__ . '/client.inc';

$agent = bundled_agent();
if (str_contains($agent->said(), 'no right to capture')) {
    echo 'skip needs the right to capture packets';
}
end_agent($agent);
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

// Others may send on this machine's loopback as well: the counters grow by at least what is sent here.
$lo = if_index('lo');
$sink = sink($address);
foreach ([[], ['--no-capture']] as $options) {
    $agent = bundled_agent(...$options);
    $client = client($agent);
    $source = $options ? "the kernel's counters" : 'live capture';
    expect_same(true, str_contains($agent->said(), "Ethernet statistics come from $source\n"), 'what it says');

    $then = ether_row($client, $lo);
    send_datagrams($address, 20, 600);
    send_datagrams($address, 30, 1300);
    send_datagrams($address, 7, 5000);
    $growth = ether_growth($then, ether_row($client, $lo));

    // 14 octets of Ethernet, 20 of IP, 8 of UDP and 4 of check sequence around each datagram.
    $least = ['Octets' => 20 * 646 + 30 * 1346 + 7 * 5046, 'Pkts' => 57];
    if (!$options) {
        $least += ['OversizePkts' => 7, 'Pkts512to1023Octets' => 20, 'Pkts1024to1518Octets' => 30];
    }
    foreach ($least as $name => $value) {
        if (($growth[$name] ?? 0) < $value) {
            fail("by $source, $name grew by " . ($growth[$name] ?? 0) . ", not $value");
        }
    }
    expect_same(0, end_agent($agent), "the agent's exit code");
}
done();
--EXPECT--
OK
