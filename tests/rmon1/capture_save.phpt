--TEST--
Saving captured packets to a file on the agent's machine
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$sent = [
    'fileName' => ['text', '/var/captures/a.pcap'],
    'saveValue1' => ['u32', 4294967295],
    'saveValue2' => ['u32', 23],
    'saveValue3' => ['u32', 24],
    'saveOption' => ['i32', -25],
];
$reply = record(lastPktIndex: u32(17), totalPktsSaved: u32(5));
$row = [0 => 5, 'totalPktsSaved' => 5, 1 => 17, 'lastPktIndex' => 17];
// The first value is converted before the name in front of it, and the link is looked up last.
check_function(
    function: 'rmon_capture_save_file',
    procedure: 50,
    sent: $sent,
    reply: $reply,
    value: $row,
    label: 'rmon_capture_save_file',
    order: ['Link', 'saveValue1', 'fileName', 'saveValue2', 'saveValue3', 'saveOption'],
);

$reply = record(lastPktIndex: u32(4294967295), totalPktsSaved: u32(4294967294));
$row = [0 => 4294967294, 'totalPktsSaved' => 4294967294, 1 => 4294967295, 'lastPktIndex' => 4294967295];
expect_exchange(
    function: 'rmon_capture_save_file',
    arguments: arguments_of($sent, array_keys($sent)),
    procedure: 50,
    request: wire($sent),
    step: reply($reply),
    value: $row,
);

check_text(
    function: 'rmon_capture_save_file',
    procedure: 50,
    sent: $sent,
    text: 'fileName',
    label: 'rmon_capture_save_file',
    reply: $reply,
    value: $row,
);

done();
--EXPECT--
OK
