--TEST--
Captured packets
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$row = sample([
    'status' => 'i32',
    'captureBufferControlIndex' => 'u32',
    'captureBufferIndex' => 'u32',
    'captureBufferPacketID' => 'u32',
    'captureBufferPacketData' => 'byte_list',
    'captureBufferPacketLength' => 'u32',
    'captureBufferPacketTime' => 'u32',
    'captureBufferPacketStatus' => 'u32',
    'captureBufferPacketHighCapacityTime' => 'u32',
]);
// Scripts see the time before the length, and the data last.
$keys = [
    'captureBufferControlIndex',
    'captureBufferIndex',
    'captureBufferPacketID',
    'captureBufferPacketTime',
    'captureBufferPacketLength',
    'captureBufferPacketStatus',
    'captureBufferPacketHighCapacityTime',
    'captureBufferPacketData',
];
check_row_readers(
    table: 'rmon_capture_buf',
    procedure: 49,
    row: $row,
    label: 'capture_buf_get',
    key: TWO_INDEXES,
    keys: $keys,
);

// A packet without data, and packets of all lengths.
$key = record(controlIndex: i32(3), index: i32(9), getType: i32(2));
foreach ([0, 1, 16, 17, 64, 1518, 65536] as $length) {
    $packet = substr(str_repeat(pack('C*', ...range(255, 0)), 256), 0, $length);
    expect_exchange(
        function: 'rmon_capture_buf_getnext',
        arguments: [3, 9],
        procedure: 49,
        request: $key,
        step: reply(wire($row, captureBufferPacketData: $packet)),
        value: shown($row, $keys, captureBufferPacketData: array_values(unpack('C*', $packet))),
    );
}

done();
--EXPECT--
OK
