--TEST--
The bundled agent's intervals begin with their rows and lie on a grid: samples, alarms on growth, reports
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

// A hundred frames a second, for five minutes: longer than the test takes.
$frame = str_pad(mac(2) . mac(1) . "\x08\0", 60, "\0");
$file = capture_file(array_map(fn(int $i) => [$i / 100, $frame], range(0, 29999)));
$agent = reading_agent([$file], '--speed', 'recorded');
$link = module_link($agent);
proc_terminate($agent->process, 10); // SIGUSR1: begin to read
expect_soon(true, fn() => rmon_etherstats_get($link, 1)['etherStatsPkts'] > 0, 'frames');

expect_same(NO_ERROR, start_row(fn(int $status) => rmon_event_set($link, 1, '', 2, '', '', $status)), 'event');
expect_same(NO_ERROR, start_row(fn(int $status) => rmon_host_ctl_set($link, 1, 1, '', $status)), 'hosts');
$history = fn(int $index, int $status) => rmon_history_ctl_set($link, $index, 1, 3600, 1, '', $status);
$alarm = fn(int $index, int $status) => rmon_alarm_set(
    $link,
    $index,
    1,
    'etherStatsPkts.1',
    2,
    1,
    170,
    0,
    1,
    0,
    '',
    $status,
);
$art = fn(int $index, int $status) => rmon_art_ctl_set(
    $link,
    $index,
    1,
    1,
    10,
    20,
    50,
    100,
    200,
    500,
    1000,
    -1,
    '',
    $status,
);

// Rows that become valid at ten different moments of a second.
$rows = range(11, 20);
$begun = [];
foreach ($rows as $row) {
    expect_same(
        [NO_ERROR, NO_ERROR, NO_ERROR],
        [
            start_row(fn(int $status) => $history($row, $status)),
            start_row(fn(int $status) => $alarm($row, $status)),
            start_row(fn(int $status) => $art($row, $status)),
        ],
        "rows $row",
    );
    $begun[$row] = rmon_art_ctl_get($link, $row)['artControlRptStartTime'];
    usleep(100000); // the next tenth of a second
}

/** The samples of a row: when each began, how long it lasted, in hundredths, and what it counted. The last one is still open. */
$samples = function (int $row) use ($link): array {
    $read = rmon_etherhistory_getbulk($link, $row, 0, 3600) ?: [];
    $read = array_values(array_filter($read, fn(array $sample) => $sample['etherHistoryIndex'] === $row));
    $found = [];
    foreach (array_slice($read, 1) as $i => $next) {
        $found[] = [
            $read[$i]['etherHistoryIntervalStart'],
            $next['etherHistoryIntervalStart'] - $read[$i]['etherHistoryIntervalStart'],
            (int) $read[$i]['etherHistoryPkts'],
        ];
    }
    return $found;
};

/** Whether a time lies on a row's grid, but for what the machine may take to get there. */
$on_grid = fn(int $time, int $origin) => $time - $origin >= 99 && ($time - $origin + 1) % 100 <= 6;

// Each row's samples and reports come when its own seconds are over.
foreach ($rows as $row) {
    expect_soon(true, function () use ($samples, $on_grid, $row) {
        $found = $samples($row);
        return $found && array_filter($found, fn(array $sample) => $on_grid($sample[0], $found[0][0])) !== [];
    }, "a sample on the grid of row $row");
    expect_soon(true, function () use ($link, $on_grid, $row, $begun) {
        $control = rmon_art_ctl_get($link, $row);
        return $control['artControlGeneratedRpts'] > 0 && $on_grid($control['artControlRptStartTime'], $begun[$row]);
    }, "a report on the grid of row $row");
}

// A report of the busiest hosts over a second has a second's frames, whenever it began.
expect_soon(true, function () use ($link, $rows) {
    $set = fn(int $row, int $status) => rmon_hosttopn_ctl_set($link, $row, 1, 2, 1, 5, '', $status);
    foreach ($rows as $row) {
        expect_same(NO_ERROR, start_row(fn(int $status) => $set($row, $status)), "report $row");
        usleep(100000); // the next tenth of a second
    }
    expect_soon(
        0,
        fn() => array_sum(array_map(
            fn(int $row) => rmon_hosttopn_ctl_get($link, $row)['hostTopNTimeRemaining'],
            $rows,
        )),
        'reports',
    );
    $rates = array_map(fn(int $row) => (int) rmon_hosttopn_get($link, $row, 1)['hostTopNRate'], $rows);
    foreach ($rows as $row) {
        expect_same(NO_ERROR, $set($row, INVALID), "report $row goes");
    }
    return max($rates) < 125 && min($rates) > 75;
}, 'reports of a second');

/** Stops the agent for so many milliseconds. */
$pause = function (int $milliseconds) use ($agent): void {
    proc_terminate($agent->process, 19); // SIGSTOP
    usleep($milliseconds * 1000); // how late it is then is what is tested
    proc_terminate($agent->process, 18); // SIGCONT
};

// A late sample is taken late, and the next one at its own time: the two last two seconds together. The pause lies over
// the end of an interval, from a tenth of a second before it on, and what follows over that of the next one.
expect_soon(true, function () use ($pause, $samples, $link) {
    $since = (rmon_system_get($link)['sysUpTime'] - $samples(11)[0][0]) % 100;
    usleep((190 - $since) % 100 * 10000);
    $pause(300);
    usleep(1000000);
    $found = $samples(11);
    for ($i = 0; $i + 1 < count($found); $i++) {
        [$late, $short] = [$found[$i][1], $found[$i + 1][1]];
        if ($late >= 112 && $late + $short >= 195 && $late + $short <= 206) {
            return true;
        }
    }
    return false;
}, 'a late sample and a short one behind it');

// A long pause is one long sample, and an alarm does not take its growth for that of a second.
$pause(3300);
expect_soon(true, fn() => array_filter($samples(11), fn(array $sample) => $sample[1] >= 300) !== [], 'a long sample');
expect_soon(true, fn() => array_slice($samples(11), -1)[0][1] < 150, 'the one behind it');
foreach ($samples(11) as [$began, $lasted, $counted]) {
    expect_same(true, $lasted > 0, "the sample of $began has an interval");
    expect_same(true, abs($counted - $lasted) < 40, "$counted frames in $lasted hundredths");
}
expect_same(NO_SUCH_NAME, rmon_log_getnext($link, 1, 0)['status'], 'no alarm rose');

agent_done($agent);
--EXPECT--
OK
