--TEST--
DSMON protocol distribution and hosts: control rows and counters
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$pdist_control = [
    'status' => ['i32', 0],
    'dsmonPdistCtlIndex' => ['i32', -1001],
    'dsmonPdistAggProfile' => ['u32', 4000000001],
    'dsmonPdistCtlMaxDesiredEntries' => ['i32', -1],
    'dsmonPdistDroppedFrames' => ['u32', 4000000002],
    'dsmonPdistCtlOwner' => ['text', 'ops', 255],
    'dsmonPdistCtlDataSource_ifIndex' => ['u32', 4000000003],
    'dsmonPdistCtlInserts' => ['u32', 4000000004],
    'dsmonPdistCtlDeletes' => ['u32', 4000000005],
    'dsmonPdistCtlStatus' => ['i32', -4],
];
check_row_readers(
    table: 'dsmon_pdistctl',
    procedure: 133,
    row: $pdist_control,
    keys: [
        'dsmonPdistCtlIndex',
        'dsmonPdistCtlDataSource_ifIndex',
        'dsmonPdistAggProfile',
        'dsmonPdistDroppedFrames',
        'dsmonPdistCtlInserts',
        'dsmonPdistCtlDeletes',
        'dsmonPdistCtlOwner',
        'dsmonPdistCtlStatus',
        'dsmonPdistCtlMaxDesiredEntries',
    ],
    label: null,
    failed: FAILED_READ,
);
// The table's size comes last.
check_writer(
    function: 'dsmon_pdistctl_set',
    procedure: 134,
    sent: array_replace($pdist_control, [
        'dsmonPdistDroppedFrames' => ['u32', 0],
        'dsmonPdistCtlInserts' => ['u32', 0],
        'dsmonPdistCtlDeletes' => ['u32', 0],
    ]),
    names: [
        'dsmonPdistCtlIndex',
        'dsmonPdistCtlDataSource_ifIndex',
        'dsmonPdistAggProfile',
        'dsmonPdistCtlOwner',
        'dsmonPdistCtlStatus',
        'dsmonPdistCtlMaxDesiredEntries',
    ],
    label: null,
);

check_row_readers(
    table: 'dsmon_pdstats',
    procedure: 137,
    key: [
        'dsmonPdistCtlIndex' => ['i32', -11],
        'dsmonPdistTimeMark' => ['u32', 4100000001],
        'dsmonAggGroupIndex' => ['u32', 4100000002],
        'protocolDirLocalIndex' => ['i32', -12],
        'getType' => ['i32', 1],
    ],
    names: ['dsmonPdistCtlIndex', 'dsmonPdistTimeMark', 'dsmonAggGroupIndex', 'protocolDirLocalIndex'],
    row: [
        'status' => ['i32', 0],
        'dsmonPdistCtlIndex' => ['u32', 4000000001],
        'dsmonPdistTimeMark' => ['u32', 4000000002],
        'dsmonAggGroupIndex' => ['u32', 4000000003],
        'protocolDirLocalIndex' => ['i32', -13],
        'dsmonPdistStatsHCPkts' => ['u64', 0x100000006],
        'dsmonPdistStatsHCOctets' => ['u64', 0x200000007],
    ],
    keys: [
        'dsmonPdistCtlIndex',
        'dsmonAggGroupIndex',
        'protocolDirLocalIndex',
        'dsmonPdistTimeMark',
        'dsmonPdistStatsHCPkts',
        'dsmonPdistStatsHCOctets',
    ],
    label: null,
    failed: FAILED_READ,
);

