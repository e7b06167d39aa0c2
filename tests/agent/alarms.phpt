--TEST--
The bundled agent's alarms: thresholds with hysteresis, startup alarms, deltas, the log of what they fired
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$agent = bundled_agent('--no-capture');
$link = module_link($agent);

/** Gives the sampled variable a value. It is a size that a set changes, and nothing else does. */
function give(int $value): void
{
    global $link;
    expect_same(NO_ERROR, rmon_addrmap_scalars_set($link, $value), "value $value");
}

const VARIABLE = 'addressMapMaxDesiredEntries.0';
foreach ([1 => 'high', 2 => 'low'] as $event => $description) {
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_event_set($link, $event, $description, 2, '', 'me', $status)),
        'event',
    );
}
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_event_set($link, 3, '', 1, '', 'me', $status)),
    'an event that does nothing',
);

/** Sets an alarm that is above 10 or below 3, each second. */
function alarm(
    int $index,
    int $status,
    int $type = 1,
    int $startup = 3,
    int $rising = 10,
    int $falling = 3,
    int $high = 1,
    int $low = 2,
    int $interval = 1,
): mixed {
    global $link;
    return rmon_alarm_set(
        $link,
        ...[$index, $interval, VARIABLE, $type, $startup, $rising, $falling, $high, $low, 'me', $status],
    );
}

/** All that the events' logs say. */
function logged(): array
{
    global $link;
    $rows = [];
    for ([$event, $at] = [0, 0]; ($row = rmon_log_getnext($link, $event, $at))['status'] === NO_ERROR; [$event, $at] = [$row['logEventIndex'], $row['logIndex']]) {
        $rows[] = [$event = $row['logEventIndex'], $row['logIndex'], $row['logDescription']];
    }
    return $rows;
}

/** Alarm 1 has sampled a value; what the log says then. */
function sampled(int $value): array
{
    global $link;
    give($value);
    expect_soon($value & 0xffffffff, fn() => rmon_alarm_get($link, 1)['alarmValue'], "sample $value");
    return logged();
}

$high = fn(int $number, int $value) => [1, $number, 'high: ' . VARIABLE . " rose to $value, threshold 10"];
$low = fn(int $number, int $value) => [2, $number, 'low: ' . VARIABLE . " fell to $value, threshold 3"];

// Between the thresholds nothing is logged. Each one is logged when it is reached, and again only after the other was.
give(5);
expect_same(NO_ERROR, start_row(fn(int $status) => alarm(1, $status)), 'alarm');
expect_same(5, rmon_alarm_get($link, 1)['alarmValue'], 'the first sample');
$log = [];
foreach ([5 => [], 9 => []] as $value => $told) {
    expect_same([], sampled($value), "nothing at $value");
}
foreach ([
    [10, $high(1, 10)], [9, null], [50, null], [4, null], [11, null], [3, $low(1, 3)], [9, null], [0, null],
    [9, null], [-1, $high(2, 0xffffffff)], [2, $low(2, 2)],
] as [$value, $told]) {
    if ($told) {
        $log[] = $told;
        sort($log);
    }
    expect_same($log, sampled($value), "the log at $value");
}
expect_same(
    rmon_event_get($link, 2)['eventLastTimeSent'],
    rmon_log_get($link, 2, 2)['logTime'],
    'the time of the event',
);
expect_same(
    [2, true],
    [
        rmon_log_get($link, 1, 2)['logIndex'],
        rmon_log_get($link, 1, 2)['logTime'] <= rmon_log_get($link, 2, 2)['logTime'],
    ],
    'the order of times',
);

expect_same(NO_ERROR, alarm(1, UNDER_CREATION), 'alarm 1 stops');

// Startup: of the first sample only the alarm that is asked for.
foreach ([
    [11, 50, 1, true], [12, 50, 2, false], [13, 50, 3, true], [14, 1, 1, false], [15, 1, 2, true], [16, 1, 3, true],
] as [$index, $value, $startup, $told]) {
    give($value);
    $before = count(logged());
    expect_same(NO_ERROR, start_row(fn(int $status) => alarm($index, $status, startup: $startup)), "alarm $index");
    expect_same($before + (int) $told, count(logged()), "startup alarm $startup at $value");
    expect_same(NO_ERROR, alarm($index, INVALID), "alarm $index goes");
}
// One that was not logged at the start is logged when it comes again, from the other side.
give(50);
$before = count(logged());
expect_same(NO_ERROR, start_row(fn(int $status) => alarm(17, $status, startup: 2)), 'alarm 17');
expect_same($before, count(logged()), 'nothing at the start');
give(3);
expect_soon($before + 1, fn() => count(logged()), 'it falls');
expect_same(
    'low: ' . VARIABLE . ' fell to 3, threshold 3',
    rmon_log_get($link, 2, count(array_filter(logged(), fn(array $row) => $row[0] === 2)))['logDescription'],
    'what is told',
);
expect_same(NO_ERROR, alarm(17, INVALID), 'alarm 17 goes');

// Deltas: by how much it grew since the last sample. A growth of 99 is not logged where 100 is the threshold. In two
// seconds, as a growth over more than half an interval too long is not told as it is.
give(5);
foreach ([1, 2] as $event) {
    expect_same(NO_ERROR, rmon_event_set($link, $event, '', 0, '', '', INVALID), 'event goes');
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_event_set($link, $event, '', 2, '', 'me', $status)),
        'event',
    );
}
expect_same(NO_ERROR, start_row(fn(int $status) => alarm(22, $status, high: 0, low: 0)), 'alarm that tells nothing');
foreach ([20 => 100, 21 => 99] as $index => $rising) {
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => alarm(
            $index,
            $status,
            type: 2,
            startup: 1,
            rising: $rising,
            falling: 0,
            low: $index === 20 ? 3 : 2,
            interval: 2,
        )),
        "alarm $index",
    );
}
$rose = fn(int $number, int $by, int $threshold) => [1, $number, VARIABLE . " rose to $by, threshold $threshold"];
$fell = [2, 1, VARIABLE . ' fell to 0, threshold 0'];
give(104);
expect_soon([$rose(1, 99, 99), $fell], logged(...), 'a growth of 99, then none');
expect_soon(
    true,
    fn() => rmon_event_get($link, 3)['eventLastTimeSent'] > 0,
    'an event that does nothing, but was fired',
);
expect_same(NO_ERROR, alarm(21, INVALID), 'alarm 21 goes');
give(204);
expect_soon([$rose(1, 99, 99), $rose(2, 100, 100), $fell], logged(...), 'a growth of 100');

// One that fell did not grow.
foreach ([204, 0] as $value) {
    give($value);
    expect_soon($value, fn() => rmon_alarm_get($link, 22)['alarmValue'], "sample $value");
}
// Alarm 20 takes its samples later than alarm 22: within its interval it has seen the 0 too.
$then = rmon_system_get($link)['sysUpTime'];
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > $then + 200, 'an interval later');
give(150);
expect_soon([$rose(1, 99, 99), $rose(2, 100, 100), $rose(3, 150, 100), $fell], logged(...), 'a growth from 0');

agent_done($agent);
--EXPECT--
OK
