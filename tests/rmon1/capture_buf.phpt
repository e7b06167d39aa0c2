--TEST--
Captured packets
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'captureBufferControlIndex' => 'unsigned',
    'captureBufferIndex' => 'unsigned',
    'captureBufferPacketID' => 'unsigned',
    'captureBufferPacketData' => 'bytes',
    'captureBufferPacketLength' => 'unsigned',
    'captureBufferPacketTime' => 'unsigned',
    'captureBufferPacketStatus' => 'unsigned',
    'captureBufferPacketHighCapacityTime' => 'unsigned',
];
// Scripts see the time before the length, and the data last.
$order = [
    'status',
    'captureBufferControlIndex',
    'captureBufferIndex',
    'captureBufferPacketID',
    'captureBufferPacketTime',
    'captureBufferPacketLength',
    'captureBufferPacketStatus',
    'captureBufferPacketHighCapacityTime',
    'captureBufferPacketData',
];
check_row_readers('rmon_capture_buf', 49, 'capture_buf_get', $fields, $order, indexes: 2);

// A packet without data, and packets of all lengths.
$key = record(controlIndex: i32(3), index: i32(9), getType: i32(2));
foreach ([0, 1, 16, 17, 64, 1518, 65536] as $length) {
    $packet = substr(str_repeat(pack('C*', ...range(255, 0)), 256), 0, $length);
    $row = array_replace(sample($fields), [
        'captureBufferPacketData' => [byte_list($packet), array_values(unpack('C*', $packet))],
    ]);
    expect_exchange(
        function: 'rmon_capture_buf_getnext',
        arguments: [3, 9],
        procedure: 49,
        request: $key,
        step: reply(wire($row)),
        value: shown($row, $order),
    );
}

done();
--EXPECT--
OK
