--TEST--
Datagrams of signalling that came in fragments of IP, and those of several messages, have their calls
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/calls.inc';
require __DIR__ . '/voice_calls.inc';
require __DIR__ . '/call_datagrams.inc';

/** The frame with another message in front of its own, which has no description of a session. */
function shared(string $frame): array
{
    $udp = substr($frame, HEADERS[0] + HEADERS[1]);
    $data = "200 999999 OK\r\n.\r\n" . substr($udp, HEADERS[2]);
    return [packet($frame, 1, 0, substr($udp, 0, 4) . pack('nn', HEADERS[2] + strlen($data), 0) . $data)];
}

/** Where rows have who called and was called, and what was lost to either. */
const KEYS = [
    'mgcp' => ['caller_ip_addr', 'callee_ip_addr', 'pkt_loss_1', 'pkt_loss_2'],
    'h323' => ['f_q931_ipAddr', 'reverse_q931_ipAddr', 'reverse_sr_pkt_lost', 'forward_sr_pkt_lost'],
];

$options = ['--calls', '2', '--talk', '2', '--told', 'no', '--loss', '2-9', '--reports', '0'];
[$file, $known] = calls('--protocol', 'mgcp,h323', ...$options);
$streams = tshark_streams($file);
$ports = array_merge(...array_values(PORTS));
foreach ([
    'fragments' => changed_datagrams($file, $ports, fn(string $frame) => fragments($frame, 24)),
    'several messages' => changed_datagrams($file, PORTS['mgcp'], shared(...)),
] as $what => $changed) {
    $agent = reading_agent([$changed]);
    $link = module_link($agent);
    read_files($agent);
    expect_measured($link, 2, ...array_keys(KEYS));
    foreach (KEYS as $protocol => $keys) {
        $expected = [];
        foreach (calls_of($known, $protocol) as $call) {
            $lost = array_column(measured($call, $streams), 'lost');
            $expected[] = [$call['caller']['address'], $call['callee']['address'], ...$lost];
        }
        $rows = array_map(fn(array $row) => values($row, $keys), voice_rows($link, "{$protocol}_call_rec"));
        sort($rows);
        sort($expected);
        expect_same($expected, $rows, "$what: calls of $protocol");
    }
    // Those that a gatekeeper admitted over its datagrams have their names from there.
    $names = array_column(voice_rows($link, 'h323_phone_rec'), 'forward_alias');
    $expected = [];
    foreach (calls_of($known, 'h323') as $call) {
        array_push($expected, $call['caller']['name'], $call['callee']['name']);
    }
    sort($names);
    sort($expected);
    expect_same($expected, $names, "$what: phones of H.323");
    end_measuring($agent, $link, $what);
}

done();
--EXPECT--
OK
