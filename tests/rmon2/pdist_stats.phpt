--TEST--
Protocol distribution, and what belongs to no protocol
--FILE--
<?php
require __DIR__ . '/calls.inc';

// The statistics report under the control table's label.
const LABEL = 'rmon_pdist_ctl_get';

function stats_bytes(int $i): string
{
    return record(
        status: i32(100 + $i),
        protocolDistControlIndex: i32(-200 - $i),
        protocolDirLocalIndex: i32(300 + $i),
        protocolDistStatsPkts: u64('0x8000000000000000'),
        protocolDistStatsOctets: u64(0x500000000 + $i),
        pd_flags: u32(0xffffff00 + $i),
    );
}

function stats_row(int $i): array
{
    return [
        0 => 100 + $i,
        'status' => 100 + $i,
        1 => -200 - $i,
        'pd_flags' => 0xffffff00 + $i,
        'protocolDistControlIndex' => -200 - $i,
        'protocolDirLocalIndex' => 300 + $i,
        'protocolDistStatsPkts' => 9223372036854775808.0,
        'protocolDistStatsOctets' => 21474836480.0 + $i,
    ];
}

$key = fn(int $getType, int $count)
    => record(index1: i32(5), index2: i32(-6), getType: i32($getType), count: i32($count));
$get = ['rmon_pdist_stats_get', [5, -6], 26, $key(1, 1)];
$getnext = ['rmon_pdist_stats_getnext', [5, -6], 26, $key(2, 1)];
$getbulk = ['rmon_pdist_stats_getbulk', [5, -6, 10], 26, $key(3, 10)];
check_first_row($get, stats_bytes(...), stats_row(...), LABEL);
check_first_row($getnext, stats_bytes(...), stats_row(...), LABEL);
check_all_rows($getbulk, stats_bytes(...), stats_row(...), LABEL);

// A list's keys are 0 to 2 although 10 rows were wanted.
[$agent, $link] = agent_and_link();
$agent->add(reply(many_rows(3, stats_bytes(...))));
expect_same([0, 1, 2], array_keys(rmon_pdist_stats_getbulk($link, 5, -6, 10)), 'keys of a list');

$ones = fn(int $getType) => record(index1: i32(1), index2: i32(1), getType: i32($getType), count: i32(1));
check_order(['rmon_pdist_stats_get', [], 26, $ones(1)], 'iii', [1, 2, 3], [], LABEL);
check_order(['rmon_pdist_stats_getbulk', [], 26, $ones(3)], 'iiii', [4, 1, 2, 3], [], LABEL);

// Others.
$label = 'rmon_pdist_stats_getothers';
$others = [$label, [-77], 184, record(index: i32(-77))];
$counters = record(packets: u64('0xffffffffffffffff'), octets: u64(0x700000003));
$row = [0 => 0, 'status' => 0, 'packets' => 18446744073709551616.0, 'octets' => 30064771075.0];
check_row($others, i32(0) . $counters, $row, $label);
check_order([$label, [], 184, i32(1)], 'ii', [1, 2], [], $label);

// A status that is not zero makes the answer a failure, reported in the words for a call that went well.
foreach ([1, -1, 0x7fffffff] as $status) {
    expect_exchange(
        reply(i32($status) . $counters), fn() => rmon_pdist_stats_getothers($link, -77),
        false, ["$label: RPC: Success"], 184, i32(-77),
    );
}
done();
?>
--EXPECT--
OK
