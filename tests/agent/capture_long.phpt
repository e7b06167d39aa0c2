--TEST--
The bundled agent saves packets of more than 65535 octets in a file whose header allows them
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

$directory = sys_get_temp_dir() . '/rmon-long-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);

// The file's own opening allows 262144 octets.
$small = ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1, 2)));
$long = str_pad($small, 100000, 'x');
$file = file_of(substr(CAPTURE_OPENING, 0, 16) . pack('VV', 262144, 1) . captured(1, $small) . captured(2, $long) . captured(3, $small));
$agent = reading_agent([$file], '--captures', $directory);
$link = module_link($agent);
foreach ([CREATE_REQUEST, VALID] as $status) {
    expect_same(NO_ERROR, rmon_channel_set($link, 1, 1, 2, 1, 0, 0, 0, 1, '', '', $status), 'channel');
    expect_same(NO_ERROR, rmon_buffer_ctl_set($link, 1, 1, 1, 0, 0, 0, -1, '', $status), 'buffer');
}
read_files($agent);
expect_same(3, array_values(rmon_capture_save_file($link, 'long', 1, 0, 0, 0))[1], 'packets of the file');
expect_same(3, array_values(rmon_capture_save_file($link, 'short', 1, 3, 0, 0))[2], 'the last packet');

// Snapshot length, link type, and the packets as they were.
$saved = file_get_contents("$directory/long.pcap");
expect_same([1 => 100000, 1], unpack('V2', substr($saved, 16, 8)), 'the opening');
expect_same(true, substr($saved, 24) === captured(1, $small) . captured(2, $long) . captured(3, $small), 'the packets');
expect_same(
    [1 => 65535, 1],
    unpack('V2', substr(file_get_contents("$directory/short.pcap"), 16, 8)),
    'the opening without long ones',
);
agent_done($agent);
?>
--EXPECT--
OK
