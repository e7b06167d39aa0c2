--TEST--
The bundled agent learns the devices that export NetFlow, and keeps the configured ones
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$directory = sys_get_temp_dir() . '/rmon-netflow-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);

/** Starts an agent; its link and the port for packets. */
function started(string $host, ?int &$port): array
{
    global $directory;
    $agent = bundled_agent('--netflow', '0', '--state', $directory);
    preg_match('/NetFlow packets are taken on port (\d+)\n/', $agent->said(), $parts);
    $port = (int) $parts[1];
    ini_set('rmon.default_port', (string) $agent->port);
    return [$agent, rmon_connect($host)];
}

/** Sends packets from one of the loopback's addresses. */
function export(string $from, string ...$packets): void
{
    global $port;
    $context = stream_context_create(['socket' => ['bindto' => "$from:0"]]);
    $socket = stream_socket_client("udp://127.0.0.1:$port", $code, $reason, PATIENCE, STREAM_CLIENT_CONNECT, $context);
    foreach ($packets as $packet) {
        stream_socket_sendto($socket, $packet);
    }
}

function version5(array ...$flows): string
{
    $packet = pack('nnNNNNCCn', 5, count($flows), 1000, 1700000000, 0, 1, 0, 0, 0);
    foreach ($flows as [$input, $output]) {
        $packet .= inet_pton('10.0.0.1') . inet_pton('10.0.0.2') . inet_pton('0.0.0.0') . pack('nn', $input, $output)
            . str_repeat("\0", 32);
    }
    return $packet;
}

function version9(int $source, string ...$sets): string
{
    return pack('nnNNNN', 9, count($sets), 1000, 1700000000, 1, $source) . implode('', $sets);
}

function flowset(int $id, string $content): string
{
    return pack('nn', $id, 4 + strlen($content)) . $content;
}

function template(int $id, array ...$fields): string
{
    return pack('nn', $id, count($fields)) . implode('', array_map(fn($field) => pack('nn', ...$field), $fields));
}

[$agent, $link] = started('127.0.0.1', $port);
$client = client($agent);
$devices = function () use (&$link): array {
    $rows = rmon_nde_learned_dev_getbulk($link, [], 1000)['devices'];
    return array_map(
        fn($row) => $row['numNdePkts'],
        array_combine(array_map(fn($row) => implode('.', $row['address']), $rows), $rows),
    );
};
$interfaces = fn(array $address) => array_column(
    rmon_nde_learned_dev_intf_getbulk($link, $address, -1, 2000)['interfaces'],
    'dirFlag',
    'ifIndex',
);

// Version 5: packets are counted, interfaces noted with the directions of flows.
$status = rmon_nde_learned_dev_status($link);
expect_same(1, $status['state'], 'learning from the start');
expect_same([], $devices(), 'no devices');
export('127.0.0.9', version5([1, 2]), version5([2, 3], [7, 7]));
export('127.0.0.3', version5([65535, 0]));
expect_soon(['127.0.0.3' => 1, '127.0.0.9' => 2], $devices, 'devices');
expect_same([1 => 1, 2 => 3, 3 => 2, 7 => 3], $interfaces([127, 0, 0, 9]), 'interfaces');
expect_same([0 => 2, 65535 => 1], $interfaces([127, 0, 0, 3]), 'interfaces of the other');
expect_same([], $interfaces([127, 0, 0, 4]), 'interfaces of nobody');
$row = rmon_nde_learned_dev_get($link, [127, 0, 0, 9])['devices'][0];
$now = system_group($client)['sysUpTime'];
expect_same(
    true,
    $row['timeLastNdePkt'] >= $status['startTime'] && $row['timeLastNdePkt'] <= $now,
    'time of the last packet',
);
expect_same(
    [[127, 0, 0, 9]],
    array_column(rmon_nde_learned_dev_getnext($link, [127, 0, 0, 3])['devices'], 'address'),
    'getnext',
);
expect_same([], rmon_nde_learned_dev_getnext($link, [127, 0, 0, 9])['devices'], 'getnext at the end');
expect_same(
    [[127, 0, 0, 3]],
    array_column(rmon_nde_learned_dev_getnext($link, [255])['devices'], 'address'),
    'a shorter address is before',
);
expect_same([], rmon_nde_learned_dev_getnext($link, [0, 0, 0, 0, 0])['devices'], 'a longer address is behind');
expect_same(
    [['ifIndex' => 3, 'dirFlag' => 2]],
    rmon_nde_learned_dev_intf_getnext($link, [127, 0, 0, 9], 2)['interfaces'],
    'the next interface',
);
expect_same([], rmon_nde_learned_dev_intf_get($link, [127, 0, 0, 9], 4)['interfaces'], 'no such interface');

