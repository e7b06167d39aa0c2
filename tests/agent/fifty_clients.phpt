--TEST--
The bundled agent serves 50 clients at once that read all its tables, while it reads a capture over and over and rows are set
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/groups.inc';

const CLIENTS = 50;
const ROUNDS = 20;

/** Bytes of an address of fixed size. */
const ADDRESS = 20;

mt_srand(50);
$frames = [];
for ($i = 0; $i < 2000; $i++) {
    [$from, $to] = [mt_rand(1, 40), mt_rand(1, 40)];
    [$source, $destination] = mt_rand(0, 1) ? [mt_rand(40000, 40020), 80] : [80, mt_rand(40000, 40020)];
    $transport = mt_rand(0, 1)
        ? [6, tcp($source, $destination, 0x18, 'payload', $i)]
        : [17, udp($source, 53, "\0\1\1\0")];
    $frame = mt_rand(0, 1)
        ? ethernet(mac($to), mac($from), 0x0800, ip4("10.0.0.$from", "10.0.0.$to", ...$transport), mt_rand(1, 20))
        : ethernet(mac($to), mac($from), 0x86dd, ip6("fd00::$from", "fd00::$to", ...[...$transport, mt_rand(0, 63)]));
    $frames[] = [1.0 + $i / 1000, $frame];
}

$agent = bundled_agent('--read', capture_file($frames), '--loop');
$link = module_link($agent);
// More pairs than rows: tables overflow all the time.
foreach (start_groups($link, 1, 500) as $group => $status) {
    expect_same(1, $status, "status of $group");
}

$bulk = record(getType: i32(3), count: i32(10000));
$after = i32(GETNEXT);
$nobody = byte_list('');
$no_address = units('', ADDRESS);

/*
 * Calls, and of what fields a row of the answer is made: i a number of 32 bits, q one of 64, b a list of bytes, t a text,
 * a an address of fixed size. Rows in a list have an R in front.
 */
$reads = [
    'Ethernet statistics' => [4, key2(1, GET), 'iii' . str_repeat('q', 17) . 'tiqi'],
    'hosts' => [11, record(i32(1), $nobody, i32(10000), i32(3)), 'Ribiiqqqqqqq'],
    'hosts by creation' => [12, record(i32(1), i32(0), $bulk), 'Ribiiqqqqqqq'],
    'pairs' => [18, record(i32(1), $nobody, $nobody, i32(10000), i32(3), i32(0)), 'Ribbiqqq'],
    'protocols' => [19, record($nobody, $nobody, $bulk), 'Ribbitiiiitiiiii'],
    'distribution' => [26, record(i32(1), i32(0), $bulk), 'Riiiqqi'],
    'address map' => [31, record(u32(0), i32(0), $nobody, i32(0), $bulk), 'Riiibibi'],
    'network layer hosts' => [34, record(i32(1), u32(0), i32(0), i32(0), $nobody, i32(3), i32(0), i32(10000)), 'Riibqqqqqiiii'],
    'application layer hosts' => [34, record(i32(1), u32(0), i32(0), i32(0), $nobody, i32(3), i32(1), i32(10000)), 'Riibqqqqqiiii'],
    'network layer pairs' => [37, record(i32(1), u32(0), i32(0), i32(0), $nobody, $nobody, i32(3), i32(0), i32(0), i32(10000)), 'Riibbqqiiii'],
    'application layer pairs' => [37, record(i32(1), u32(0), i32(0), i32(0), $nobody, $nobody, i32(3), i32(1), i32(1), i32(10000)), 'Riibbqqiiii'],
    'packets' => [49, record(i32(1), i32(0), $after), 'iiiibiiii'],
    'by DSCP' => [74, record(i32(1), i32(-1), $after), 'iiiqqqq'],
    'VLANs' => [78, record(i32(1), i32(-1), $after), 'iiqqqqii'],
    'priorities' => [81, record(i32(1), i32(-1), $after), 'iiqqi'],
    'response times' => [101, record(i32(1), i32(0), $nobody, $nobody, $bulk), 'Ribb' . str_repeat('i', 11) . 'qqiiii'],
    'protocols by DSCP' => [137, record(i32(1), u32(0), u32(0), i32(0), $after), 'iiiiiqq'],
    'hosts by DSCP' => [138, record(i32(1), u32(0), u32(0), i32(0), $no_address, i32(0), $after), 'iiiiiaiqqqq'],
    'pairs by DSCP' => [141, record(i32(1), u32(0), u32(0), i32(0), $no_address, $no_address, i32(0), i32(0), i32(0), $after), 'iiiiiaaiiiqq'],
];

/** Takes a row apart; its first field is its status. */
function take_row(Fields $fields, string $row): void
{
    global $bad;
    $status = $fields->i32();
    foreach (str_split(substr($row, 1)) as $field) {
        match ($field) {
            'i' => $fields->i32(),
            'q' => $fields->u64(),
            'b' => $fields->bytes(),
            't' => $fields->text(),
            'a' => array_map(fn() => $fields->i32(), range(1, ADDRESS)),
        };
    }
    $bad += $status !== NO_ERROR;
}

/** Takes an answer to a read apart; the number of its rows. */
function take_answer(string $message, int $xid, string $what, string $row): int
{
    $start = answer(ACCEPTED, '', $xid);
    if (!str_starts_with($message, $start)) {
        fail("answer of $what:", bin2hex(substr($message, 0, 100)));
        exit;
    }
    $fields = new Fields(substr($message, strlen($start)));
    $rows = $row[0] === 'R' ? $fields->u32() : 1;
    for ($i = 0; $i < $rows && $i < 10000; $i++) {
        take_row($fields, ltrim($row, 'R'));
    }
    $fields->end();
    return $rows;
}

$bad = 0;
$clients = [];
for ($i = 0; $i < CLIENTS; $i++) {
    $clients[] = client($agent);
}
$names = array_keys($reads);
$rows = array_fill_keys($names, 0);
$before = (int) rmon_etherstats_get($link, 1)['etherStatsPkts'];
for ($round = 0; $round < ROUNDS; $round++) {
    // All ask before anybody is answered: each another table, and every tenth sets a row and reads it after.
    foreach ($clients as $i => $client) {
        $name = $names[($i + $round) % count($names)];
        fwrite($client, marked(call($reads[$name][0], $reads[$name][1], $i * 1000 + $round)));
    }
    // Tables of other sizes, and of none for a moment.
    foreach ([4, 2, 1] as $status) {
        rmon_host_ctl_set($link, 1, 1, "round $round", $status);
        rmon_hlhost_ctl_set($link, 1, 1, 100 + $round, 200 + $round, "round $round", $status);
        rmon_prio_ctl_set($link, 2 + $round, 1, "round $round", $status);
    }
    foreach ($clients as $i => $client) {
        $name = $names[($i + $round) % count($names)];
        $rows[$name] += take_answer(message_from($client), $i * 1000 + $round, $name, $reads[$name][2]);
    }
}
foreach ($rows as $name => $count) {
    expect_same(true, $count >= ROUNDS, "rows of $name: at least one in each round");
}
expect_same(0, $bad, 'rows that were not there');
expect_same(true, (int) rmon_etherstats_get($link, 1)['etherStatsPkts'] > $before, 'frames were read meanwhile');
for ($round = 0; $round < ROUNDS; $round++) {
    expect_same(
        "round $round",
        rmon_prio_ctl_get($link, 2 + $round)['smonPrioStatsControlOwner'],
        'a row that was set',
    );
}
agent_done($agent);
?>
--EXPECT--
OK
