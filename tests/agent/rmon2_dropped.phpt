--TEST--
The bundled agent counts a frame as dropped once when the tables of hosts, pairs or addresses have no room for it
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

// An advertisement of fd00::9 by fd00::1: two addresses in one frame.
$target = inet_pton('fd00::9');
$advertisement = "\x88\0\0\0\0\0\0\0$target\x02\x01" . mac(9);
$kinds = [
    // how many, frame: ip has two layers above it where udp carries dns, one where tcp carries nothing known
    [5, ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1000, 53, 'question')))],
    [3, ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 6, tcp(1000, 1001, 16)))],
    [1, ethernet(mac(2), mac(1), 0x86dd, ip6('fd00::1', 'fd00::2', 58, $advertisement))],
    [2, ethernet(str_repeat("\xff", 6), mac(1), 0x0806, arp(1, mac(1), '10.0.0.1', mac(0), '10.0.0.2'))],
    [1, ethernet(mac(2), mac(1), 0x0800, ip4('224.0.0.5', '10.0.0.2', 17, udp(1000, 53)))], // no host's address
    [7, ethernet(mac(2), mac(1), 0x88b5, 'nothing known')],
];
$frames = [];
foreach ($kinds as [$count, $frame]) {
    array_push($frames, ...array_fill(0, $count, [1.0, $frame]));
}
$agent = reading_agent([capture_file($frames)]);
$link = module_link($agent);

// Rows by the sizes of the two layers; a map without room.
$sizes = [1 => [0, 0], 2 => [-1, 0], 3 => [0, -1], 4 => [-1, -1], 5 => [1, 1]];
foreach ($sizes as $row => [$network, $application]) {
    foreach (['host', 'matrix'] as $table) {
        expect_same(
            NO_ERROR,
            start_row(fn(int $status) => "rmon_hl{$table}_ctl_set"(
                $link,
                $row,
                1,
                $network,
                $application,
                '',
                $status,
            )),
            "$table $row",
        );
    }
}
expect_same(NO_ERROR, rmon_addrmap_scalars_set($link, 0), 'no addresses');
foreach ([1, 2] as $row) {
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_addrmap_ctl_set($link, $row, 1, '', $status)),
        "addresses $row",
    );
}

read_files($agent);

$ip = 5 + 3 + 1 + 1; // frames of ip and ip6, each with a protocol above
$dropped = [1 => [$ip, $ip], 2 => [0, $ip], 3 => [$ip, 0], 4 => [0, 0], 5 => [0, 0]];
foreach ($dropped as $row => $expected) {
    foreach (['hlhost' => 'hlHost', 'hlmatrix' => 'hlMatrix'] as $table => $prefix) {
        $control = "rmon_{$table}_ctl_get"($link, $row);
        expect_same(
            $expected,
            [$control["{$prefix}ControlNlDroppedFrames"], $control["{$prefix}ControlAlDroppedFrames"]],
            "$table $row",
        );
    }
}
foreach ([1, 2] as $row) {
    expect_same(5 + 3 + 1 + 2, rmon_addrmap_ctl_get($link, $row)['addressMapControlDroppedFrames'], "addresses $row");
}
expect_same(
    [0, 0],
    array_slice(array_values(rmon_addrmap_scalars_get($link)), 2, 2),
    'inserts and deletes of addresses',
);

agent_done($agent);
--EXPECT--
OK
