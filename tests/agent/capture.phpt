--TEST--
The bundled agent's filters, channels, events and capture buffers, from known frames
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

/** A datagram with a payload, 42 octets of headers before it. */
function datagram(int $port, string $payload): string
{
    return ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1000, $port, $payload)));
}

$long = str_repeat('0123456789', 150) . 'the end';
$frames = [
    [10.000001, datagram(53, 'one')],
    [10.000500, datagram(54, 'two')],
    [10.002, ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 6, tcp(53, 54, 2)))],
    [10.003, datagram(53, $long)],                                    // 1549 octets with the check sequence
    [10.5, substr(datagram(53, 'cut'), 0, 50), 60],
    [11.0, datagram(53, 'last')],
    [11.0, substr(datagram(53, 'short'), 0, 40)],                      // 44 octets with the check sequence
];
$captures = sys_get_temp_dir() . '/rmon-captures-' . getmypid();
register_shutdown_function(function () use ($captures) {
    array_map('unlink', glob("$captures/{,.}*[a-z]", GLOB_BRACE));
    @rmdir($captures);
});
$agent = reading_agent([capture_file($frames)], '--captures', $captures);
$link = module_link($agent);

/** Sets a filter, first under creation, then valid. */
function filter(int $index, int $channel, int $offset = 0, string $data = '', string $mask = '', string $not = '', array $status = [0, 0, 0], int $at = 0, int $protocol = 0): void
{
    global $link;
    $bytes = fn(string $list) => array_values(unpack('C*', $list));
    foreach ([CREATE_REQUEST, VALID] as $wanted) {
        expect_same(
            NO_ERROR,
            rmon_filter_set(
                $link,
                $index,
                $channel,
                $offset,
                $bytes($data),
                $bytes($mask),
                $bytes($not),
                ...[...$status, 'me', $wanted, $at, $protocol],
            ),
            "filter $index",
        );
    }
}

/** Sets a channel, first under creation, then valid. */
function channel(int $index, int $accept = 1, int $control = 1, int $on = 0, int $off = 0, int $event = 0, int $ready = 1): void
{
    global $link;
    foreach ([CREATE_REQUEST, VALID] as $wanted) {
        expect_same(
            NO_ERROR,
            rmon_channel_set(
                $link,
                $index,
                1,
                $accept,
                $control,
                $on,
                $off,
                $event,
                $ready,
                "channel $index",
                'me',
                $wanted,
            ),
            "channel $index",
        );
    }
}

function buffer(int $index, int $channel, int $action = 1, int $slice = 0, int $size = -1, int $shown = 0, int $offset = 0): void
{
    global $link;
    foreach ([CREATE_REQUEST, VALID] as $wanted) {
        expect_same(
            NO_ERROR,
            rmon_buffer_ctl_set($link, $index, $channel, $action, $slice, $shown, $offset, $size, 'me', $wanted),
            "buffer $index",
        );
    }
}

foreach ([1 => 2, 2 => 1, 3 => 3, 4 => 4] as $event => $type) {
    expect_same(
        NO_ERROR,
        rmon_event_set($link, $event, "event $event", $type, 'public', 'me', CREATE_REQUEST),
        'event',
    );
    expect_same(NO_ERROR, rmon_event_set($link, $event, "event $event", $type, 'public', 'me', VALID), 'event');
}
expect_same(BAD_VALUE, rmon_event_set($link, 9, '', 5, '', 'me', CREATE_REQUEST), 'event of no type');
expect_same(BAD_VALUE, rmon_event_set($link, 9, str_repeat('x', 128), 1, '', 'me', CREATE_REQUEST), 'long description');

