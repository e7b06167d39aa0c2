--TEST--
The bundled agent measures capture files instead of interfaces
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

$small = ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.1', 17, udp(1, 2)));
$large = ethernet(
    "\xff\xff\xff\xff\xff\xff",
    mac(2),
    0x0800,
    ip4('10.0.0.2', '10.0.0.1', 17, udp(1, 2, str_repeat('x', 1000))),
);
$group = ethernet("\x01\0\x5e\0\0\1", mac(2), 0x0800, ip4('10.0.0.2', '224.0.0.1', 17, udp(1, 2, str_repeat('y', 58))));
expect_same([60, 1042, 100], [strlen($small), strlen($large), strlen($group)], 'lengths');

// Known totals: three frames over and over.
$frames = [];
for ($i = 0; $i < 10000; $i++) {
    $frames[] = [1000 + $i / 1000, $small];
    $frames[] = [1000 + $i / 1000, $large];
    $frames[] = [1000 + $i / 1000, substr($group, 0, 80), 100];
}
$first = capture_file($frames);
$second = capture_file([[5.0, $small]]);
$agent = reading_agent([$first, $second]);
$client = client($agent);
expect_same(1, preg_match('/statistics come from capture files\n/', $agent->said()), 'what it says');

// Each file is an interface; only they are.
$links = walk(fn($at) => interface_row($client, $at, GETNEXT), 'ifIndex');
expect_same([1 => $first, 2 => $second], array_column($links, 'ifDescr', 'ifIndex'), 'interfaces');
expect_same(
    [6, 1500, 0, 1, 1],
    array_map(fn($name) => $links[1][$name], ['ifType', 'ifMtu', 'ifSpeed', 'ifAdminStatus', 'ifOperStatus']),
    'an interface',
);
expect_same([1, 2], array_keys(walk(fn($at) => ether_row($client, $at, GETNEXT), 'Index')), 'rows');
expect_same(
    [],
    ether_growth(array_fill_keys(ETHER_COUNTERS, 0), ether_row($client, 1)),
    'counters before the beginning',
);

read_files($agent, 2);
$expected = [
    'Octets' => 10000 * (64 + 1046 + 104), 'Pkts' => 30000, 'BroadcastPkts' => 10000, 'MulticastPkts' => 10000,
    'Pkts64Octets' => 10000, 'Pkts65to127Octets' => 10000, 'Pkts1024to1518Octets' => 10000,
];
expect_same(
    $expected,
    array_filter(array_intersect_key(ether_row($client, 1), array_flip(ETHER_COUNTERS))),
    'counters',
);
expect_same(1, ether_row($client, 2)['Pkts'], 'frames of the second file');
$link = interface_row($client, 1, GET);
expect_same(
    [10000 * 1202, 10000, 20000],
    [$link['ifInOctets'], $link['ifInUcastPkts'], $link['ifInNUcastPkts']],
    "the interface's counters",
);
expect_same(
    1,
    preg_match('/: ' . preg_quote($first, '/') . ' ended: 30000 frames in \d+\.\d{3} s\n/', $agent->said()),
    'the end is told',
);
expect_same(0, end_agent($agent), 'exit code');

// At once without --hold; and another signal does no harm.
$agent = bundled_agent('--read', $first);
expect_soon(30000, fn() => ether_row(client($agent), 1)['Pkts'], 'frames without --hold');
proc_terminate($agent->process, 10);
expect_same(30000, ether_row(client($agent), 1)['Pkts'], 'frames after the signal');
end_agent($agent);

// At the pace of the recording, also when its clock goes back.
$paced = capture_file([[10.0, $small], [9.0, $small], [10.3, $small], [10.6, $small]]);
$agent = bundled_agent('--read', $paced, '--speed', 'recorded');
$start = microtime(true);
$client = client($agent);
expect_soon(2, fn() => ether_row($client, 1)['Pkts'], 'frames at the beginning');
expect_soon(4, fn() => ether_row($client, 1)['Pkts'], 'frames at the end');
expect_same(true, microtime(true) - $start > 0.4, 'it took its time');
end_agent($agent);

// Read again and again while calls are answered; a file without frames is at its end.
$agent = bundled_agent('--read', $second, '--read', capture_file([]), '--loop');
$client = client($agent);
expect_soon(true, fn() => ether_row($client, 1)['Pkts'] >= 1000, 'frames of a file that begins again');
end_agent($agent);

// Without a frame there is no time to tell.
$empty = capture_file([]);
$agent = reading_agent([$empty]);
read_files($agent);
expect_same(true, str_ends_with($agent->said(), "rmon-agent: $empty ended: 0 frames\n"), $agent->said());
end_agent($agent);

// Damage: what is before it counts, one line reports it, and reading ends.
$good = CAPTURE_OPENING . captured(1, $small);
foreach ([
    'cut header' => "\1\2\3", 'cut frame' => substr(captured(2, $small), 0, -1),
    'huge frame' => pack('VVVV', 2, 0, 0x7fffffff, 60),
] as $what => $rest) {
    $agent = reading_agent([file_of($good . $rest)], '--loop');
    read_files($agent);
    expect_same(1, ether_row(client($agent), 1)['Pkts'], "frames before a $what");
    expect_same(4, substr_count($agent->said(), "\n"), "lines about a $what");
    end_agent($agent);
}
$agent = reading_agent([file_of($good . pack('VVVV', 2, 0, 60, 0xffffffff) . $small)]);
read_files($agent);
expect_same(
    [2, 1],
    array_values(array_intersect_key(ether_row(client($agent), 1), ['Pkts' => 0, 'OversizePkts' => 0])),
    'a frame of a false length',
);
end_agent($agent);

// A file that can't be read is reported in one line.
$wrong = [
    '/nonexistent' => '/^rmon-agent: cannot read a capture: \/nonexistent: No such file or directory\n$/',
    file_of('') => '/^rmon-agent: cannot read a capture: \/\S+: .+\n$/',
    file_of('no capture file at all') => '/^rmon-agent: cannot read a capture: \/\S+: unknown file format\n$/',
    file_of(substr(CAPTURE_OPENING, 0, 20) . pack('V', 101)) => '/^rmon-agent: .* has no Ethernet frames\n$/',
];
foreach ($wrong as $file => $message) {
    [$code, $output, $errors] = run(agent_program(), '--port', '0', '--read', $file);
    expect_same([1, '', 1], [$code, $output, preg_match($message, $errors)], "reading $file: $errors");
}
[$code, , $errors] = run(agent_program(), '--speed', 'fast');
expect_same([2, "rmon-agent: no speed: fast (--help lists the options)\n"], [$code, $errors], 'a speed that is none');

agent_done(bundled_agent('--read', $first));
--EXPECT--
OK
