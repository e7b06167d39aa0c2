--TEST--
Calls are measured while they pass by a live interface, over IPv4 and IPv6
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/calls.inc';
require __DIR__ . '/voice_calls.inc';
require __DIR__ . '/call_datagrams.inc';

go_to_own_network(module: true);

// No router and no neighbour is asked for, of either version of IP.
foreach (['disable_ipv6' => '0', 'accept_dad' => '0', 'router_solicitations' => '0'] as $setting => $value) {
    file_put_contents("/proc/sys/net/ipv6/conf/default/$setting", $value);
}
ip('link add e0 address 02:00:00:00:00:01 type veth peer name e1 address 02:00:00:00:00:02');
// Whatever goes to the phones leaves here, and nobody is asked where they are.
ip('link set e0 arp off');
ip('address add 10.9.0.1/24 dev e0');
ip('link set e0 up');
ip('link set e1 up');
ip('route add 10.0.0.0/8 dev e0');
ip('-6 address add fd00::9:1/128 dev e0 nodad');
ip('-6 route add fd00::/32 dev e0');

/** Parties, what was lost to the callee and to the caller. */
const PARTIES = [
    'sccp' => ['phone_num', 'callee_phone_num', 'callee_pkt_lost', 'pkt_lost'],
    'mgcp' => ['caller_ip_addr', 'callee_ip_addr', 'pkt_loss_2', 'pkt_loss_1'],
    'h323' => ['f_num', 'reverse_num', 'forward_sr_pkt_lost', 'reverse_sr_pkt_lost'],
];

$options = ['--calls', '2', '--apart', '0', '--talk', '2', '--told', 'no', '--loss', '0-9', '--reports', '1'];
$sockets = ini_get('extension_dir') . '/sockets.so';
$load = is_file($sockets) ? ['-d', "extension=$sockets"] : [];
foreach (['4' => VOICE_PROTOCOLS, '6' => ['mgcp', 'h323']] as $version => $protocols) {
    [$file, $known] = calls('--protocol', implode(',', $protocols), '--ip', (string) $version, ...$options);
    if ($version === 4) {
        // Of a datagram in fragments, the first one alone has ports.
        $cut = fn(string $frame) => strlen($frame) > 160 ? fragments($frame, 104) : [$frame];
        $file = changed_datagrams($file, array_merge(...array_values(PORTS)), $cut);
    }
    $agent = bundled_agent('-i', 'e1');
    $link = module_link($agent);
    [$code, , $errors] = run(PHP_BINARY, '-n', ...$load, ...[__DIR__ . '/play_frames.inc', $file]);
    expect_same([0, ''], [$code, $errors], 'frames that were sent');
    expect_measured($link, 2, ...$protocols);
    foreach ($protocols as $protocol) {
        $party = $protocol === 'mgcp' ? 'address' : 'number';
        $expected = array_map(
            fn(array $call) => [
                $call['caller'][$party], $call['callee'][$party], $call['forward']['lost'], $call['reverse']['lost'],
            ],
            calls_of($known, $protocol),
        );
        $keys = PARTIES[$protocol];
        $rows = array_map(fn(array $row) => values($row, $keys), voice_rows($link, "{$protocol}_call_rec"));
        sort($rows);
        sort($expected);
        expect_same($expected, $rows, "live calls of $protocol over IPv$version");
    }
    end_measuring($agent, $link, "IPv$version");
}

done();
--EXPECT--
OK