// What matches, by channel.
channel(1);                                                     // no filter: nothing
channel(2, accept: 2);                                          // all that fail no filter: everything
channel(3, event: 1);
filter(1, 3, 36, "\0\x35");                                     // the port of a datagram is 53 (or the sequence of TCP)
filter(2, 3, 23, "\x06");                                       // or it is TCP
channel(4, accept: 2, event: 1, ready: 3);
filter(3, 4, 36, "\0\x35");                                     // all but those
channel(5);
filter(4, 5, 42, 'ooo', "\xff\0", "\0\0\xff");                  // "o", anything, anything but "o"
channel(6);
filter(5, 6, 1546, 'end');                                      // far behind what is usually captured
channel(7);
filter(6, 7, status: [1, 1, 0]);                                // too long
channel(8);
filter(7, 8, status: [0, 3, 3]);                                // too long or too short
channel(9, control: 2, on: 1, event: 4, ready: 3);              // turned on by event 1, the first packet of channel 3
filter(8, 9, 23, "\x11");
channel(10, off: 1);                                            // turned off by it
filter(9, 10, 23, "\x11");
channel(11);
$indexes = array_column(rmon_pdir_getbulk($link, [], [], 10000), 'protocolDirLocalIndex', 'protocolDirDescr');
filter(10, 11, 0, "\x03\xe8\0\x35", at: $indexes['ether2.ip.udp']);     // ports 1000 and 53 at the start of UDP
channel(12);
filter(11, 12, protocol: $indexes['ether2.ip.tcp']);
channel(13);
filter(12, 13, 0, 'two', at: $indexes['ether2.ip.udp'], protocol: $indexes['ether2.ip.tcp']);

buffer(1, 2);
buffer(2, 2, slice: 20, shown: 8, offset: 4);
buffer(3, 2, action: 1, slice: 68, size: 300);                  // room for three packets of 68 octets and 32 each
buffer(4, 2, action: 2, slice: 68, size: 300);
buffer(5, 9);
buffer(6, 10);
buffer(7, 3, size: 10);                                         // room for nothing
expect_same(NO_ERROR, rmon_buffer_ctl_set($link, 8, 99, 1, 0, 0, 0, 1000, '', CREATE_REQUEST), 'createRequest');
expect_same(BAD_VALUE, rmon_buffer_ctl_set($link, 8, 99, 1, 0, 0, 0, 1000, '', VALID), 'valid without a channel');
foreach ([
    [0, 0, 0, 0, 1000], [3, 0, 0, 0, 1000], [1, -1, 0, 0, 1000], [1, 0, -1, 0, 1000], [1, 0, 0, -1, 1000],
    [1, 0, 0, 0, 0], [1, 0, 0, 0, -2],
] as $nonsense) {
    expect_same(
        BAD_VALUE,
        rmon_buffer_ctl_set($link, 9, 1, ...[...$nonsense, '', CREATE_REQUEST]),
        'nonsense: ' . implode(' ', $nonsense),
    );
}
expect_same(NO_SUCH_NAME, rmon_capture_buf_getnext($link, 0, 0)['status'], 'no packet yet');

// Reads show what was set.
$shown = rmon_filter_get($link, 4);
expect_same(
    [5, 42, [111, 111, 111], [255, 0], [0, 0, 255], 1],
    array_map(
        fn($name) => $shown["filter$name"],
        ['ChannelIndex', 'PktDataOffset', 'PktData', 'PktDataMask', 'PktDataNotMask', 'Status'],
    ),
    'a filter',
);
expect_same(
    BAD_VALUE,
    rmon_filter_set($link, 4, 5, 43, [1], [], [], 0, 0, 0, 'me', VALID, 0, 0),
    'another offset while valid',
);
expect_same(
    BAD_VALUE,
    rmon_channel_set($link, 1, 2, 1, 1, 0, 0, 0, 1, '', '', VALID),
    'another data source while valid',
);
expect_same(NO_SUCH_NAME, rmon_filter_getnext($link, 12)['status'], 'behind the last filter');
expect_same(13, rmon_channel_getnext($link, 12)['channelIndex'], 'the row after channel 12');

read_files($agent);

