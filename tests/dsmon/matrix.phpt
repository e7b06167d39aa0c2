--TEST--
DSMON matrix: control rows and the two views of the host pairs
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$control = [
    'status' => ['i32', 0],
    'dsmonMatrixCtlIndex' => ['i32', -1001],
    'dsmonMatrixCtlDataSource_ifIndex' => ['u32', 4000000001],
    'dsmonMatrixAggProfile' => ['u32', 4000000002],
    'dsmonMatrixCtlMaxDesiredEntries' => ['i32', -1],
    'dsmonMatrixDroppedFrames' => ['u32', 4000000003],
    'dsmonMatrixCtlInserts' => ['u32', 4000000004],
    'dsmonMatrixCtlDeletes' => ['u32', 4000000005],
    'dsmonMatrixCtlOwner' => ['text', 'ops', 255],
    'dsmonMatrixCtlStatus' => ['i32', -4],
];
check_row_readers(
    table: 'dsmon_matrixctl',
    procedure: 139,
    row: $control,
    keys: [
        'dsmonMatrixCtlIndex',
        'dsmonMatrixCtlDataSource_ifIndex',
        'dsmonMatrixAggProfile',
        'dsmonMatrixDroppedFrames',
        'dsmonMatrixCtlInserts',
        'dsmonMatrixCtlDeletes',
        'dsmonMatrixCtlOwner',
        'dsmonMatrixCtlStatus',
        'dsmonMatrixCtlMaxDesiredEntries',
    ],
    label: null,
    failed: FAILED_READ,
);
// The table's size comes last.
check_writer(
    function: 'dsmon_matrixctl_set',
    procedure: 140,
    sent: array_replace($control, [
        'dsmonMatrixDroppedFrames' => ['u32', 0],
        'dsmonMatrixCtlInserts' => ['u32', 0],
        'dsmonMatrixCtlDeletes' => ['u32', 0],
    ]),
    names: [
        'dsmonMatrixCtlIndex',
        'dsmonMatrixCtlDataSource_ifIndex',
        'dsmonMatrixAggProfile',
        'dsmonMatrixCtlOwner',
        'dsmonMatrixCtlStatus',
        'dsmonMatrixCtlMaxDesiredEntries',
    ],
    label: null,
);

// Both views have one key and one row, the counters under the names of the view by source.
foreach (['dsmon_matrixsdstats' => 141, 'dsmon_matrixdsstats' => 142] as $view => $procedure) {
    check_row_readers(
        table: $view,
        procedure: $procedure,
        key: [
            'dsmonMatrixCtlIndex' => ['i32', -11],
            'dsmonMatrixTimeMark' => ['u32', 4100000001],
            'dsmonAggGroupIndex' => ['u32', 4100000002],
            'dsmonMatrixNLIndex' => ['i32', -12],
            'dsmonMatrixSourceAddress' => ['address', [10, 200, 0, 255]],
            'dsmonMatrixDestAddress' => ['address', [10, 201, 3, 254, 7, 8]],
            'dsmonMatrixALIndex' => ['i32', -13],
            'dsmonMatrixSourceAddressLength' => ['i32', 4],
            'dsmonMatrixDestAddressLength' => ['i32', 6],
            'getType' => ['i32', 1],
        ],
        names: [
            'dsmonMatrixCtlIndex',
            'dsmonMatrixTimeMark',
            'dsmonAggGroupIndex',
            'dsmonMatrixNLIndex',
            'dsmonMatrixALIndex',
            'dsmonMatrixSourceAddress',
            'dsmonMatrixDestAddress',
        ],
        row: [
            'status' => ['i32', 0],
            'dsmonMatrixCtlIndex' => ['i32', -1001],
            'dsmonMatrixTimeMark' => ['u32', 4000000002],
            'dsmonAggGroupIndex' => ['u32', 4000000003],
            'dsmonMatrixNLIndex' => ['i32', -14],
            'dsmonMatrixSourceAddress' => ['address', [192, 168, 1, 254, 5]],
            'dsmonMatrixDestAddress' => ['address', [172, 16, 2]],
            'dsmonMatrixALIndex' => ['i32', -15],
            'dsmonMatrixSourceAddressLength' => ['i32', 5],
            'dsmonMatrixDestAddressLength' => ['i32', 3],
            'hcPkts' => ['u64', 0x100000006],
            'hcOctets' => ['u64', 0x200000007],
        ],
        keys: [
            'dsmonMatrixCtlIndex',
            'dsmonAggGroupIndex',
            'dsmonMatrixTimeMark',
            'dsmonMatrixNLIndex',
            'dsmonMatrixALIndex',
            'dsmonMatrixSDHCPkts' => 'hcPkts',
            'dsmonMatrixSDHCOctets' => 'hcOctets',
            'dsmonMatrixSourceAddress',
            'dsmonMatrixDestAddress',
        ],
        label: null,
        failed: FAILED_READ,
    );
}

done();
?>
--EXPECT--
OK
