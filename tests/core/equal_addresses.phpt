--TEST--
Rows that repeat the previous row's addresses: a script still sees an array of its own in each
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$wire = fn (array $source, array $dest): string => record(
    status: i32(1), sourceAddress: byte_list($source), destAddress: byte_list($dest), index: i32(2),
    pkts: u64(3), octets: u64(4), errors: u64(5),
);
$row = fn (array $source, array $dest): array => [
    0 => 1, 'status' => 1, 'matrixSDSourceAddress' => $source ?: 0, 'matrixSDDestAddress' => $dest ?: 0,
    'matrixSDIndex' => 2, 'matrixSDPkts' => 3.0, 'matrixSDOctets' => 4.0, 'matrixSDErrors' => 5.0,
];

[$a, $b, $c] = [[10, 0, 0, 1], [10, 0, 0, 2], [10, 9, 0, 2]];
$short = [10, 0, 0];
$long = range(100, 116); // one more than a row holds inside
$longer = range(100, 120);
$pairs = [
    [$a, $b], [$a, $b], [$a, $c], [$b, $c], [$b, $c], [$b, $b], [[], $b], [[], []], [[], []], [$a, []], [$short, $a],
    [$a, $short], [$long, $long], [$long, $long], [$longer, $long], [[...$longer, 1], $long], [[9, ...array_slice($long, 1)], $long],
    [$long, range(101, 117)], [$a, $a], [$a, $a], [$a, $a],
];
$expected = array_map(fn (array $pair) => $row(...$pair), $pairs);
$agent = scripted_agent(always(reply(rows(...array_map(fn (array $pair) => $wire(...$pair), $pairs)))));
$link = rmon_connect('127.0.0.1');
$rows = rmon_matrix_sd_getbulk($link, 2, [], [], 100);
expect_same($expected, $rows, 'the rows');

// Writing to one leaves all others as they are, in either order and in every way.
$last = count($rows) - 1;
foreach ([0, 1, 3, 4, 7, 8, 12, 13, $last, $last - 1] as $i) {
    foreach (['matrixSDSourceAddress', 'matrixSDDestAddress'] as $key) {
        $rows = rmon_matrix_sd_getbulk($link, 2, [], [], 100);
        $rows[$i][$key] = [...(array) $rows[$i][$key]];
        $rows[$i][$key][0] = 'written';
        $changed = $rows;
        $changed[$i][$key] = $expected[$i][$key];
        expect_same($expected, $changed, "row $i, $key");
        expect_same('written', $rows[$i][$key][0]);
    }
}
$rows = rmon_matrix_sd_getbulk($link, 2, [], [], 100);
foreach ($rows[$last]['matrixSDSourceAddress'] as &$byte) {
    $byte = -$byte;
}
unset($byte);
$rows[$last - 1]['matrixSDSourceAddress'][] = 5;
array_pop($rows[0]['matrixSDDestAddress']);
unset($rows[12]['matrixSDDestAddress'][3], $rows[3]);
expect_same([-10, 0, 0, -1], $rows[$last]['matrixSDSourceAddress'], 'by reference');
expect_same([10, 0, 0, 1, 5], $rows[$last - 1]['matrixSDSourceAddress'], 'appended');
expect_same([10, 0, 0], $rows[0]['matrixSDDestAddress'], 'shortened');
foreach ([
    [1, 'Dest'], [2, 'Source'], [4, 'Source'], [13, 'Dest'], [$last - 2, 'Source'], [$last, 'Dest'],
] as [$i, $of]) {
    expect_same($expected[$i]["matrixSD{$of}Address"], $rows[$i]["matrixSD{$of}Address"], "$of of row $i");
}

// An address that is converted where it stands, too.
$rows = rmon_matrix_sd_getbulk($link, 2, [], [], 100);
$rows[$last]['matrixSDSourceAddress'][1] = '77';
rmon_matrix_sd_get($link, 2, $rows[$last]['matrixSDSourceAddress'], $rows[$last]['matrixSDDestAddress']);
expect_same([10, 77, 0, 1], $rows[$last]['matrixSDSourceAddress'], 'the one that was converted');
expect_same(array_slice($expected, 0, $last), array_slice($rows, 0, $last), 'the others');
done();
?>
--EXPECT--
OK
