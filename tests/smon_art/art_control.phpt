--TEST--
Application response time: control rows
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

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
check_row_readers(
    table: 'rmon_art_ctl',
    procedure: 99,
    row: $control,
    keys: $keys,
    label: 'art_ctl_get',
);

// The fields that the agent keeps have no argument, and go as 0.
check_writer(
    function: 'rmon_art_ctl_set',
    procedure: 100,
    sent: array_replace($control, [
        'artControlDuration' => ['i32', 0],
        'artControlRptStartTime' => ['u32', 0],
        'artControlGrantedSize' => ['i32', 0],
        'artControlGeneratedRpts' => ['i32', 0],
        'artControlDroppedFrames' => ['u32', 0],
    ]),
    names: [
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
    label: 'rmon_art_ctl_set',
    order: ['Link'], // looked at before anything else is converted
);

check_closed_by_text('rmon_art_ctl_set', fn(TextWithCode $owner) => [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, $owner, 13]);

done();
?>
--EXPECT--
OK
