--TEST--
SMON: control rows and counters of VLANs and priorities
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$vlan_control = [
    'status' => ['i32', 0],
    'smonVlanStatsControlIndex' => ['i32', -1001],
    'smonVlanStatsControlDataSource' => ['u32', 4000000001],
    'smonVlanStatsControlCreateTime' => ['u32', 4000000002],
    'smonVlanStatsControlOwner' => ['text', 'ops', 255],
    'smonVlanStatsControlStatus' => ['i32', -4],
];
check_row_readers(
    table: 'rmon_vlan_ctl',
    procedure: 76,
    row: $vlan_control,
    keys: [
        'smonVlanStatsControlIndex',
        'smonVlanStatsControlDataSource',
        'smonVlanStatsControlCreateTime',
        'smonVlanStatsControlOwner',
        'smonVlanStatsControlStatus',
    ],
    label: 'vlan_ctl_get',
);
check_writer(
    function: 'rmon_vlan_ctl_set',
    procedure: 77,
    sent: array_replace($vlan_control, ['smonVlanStatsControlCreateTime' => ['u32', 0]]),
    names: [
        'smonVlanStatsControlIndex',
        'smonVlanStatsControlDataSource',
        'smonVlanStatsControlOwner',
        'smonVlanStatsControlStatus',
    ],
    label: 'rmon_vlan_ctl_set',
);

$vlan = [
    'status' => ['i32', 0],
    'smonVlanIdStatsId' => ['i32', -1002],
    'smonVlanIdStatsTotalPkts' => ['u64', 0x100000006],
    'smonVlanIdStatsTotalOctets' => ['u64', 0x200000007],
    'smonVlanIdStatsNUcastPkts' => ['u64', 0x300000008],
    'smonVlanIdStatsNUcastOctets' => ['u64', 0x400000009],
    'smonVlanIdStatsCreateTime' => ['u32', 4000000003],
    'smonVlanStatsControlIndex' => ['i32', -1003],
];
$vlan_keys = array_slice(array_keys($vlan), 1); // shown in wire order, the control row's index last
check_row_readers(
    table: 'rmon_vlan',
    procedure: 78,
    key: TWO_INDEXES,
    row: $vlan,
    keys: $vlan_keys,
    label: 'vlan_get',
);

// Counters above 2^63 are the nearest floats, never negative.
expect_exchange(
    function: 'rmon_vlan_get',
    arguments: [3, 4],
    procedure: 78,
    request: record(index1: i32(3), index2: i32(4), getType: i32(1)),
    step: reply(wire(
        $vlan,
        smonVlanIdStatsTotalOctets: '0x8000000000000005',
        smonVlanIdStatsNUcastOctets: '0xffffffffffffffff',
    )),
    value: shown(
        $vlan,
        $vlan_keys,
        smonVlanIdStatsTotalOctets: 9223372036854775808.0,
        smonVlanIdStatsNUcastOctets: 18446744073709551616.0,
    ),
);

$prio_control = [
    'status' => ['i32', 0],
    'smonPrioStatsControlIndex' => ['i32', -1004],
    'smonPrioStatsControlDataSource' => ['u32', 4000000004],
    'smonPrioStatsControlCreateTime' => ['u32', 4000000005],
    'smonPrioStatsControlOwner' => ['text', 'me', 255],
    'smonPrioStatsControlStatus' => ['i32', 6],
];
check_row_readers(
    table: 'rmon_prio_ctl',
    procedure: 79,
    row: $prio_control,
    keys: [
        'smonPrioStatsControlIndex',
        'smonPrioStatsControlDataSource',
        'smonPrioStatsControlCreateTime',
        'smonPrioStatsControlOwner',
        'smonPrioStatsControlStatus',
    ],
    label: 'prio_ctl_get',
);
check_writer(
    function: 'rmon_prio_ctl_set',
    procedure: 80,
    sent: array_replace($prio_control, ['smonPrioStatsControlCreateTime' => ['u32', 0]]),
    names: [
        'smonPrioStatsControlIndex',
        'smonPrioStatsControlDataSource',
        'smonPrioStatsControlOwner',
        'smonPrioStatsControlStatus',
    ],
    label: 'rmon_prio_ctl_set',
);

check_row_readers(
    table: 'rmon_prio',
    procedure: 81,
    key: TWO_INDEXES,
    row: [
        'status' => ['i32', 0],
        'smonPrioStatsId' => ['i32', -1005],
        'smonPrioStatsPkts' => ['u64', 0x10000000a],
        'smonPrioStatsOctets' => ['u64', 0x20000000b],
        'smonPrioStatsControlIndex' => ['i32', -1006],
    ],
    keys: ['smonPrioStatsId', 'smonPrioStatsPkts', 'smonPrioStatsOctets', 'smonPrioStatsControlIndex'],
    label: 'prio_get',
);

done();
?>
--EXPECT--
OK
