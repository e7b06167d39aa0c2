--TEST--
Control tables of the higher-layer hosts and of the higher-layer matrix, which differ only in their names
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

foreach (['hlHost' => [32, 33], 'hlMatrix' => [35, 36]] as $table => [$read, $write]) {
    $name = strtolower($table);
    check_row_readers(
        table: "rmon_{$name}_ctl",
        procedure: $read,
        row: [
            'status' => ['i32', -1],
            "{$table}ControlIndex" => ['i32', 2],
            "{$table}ControlDataSource" => ['i32', 3],
            "{$table}ControlNlDroppedFrames" => ['u32', 0xfffffff4],
            "{$table}ControlNlInserts" => ['u32', 0x80000005],
            "{$table}ControlNlDeletes" => ['u32', 6],
            "{$table}ControlNlMaxDesiredEntries" => ['i32', -7],
            "{$table}ControlAlDroppedFrames" => ['u32', 0x80000008],
            "{$table}ControlAlInserts" => ['u32', 0xfffffff9],
            "{$table}ControlAlDeletes" => ['u32', 10],
            "{$table}ControlAlMaxDesiredEntries" => ['i32', -11],
            "{$table}ControlOwner" => ['text', 'operator'],
            "{$table}ControlStatus" => ['i32', 13],
        ],
        label: "{$name}_ctl_get",
    );

    // Counters of frames and rows are the agent's.
    check_writer(
        function: "rmon_{$name}_ctl_set",
        procedure: $write,
        sent: [
            'status' => ['i32', 0],
            "{$table}ControlIndex" => ['i32', 21],
            "{$table}ControlDataSource" => ['i32', 22],
            "{$table}ControlNlDroppedFrames" => ['u32', 0],
            "{$table}ControlNlInserts" => ['u32', 0],
            "{$table}ControlNlDeletes" => ['u32', 0],
            "{$table}ControlNlMaxDesiredEntries" => ['i32', -23],
            "{$table}ControlAlDroppedFrames" => ['u32', 0],
            "{$table}ControlAlInserts" => ['u32', 0],
            "{$table}ControlAlDeletes" => ['u32', 0],
            "{$table}ControlAlMaxDesiredEntries" => ['i32', -24],
            "{$table}ControlOwner" => ['text', 'an owner'],
            "{$table}ControlStatus" => ['i32', 26],
        ],
        names: [
            "{$table}ControlIndex",
            "{$table}ControlDataSource",
            "{$table}ControlNlMaxDesiredEntries",
            "{$table}ControlAlMaxDesiredEntries",
            "{$table}ControlOwner",
            "{$table}ControlStatus",
        ],
        label: "rmon_{$name}_ctl_set",
    );
}

done();
--EXPECT--
OK
