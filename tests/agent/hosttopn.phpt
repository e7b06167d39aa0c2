--TEST--
The bundled agent's reports of the busiest hosts when the host table is restarted meanwhile
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

// A thousand frames a second, between two hosts.
$frame = str_pad(mac(2) . mac(1) . "\x08\0", 60, "\0");
$file = capture_file(array_map(fn(int $i) => [$i / 1000, $frame], range(0, 999)));
$agent = reading_agent([$file], '--speed', 'recorded', '--loop');
$link = module_link($agent);
$hosts = fn(int $status) => rmon_host_ctl_set($link, 1, 1, '', $status);
expect_same(NO_ERROR, start_row($hosts), 'hosts');
proc_terminate($agent->process, 10); // SIGUSR1: begin to read

/** What a host sent or received since its table began. */
$counted = fn(string $host, string $what) =>
    (int) (rmon_host_get($link, 1, array_values(unpack('C*', $host)))["host$what"] ?? 0);

/** Takes the hosts away and brings them back. */
$anew = [
    'removed and made again' => fn() => [$hosts(INVALID), $hosts(CREATE_REQUEST), $hosts(VALID)],
    'stopped and started' => fn() => [$hosts(UNDER_CREATION), $hosts(VALID)],
];
foreach ($anew as $how => $change) {
    // The bases are larger than what is counted afterwards.
    expect_soon(true, fn() => $counted(mac(1), 'OutPkts') > 3000, 'frames');
    foreach ([1 => [2, mac(1)], 2 => [1, mac(2)]] as $report => [$base, $host]) {
        expect_same(
            NO_ERROR,
            start_row(fn(int $status) => rmon_hosttopn_ctl_set($link, $report, 1, $base, 2, 5, '', $status)),
            "report $report",
        );
    }
    expect_same([0], array_values(array_unique($change())), $how);
    expect_soon(
        0,
        fn() => rmon_hosttopn_ctl_get($link, 1)['hostTopNTimeRemaining']
            + rmon_hosttopn_ctl_get($link, 2)['hostTopNTimeRemaining'],
        'reports',
    );
    foreach ([1 => ['OutPkts', mac(1)], 2 => ['InPkts', mac(2)]] as $report => [$what, $host]) {
        $first = rmon_hosttopn_get($link, $report, 1);
        expect_same(array_values(unpack('C*', $host)), $first['hostTopNAddress'], "$how: the busiest host");
        $most = $counted($host, $what);
        expect_same(
            true,
            $first['hostTopNRate'] > 0 && $first['hostTopNRate'] <= $most,
            "$how: a rate of {$first['hostTopNRate']}, of $most since the table began",
        );
        expect_same(NO_ERROR, rmon_hosttopn_ctl_set($link, $report, 1, 1, 1, 5, '', INVALID), "report $report goes");
    }
}

// Hosts that are gone for good leave an empty report; those that stay are listed by their growth.
foreach ([true, false] as $goes) {
    expect_soon(true, fn() => $counted(mac(1), 'OutPkts') > 100, 'frames');
    $before = $counted(mac(1), 'OutPkts');
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_hosttopn_ctl_set($link, 3, 1, 2, 2, 5, '', $status)),
        'report 3',
    );
    if ($goes) {
        expect_same(NO_ERROR, $hosts(INVALID), 'the hosts go');
    }
    expect_soon(0, fn() => rmon_hosttopn_ctl_get($link, 3)['hostTopNTimeRemaining'], 'report 3');
    $first = rmon_hosttopn_get($link, 3, 1);
    if ($goes) {
        expect_same(false, $first, 'nobody is left');
        expect_same(NO_ERROR, start_row($hosts), 'the hosts come back');
    } else {
        $most = $counted(mac(1), 'OutPkts') - $before;
        expect_same(
            true,
            $first['hostTopNRate'] > 0 && $first['hostTopNRate'] <= $most,
            "a rate of {$first['hostTopNRate']}, of $most since it began",
        );
    }
    expect_same(NO_ERROR, rmon_hosttopn_ctl_set($link, 3, 1, 2, 1, 5, '', INVALID), 'report 3 goes');
}

agent_done($agent);
--EXPECT--
OK
