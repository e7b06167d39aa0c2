--TEST--
The bundled agent's history samples and alarms, from known frames
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

$all = str_repeat("\xff", 6);
$frame = fn(string $to, int $size) => str_pad($to . mac(1) . "\x08\0", $size - 4, "\0");
$agent = reading_agent([capture_file([
    [1.0, $frame(mac(2), 64)], [1.0, $frame(mac(2), 1518)], [1.0, $frame($all, 100)],
    [1.0, $frame("\x01\0\x5e\0\0\1", 200)], [1.0, $frame(mac(2), 50)], [1.0, $frame(mac(2), 2000)],
])]);
$link = module_link($agent);

/** The rows that a walk meets. */
function met(callable $getnext): array
{
    for ($rows = []; ($row = $getnext(end($rows) ?: null)) && $row['status'] === NO_ERROR && count($rows) < 1000;) {
        $rows[] = $row;
    }
    return $rows;
}

// From the start there are two rows for the interface.
$controls = fn() => met(fn(?array $last) => rmon_history_ctl_getnext($link, $last['historyControlIndex'] ?? 0));
$control = fn(int $index, int $interval, int $requested, int $granted, string $owner, int $status, int $source = 1) => [
    0 => NO_ERROR, 'status' => NO_ERROR, 'historyControlIndex' => $index, 'historyControlDataSource' => $source,
    'historyControlBucketsRequested' => $requested, 'historyControlBucketsGranted' => $granted,
    'historyControlInterval' => $interval, 'historyControlOwner' => $owner, 'historyControlStatus' => $status,
];
expect_same(
    [$control(1, 30, 50, 50, 'monitor', VALID), $control(2, 1800, 50, 50, 'monitor', VALID)],
    $controls(),
    'rows at the start',
);
$set = fn(int $index, int $status, int $interval = 1, int $buckets = 3, int $source = 1) =>
    rmon_history_ctl_set($link, $index, $source, $buckets, $interval, 'me', $status);
foreach ([[0, 3, 1], [3601, 3, 1], [1, 0, 1], [1, 65536, 1], [1, 3, -1]] as [$interval, $buckets, $source]) {
    expect_same(
        BAD_VALUE,
        $set(7, CREATE_REQUEST, $interval, $buckets, $source),
        "nonsense: $interval $buckets $source",
    );
}
expect_same(NO_SUCH_NAME, $set(7, VALID), 'valid without a row');
expect_same(NO_ERROR, $set(7, CREATE_REQUEST, buckets: 65535), 'createRequest');
expect_same($control(7, 1, 65535, 3600, 'me', UNDER_CREATION), rmon_history_ctl_get($link, 7), 'the new row');
expect_same(BAD_VALUE, $set(7, VALID, source: 2), 'valid without its interface');
expect_same(NO_ERROR, $set(7, VALID), 'valid');
expect_same($control(7, 1, 3, 3, 'me', VALID), rmon_history_ctl_get($link, 7), 'the valid row');
expect_same(BAD_VALUE, $set(7, VALID, interval: 2), 'another interval while valid');
expect_same(NO_SUCH_NAME, rmon_history_ctl_get($link, 8)['status'], 'no row');
expect_same(false, rmon_etherhistory_get($link, 7, 0), 'no sample');

// Alarms: on the variable, on its growth, and on another name for it; what can't be.
foreach ([1, 2, 3] as $event) {
    expect_same(NO_ERROR, rmon_event_set($link, $event, '', 2, '', 'me', CREATE_REQUEST), 'event');
    expect_same(NO_ERROR, rmon_event_set($link, $event, '', 2, '', 'me', VALID), 'event');
}
$alarm = fn(int $index, int $status, string $variable = 'etherStatsPkts.1', int $type = 1, int $startup = 3, int $rising = 5, int $falling = 0, int $interval = 1) =>
    rmon_alarm_set($link, $index, $interval, $variable, $type, $startup, $rising, $falling, 1, 2, 'me', $status);
foreach (['interval' => 0, 'type' => 3, 'startup' => 0, 'falling' => 6, 'variable' => "\n"] as $name => $value) {
    expect_same(BAD_VALUE, $alarm(...['index' => 1, 'status' => CREATE_REQUEST, $name => $value]), "nonsense: $name");
}
foreach ([
    '', 'etherStatsPkts', 'etherStatsPkts.', 'etherStatsPkts.9', 'etherStatsPkts.1.1', 'etherStatsPkts.-1',
    'etherStatsOwner.1', '1.3.6', '1.3.6.1.2.1.16.1.1.1.2.1', '99999999999999999999.1', 'hostInPkts.1.6.2.0.0.0.0',
    str_repeat('1.', 100),
] as $variable) {
    expect_same(NO_ERROR, $alarm(1, CREATE_REQUEST, $variable), 'createRequest');
    expect_same(BAD_VALUE, $alarm(1, VALID, $variable), "valid without its variable: $variable");
    expect_same(NO_ERROR, $alarm(1, INVALID), 'invalid');
}
$make = function (int $index, ...$rest) use ($alarm) {
    expect_same(NO_ERROR, $alarm($index, CREATE_REQUEST, ...$rest), 'createRequest');
    expect_same(NO_ERROR, $alarm($index, VALID, ...$rest), 'valid');
};
expect_same(NO_ERROR, rmon_host_ctl_set($link, 4, 1, '', CREATE_REQUEST), 'createRequest');
expect_same(NO_ERROR, rmon_host_ctl_set($link, 4, 1, '', VALID), 'valid');
$make(1, startup: 1);                                             // low at first, which it is not to tell
// Grows once. In two seconds, as a growth over more than half an interval too long is not told as it is.
$make(2, '.1.3.6.1.2.1.16.1.1.1.5.1', type: 2, startup: 1, interval: 2);
$make(3, '1.3.6.1.2.1.2.2.1.4.1', rising: 1, falling: 1, startup: 1);    // ifMtu, high at first
expect_same(BAD_VALUE, $alarm(1, VALID, startup: 2), 'another startup alarm while valid');
$row = rmon_alarm_get($link, 2);
expect_same(
    [2, '.1.3.6.1.2.1.16.1.1.1.5.1', 2, 0, 1, 5, 0, 1, 2, 'me', VALID],
    array_slice(array_values($row), 3),
    'an alarm',
);
expect_same(NO_SUCH_NAME, rmon_alarm_getnext($link, 3)['status'], 'behind the last alarm');