// Version 9: data is read by the templates of its device and source.
$template = template(256, [8, 4], [10, 2], [14, 4], [1, 3]);
$data = flowset(
    256,
    "\1\1\1\1" . pack('nN', 11, 70000) . "\0\0\1" . "\1\1\1\1" . pack('nN', 12, 0xffffffff) . "\0\0\1\0\0",
);
export('127.0.0.4', version9(1, $data));
expect_soon(1, fn() => $devices()['127.0.0.4'] ?? 0, 'data before its template');
export(
    '127.0.0.4',
    version9(1, flowset(0, $template . template(300, [10, 1], [8, 4]) . "\0\0\0\0")),
    version9(2, $data),
    version9(1, $data),
);
expect_soon(4, fn() => $devices()['127.0.0.4'], 'packets of version 9');
expect_same([11 => 1, 12 => 1, 70000 => 2], $interfaces([127, 0, 0, 4]), 'interfaces of version 9');
export('127.0.0.4', version9(1, flowset(1, 'options'), flowset(300, "\5abcd\6abcd")));
expect_soon(
    [5 => 1, 6 => 1, 11 => 1, 12 => 1, 70000 => 2],
    fn() => $interfaces([127, 0, 0, 4]),
    'interfaces by another template',
);

// What is not a packet counts for nothing; the last one is good and shows that the others were read.
$before = $devices();
$bad = ['', "\5", pack('n', 5), pack('n', 7) . str_repeat("\0", 70), substr(version5([1, 1]), 0, -1), version5(),
    version5(...array_fill(0, 31, [1, 1])), pack('nn', 5, 30) . str_repeat("\0", 100), substr(version9(1), 0, 19),
    version9(1, "\0"), version9(1, pack('nn', 0, 3)), version9(1, pack('nn', 0, 0)), version9(1, pack('nn', 300, 8)),
    version9(1, flowset(0, template(256, [1, 1], [2, 2]) . pack('nn', 257, 9))), version9(1, flowset(0, pack('nn', 255, 0)))];
export('127.0.0.5', ...$bad);
export('127.0.0.6', version9(1, flowset(0, template(256, [8, 0], [10, 0])), flowset(256, str_repeat('x', 1000))));
export(
    '127.0.0.6',
    version9(1, flowset(0, template(257, [10, 65535], [14, 65535], [14, 65535])), flowset(257, str_repeat('x', 1000))),
);
$expected = $before + ['127.0.0.6' => 2];
ksort($expected);
expect_soon($expected, $devices, 'devices after bad packets');
expect_same([], $interfaces([127, 0, 0, 6]), 'interfaces from senseless templates');

// Tables are bounded: the device that was silent for longest is dropped.
for ($i = 0; $i < 20; $i++) {
    export('127.0.0.7', version5(...array_map(fn($n) => [$i * 60 + 2 * $n + 1, $i * 60 + 2 * $n + 2], range(0, 29))));
}
expect_soon(20, fn() => $devices()['127.0.0.7'] ?? 0, 'packets of a large device');
$rows = $interfaces([127, 0, 0, 7]);
expect_same(
    [1000, 1200, false, true],
    [count($rows), array_key_last($rows), isset($rows[1]), isset($rows[1140])],
    'its interfaces',
);
for ($i = 0; $i < 1010; $i++) {
    export('127.0.' . (1 + $i % 250) . '.' . (1 + intdiv($i, 250)), version5([1, 2]));
    if ($i % 100 === 0) {
        $devices(); // the agent's turn: what it did not take yet is not lost
    }
}
expect_soon(1000, fn() => count($devices()), 'devices in the full table');
expect_soon(true, fn() => isset($devices()['127.0.10.5']) && !isset($devices()['127.0.0.3']), 'who gave way');

