--TEST--
Hosts' control: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_host_ctl',
    procedure: 9,
    label: 'host_ctl_get',
    row: sample([
        'status' => 'i32',
        'hostControlIndex' => 'i32',
        'hostControlDataSource' => 'i32',
        'hostControlTableSize' => 'i32',
        'hostControlLastDeleteTime' => 'u32',
        'hostControlOwner' => 'text',
        'hostControlStatus' => 'i32',
    ]),
);

// The table's size and the time of the last deletion are the agent's.
check_writer(
    function: 'rmon_host_ctl_set',
    procedure: 10,
    sent: [
        'status' => ['i32', 0],
        'hostControlIndex' => ['i32', 21],
        'hostControlDataSource' => ['i32', 22],
        'hostControlTableSize' => ['i32', 0],
        'hostControlLastDeleteTime' => ['u32', 0],
        'hostControlOwner' => ['text', 'an owner'],
        'hostControlStatus' => ['i32', 24],
    ],
    names: ['hostControlIndex', 'hostControlDataSource', 'hostControlOwner', 'hostControlStatus'],
    label: 'rmon_host_ctl_set',
);

done();
--EXPECT--
OK