read_files($agent);

// One sample has all frames; the others have none. There are never more than were granted.
expect_soon(true, function () use ($link, &$samples) {
    $samples = rmon_etherhistory_getbulk($link, 7, 0, 100) ?: [];
    return end($samples) && end($samples)['etherHistorySampleIndex'] >= 4 && array_sum(array_column($samples, 'etherHistoryPkts')) > 0 || count($samples) === 3;
}, 'samples');
$full = array_values(array_filter($samples, fn($row) => $row['etherHistoryPkts'] > 0));
expect_same(1, count($full), 'samples with packets');
$names = [
    'DropEvents',
    'Octets',
    'Pkts',
    'BroadcastPkts',
    'MulticastPkts',
    'CRCAlignErrors',
    'UndersizePkts',
    'OversizePkts',
    'Jabbers',
    'Fragments',
    'Collisions',
];
expect_same(
    [0, 64 + 1518 + 100 + 200 + 50 + 2000, 6, 1, 1, 0, 1, 1, 0, 0, 0],
    array_map(fn($name) => (int) $full[0]["etherHistory$name"], $names),
    'the sample',
);
expect_same($full[0], rmon_etherhistory_get($link, 7, $full[0]['etherHistorySampleIndex']), 'the same by get');
foreach (array_slice($samples, 1) as $i => $sample) {
    expect_same(
        $samples[$i]['etherHistorySampleIndex'] + 1,
        $sample['etherHistorySampleIndex'],
        'indexes without a gap',
    );
    $second = $sample['etherHistoryIntervalStart'] - $samples[$i]['etherHistoryIntervalStart'];
    expect_same(true, $second >= 90 && $second < 300, "hundredths of an interval: $second");
}
expect_soon(
    true,
    fn() => (rmon_etherhistory_getbulk($link, 7, 0, 100)[0]['etherHistorySampleIndex'] ?? 0) >= 2,
    'the oldest sample gives way',
);
$samples = rmon_etherhistory_getbulk($link, 0, 0, 100);
expect_same(3, count($samples), 'samples that are kept');
expect_same(NO_ERROR, $set(7, VALID, buckets: 1), 'fewer buckets');
expect_same(1, count(rmon_etherhistory_getbulk($link, 7, 0, 100)), 'samples after that');
expect_same(false, rmon_etherhistory_getnext($link, 7, PHP_INT_MAX & 0x7fffffff), 'behind the last sample');
expect_same(NO_ERROR, $set(7, INVALID), 'invalid');
expect_same(false, rmon_etherhistory_getbulk($link, 0, 0, 100), 'samples without the row');

// The log: what rose at once, what rose when the frames came, what fell again after them.
$log = fn(int $event) => array_column(array_filter(
    met(fn(?array $last) => rmon_log_getnext($link, $last['logEventIndex'] ?? 0, $last['logIndex'] ?? 0)),
    fn($row) => $row['logEventIndex'] === $event,
), 'logDescription');
$delta = '.1.3.6.1.2.1.16.1.1.1.5.1';
expect_soon(1, fn() => count($log(2)), 'falling events');
$rising = $log(1);
sort($rising);
expect_same(
    [
        "$delta rose to 6, threshold 5",
        '1.3.6.1.2.1.2.2.1.4.1 rose to ' . rmon_ifentry_get($link, 1)['ifMtu'] . ', threshold 1',
        'etherStatsPkts.1 rose to 6, threshold 5',
    ],
    $rising,
    'rising events',
);
expect_same(["$delta fell to 0, threshold 0"], $log(2), 'falling events');
expect_same([6, 0], [rmon_alarm_get($link, 1)['alarmValue'], rmon_alarm_get($link, 2)['alarmValue']], 'values');

// Counts of hosts and conversations have names, too.
$make(4, 'hostInPkts.4.6.2.0.0.0.0.2', rising: 2);
expect_same(2, rmon_alarm_get($link, 4)['alarmValue'], 'hostInPkts');
expect_same(6, rmon_get_mib_var($link, 'hostOutPkts.4.6.2.0.0.0.0.1'), 'hostOutPkts');
expect_same(false, rmon_get_mib_var($link, 'hostOutPkts.4.6.2.0.0.0.0.256'), 'no address');

// An alarm is removed with its variable.
expect_same(NO_ERROR, rmon_host_ctl_set($link, 4, 1, '', INVALID), 'invalid');
expect_soon(NO_SUCH_NAME, fn() => rmon_alarm_get($link, 4)['status'], 'the alarm of a host that is gone');

agent_done($agent);
--EXPECT--
OK