$matches = [];
for ($at = 0; ($row = rmon_channel_getnext($link, $at))['status'] === NO_ERROR; $at = $row['channelIndex']) {
    $matches[$at = $row['channelIndex']] = $row['channelMatches'];
}
expect_same([1 => 0, 7, 6, 2, 1, 1, 1, 2, 6, 6, 5, 1, 0], $matches, 'matches by channel');
expect_same(
    [2, 3],
    [rmon_channel_get($link, 3)['channelEventStatus'], rmon_channel_get($link, 4)['channelEventStatus']],
    'fired, and always ready',
);
expect_same(
    [1, 2],
    [rmon_channel_get($link, 9)['channelDataControl'], rmon_channel_get($link, 10)['channelDataControl']],
    'turned on, turned off',
);

/** The rows that a walk meets. */
function met(callable $getnext, string $major, string $minor): array
{
    for ($rows = [], [$at, $of] = [0, 0]; ($row = $getnext($at, $of))['status'] === NO_ERROR && count($rows) < 1000;) {
        $rows[] = $row;
        [$at, $of] = [$row[$major], $row[$minor]];
    }
    return $rows;
}

// Event 1 happened once for channel 3 and once for each packet of channel 4; event 4 for the packets of channel 9,
// which meets a packet after channel 3.
$log = met(fn(int $at, int $of) => rmon_log_getnext($link, $at, $of), 'logEventIndex', 'logIndex');
$of9 = fn(int $index) => [4, $index, 'event 4: packet on channel channel 9'];
expect_same(
    [[1, 1, 'event 1: packet on channel channel 3'], [1, 2, 'event 1: packet on channel channel 4'], [1, 3, 'event 1: packet on channel channel 4'], ...array_map($of9, range(1, 6))],
    array_map(fn($row) => [$row['logEventIndex'], $row['logIndex'], $row['logDescription']], $log), 'the log',
);
expect_same($log[1], rmon_log_get($link, 1, 2), 'one of its rows');
foreach ([[1, 0], [1, 4], [2, 1], [9, 1]] as [$event, $index]) {
    expect_same(NO_SUCH_NAME, rmon_log_get($link, $event, $index)['status'], "log row $index of event $event");
}
expect_same(rmon_event_get($link, 1)['eventLastTimeSent'], $log[2]['logTime'], 'the time of the event');
expect_same(0, rmon_event_get($link, 2)['eventLastTimeSent'], 'an event that did not happen');

// The packets, with their bytes.
$packets = [];
foreach (met(fn(int $at, int $of) => rmon_capture_buf_getnext($link, $at, $of), 'captureBufferControlIndex', 'captureBufferIndex') as $row) {
    expect_same(
        $row,
        rmon_capture_buf_get($link, $row['captureBufferControlIndex'], $row['captureBufferIndex']),
        'get and getnext',
    );
    $packets[$row['captureBufferControlIndex']][$row['captureBufferIndex']] = [
        pack('C*', ...$row['captureBufferPacketData']),
        $row['captureBufferPacketLength'],
        $row['captureBufferPacketStatus'],
        $row['captureBufferPacketID'],
        $row['captureBufferPacketTime'],
        $row['captureBufferPacketHighCapacityTime'],
    ];
}
$lengths = [64, 64, 64, 1553, 64, 64, 44];
$states = [0, 0, 0, 1, 0, 0, 2];
$times = [[0, 0], [0, 499000], [1, 999000], [2, 999000], [499, 999000], [999, 999000], [999, 999000]];
$packet = fn(int $i, int $slice = 65535, int $offset = 0) => [
    substr($frames[$i][1], $offset, $slice),
    $lengths[$i],
    $states[$i],
    $i + 1,
    ...$times[$i],
];
expect_same(array_combine(range(1, 7), array_map($packet, range(0, 6))), $packets[1], 'whole packets');
expect_same(
    array_combine(range(1, 7), array_map(fn(int $i) => $packet($i, 8, 4), range(0, 6))),
    $packets[2],
    'a part of each',
);
expect_same([1 => $packet(0, 68), $packet(1, 68), $packet(2, 68)], $packets[3], 'the first ones');
expect_same([5 => $packet(4, 68), $packet(5, 68), $packet(6, 68)], $packets[4], 'the last ones');
expect_same(6, count($packets[5] ?? []), 'packets of the channel that was turned on');
expect_same(
    [],
    array_intersect_key($packets, [6 => 0, 7 => 0]),
    'packets of the channel that was turned off, and of the buffer without room',
);
$states = fn(string $name) => array_map(
    fn(int $index) => rmon_buffer_ctl_get($link, $index)["bufferControl$name"],
    range(1, 7),
);
expect_same([1, 1, 2, 2, 1, 1, 2], $states('FullStatus'), 'full buffers');
expect_same([7, 7, 3, 3, 6, 0, 0], $states('CapturedPackets'), 'packets by buffer');
expect_same([4194304, 4194304, 300, 300, 4194304, 4194304, 10], $states('MaxOctetsGranted'), 'octets granted');

