--TEST--
The bundled agent's protocol directory: what it has at first, its order, what sets may change
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/rmon2.inc';

$agent = bundled_agent('--no-capture');
$link = module_link($agent);

// Well-known identifiers (RFC 2895): four octets for each layer.
$known = protocols($link);
$expected = [
    'ether2' => [1], 'llc' => [2], 'ether2.ip' => [1, 0x800], 'ether2.arp' => [1, 0x806], 'ether2.ip6' => [1, 0x86dd],
    'ether2.ip.icmp' => [1, 0x800, 1], 'ether2.ip.tcp' => [1, 0x800, 6], 'ether2.ip.udp' => [1, 0x800, 17],
    'ether2.ip6.icmp6' => [1, 0x86dd, 58], 'ether2.ip6.tcp' => [1, 0x86dd, 6],
    'ether2.ip.tcp.www-http' => [1, 0x800, 6, 80], 'ether2.ip.udp.domain' => [1, 0x800, 17, 53],
    'ether2.ip6.udp.snmp' => [1, 0x86dd, 17, 161], 'ether2.ip.sctp.diameter' => [1, 0x800, 132, 3868],
    'llc.bpdu' => [2, 0x42],
];
foreach ($expected as $name => $layers) {
    $row = rmon_pdir_get($link, ...protocol_key(...$layers));
    expect_same([$known[$name] ?? null, $name], [$row, $row['protocolDirDescr'] ?? null], $name);
}
$applications = preg_grep('/^ether2\.ip\.(tcp|udp)\./', array_keys($known));
expect_same(true, count($applications) >= 30, 'applications');

// A walk meets all rows, in the order of the identifiers: by length, then by octets. GET has each of them.
$walked = [];
for ([$id, $parameters] = [[], []]; $row = rmon_pdir_getnext($link, $id, $parameters);) {
    [$id, $parameters] = [$row['protocolDirID'], $row['protocolDirParameters']];
    expect_same($row, rmon_pdir_get($link, $id, $parameters), 'get and getnext');
    $walked[$row['protocolDirDescr']] = $row;
}
expect_same($known, $walked, 'walk and getbulk');
$ids = array_map(
    fn($row) => pack('n', count($row['protocolDirID'])) . pack('C*', ...$row['protocolDirID']),
    array_values($walked),
);
$sorted = $ids;
sort($sorted, SORT_STRING);
expect_same($sorted, $ids, 'the order');
expect_same(
    array_slice(array_values($known), 1, 5),
    rmon_pdir_getbulk($link, ...protocol_key(1), count: 5),
    'five rows',
);
foreach ([0, -1] as $count) {
    expect_same(false, rmon_pdir_getbulk($link, [], [], $count), "$count rows");
}
expect_same(false, rmon_pdir_getnext($link, array_fill(0, 255, 255), []), 'behind all');
expect_same(false, rmon_pdir_get($link, [], []), 'no identifier');

// By local index, which is each protocol's own.
$indexed = [];
for ($index = 0; ($row = rmon_pdir_byidx_getnext($link, $index))['status'] === NO_ERROR;) {
    $index = $row['protocolDirLocalIndex'];
    expect_same($row, rmon_pdir_byidx_get($link, $index), "row $index");
    expect_same($row, array_intersect_key($known[$row['protocolDirDescr']], $row), "row $index by its identifier");
    $indexed[$index] = $row;
}
expect_same(count($known), count($indexed), 'rows by index');
foreach ([0, -1, $index + 1, 0x7fffffff, -0x80000000] as $none) {
    expect_same(NO_SUCH_NAME, rmon_pdir_byidx_get($link, $none)['status'], "row $none");
}
expect_same(1, rmon_pdir_byidx_getnext($link, -0x80000000)['protocolDirLocalIndex'], 'the first index');
expect_same(NO_SUCH_NAME, rmon_pdir_byidx_getnext($link, 0x7fffffff)['status'], 'behind the last index');

