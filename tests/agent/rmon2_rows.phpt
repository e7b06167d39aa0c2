--TEST--
The bundled agent's RMON2 control rows: their life, tables that are full, rows that stay
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

$host = fn(int $number) => '10.1.' . intdiv($number, 256) . '.' . $number % 256;
$from = fn(int $number) => ethernet(
    mac(1),
    mac(100 + $number),
    0x0800,
    ip4($host($number), '10.0.0.1', 17, udp(1000, 1001)),
);

// 100 hosts, one after the other, all of which send to the same one; then the first of them again.
$list = array_map(fn($number) => [1.0, $from($number)], range(0, 99));
$list[] = [1.0, $from(0)];
$first = capture_file($list);

$agent = reading_agent([$first, capture_file([])]);
$link = module_link($agent);
$client = client($agent);

// ---- The life of a row, in each of the four tables ----------------------------------------------

$tables = [
    'protocolDist' => ['rmon_pdist_ctl', fn(...$row) => rmon_pdist_ctl_set($link, ...$row)],
    'addressMap' => ['rmon_addrmap_ctl', fn(...$row) => rmon_addrmap_ctl_set($link, ...$row)],
    'hlHost' => ['rmon_hlhost_ctl', fn($index, $source, $owner, $status) => rmon_hlhost_ctl_set($link, $index, $source, 10, -1, $owner, $status)],
    'hlMatrix' => ['rmon_hlmatrix_ctl', fn($index, $source, $owner, $status) => rmon_hlmatrix_ctl_set($link, $index, $source, 10, -1, $owner, $status)],
];
foreach ($tables as $table => [$functions, $set]) {
    $row = function (int $index, string $read = 'get') use ($table, $functions, $link): array|int {
        $row = ("{$functions}_$read")($link, $index);
        return $row['status'] !== NO_ERROR ? $row['status'] : array_map(
            fn($field) => $row["{$table}Control$field"],
            ['Index', 'DataSource', 'Owner', 'Status'],
        );
    };
    expect_same(NO_SUCH_NAME, $row(0, 'getnext'), "$table at first");
    foreach ([VALID, UNDER_CREATION, INVALID] as $status) {
        expect_same(NO_SUCH_NAME, $set(3, 1, 'me', $status), "$table, status $status for no row");
    }
    foreach ([0, 5, 6, -1] as $status) {
        expect_same(BAD_VALUE, $set(3, 1, 'me', $status), "$table, status $status");
    }
    foreach ([0, -1, 65536] as $index) {
        expect_same(BAD_VALUE, $set($index, 1, 'me', CREATE_REQUEST), "$table, index $index");
    }
    expect_same(BAD_VALUE, $set(3, -1, 'me', CREATE_REQUEST), "$table, a negative interface");
    expect_same(BAD_VALUE, $set(3, 1, "\n", CREATE_REQUEST), "$table, unprintable owner");
    expect_same(NO_ERROR, $set(3, 99, 'me', CREATE_REQUEST), "$table, createRequest");
    expect_same([3, 99, 'me', UNDER_CREATION], $row(3), "$table, the new row");
    expect_same(BAD_VALUE, $set(3, 1, 'me', CREATE_REQUEST), "$table, a row that is there");
    expect_same(BAD_VALUE, $set(3, 99, 'me', VALID), "$table, valid without its interface");
    expect_same(NO_ERROR, $set(3, 1, 'you', VALID), "$table, valid");
    expect_same([3, 1, 'you', VALID], $row(3), "$table, the valid row");
    expect_same(BAD_VALUE, $set(3, 2, 'you', VALID), "$table, another source while it is valid");
    expect_same(NO_ERROR, $set(3, 1, 'him', VALID), "$table, another owner while it is valid");
    expect_same(NO_ERROR, start_row(fn(int $status) => $set(9, 2, 'me', $status)), "$table, a second row");
    expect_same(
        [[3, 1, 'him', VALID], [9, 2, 'me', VALID], NO_SUCH_NAME],
        [$row(-5, 'getnext'), $row(3, 'getnext'), $row(9, 'getnext')],
        "$table, walk",
    );
    expect_same(NO_ERROR, $set(9, 1, 'me', UNDER_CREATION), "$table, underCreation");
    expect_same(NO_ERROR, $set(9, 1, 'me', INVALID), "$table, invalid");
    expect_same(NO_SUCH_NAME, $row(9), "$table, the row that is gone");
}
foreach (['rmon_hlhost_ctl_set', 'rmon_hlmatrix_ctl_set'] as $set) {
    expect_same(BAD_VALUE, $set($link, 4, 1, -2, -1, '', CREATE_REQUEST), "$set: a size below -1");
    expect_same(BAD_VALUE, $set($link, 4, 1, -1, -2, '', CREATE_REQUEST), "$set: another size below -1");
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => $set($link, 4, 1, 0, 0x7fffffff, '', $status)),
        "$set: no rows, and all that there may be",
    );
}
foreach (['rmon_hlhost_ctl_set', 'rmon_hlmatrix_ctl_set'] as $set) {
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => $set($link, 5, 1, -1, 4, '', $status)),
        "$set: four rows of the application layer",
    );
}
expect_same(BAD_VALUE, rmon_addrmap_scalars_set($link, -2), 'a size below -1');
expect_same(NO_ERROR, rmon_addrmap_scalars_set($link, 10), 'ten addresses');

