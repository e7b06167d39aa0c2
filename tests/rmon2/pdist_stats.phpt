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
check_first_row(function: $get, bytes: stats_bytes(...), row: stats_row(...), label: LABEL);
check_first_row(function: $getnext, bytes: stats_bytes(...), row: stats_row(...), label: LABEL);
check_all_rows(function: $getbulk, bytes: stats_bytes(...), row: stats_row(...), label: LABEL);

// A list's keys are 0 to 2 although 10 rows were wanted.
[$agent, $link] = [the_agent(), the_link()];
$agent->add(reply(many_rows(3, stats_bytes(...))));
expect_same([0, 1, 2], array_keys(rmon_pdist_stats_getbulk($link, 5, -6, 10)), 'keys of a list');

$ones = fn(int $getType) => record(index1: i32(1), index2: i32(1), getType: i32($getType), count: i32(1));
check_order(
    function: ['rmon_pdist_stats_get', [], 26, $ones(1)],
    kinds: ['int', 'int', 'int'],
    before: [1, 2, 3],
    after: [],
    label: LABEL,
);
check_order(
    function: ['rmon_pdist_stats_getbulk', [], 26, $ones(3)],
    kinds: ['int', 'int', 'int', 'int'],
    before: [4, 1, 2, 3],
    after: [],
    label: LABEL,
);

// Others.
$label = 'rmon_pdist_stats_getothers';
$others = [$label, [-77], 184, record(index: i32(-77))];
$counters = record(packets: u64('0xffffffffffffffff'), octets: u64(0x700000003));
$row = [0 => 0, 'status' => 0, 'packets' => 18446744073709551616.0, 'octets' => 30064771075.0];
check_row($others, i32(0) . $counters, $row, $label);
check_order(
    function: [$label, [], 184, i32(1)],
    kinds: ['int', 'int'],
    before: [1, 2],
    after: [],
    label: $label,
);

// A status that is not zero makes the answer a failure, reported in the words for a call that went well.
foreach ([1, -1, 0x7fffffff] as $status) {
    expect_exchange(
        function: 'rmon_pdist_stats_getothers',
        arguments: [-77],
        procedure: 184,
        request: i32(-77),
        step: reply(i32($status) . $counters),
        value: false,
        messages: ["$label: RPC: Success"],
    );
}
done();
?>
--EXPECT--
OK