// What the words of some rows say.
$words = [
    'protocolDirType', 'protocolDirAddressMapConfig', 'protocolDirHostConfig', 'protocolDirMatrixConfig',
    'protocolDirArtConfig', 'protocolDirStatus', 'is_leaf', 'is_network', 'flags',
];
$flags = [
    'ether2' => [1, 1, 1, 1, 1, 1, 0, 0, PDIR_FLAG_BASE_PROTO],
    'ether2.ip' => [3, 3, 3, 3, 1, 1, 0, 1, PDIR_FLAG_NETWORK | PDIR_FLAG_IP],
    'ether2.arp' => [0, 1, 1, 1, 1, 1, 1, 1, PDIR_FLAG_NETWORK | PDIR_FLAG_LEAF],
    'ether2.ip.udp' => [1, 1, 3, 3, 1, 1, 0, 0, PDIR_FLAG_IP_DESC],
    'ether2.ip.tcp.ssh' => [0, 1, 3, 3, 3, 1, 1, 0, PDIR_FLAG_IP_DESC | PDIR_FLAG_LEAF],
    'ether2.ip.udp.domain' => [0, 1, 3, 3, 3, 1, 1, 0, PDIR_FLAG_IP_DESC | PDIR_FLAG_LEAF],
    'ether2.ip.udp.ntp' => [0, 1, 3, 3, 1, 1, 1, 0, PDIR_FLAG_IP_DESC | PDIR_FLAG_LEAF],
];
foreach ($flags as $name => $expected) {
    expect_same($expected, array_map(fn($word) => $known[$name][$word], $words), "words of $name");
}

/** Sets the row of an identifier, which is one of an application. */
function set_application(array $key, string $descr, int $status, int $host = 3, int $matrix = 3, int $art = 3, int $map = 1, string $owner = 'me'): int
{
    global $link;
    return rmon_pdir_set($link, ...[...$key, $descr, $map, $host, $matrix, $art, $owner, $status]);
}

/** The next row that a set made or changed; no function of the module asks for it. */
function next_modified(array $key): string
{
    global $client;
    [$id, $parameters] = array_map(fn($bytes) => u32(count($bytes)) . implode(array_map(u32(...), $bytes)), $key);
    $fields = result_of(ask($client, 21, $id . $parameters . i32(GETNEXT) . i32(1)));
    [$status, , , , $descr] = [$fields->i32(), $fields->bytes(), $fields->bytes(), $fields->i32(), $fields->text()];
    return $status === NO_ERROR ? $descr : "status $status";
}

$client = client($agent);
expect_same('status 2', next_modified([[], []]), 'modified rows at first');
expect_same(0, rmon_pdir_lastchange_get($link), 'last change at first');

// A new application: what is wrong with a set, the row, its changes, its end.
$key = protocol_key(1, 0x800, 6, 12345);
foreach ([VALID, UNDER_CREATION, INVALID] as $status) {
    expect_same(NO_SUCH_NAME, set_application($key, 'mine', $status), "status $status for no row");
}
foreach ([0, 5, 6, -1] as $status) {
    expect_same(BAD_VALUE, set_application($key, 'mine', $status), "status $status");
}
$wrong = [
    'no layer' => [[], []], 'half a layer' => [[0, 0, 0, 1, 0, 0], [0]], 'a base layer' => protocol_key(9),
    'parameters of another size' => [$key[0], [0, 0, 0]], 'unknown parameters' => [$key[0], [0, 0, 0, 1]],
    'no such layer below' => protocol_key(1, 0x1234, 6, 12345), 'port 0' => protocol_key(1, 0x800, 6, 0),
    'a port too large' => protocol_key(1, 0x800, 6, 65536), 'above an application' => protocol_key(1, 0x800, 6, 80, 1),
    'a length as a type' => protocol_key(1, 1500), 'IP protocol 256' => protocol_key(1, 0x800, 256),
    'a row that is there' => protocol_key(1, 0x800, 6, 80),
];
foreach ($wrong as $what => $id) {
    expect_same(BAD_VALUE, set_application($id, 'mine', CREATE_REQUEST), $what);
}
expect_same(BAD_VALUE, set_application($key, "\x7f", CREATE_REQUEST), 'unprintable description');
expect_same(BAD_VALUE, set_application($key, 'mine', CREATE_REQUEST, host: 1), 'a config that is not supported');
expect_same(BAD_VALUE, set_application($key, 'mine', CREATE_REQUEST, map: 3), 'an address map of an application');
expect_same(BAD_VALUE, set_application($key, 'mine', CREATE_REQUEST, art: 4), 'an unknown config');
expect_same(0, rmon_pdir_lastchange_get($link), 'last change after refusals');

expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > 0, 'a time that is not 0');
expect_same(NO_ERROR, set_application($key, 'mine', CREATE_REQUEST, matrix: 2), 'createRequest');
expect_same(UNDER_CREATION, rmon_pdir_get($link, ...$key)['protocolDirStatus'], 'the row under creation');
expect_same(NO_ERROR, set_application($key, 'mine', VALID, matrix: 2), 'valid');
$row = rmon_pdir_get($link, ...$key);
$last = $index + 1; // refused sets use up no index
expect_same(
    [$last, 'mine', 0, 1, 3, 2, 'me', VALID, 3, 1, 0, PDIR_FLAG_IP_DESC | PDIR_FLAG_LEAF | PDIR_FLAG_EXTENSION],
    array_values(array_slice($row, 4)),
    'the new row',
);
$changed = rmon_pdir_lastchange_get($link);
expect_same(true, $changed > 0 && $changed <= rmon_system_get($link)['sysUpTime'], 'last change');
expect_same('mine', next_modified([[], []]), 'the modified row');
expect_same(BAD_VALUE, set_application($key, 'mine', CREATE_REQUEST), 'createRequest for a row that is there');
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > $changed, 'a later time');
expect_same(NO_ERROR, set_application($key, 'yours', UNDER_CREATION, owner: 'you'), 'underCreation');
$row = rmon_pdir_get($link, ...$key);
expect_same(
    ['yours', 'you', UNDER_CREATION],
    [$row['protocolDirDescr'], $row['protocolDirOwner'], $row['protocolDirStatus']],
    'the changed row',
);
expect_same(true, rmon_pdir_lastchange_get($link) > $changed, 'last change, later');
expect_same(NO_ERROR, set_application($key, 'yours', INVALID), 'invalid');
expect_same(false, rmon_pdir_get($link, ...$key), 'the row that is gone');
expect_same(NO_SUCH_NAME, rmon_pdir_byidx_get($link, $last)['status'], 'the row that is gone, by index');
expect_same(NO_ERROR, set_application($key, 'mine', CREATE_REQUEST), 'createRequest again');
$row = rmon_pdir_get($link, ...$key);
expect_same(
    [$last + 1, UNDER_CREATION],
    [$row['protocolDirLocalIndex'], $row['protocolDirStatus']],
    'a new row has a new index',
);

// A whole stack of layers is made from below and removed from above.
$type = protocol_key(1, 0x88b5);
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_pdir_set($link, ...[...$type, 'experiment', 1, 1, 1, 1, '', $status])),
    'a network layer',
);
expect_same(
    PDIR_FLAG_NETWORK | PDIR_FLAG_LEAF | PDIR_FLAG_EXTENSION,
    rmon_pdir_get($link, ...$type)['flags'],
    'its flags',
);
expect_same(
    BAD_VALUE,
    rmon_pdir_set($link, ...[...protocol_key(1, 0x800, 6), '', 1, 3, 3, 1, '', INVALID]),
    'a protocol with others above it',
);
expect_same(BAD_VALUE, rmon_pdir_set($link, ...[...protocol_key(1), '', 1, 1, 1, 1, '', INVALID]), 'a base layer');
expect_same(
    BAD_VALUE,
    rmon_pdir_set($link, ...[...protocol_key(1), '', 1, 1, 1, 1, '', UNDER_CREATION]),
    'a base layer under creation',
);
expect_same(NO_ERROR, rmon_pdir_set($link, ...[...$type, '', 1, 1, 1, 1, '', INVALID]), 'the network layer goes');
expect_same('ether2.arp', $known['ether2.arp']['protocolDirDescr'], 'the others stay');

// Nothing is learned, so nothing is removed.
$rows = rmon_pdir_getbulk($link, [], [], 10000);
expect_same(NO_ERROR, status_of(ask($client, 169)), 'no learned rows');
expect_same($rows, rmon_pdir_getbulk($link, [], [], 10000), 'all rows stay');

rmon_close($link);
agent_done($agent);
--EXPECT--
OK
