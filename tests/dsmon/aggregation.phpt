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
    'dsmon_aggctl',
    73,
    ['index' => ['i32', 3]],
    ['index'],
    $control,
    ['dsmonAggControlIndex', 'dsmonAggControlDescr', 'dsmonAggControlOwner', 'dsmonAggControlStatus'],
);
// The owner comes before the description, unlike the record.
check_writer(
    'dsmon_aggctl_set',
    104,
    $control,
    ['dsmonAggControlIndex', 'dsmonAggControlOwner', 'dsmonAggControlDescr', 'dsmonAggControlStatus'],
);
expect_exchange(
    'dsmon_aggctl_set',
    [3, 'me', 'gold', 1],
    104,
    record(status: i32(0), index: u32(3), descr: text('gold'), owner: text('me'), rowStatus: i32(1)),
    reply(i32(0)),
    0,
);

$group = [
    'status' => ['i32', 0],
    'dsmonAggControlIndex' => ['u32', 4000000002],
    'dsmonAggGroupIndex' => ['u32', 4000000003],
    'dsmonAggGroupDescr' => ['text', 'voice', 64],
    'dsmonAggGroupStatus' => ['i32', 6],
];
check_readers(
    'dsmon_aggrp',
    75,
    ['index1' => ['i32', 3], 'index2' => ['i32', 4]],
    ['index1', 'index2'],
    $group,
    ['dsmonAggControlIndex', 'dsmonAggGroupIndex', 'dsmonAggGroupDescr'],
);
check_writer(
    'dsmon_aggrp_set',
    105,
    $group,
    ['dsmonAggControlIndex', 'dsmonAggGroupIndex', 'dsmonAggGroupDescr', 'dsmonAggGroupStatus'],
);

// The DSCP value comes before the group, unlike the record.
check_writer(
    'dsmon_aggprof_set',
    106,
    [
        'status' => ['i32', 0],
        'dsmonAggControlIndex' => ['u32', 3],
        'dsmonAggGroupIndex' => ['u32', 2],
        'dscp' => ['u32', 46],
    ],
    ['dsmonAggControlIndex', 'dscp', 'dsmonAggGroupIndex'],
);

check_writer('dsmon_aggctl_locked', 107, [], []);
check_writer('dsmon_aggctl_set_lock', 108, ['lock' => ['i32', -5]], ['lock']);

done();
?>
--EXPECT--
OK