$host_control = [
    'status' => ['i32', 0],
    'dsmonHostCtlIndex' => ['i32', -1001],
    'dsmonHostCtlDataSource_ifIndex' => ['u32', 4000000001],
    'dsmonHostAggProfile' => ['u32', 4000000002],
    'dsmonHostCtlMaxDesiredEntries' => ['i32', -1],
    'dsmonHostCtlIPv4PrefixLen' => ['i32', 24],
    'dsmonHostCtlIPv6PrefixLen' => ['i32', 64],
    'dsmonHostDroppedFrames' => ['u32', 4000000003],
    'dsmonHostCtlInserts' => ['u32', 4000000004],
    'dsmonHostCtlDeletes' => ['u32', 4000000005],
    'dsmonHostCtlOwner' => ['text', 'ops', 255],
    'dsmonHostCtlStatus' => ['i32', -4],
];
// The prefix lengths are never shown.
check_row_readers(
    table: 'dsmon_hostctl',
    procedure: 135,
    row: $host_control,
    keys: [
        'dsmonHostCtlIndex',
        'dsmonHostCtlDataSource_ifIndex',
        'dsmonHostAggProfile',
        'dsmonHostDroppedFrames',
        'dsmonHostCtlInserts',
        'dsmonHostCtlDeletes',
        'dsmonHostCtlOwner',
        'dsmonHostCtlStatus',
        'dsmonHostCtlMaxDesiredEntries',
    ],
    label: null,
    failed: FAILED_READ,
);
// They are sent as those of whole addresses; the table's size comes last.
check_writer(
    function: 'dsmon_hostctl_set',
    procedure: 136,
    sent: array_replace($host_control, [
        'dsmonHostCtlIPv4PrefixLen' => ['i32', 32],
        'dsmonHostCtlIPv6PrefixLen' => ['i32', 128],
        'dsmonHostDroppedFrames' => ['u32', 0],
        'dsmonHostCtlInserts' => ['u32', 0],
        'dsmonHostCtlDeletes' => ['u32', 0],
    ]),
    names: [
        'dsmonHostCtlIndex',
        'dsmonHostCtlDataSource_ifIndex',
        'dsmonHostAggProfile',
        'dsmonHostCtlOwner',
        'dsmonHostCtlStatus',
        'dsmonHostCtlMaxDesiredEntries',
    ],
    label: null,
);

check_row_readers(
    table: 'dsmon_hoststats',
    procedure: 138,
    key: [
        'dsmonHostCtlIndex' => ['i32', -11],
        'dsmonHostTimeMark' => ['u32', 4100000001],
        'dsmonAggGroupIndex' => ['u32', 4100000002],
        'protocolDirLocalIndex' => ['i32', -12],
        'dsmonHostAddress' => ['address', [10, 200, 0, 255]],
        'dsmonHostAddressLength' => ['i32', 4],
        'getType' => ['i32', 1],
    ],
    names: [
        'dsmonHostCtlIndex',
        'dsmonHostTimeMark',
        'dsmonAggGroupIndex',
        'protocolDirLocalIndex',
        'dsmonHostAddress',
    ],
    row: [
        'status' => ['i32', 0],
        'dsmonHostCtlIndex' => ['i32', -1001],
        'dsmonHostTimeMark' => ['u32', 4000000002],
        'dsmonAggGroupIndex' => ['u32', 4000000003],
        'protocolDirLocalIndex' => ['i32', -13],
        'dsmonHostAddress' => ['address', [192, 168, 1, 254, 5]],
        'dsmonHostAddressLength' => ['i32', 5],
        'dsmonHostInHCPkts' => ['u64', 0x100000006],
        'dsmonHostInHCOctets' => ['u64', 0x200000007],
        'dsmonHostOutHCPkts' => ['u64', 0x300000008],
        'dsmonHostOutHCOctets' => ['u64', 0x400000009],
    ],
    keys: [
        'dsmonHostCtlIndex',
        'dsmonAggGroupIndex',
        'protocolDirLocalIndex',
        'dsmonHostTimeMark',
        'dsmonHostInHCPkts',
        'dsmonHostInHCOctets',
        'dsmonHostOutHCPkts',
        'dsmonHostOutHCOctets',
        'dsmonHostAddress',
    ],
    label: null,
    failed: FAILED_READ,
);

done();
?>
--EXPECT--
OK
