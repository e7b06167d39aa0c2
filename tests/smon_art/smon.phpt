--TEST--
SMON: control rows and counters of VLANs and priorities
--EXTENSIONS--
rmon
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/../dsmon/tables.inc';

$vlan_control = [
    'status' => ['i32', 0],
    'smonVlanStatsControlIndex' => ['i32', -1001],
    'smonVlanStatsControlDataSource' => ['u32', 4000000001],
    'smonVlanStatsControlCreateTime' => ['u32', 4000000002],
    'smonVlanStatsControlOwner' => ['text', 'ops', 255],
    'smonVlanStatsControlStatus' => ['i32', -4],
];
check_readers(
    'rmon_vlan_ctl',
    76,
    ['index' => ['i32', 3]],
    ['index'],
    $vlan_control,
    [
        'smonVlanStatsControlIndex',
        'smonVlanStatsControlDataSource',
        'smonVlanStatsControlCreateTime',
        'smonVlanStatsControlOwner',
        'smonVlanStatsControlStatus',
    ],
    'vlan_ctl_get',
);
check_writer(
    'rmon_vlan_ctl_set',
    77,
    array_replace($vlan_control, ['smonVlanStatsControlCreateTime' => ['u32', 0]]),
    [
        'smonVlanStatsControlIndex',
        'smonVlanStatsControlDataSource',
        'smonVlanStatsControlOwner',
        'smonVlanStatsControlStatus',
    ],
    'rmon_vlan_ctl_set',
);

$key = ['index1' => ['i32', 3], 'index2' => ['i32', 4]];
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
check_readers('rmon_vlan', 78, $key, ['index1', 'index2'], $vlan, $vlan_keys, 'vlan_get');

// Counters above 2^63 are the nearest floats, never negative.
expect_exchange(
    'rmon_vlan_get',
    [3, 4],
    78,
    record(index1: i32(3), index2: i32(4), getType: i32(1)),
    reply(bytes_of(
        $vlan,
        smonVlanIdStatsTotalOctets: '0x8000000000000005',
        smonVlanIdStatsNUcastOctets: '0xffffffffffffffff',
    )),
    array_replace(row_of($vlan, $vlan_keys), [
        'smonVlanIdStatsTotalOctets' => 9223372036854775808.0,
        'smonVlanIdStatsNUcastOctets' => 18446744073709551616.0,
    ]),
);

$prio_control = [
    'status' => ['i32', 0],
    'smonPrioStatsControlIndex' => ['i32', -1004],
    'smonPrioStatsControlDataSource' => ['u32', 4000000004],
    'smonPrioStatsControlCreateTime' => ['u32', 4000000005],
    'smonPrioStatsControlOwner' => ['text', 'me', 255],
    'smonPrioStatsControlStatus' => ['i32', 6],
];
check_readers(
    'rmon_prio_ctl',
    79,
    ['index' => ['i32', 3]],
    ['index'],
    $prio_control,
    [
        'smonPrioStatsControlIndex',
        'smonPrioStatsControlDataSource',
        'smonPrioStatsControlCreateTime',
        'smonPrioStatsControlOwner',
        'smonPrioStatsControlStatus',
    ],
    'prio_ctl_get',
);
check_writer(
    'rmon_prio_ctl_set',
    80,
    array_replace($prio_control, ['smonPrioStatsControlCreateTime' => ['u32', 0]]),
    [
        'smonPrioStatsControlIndex',
        'smonPrioStatsControlDataSource',
        'smonPrioStatsControlOwner',
        'smonPrioStatsControlStatus',
    ],
    'rmon_prio_ctl_set',
);

check_readers(
    'rmon_prio',
    81,
    $key,
    ['index1', 'index2'],
    [
        'status' => ['i32', 0],
        'smonPrioStatsId' => ['i32', -1005],
        'smonPrioStatsPkts' => ['u64', 0x10000000a],
        'smonPrioStatsOctets' => ['u64', 0x20000000b],
        'smonPrioStatsControlIndex' => ['i32', -1006],
    ],
    ['smonPrioStatsId', 'smonPrioStatsPkts', 'smonPrioStatsOctets', 'smonPrioStatsControlIndex'],
    'prio_get',
);

done();
?>
--EXPECT--
OK