// ---- Full tables: the rows that were used least recently are dropped ----------------------------------

/** The addresses of the network layer's hosts. */
$hosts = fn(int $control = 3) => array_map(
    fn($row) => address_text($row['nlHostAddress']),
    array_filter(
        rmon_nlhost_getbulk($link, $control, 0, 0, [], 1000) ?: [],
        fn($row) => $row['hlHostControlIndex'] === $control,
    ),
);
$counts = fn(int $index, string $layer) => array_map(
    fn($field) => rmon_hlhost_ctl_get($link, $index)["hlHostControl$layer$field"],
    ['DroppedFrames', 'Inserts', 'Deletes'],
);

read_files($agent, 2);
expect_same(['10.0.0.1', '10.1.0.0', ...array_map($host, range(92, 99))], $hosts(), 'the ten hosts of late');
expect_same([0, 102, 92], $counts(3, 'Nl'), 'network layer: frames dropped, inserts, deletes');
expect_same([0, 101, 0], $counts(3, 'Al'), 'application layer');
expect_same([[101, 0, 0], [0, 101, 0]], [$counts(4, 'Nl'), $counts(4, 'Al')], 'a table without rows');
expect_same([], $hosts(4), 'rows of it');
$pairs = array_filter(
    rmon_nlmatrix_ds_getbulk($link, 3, 0, 0, [], [], 1000),
    fn($row) => $row['hlMatrixControlIndex'] === 3,
);
expect_same(
    ['10.1.0.0', ...array_map($host, range(91, 99))],
    array_map(fn($row) => address_text($row['nlMatrixDSSourceAddress']), $pairs),
    'the ten pairs of late',
);
$control = rmon_hlmatrix_ctl_get($link, 3);
expect_same([0, 101, 91, 10, 0, 100, 0, -1], array_values(array_slice($control, 4, 8)), 'counts of the matrix');
$addresses = rmon_addrmap_entry_getbulk($link, 0, 0, [], 0, 1000);
expect_same(
    ['10.1.0.0', ...array_map($host, range(91, 99))],
    array_map(fn($row) => address_text($row['addressMapNetworkAddress']), $addresses),
    'the ten addresses of late',
);
expect_same([101, 91, 10], array_slice(array_values(rmon_addrmap_scalars_get($link)), 2), 'scalars of the address map');

// The application layer has a size of its own: of each pair udp is counted.
$counts5 = fn(array $control, string $prefix) => array_map(
    fn($field) => $control["$prefix$field"],
    ['NlDeletes', 'AlDroppedFrames', 'AlInserts', 'AlDeletes', 'AlMaxDesiredEntries'],
);
expect_same(
    [0, 0, 102, 98, 4],
    $counts5(rmon_hlhost_ctl_get($link, 5), 'hlHostControl'),
    'counts of the small row of hosts',
);
expect_same(
    [0, 0, 101, 97, 4],
    $counts5(rmon_hlmatrix_ctl_get($link, 5), 'hlMatrixControl'),
    'counts of the small row of pairs',
);
$applications = array_filter(
    rmon_alhost_getbulk($link, 5, 0, 0, [], 0, 1000),
    fn($row) => $row['hlHostControlIndex'] === 5,
);
expect_same(
    ['10.0.0.1', '10.1.0.0', '10.1.0.98', '10.1.0.99'],
    array_map(fn($row) => address_text($row['nlHostAddress']), $applications),
    'the four hosts of late',
);
$applications = array_filter(
    rmon_almatrix_sd_getbulk($link, 5, 0, 0, [], [], 0, 1000),
    fn($row) => $row['hlMatrixControlIndex'] === 5,
);
expect_same(
    ['10.1.0.0', '10.1.0.97', '10.1.0.98', '10.1.0.99'],
    array_map(fn($row) => address_text($row['nlMatrixSDSourceAddress']), $applications),
    'the four pairs of late',
);

