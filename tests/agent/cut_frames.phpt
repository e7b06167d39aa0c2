--TEST--
The bundled agent knows the application of frames that were cut behind the ports
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

// 14 octets of Ethernet and 20 of IP; the ports are the next 4.
const PORTS_END = 38;

$sctp = fn(int $from, int $to): string => pack('nnNN', $from, $to, 1, 0) . str_repeat("\0", 16);
$whole = [
    'tcp.www-http' => ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 6, tcp(1000, 80, 0x18, 'GET /'))),
    'udp.domain' => ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1000, 53, str_repeat('q', 20)))),
    'sctp.diameter' => ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 132, $sctp(1000, 3868))),
];
$frames = [];
foreach ($whole as $frame) {
    for ($size = PORTS_END - 1; $size <= 60; $size++) {
        $frames[] = [1.0, substr($frame, 0, $size), 60];
    }
}
// Not the capture, but the packet itself ends behind the ports: no header, no application.
$frames[] = [1.0, ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 6, pack('nn', 1000, 80)))];

$agent = reading_agent([capture_file($frames)]);
$link = module_link($agent);
$indexes = protocol_indexes($link);
foreach ([CREATE_REQUEST, VALID] as $status) {
    expect_same(NO_ERROR, rmon_pdist_ctl_set($link, 1, 1, '', $status), 'protocol distribution');
}
read_files($agent);
$packets = fn(string $name): int =>
    (int) (rmon_pdist_stats_get($link, 1, $indexes[$name])['protocolDistStatsPkts'] ?? 0);
foreach (array_keys($whole) as $name) {
    $transport = strtok($name, '.');
    // One frame of each transport has no ports, and the one of TCP has no header.
    expect_same(60 - PORTS_END + 1, $packets("ip.$name"), "frames of $name");
    expect_same(60 - PORTS_END + 2 + ($transport === 'tcp' ? 1 : 0), $packets("ip.$transport"), "frames of $transport");
}
agent_done($agent);
?>
--EXPECT--
OK