// The switch.
expect_same(0, rmon_nde_learned_dev_enable($link), 'enable again');
expect_same(1000, count($devices()), 'that changes nothing');
expect_same(0, rmon_nde_learned_dev_disable($link), 'disable');
expect_same(0, rmon_nde_learned_dev_status($link)['state'], 'state');
export('127.0.0.8', version5([1, 2]));
expect_same(0, status_of(ask($client, 0)), 'the agent took it');
expect_same([1000, false], [count($devices()), isset($devices()['127.0.0.8'])], 'nothing more is learned');

// Configured devices.
$a = [10, 1, 1, 5];
expect_same(0, rmon_nde_device_set($link, $a, 'public', 'router a'), 'a device');
expect_same(0, rmon_nde_device_set($link, [127, 0, 10, 5], 'c', 'router b'), 'one that sends');
expect_same(0, rmon_nde_device_set($link, $a, str_repeat('p', 80), str_repeat('n', 80)), 'a change, with full fields');
foreach ([[], [1, 2, 3], range(1, 15)] as $address) {
    expect_same(BAD_VALUE, rmon_nde_device_set($link, $address, 'public', 'x'), 'an address of ' . count($address));
}
expect_same(BAD_VALUE, rmon_nde_device_set($link, $a, "\n", 'x'), 'a community that can not be printed');
expect_same(NO_SUCH_NAME, rmon_nde_device_del($link, [10, 1, 1, 6]), 'no device');
$row = fn(array $address, string $name, string $community, int $flag)
    => [
        'address' => $address,
        'addressLength' => 4,
        'deviceName' => $name,
        'commString' => $community,
        'flag' => $flag,
    ];
$configured = [$row($a, str_repeat('n', 80), str_repeat('p', 80), 0), $row([127, 0, 10, 5], 'router b', 'c', 1)];
expect_same($configured, rmon_nde_device_getbulk($link, [], 10)['devices'], 'devices');
expect_same([$configured[1]], rmon_nde_device_getnext($link, $a)['devices'], 'getnext');
expect_same([$configured[0]], rmon_nde_device_get($link, $a)['devices'], 'get');

// Data sources: added at the lowest free index, changed and removed by index.
foreach (['one', 'two', 'three'] as $name) {
    expect_same(0, rmon_nde_datasrc_set($link, $a, $name), "source $name");
}
expect_same(NO_SUCH_NAME, rmon_nde_datasrc_set($link, [10, 1, 1, 6], 'x'), 'a source of no device');
expect_same(0, rmon_nde_datasrc_del($link, $a, 2), 'delete');
expect_same(NO_SUCH_NAME, rmon_nde_datasrc_del($link, $a, 2), 'delete again');
expect_same(NO_SUCH_NAME, rmon_nde_datasrc_mod($link, $a, 2, 'x'), 'a change of what is not there');
expect_same(0, rmon_nde_datasrc_mod($link, $a, 3, 'third'), 'a change');
expect_same(0, rmon_nde_datasrc_set($link, [127, 0, 10, 5], 'other'), 'another');
expect_same(0, rmon_nde_datasrc_set($link, $a, 'second'), 'in the gap');
$sources = function () use (&$link): array {
    return array_map(
        fn($row) => [implode('.', $row['address']), $row['datasrcIndex'], $row['datasrcName'], $row['deviceName']],
        rmon_nde_datasrc_getbulk($link, [], 0, 10)['datasrcs'],
    );
};
$n = str_repeat('n', 80);
$expected = [
    ['10.1.1.5', 1, 'one', $n],
    ['10.1.1.5', 2, 'second', $n],
    ['10.1.1.5', 3, 'third', $n],
    ['127.0.10.5', 1, 'other', 'router b'],
];
expect_same($expected, $sources(), 'sources');
expect_same(
    1,
    rmon_nde_datasrc_getnext($link, $a, 3)['datasrcs'][0]['datasrcIndex'],
    'getnext goes on with the next device',
);