// Another size, while it works: fewer rows, then more again.
expect_same(NO_ERROR, rmon_hlhost_ctl_set($link, 3, 1, 3, -1, 'me', VALID), 'three hosts');
expect_same(['10.0.0.1', '10.1.0.0', '10.1.0.99'], $hosts(), 'the three hosts of late');
expect_same([0, 102, 99], $counts(3, 'Nl'), 'deletes count');
expect_same(NO_ERROR, rmon_addrmap_scalars_set($link, 1), 'one address');
expect_same(
    '10.1.0.0',
    address_text(rmon_addrmap_entry_getnext($link, 0, 0, [], 0)['addressMapNetworkAddress']),
    'the address of late',
);

// Rows that stay.
$index = protocol_indexes($link);
$bytes = fn(string $address) => u32(4) . implode(array_map(u32(...), address($address)));
$keep = fn(int $procedure, string $address, int $control = 3) => status_of(ask($client, $procedure, record(
    hlHostControlIndex: i32($control),
    timeMark: u32(0),
    protocolDirLocalIndex: i32($index['ip']),
    protocolDirLocalIndex2: i32(0),
    nlHostAddress: $bytes($address),
    getType: i32(GET),
    applicationLayer: i32(0),
    count: i32(1),
)));
expect_same(NO_SUCH_NAME, $keep(171, '10.9.9.9'), 'no such host');
expect_same(NO_SUCH_NAME, $keep(171, '10.1.0.99', 77), 'no such control row');
expect_same(NO_ERROR, $keep(171, '10.1.0.99'), 'make persistent');
expect_same(NO_ERROR, rmon_hlhost_ctl_set($link, 3, 1, 1, -1, 'me', VALID), 'one host');
expect_same(['10.1.0.99'], $hosts(), 'the persistent host');
expect_same(NO_ERROR, $keep(172, '10.1.0.99'), 'make nonpersistent');
expect_same(NO_ERROR, rmon_hlhost_ctl_set($link, 3, 1, 0, -1, 'me', VALID), 'no hosts');
expect_same([], $hosts(), 'nobody stays');
$pair = fn(int $procedure) => status_of(ask($client, $procedure, record(
    hlMatrixControlIndex: i32(3),
    timeMark: u32(0),
    protocolDirLocalIndex: i32($index['ip']),
    protocolDirLocalIndex2: i32(0),
    sourceAddress: $bytes('10.1.0.91'),
    destAddress: $bytes('10.0.0.1'),
    getType: i32(GET),
    applicationLayer: i32(0),
    direction: i32(0),
    count: i32(1),
)));
expect_same(NO_ERROR, $pair(173), 'make a pair persistent');
expect_same(NO_ERROR, rmon_hlmatrix_ctl_set($link, 3, 1, 1, -1, 'me', VALID), 'one pair');
expect_same(
    '10.1.0.91',
    address_text(rmon_nlmatrix_sd_getnext($link, 3, 0, 0, [], [])['nlMatrixSDSourceAddress']),
    'the persistent pair',
);
expect_same(NO_ERROR, $pair(174), 'make the pair nonpersistent');

// A row that begins again counts from the beginning.
expect_same(NO_ERROR, rmon_pdist_ctl_set($link, 3, 1, '', UNDER_CREATION), 'under creation');
expect_same(false, rmon_pdist_stats_getnext($link, 0, 0), 'no rows while it does not work');
expect_same(false, @rmon_pdist_stats_getothers($link, 3), 'no others while it does not work');
expect_same(NO_ERROR, rmon_pdist_ctl_set($link, 3, 1, '', VALID), 'valid again');
expect_same(0.0, rmon_pdist_stats_getothers($link, 3)['packets'], 'others from the beginning');
expect_same(false, rmon_pdist_stats_getnext($link, 0, 0), 'rows from the beginning');
rmon_close($link);
agent_done($agent);
--EXPECT--
OK
