--TEST--
The bundled agent captures whole frames of a live interface, and counts its hosts and conversations to the frame
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_own_network();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

go_to_own_network(module: true);

file_put_contents('/proc/sys/net/ipv6/conf/default/disable_ipv6', '1');
ip('link add e0 address 02:00:00:00:00:01 type veth peer name e1 address 02:00:00:00:00:02');
ip('address add 10.9.0.1/24 broadcast 10.9.0.255 dev e0');
ip('link set e0 up');
ip('link set e1 up');
ip('neighbor add 10.9.0.2 lladdr 02:00:00:00:00:02 dev e0');
ip('neighbor add 10.9.0.3 lladdr 02:00:00:00:00:03 dev e0');

$agent = bundled_agent();
$link = module_link($agent);
for ($index = 0; ($row = rmon_ifentry_getnext($link, $index))['ifDescr'] !== 'e1'; $index = $row['ifIndex']);
$e1 = $row['ifIndex'];
foreach ([CREATE_REQUEST, VALID] as $status) {
    expect_same(NO_ERROR, rmon_host_ctl_set($link, 1, $e1, '', $status), 'hosts');
    expect_same(NO_ERROR, rmon_matrix_ctl_set($link, 1, $e1, '', $status), 'matrix');
    expect_same(NO_ERROR, rmon_channel_set($link, 1, $e1, 2, 1, 0, 0, 0, 1, '', '', $status), 'channel');
}
send_datagrams('10.9.0.2', 11, 1000);
$matches = rmon_channel_get($link, 1)['channelMatches'];
foreach ([CREATE_REQUEST, VALID] as $status) {
    expect_same(NO_ERROR, rmon_buffer_ctl_set($link, 1, 1, 1, 0, 0, 0, -1, '', $status), 'buffer');
}
send_datagrams('10.9.0.3', 40, 1400);
send_datagrams('10.9.0.2', 3, 18);
send_datagrams('10.9.0.255', 2, 100);

$host = function (int $last) use ($link): array {
    $row = rmon_host_get($link, 1, [2, 0, 0, 0, 0, $last]) ?: [];
    return array_map('intval', array_slice(array_values($row), 5));
};
expect_same([0, 11 + 40 + 3 + 2, 0, 11 * 1046 + 40 * 1446 + 3 * 64 + 2 * 146, 0, 2, 0], $host(1), 'the sender');
expect_same([14, 0, 11 * 1046 + 3 * 64, 0, 0, 0, 0], $host(2), 'a receiver');
expect_same([40, 0, 40 * 1446, 0, 0, 0, 0], $host(3), 'the other');
$row = rmon_matrix_sd_get($link, 1, [2, 0, 0, 0, 0, 1], [2, 0, 0, 0, 0, 3]);
expect_same([40.0, 40.0 * 1446], [$row['matrixSDPkts'], $row['matrixSDOctets']], 'a conversation');
expect_same([11, 56], [$matches, rmon_channel_get($link, 1)['channelMatches']], 'frames on the channel');

// Whole frames, though live capture keeps only their beginning unless somebody wants more.
expect_same(45, rmon_buffer_ctl_get($link, 1)['bufferControlCapturedPackets'], 'packets of the buffer');
for ($index = 1; $index <= 45; $index++) {
    $packet = rmon_capture_buf_get($link, 1, $index);
    $size = $index <= 40 ? 1446 : ($index <= 43 ? 64 : 146);
    expect_same(
        [$size, $size - 4],
        [$packet['captureBufferPacketLength'], count($packet['captureBufferPacketData'])],
        "packet $index",
    );
    expect_same([2, 0, 0, 0, 0, 1], array_slice($packet['captureBufferPacketData'], 6, 6), "sender of packet $index");
}
expect_same(true, $packet['captureBufferPacketTime'] < 1000 * PATIENCE, 'milliseconds since the buffer began');

// The interface is removed, and so are the rows that counted on it.
ip('link del e0');
expect_soon(false, fn() => rmon_host_getnext($link, 0, []), 'hosts');
expect_same([NO_SUCH_NAME, NO_SUCH_NAME, NO_SUCH_NAME], [
    rmon_host_ctl_get($link, 1)['status'],
    rmon_matrix_ctl_get($link, 1)['status'],
    rmon_channel_get($link, 1)['status'],
], 'control rows');
expect_same(45, rmon_buffer_ctl_get($link, 1)['bufferControlCapturedPackets'], 'what was captured stays');

agent_done($agent);
--EXPECT--
OK
