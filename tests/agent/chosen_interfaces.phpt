--TEST--
The bundled agent measures the interfaces that were chosen, and no others
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

go_to_own_network(module: true);
ip('link add one type veth peer name two');
ip('link add three type veth peer name four');

foreach ([
    [['-i', 'one'], ['one']],
    [['--interface', 'three', '-i', 'lo'], ['lo', 'three']],
    [['--interface=one', '--interface=one'], ['one']],
    [[], ['lo', 'one', 'two', 'three', 'four']],
] as [$options, $chosen]) {
    $what = implode(' ', $options);
    $agent = bundled_agent('--no-capture', ...$options);
    $link = module_link($agent);
    // The kernel's own list of this network is not under /sys.
    $indexes = array_column(walk(fn(int $at) => rmon_ifentry_getnext($link, $at), 'ifIndex'), 'ifIndex', 'ifDescr');
    expect_same(
        [],
        array_diff(['lo', 'one', 'two', 'three', 'four'], array_keys($indexes)),
        "interface table with $what",
    );
    $expected = array_map(fn(string $name) => $indexes[$name], $chosen);
    sort($expected);
    $measured = array_column(
        walk(fn(int $at) => rmon_etherstats_getnext($link, $at), 'etherStatsIndex'),
        'etherStatsDataSource',
    );
    expect_same($expected, $measured, "statistics with $what");
    $sampled = array_column(
        walk(fn(int $at) => rmon_history_ctl_getnext($link, $at), 'historyControlIndex'),
        'historyControlDataSource',
    );
    expect_same($expected, array_values(array_unique($sampled)), "history with $what");
    foreach ($indexes as $name => $index) {
        $answer = in_array($index, $expected, true) ? NO_ERROR : BAD_VALUE;
        expect_same(
            $answer,
            start_row(fn(int $status) => rmon_host_ctl_set($link, $index, $index, '', $status)),
            "hosts on $name with $what",
        );
    }
    rmon_close($link);
    rmon_close($link); // the second one ends it: the link to the next agent is another one
    expect_same(0, end_agent($agent), "exit code with $what");
}

// What can't be chosen.
ip('tuntap add dev tunnel mode tun');
foreach ([
    [1, 'there is no interface none', '-i', 'none'],
    [1, 'there is no interface none', '-i', 'one', '-i', 'none'],
    [1, 'tunnel carries no Ethernet frames', '-i', 'tunnel'],
    [2, 'no interface: -i (--help lists the options)', '-i', ''],
    [2, '-i needs a value (--help lists the options)', '-i'],
    [2, '--interface and --read exclude each other (--help lists the options)', '-i', 'one', '--read', capture_file([])],
] as $case) {
    [$code, $output, $errors] = run(agent_program(), '--port', '0', ...array_slice($case, 2));
    expect_same(
        [$case[0], '', "rmon-agent: $case[1]\n"],
        [$code, $output, $errors],
        implode(' ', array_slice($case, 2)),
    );
}
done();
--EXPECT--
OK
