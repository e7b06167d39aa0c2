--TEST--
DSMON aggregation: control rows, groups, the profile's set and the lock
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$control = [
    'status' => ['i32', 0],
    'dsmonAggControlIndex' => ['u32', 4000000001],
    'dsmonAggControlDescr' => ['text', 'gold and silver', 64],
    'dsmonAggControlOwner' => ['text', 'me', 255],
    'dsmonAggControlStatus' => ['i32', -4],
];
check_row_readers(
    table: 'dsmon_aggctl',
    procedure: 73,
    row: $control,
    keys: ['dsmonAggControlIndex', 'dsmonAggControlDescr', 'dsmonAggControlOwner', 'dsmonAggControlStatus'],
    label: null,
    failed: FAILED_READ,
);
// The owner comes before the description, unlike the record.
check_writer(
    function: 'dsmon_aggctl_set',
    procedure: 104,
    sent: $control,
    names: ['dsmonAggControlIndex', 'dsmonAggControlOwner', 'dsmonAggControlDescr', 'dsmonAggControlStatus'],
    label: null,
);
expect_exchange(
    function: 'dsmon_aggctl_set',
    arguments: [3, 'me', 'gold', 1],
    procedure: 104,
    request: record(status: i32(0), index: u32(3), descr: text('gold'), owner: text('me'), rowStatus: i32(1)),
    step: reply(i32(0)),
    value: 0,
);

$group = [
    'status' => ['i32', 0],
    'dsmonAggControlIndex' => ['u32', 4000000002],
    'dsmonAggGroupIndex' => ['u32', 4000000003],
    'dsmonAggGroupDescr' => ['text', 'voice', 64],
    'dsmonAggGroupStatus' => ['i32', 6],
];
check_row_readers(
    table: 'dsmon_aggrp',
    procedure: 75,
    key: TWO_INDEXES,
    row: $group,
    keys: ['dsmonAggControlIndex', 'dsmonAggGroupIndex', 'dsmonAggGroupDescr'],
    label: null,
    failed: FAILED_READ,
);
check_writer(
    function: 'dsmon_aggrp_set',
    procedure: 105,
    sent: $group,
    names: ['dsmonAggControlIndex', 'dsmonAggGroupIndex', 'dsmonAggGroupDescr', 'dsmonAggGroupStatus'],
    label: null,
);

// The DSCP value comes before the group, unlike the record.
check_writer(
    function: 'dsmon_aggprof_set',
    procedure: 106,
    sent: [
        'status' => ['i32', 0],
        'dsmonAggControlIndex' => ['u32', 3],
        'dsmonAggGroupIndex' => ['u32', 2],
        'dscp' => ['u32', 46],
    ],
    names: ['dsmonAggControlIndex', 'dscp', 'dsmonAggGroupIndex'],
    label: null,
);

check_writer(function: 'dsmon_aggctl_locked', procedure: 107, sent: [], names: [], label: null);
check_writer(
    function: 'dsmon_aggctl_set_lock',
    procedure: 108,
    sent: ['lock' => ['i32', -5]],
    names: ['lock'],
    label: null,
);

done();
?>
--EXPECT--
OK
