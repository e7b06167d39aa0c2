--TEST--
The bundled agent names the rows that count nothing because it does not capture
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

/** The tables that count frames, by the name that the agent gives them; a row each. */
function counting_rows(mixed $link, int $source): array
{
    return [
        'host_ctl' => fn(int $status) => rmon_host_ctl_set($link, 3, $source, '', $status),
        'hosttopn_ctl' => fn(int $status) => rmon_hosttopn_ctl_set($link, 3, 3, 2, 0, 10, '', $status),
        'matrix_ctl' => fn(int $status) => rmon_matrix_ctl_set($link, 3, $source, '', $status),
        'channel' => fn(int $status) => rmon_channel_set($link, 3, $source, 2, 1, 0, 0, 0, 3, '', '', $status),
        'pdist_ctl' => fn(int $status) => rmon_pdist_ctl_set($link, 3, $source, '', $status),
        'addrmap_ctl' => fn(int $status) => rmon_addrmap_ctl_set($link, 3, $source, '', $status),
        'hlhost_ctl' => fn(int $status) => rmon_hlhost_ctl_set($link, 3, $source, -1, -1, '', $status),
        'hlmatrix_ctl' => fn(int $status) => rmon_hlmatrix_ctl_set($link, 3, $source, -1, -1, '', $status),
        'dsmon_stats_ctl' => fn(int $status) => dsmon_statsctl_set($link, 3, $source, 3, '', $status),
        'dsmon_pdctl' => fn(int $status) => dsmon_pdistctl_set($link, 3, $source, 3, '', $status, -1),
        'dsmon_hostctl' => fn(int $status) => dsmon_hostctl_set($link, 3, $source, 3, '', $status, -1),
        'dsmon_matrixctl' => fn(int $status) => dsmon_matrixctl_set($link, 3, $source, 3, '', $status, -1),
        'smon_vlan_ctl' => fn(int $status) => rmon_vlan_ctl_set($link, 3, $source, '', $status),
        'smon_prio_ctl' => fn(int $status) => rmon_prio_ctl_set($link, 3, $source, '', $status),
        'art_ctl' => fn(int $status) => rmon_art_ctl_set($link, 3, $source, 0, 10, 20, 50, 100, 200, 500, 1000, -1, '', $status),
    ];
}

foreach ([
    '--no-capture' => bundled_agent('--no-capture'), 'a file' => reading_agent([capture_file([])], '--no-capture'),
] as $how => $agent) {
    $link = module_link($agent);
    $counts = $how === 'a file';
    expect_same(NO_ERROR, start_row(fn(int $status) => dsmon_aggctl_set($link, 3, '', '', $status)), 'profile');
    // Rows that the kernel counts for are not reported.
    expect_same(NO_ERROR, start_row(fn(int $status) => rmon_etherstats_set($link, 9, 1, '', $status)), 'statistics');
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_history_ctl_set($link, 9, 1, 5, 5, '', $status)),
        'history',
    );
    expect_same(false, str_contains($agent->said(), 'counts nothing'), "$how: said at the start");
    $said = [];
    foreach (counting_rows($link, 1) as $table => $set) {
        expect_same(NO_ERROR, $set(CREATE_REQUEST), "$how: $table");
        $before = $agent->said();
        expect_same([NO_ERROR, NO_ERROR], [$set(VALID), $set(VALID)], "$how: $table becomes valid, and is set again");
        $line = $counts ? '' : "rmon-agent: $table 3 counts nothing: there is no capture on lo\n";
        expect_same($line, substr($agent->said(), strlen($before)), "$how: said of $table");
    }
    rmon_close($link);
    rmon_close($link); // the second one ends it: the link to the next agent is another one
    expect_same(0, end_agent($agent), "$how: exit code");
}
done();
--EXPECT--
OK
