--TEST--
Saving captured packets to a file of the agent's
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$request = fn(string $fileName, int $value1, int $value2, int $value3, int $option) => record(
    fileName: text($fileName),
    saveValue1: u32($value1),
    saveValue2: u32($value2),
    saveValue3: u32($value3),
    saveOption: i32($option),
);
$arguments = ['/var/captures/a.pcap', 4294967295, 23, 24, -25];
$reply = record(lastPktIndex: u32(17), totalPktsSaved: u32(5));
$row = [0 => 5, 'totalPktsSaved' => 5, 1 => 17, 'lastPktIndex' => 17];
check_common(
    function: 'rmon_capture_save_file',
    arguments: $arguments,
    procedure: 50,
    request: $request(...$arguments),
    label: 'rmon_capture_save_file',
    reply: $reply,
    result: $row,
);

$reply = record(lastPktIndex: u32(4294967295), totalPktsSaved: u32(4294967294));
$row = [0 => 4294967294, 'totalPktsSaved' => 4294967294, 1 => 4294967295, 'lastPktIndex' => 4294967295];
expect_exchange(
    function: 'rmon_capture_save_file',
    arguments: $arguments,
    procedure: 50,
    request: $request(...$arguments),
    step: reply($reply),
    value: $row,
);

// The first value is converted before the name in front of it, and the link is looked up last.
check_conversions('rmon_capture_save_file', ['int', 'text', 'int', 'int', 'int', 'int'], [1, 3, 2, 4, 5, 6]);
check_text(
    function: 'rmon_capture_save_file',
    procedure: 50,
    label: 'rmon_capture_save_file',
    arguments: $arguments,
    request: $request,
    place: 0,
    answer: [$reply, $row],
);

done();
--EXPECT--
OK
