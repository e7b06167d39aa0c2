--TEST--
Calls are measured while they pass by a live interface
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/calls.inc';
require __DIR__ . '/voice_calls.inc';

go_to_own_network(module: true);

file_put_contents('/proc/sys/net/ipv6/conf/default/disable_ipv6', '1');
ip('link add e0 address 02:00:00:00:00:01 type veth peer name e1 address 02:00:00:00:00:02');
// Whatever goes to the phones leaves here, and nobody is asked where they are.
ip('link set e0 arp off');
ip('address add 10.9.0.1/24 dev e0');
ip('link set e0 up');
ip('link set e1 up');
ip('route add 10.0.0.0/8 dev e0');

$options = ['--calls', '2', '--apart', '0', '--talk', '2', '--told', 'no', '--loss', '0-9', '--reports', '1'];
[$file, $known] = voice_capture(...$options);
$agent = bundled_agent('-i', 'e1');
$link = module_link($agent);
$sockets = ini_get('extension_dir') . '/sockets.so';
$load = is_file($sockets) ? ['-d', "extension=$sockets"] : [];
[$code, , $errors] = run(PHP_BINARY, '-n', ...$load, ...[__DIR__ . '/play_frames.inc', $file]);
expect_same([0, ''], [$code, $errors], 'frames that were sent');
expect_measured($link, 2, ...VOICE_PROTOCOLS);
// Parties, what was lost to the callee and to the caller.
$parties = [
    'sccp' => ['phone_num', 'callee_phone_num', 'callee_pkt_lost', 'pkt_lost'],
    'mgcp' => ['caller_ip_addr', 'callee_ip_addr', 'pkt_loss_2', 'pkt_loss_1'],
    'h323' => ['f_num', 'reverse_num', 'forward_sr_pkt_lost', 'reverse_sr_pkt_lost'],
];
foreach ($parties as $protocol => $keys) {
    $party = $protocol === 'mgcp' ? 'address' : 'number';
    $expected = array_map(
        fn(array $call) => [
            $call['caller'][$party], $call['callee'][$party], $call['forward']['lost'], $call['reverse']['lost'],
        ],
        calls_of($known, $protocol),
    );
    $rows = array_map(fn(array $row) => values($row, $keys), voice_rows($link, "{$protocol}_call_rec"));
    sort($rows);
    sort($expected);
    expect_same($expected, $rows, "live calls of $protocol");
}

agent_done($agent);
--EXPECT--
OK
