--TEST--
Application response time: control rows
--EXTENSIONS--
rmon
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/../dsmon/tables.inc';

$control = [
    'status' => ['i32', 0],
    'artControlIndex' => ['i32', -1001],
    'artControlDataSource' => ['i32', -1002],
    'artControlTimeRemaining' => ['i32', -1003],
    'artControlDuration' => ['i32', -1004],
    'artControlRspTime1' => ['i32', 11],
    'artControlRspTime2' => ['i32', 12],
    'artControlRspTime3' => ['i32', 13],
    'artControlRspTime4' => ['i32', 14],
    'artControlRspTime5' => ['i32', 15],
    'artControlRspTime6' => ['i32', -16],
    'artControlRspTimeout' => ['i32', -17],
    'artControlRptStartTime' => ['u32', 4000000001],
    'artControlRequestedSize' => ['i32', -18],
    'artControlGrantedSize' => ['i32', -19],
    'artControlGeneratedRpts' => ['i32', -20],
    'artControlDroppedFrames' => ['u32', 4000000002],
    'artControlOwner' => ['text', 'ops', 255],
    'artControlStatus' => ['i32', -4],
];
$keys = array_slice(array_keys($control), 1); // shown in wire order
check_readers('rmon_art_ctl', 99, ['index' => ['i32', 3]], ['index'], $control, $keys, 'art_ctl_get');

// The fields that the agent keeps have no argument, and go as 0.
check_writer(
    'rmon_art_ctl_set',
    100,
    array_replace($control, [
        'artControlDuration' => ['i32', 0],
        'artControlRptStartTime' => ['u32', 0],
        'artControlGrantedSize' => ['i32', 0],
        'artControlGeneratedRpts' => ['i32', 0],
        'artControlDroppedFrames' => ['u32', 0],
    ]),
    [
        'artControlIndex',
        'artControlDataSource',
        'artControlTimeRemaining',
        'artControlRspTime1',
        'artControlRspTime2',
        'artControlRspTime3',
        'artControlRspTime4',
        'artControlRspTime5',
        'artControlRspTime6',
        'artControlRspTimeout',
        'artControlRequestedSize',
        'artControlOwner',
        'artControlStatus',
    ],
    'rmon_art_ctl_set',
);

// The set looks at the link before it converts anything else, and again at the call: a conversion may have closed it.
$link = rmon_connect('127.0.0.1');
$number = get_resource_id($link);
$conversions = 0;
$close = function () use (&$conversions, $link): void {
    $conversions++;
    rmon_close($link);
    rmon_close($link);
};
$arguments = [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, new Owner($close), 13];
expect_result(fn() => rmon_art_ctl_set(4711, ...$arguments), false, ['4711 is not a RMON/RPC conn id!']);
expect_same(0, $conversions, 'number of conversions');
expect_result(fn() => rmon_art_ctl_set($link, ...$arguments), false, ["$number is not a RMON/RPC conn id!"]);
expect_same(1, $conversions, 'number of conversions');

done();
?>
--EXPECT--
OK