// Flow paths.
foreach ([[2, 7, 1], [1, 5, 6], [1, 5, 2], [3, 0, 0]] as [$source, $in, $out]) {
    expect_same(0, rmon_nde_flow_path_set($link, $a, $source, $in, $out), "path $source $in $out");
}
expect_same(0, rmon_nde_flow_path_set($link, $a, 1, 5, 6), 'the same again');
expect_same(NO_SUCH_NAME, rmon_nde_flow_path_set($link, $a, 4, 1, 1), 'a path of no source');
expect_same(BAD_VALUE, rmon_nde_flow_path_set($link, $a, 1, -1, 1), 'a negative interface');
expect_same(NO_SUCH_NAME, rmon_nde_flow_path_del($link, $a, 1, 5, 7), 'no path');
$paths = function () use (&$link): array {
    return array_map(
        fn($row) => [$row['datasrcIndex'], $row['inputIndex'], $row['outputIndex']],
        rmon_nde_flow_path_getbulk($link, [], 0, 0, 0, 10)['flowPaths'],
    );
};
expect_same([[1, 5, 2], [1, 5, 6], [2, 7, 1], [3, 0, 0]], $paths(), 'paths');
expect_same(0, rmon_nde_flow_path_del($link, $a, 1, 5, 2), 'delete');
expect_same(0, rmon_nde_datasrc_del($link, $a, 3), 'a source goes with its paths');
expect_same([[1, 5, 6], [2, 7, 1]], $paths(), 'paths after that');

// Addresses whose length is too large, and unknown operations.
$head = fn(int $getType, int $count, int $operation, int $length) => i32($getType) . i32($count) . i32($operation) . str_repeat(u32(10), 16) . u32($length);
$texts = str_repeat(u32(0), 160);
foreach ([17, 0xffffffff] as $length) {
    expect_same(0, result_of(ask($client, 159, $head(GETNEXT, 1, 0, $length) . $texts . u32(0)))->u32(), 'devices');
    expect_same(
        0,
        result_of(ask($client, 165, $head(GETNEXT, 1, 0, $length) . u32(0) . u32(0)))->u32(),
        'learned devices',
    );
    expect_same(BAD_VALUE, status_of(ask($client, 160, $head(0, 0, 1, $length) . $texts . u32(0))), 'set');
}
foreach ([0, 3, -1] as $operation) {
    expect_same(
        BAD_VALUE,
        status_of(ask($client, 160, $head(0, 0, $operation, 4) . $texts . u32(0))),
        "operation $operation",
    );
}

// All that was set is there after a kill, the switch included.
end_agent($agent, 9);
[$agent, $link] = started('127.0.1', $port);
$configured[1]['flag'] = 0;
expect_same($configured, rmon_nde_device_getbulk($link, [], 10)['devices'], 'devices after a kill');
expect_same([$expected[0], $expected[1], $expected[3]], $sources(), 'sources after a kill');
expect_same([[1, 5, 6], [2, 7, 1]], $paths(), 'paths after a kill');
expect_same(0, rmon_nde_learned_dev_status($link)['state'], 'the switch after a kill');
expect_same(0, rmon_nde_learned_dev_enable($link), 'enable');
export('127.0.0.8', version5([1, 2]));
expect_soon(['127.0.0.8' => 1], $devices, 'learning begins anew');
expect_same(0, rmon_nde_device_del($link, $a), 'a device goes with all that is its');
expect_same([[$expected[3]], []], [$sources(), $paths()], 'what is left');

// A port in use; and without the option nothing can be learned.
[$code, , $errors] = run(agent_program(), '--port', '0', '--netflow', (string) $port);
expect_same(
    [1, true],
    [$code, str_contains($errors, "cannot listen for NetFlow on 127.0.0.1 port $port: Address already in use\n")],
    'a port in use',
);
$other = bundled_agent();

expect_same(5, status_of(ask(client($other), 166)), 'enable without a port');
expect_same(0, result_of(ask(client($other), 168))->i32(), 'state without a port');

agent_done($agent);
--EXPECT--
OK
