<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Two routers that export NetFlow version 5 to the demo's agent, until they are ended: addresses of the loopback.
 *
 * usage: exporter.php UDP_PORT
 */

/** Flows that a router exports: input and output interface. */
const ROUTERS = ['127.0.0.2' => [[1, 2], [2, 1], [3, 2]], '127.0.0.3' => [[1, 4]]];

const PAUSE = 5;

/** @param list<array{int, int}> $flows */
function export_packet(array $flows, int $uptime, int $sequence): string
{
    $packet = pack('nnNNNNCCn', 5, count($flows), $uptime, time(), 0, $sequence, 0, 0, 0);
    foreach ($flows as $i => [$input, $output]) {
        $packet .= inet_pton('10.0.10.' . (11 + $i)) . inet_pton('203.0.113.10') . inet_pton('0.0.0.0')
            . pack('nnNNNNnnCCCCnnCCn', $input, $output, 12, 9000, 0, $uptime, 50000 + $i, 443, 0, 0x1b, 6, 0, 0, 0, 24, 24, 0);
    }
    return $packet;
}

if ($argc !== 2 || !preg_match('/^\d+$/D', $argv[1])) {
    fwrite(STDERR, "usage: exporter.php UDP_PORT\n");
    exit(2);
}
$sockets = [];
foreach (array_keys(ROUTERS) as $address) {
    $context = stream_context_create(['socket' => ['bindto' => "$address:0"]]);
    $sockets[$address] = stream_socket_client("udp://127.0.0.1:$argv[1]", $code, $reason, 5, STREAM_CLIENT_CONNECT, $context)
        ?: exit("no socket on $address: $reason\n");
}
$sent = 0;
while (true) {
    foreach (ROUTERS as $address => $flows) {
        // An agent that is gone or not there yet is nothing to end for.
        @stream_socket_sendto($sockets[$address], export_packet($flows, hrtime(true) / 1_000_000 & 0xffffffff, $sent));
    }
    $sent++;
    sleep(PAUSE);
}
