--TEST--
Matrix control: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_matrix_ctl',
    procedure: 16,
    label: 'matrix_ctl_get',
    row: sample([
        'status' => 'i32',
        'matrixControlIndex' => 'i32',
        'matrixControlDataSource' => 'i32',
        'matrixControlTableSize' => 'i32',
        'matrixControlLastDeleteTime' => 'u32',
        'matrixControlOwner' => 'text',
        'matrixControlStatus' => 'i32',
    ]),
);

// The table's size and the time of the last deletion are the agent's.
check_writer(
    function: 'rmon_matrix_ctl_set',
    procedure: 17,
    sent: [
        'status' => ['i32', 0],
        'matrixControlIndex' => ['i32', 21],
        'matrixControlDataSource' => ['i32', 22],
        'matrixControlTableSize' => ['i32', 0],
        'matrixControlLastDeleteTime' => ['u32', 0],
        'matrixControlOwner' => ['text', 'an owner'],
        'matrixControlStatus' => ['i32', 24],
    ],
    names: ['matrixControlIndex', 'matrixControlDataSource', 'matrixControlOwner', 'matrixControlStatus'],
    label: 'rmon_matrix_ctl_set',
);

done();
--EXPECT--
OK