// Saved packets are a capture file, in the one directory only.
$save = fn(string $name, int ...$values) => array_values(array_slice(
    rmon_capture_save_file($link, $name, ...$values),
    0,
    4,
    false,
));
expect_same([7, 7, 7, 7], $save('whole', 1, 0, 0, 0), 'all of buffer 1');
expect_same([2, 2, 4, 4], $save('../../etc/x y.pcap', 1, 3, 4, 0), 'two of them');
expect_same([3, 3, 7, 7], $save('.hidden', 4, 1, 100, 0), 'what is left');
foreach ([
    ['', 1, 0, 0, 0], ['a/', 1, 0, 0, 0], ['x', 99, 0, 0, 0], ['x', 6, 0, 0, 0], ['x', 1, 8, 0, 0], ['x', 1, 3, 2, 0],
    ['x', 1, 0, 0, 1], ['x', 4, 0, 4, 0],
] as $refused) {
    expect_same([0, 0, 0, 0], $save(...$refused), 'refused: ' . implode(' ', $refused));
}
$files = array_values(array_diff(scandir($captures), ['.', '..']));
expect_same(['_hidden.pcap', 'whole.pcap', 'x_y.pcap'], $files, 'the files');
$expected = '';
foreach ($frames as $i => [$time, $frame]) {
    $expected .= pack('VVVV', (int) $time, (int) round(fmod($time, 1) * 1e6), strlen($frame), $lengths[$i] - 4) . $frame;
}
expect_same(CAPTURE_OPENING, substr(file_get_contents("$captures/whole.pcap"), 0, 24), 'the opening');
expect_same($expected, substr(file_get_contents("$captures/whole.pcap"), 24), 'the packets');
expect_same([7, 7, 7, 7], $save('x y', 1, 0, 0, 0), 'in the place of an older file');
expect_same(file_get_contents("$captures/whole.pcap"), file_get_contents("$captures/x_y.pcap"), 'that file');
for ($i = 0; $save("file$i", 2, 1, 1, 0)[0] === 1 && $i < 200; $i++);
expect_same(97, $i, 'files that find room');

// Rows that are removed take what depends on them along.
expect_same(NO_ERROR, rmon_buffer_ctl_set($link, 1, 2, 1, 0, 0, 0, -1, '', INVALID), 'invalid');
expect_same(NO_SUCH_NAME, rmon_capture_buf_get($link, 1, 1)['status'], 'its packets');
expect_same(NO_ERROR, rmon_event_set($link, 1, '', 1, '', '', INVALID), 'invalid');
expect_same(4, rmon_log_getnext($link, 0, 0)['logEventIndex'], 'the log that is left');
expect_same(NO_ERROR, rmon_channel_set($link, 2, 1, 1, 1, 0, 0, 0, 1, '', '', INVALID), 'invalid');
expect_same(7, rmon_buffer_ctl_get($link, 2)['bufferControlCapturedPackets'], 'packets of a channel that is gone');

agent_done($agent);
--EXPECT--
OK
