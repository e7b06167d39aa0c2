--TEST--
Matrix control: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers(
    table: 'rmon_matrix_ctl',
    procedure: 16,
    label: 'matrix_ctl_get',
    fields: [
        'status' => 'int',
        'matrixControlIndex' => 'int',
        'matrixControlDataSource' => 'int',
        'matrixControlTableSize' => 'int',
        'matrixControlLastDeleteTime' => 'unsigned',
        'matrixControlOwner' => 'text',
        'matrixControlStatus' => 'int',
    ],
);

// The table's size and the time of the last deletion are the agent's.
$request = fn(int $index, int $source, string $owner, int $status) => record(
    status: i32(0),
    matrixControlIndex: i32($index),
    matrixControlDataSource: i32($source),
    matrixControlTableSize: i32(0),
    matrixControlLastDeleteTime: u32(0),
    matrixControlOwner: text($owner),
    matrixControlStatus: i32($status),
);
check_writer(
    function: 'rmon_matrix_ctl_set',
    procedure: 17,
    label: 'rmon_matrix_ctl_set',
    arguments: [21, 22, 'an owner', 24],
    request: $request,
    linkedFirst: false,
);

done();
--EXPECT--
OK
