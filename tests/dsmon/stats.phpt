--TEST--
DSMON statistics: control rows and counters of the aggregation groups
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$control = [
    'status' => ['i32', 0],
    'dsmonStatsControlIndex' => ['u32', 4000000001],
    'dsmonStatsControlAggProfile' => ['u32', 4000000002],
    'dsmonStatsControlDroppedFrames' => ['u32', 4000000003],
    'dsmonStatsControlStatus' => ['i32', -4],
    'dsmonStatsControlOwner' => ['text', 'ops', 255],
    'dsmonStatsControlDataSource_ifIndex' => ['i32', -7],
];
check_row_readers(
    table: 'dsmon_statsctl',
    procedure: 72,
    row: $control,
    keys: [
        'dsmonStatsControlIndex',
        'dsmonStatsControlDataSource_ifIndex',
        'dsmonStatsControlAggProfile',
        'dsmonStatsControlDroppedFrames',
        'dsmonStatsControlOwner',
        'dsmonStatsControlStatus',
    ],
    label: null,
    failed: FAILED_READ,
);
check_writer(
    function: 'dsmon_statsctl_set',
    procedure: 109,
    sent: array_replace($control, ['dsmonStatsControlDroppedFrames' => ['u32', 0]]),
    names: [
        'dsmonStatsControlIndex',
        'dsmonStatsControlDataSource_ifIndex',
        'dsmonStatsControlAggProfile',
        'dsmonStatsControlOwner',
        'dsmonStatsControlStatus',
    ],
    label: null,
);

$stats = [
    'status' => ['i32', 0],
    'dsmonAggGroupIndex' => ['u32', 4000000004],
    'dsmonStatsControlIndex' => ['u32', 4000000005],
    'dsmonStatsInHCPkts' => ['u64', 0x100000006],
    'dsmonStatsInHCOctets' => ['u64', 0x200000007],
    'dsmonStatsOutHCPkts' => ['u64', 0x300000008],
    'dsmonStatsOutHCOctets' => ['u64', 0x400000009],
];
$keys = [
    'dsmonStatsControlIndex',
    'dsmonAggGroupIndex',
    'dsmonStatsInHCPkts',
    'dsmonStatsInHCOctets',
    'dsmonStatsOutHCPkts',
    'dsmonStatsOutHCOctets',
];
check_row_readers(
    table: 'dsmon_stats',
    procedure: 74,
    key: TWO_INDEXES,
    row: $stats,
    keys: $keys,
    label: null,
    failed: FAILED_READ,
);

// Counters above 2^63, as the nearest floats: all bits set shows 2^64.
expect_exchange(
    function: 'dsmon_stats_get',
    arguments: [3, 4],
    procedure: 74,
    request: record(index1: i32(3), index2: i32(4), getType: i32(1)),
    step: reply(wire($stats, dsmonStatsInHCPkts: '0x8000000000000005', dsmonStatsInHCOctets: '0xffffffffffffffff')),
    value: shown(
        $stats,
        $keys,
        dsmonStatsInHCPkts: 9223372036854775808.0,
        dsmonStatsInHCOctets: 18446744073709551616.0,
    ),
);

done();
?>
--EXPECT--
OK
