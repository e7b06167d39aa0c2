--TEST--
DSMON aggregation: control rows, groups, the profile's set and the lock
--EXTENSIONS--
rmon
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$control = [
    'status' => ['i32', 0],
    'dsmonAggControlIndex' => ['u32', 4000000001],
    'dsmonAggControlDescr' => ['text', 'gold and silver', 64],
    'dsmonAggControlOwner' => ['text', 'me', 255],
    'dsmonAggControlStatus' => ['i32', -4],
];
check_readers(
    name: 'dsmon_aggctl',
    procedure: 73,
    key: ['index' => ['i32', 3]],
    names: ['index'],
    fields: $control,
    keys: ['dsmonAggControlIndex', 'dsmonAggControlDescr', 'dsmonAggControlOwner', 'dsmonAggControlStatus'],
);
// The owner comes before the description, unlike the record.
check_writer(
    function: 'dsmon_aggctl_set',
    procedure: 104,
    fields: $control,
    names: ['dsmonAggControlIndex', 'dsmonAggControlOwner', 'dsmonAggControlDescr', 'dsmonAggControlStatus'],
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
check_readers(
    name: 'dsmon_aggrp',
    procedure: 75,
    key: ['index1' => ['i32', 3], 'index2' => ['i32', 4]],
    names: ['index1', 'index2'],
    fields: $group,
    keys: ['dsmonAggControlIndex', 'dsmonAggGroupIndex', 'dsmonAggGroupDescr'],
);
check_writer(
    function: 'dsmon_aggrp_set',
    procedure: 105,
    fields: $group,
    names: ['dsmonAggControlIndex', 'dsmonAggGroupIndex', 'dsmonAggGroupDescr', 'dsmonAggGroupStatus'],
);

// The DSCP value comes before the group, unlike the record.
check_writer(
    function: 'dsmon_aggprof_set',
    procedure: 106,
    fields: [
        'status' => ['i32', 0],
        'dsmonAggControlIndex' => ['u32', 3],
        'dsmonAggGroupIndex' => ['u32', 2],
        'dscp' => ['u32', 46],
    ],
    names: ['dsmonAggControlIndex', 'dscp', 'dsmonAggGroupIndex'],
);

check_writer(function: 'dsmon_aggctl_locked', procedure: 107, fields: [], names: []);
check_writer(function: 'dsmon_aggctl_set_lock', procedure: 108, fields: ['lock' => ['i32', -5]], names: ['lock']);

done();
?>
--EXPECT--
OK
