--TEST--
Settings too long to be written anew each time: clients set at once, a journal, readers meanwhile, kills, damage
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/sets.inc';

$directory = sys_get_temp_dir() . '/rmon-sets-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$settings = "$directory/settings";
$journal = "$directory/settings.journal";

function started(): BundledAgent
{
    global $directory;
    return bundled_agent('--no-capture', '--state', $directory);
}

function owner(mixed $client, int $index): string
{
    return ether_row($client, $index)['Owner'];
}

// A short file is written anew each time; a long one stays as it is, and what is set is added to its journal.
$agent = started();
make_rows($agent, 1001, 20);
expect_same([$settings], glob("$directory/*"), 'files, while they are short');
make_rows($agent, 1021, ROWS_OF_A_JOURNAL);
expect_same([$settings, $journal], glob("$directory/*"), 'files, once they are long');
expect_same('0600', sprintf('%04o', fileperms($journal) & 07777), 'who may read the journal');
clearstatcache();
$inode = fileinode($settings);
$size = filesize($journal);
expect_same(NO_ERROR, set_ether(client($agent), 1001, 0, 'one set', UNDER_CREATION), 'a set');
clearstatcache();
expect_same($inode, fileinode($settings), 'the file after one more set');
$grown = filesize($journal) - $size;
expect_same(true, $grown > 0 && $grown < 2000, "what one set adds to the journal: $grown octets");

// Eight clients at once and a ninth that reads: each is answered, and the last set of each is what stands.
$clients = eight_clients($agent);
$reader = client($agent);
$count = 0;
$enough = function () use (&$count, $reader): bool {
    expect_same(1100, ether_row($reader, 1100)['Index'], 'a read between sets');
    return ++$count >= 400;
};
$sets = set_at_once($clients, $enough);
foreach ($sets as $index => [$answered, $sent]) {
    expect_same($sent, $answered, "sets of row $index that are answered");
    expect_same("$answered", owner($reader, $index), "row $index");
}

// Several sets and a read in one piece are answered in their order, and the read sees the sets before it.
fwrite($reader, ether_call(1001, 'first', UNDER_CREATION, 11) . ether_call(1001, 'second', UNDER_CREATION, 12)
    . marked(call(4, key2(1001, GET), 13)) . ether_call(1001, 'third', UNDER_CREATION, 14));
foreach ([11, 12, 13, 14] as $xid) {
    $answers[$xid] = message_from($reader);
    expect_same($xid, unpack('N', $answers[$xid])[1], 'the order of the answers');
}
expect_same(true, str_contains($answers[13], 'second'), 'what the read between sets sees');

// A client that is gone before its answer, and one that says that it will send no more.
for ($i = 0; $i < 20; $i++) {
    $leaving = client($agent);
    fwrite($leaving, ether_call(1002, "left $i", UNDER_CREATION));
    fclose($leaving);
}
$finishing = client($agent);
fwrite($finishing, ether_call(1003, 'finished', UNDER_CREATION));
stream_socket_shutdown($finishing, STREAM_SHUT_WR);
expect_same(NO_ERROR, status_of(message_from($finishing)), 'the answer to a client that sends no more');
expect_same(true, hung_up($finishing), 'and its connection');
expect_soon('left 19', fn() => owner($reader, 1002), 'the last set of those that left');

// Killed while all of them set: whatever was answered is there, and nothing that was not sent.
for ($round = 1; $round <= 4; $round++) {
    $sets = set_until_killed($agent, 0.013 * $round, $round * 100000);
    $agent = started();
    $reader = client($agent);
    expect_same([], lost_sets($agent, $sets), "what is lost in round $round");
    expect_same(str_repeat('o', 255), owner($reader, 1009), 'a row that was not set');
}

// The end takes the journal into the file; replies that wait go out before.
$clients = eight_clients($agent);
foreach ($clients as $index => $client) {
    fwrite($client, ether_call($index, 'last', UNDER_CREATION));
}
foreach ($clients as $client) {
    expect_same(NO_ERROR, status_of(message_from($client)), 'a set before the end');
}
expect_same(0, end_agent($agent), 'exit code');
expect_same([$settings], glob("$directory/*"), 'files after the end');
$agent = started();
expect_same('last', owner(client($agent), 1008), 'a row after the end');
expect_same(NO_ERROR, set_ether(client($agent), 1001, 0, 'a', UNDER_CREATION), 'a set');
expect_same([$settings], glob("$directory/*"), 'the first write is of the file');
expect_same(NO_ERROR, set_ether(client($agent), 1001, 0, 'b', UNDER_CREATION), 'another');
expect_same(NO_ERROR, set_ether(client($agent), 1002, 0, 'c', UNDER_CREATION), 'another');
expect_same(NO_ERROR, set_ether(client($agent), 1003, 0, '', INVALID), 'a row that goes');
end_agent($agent, 9);
$files = [$settings => file_get_contents($settings), $journal => file_get_contents($journal)];

/** What an agent has of three rows that starts with such a journal; null where it does not start, with what it says. */
function rows_with(string $text, ?string &$said): ?array
{
    global $files, $settings, $journal, $directory;
    file_put_contents($settings, $files[$settings]);
    file_put_contents($journal, $text);
    [$code, $said] = ended_at_once();
    if ($code === 1) {
        expect_same($text, file_get_contents($journal), 'the damaged journal');
        return null;
    }
    $agent = started();
    $client = client($agent);
    $rows = array_map(fn($index) => ether_row($client, $index)['Owner'], [1001, 1002, 1003]);
    $said = $agent->said();
    expect_same(0, end_agent($agent), 'exit code');
    expect_same($text, file_get_contents($journal), 'a journal after a start without a set');
    return $rows;
}

/** Starts an agent that is told to end once it is there: its exit code, 1 where it can't start, and why. */
function ended_at_once(): array
{
    global $directory;
    $process = proc_open(
        [agent_program(), '--port', '0', '--no-capture', '--state', $directory],
        [['null'], ['pipe', 'w'], ['pipe', 'w']],
        $pipes,
        null,
        environment(),
    );
    if (fgets($pipes[1]) !== false) {
        proc_terminate($process);
    }
    $said = stream_get_contents($pipes[2]);
    return [proc_close($process), (string) strstr($said, 'rmon-agent: /')];
}

$whole = $files[$journal];
preg_match_all('/^write .*\n/m', $whole, $parts, PREG_OFFSET_CAPTURE);
$at = array_column($parts[0], 1);
expect_same(3, count($at), 'writes of the journal');
$before = ['a', 'last', 'last'];
$all = ['b', 'c', ''];
expect_same($all, rows_with($whole, $said), 'the whole journal');
foreach ([0, 5, 20, $at[0], $at[0] + 10, $at[1] - 1] as $length) {
    expect_same($before, rows_with(substr($whole, 0, $length), $said), "the journal's first $length octets");
}
expect_same(['b', 'last', 'last'], rows_with(substr($whole, 0, $at[1] + 1), $said), 'the first write');
expect_same(['b', 'c', 'last'], rows_with(substr($whole, 0, -1), $said), 'a write without its last octet');
expect_same(['b', 'c', 'last'], rows_with(substr($whole, 0, -20) . str_repeat("\0", 20), $said), 'zeros at the end');
expect_same($all, rows_with($whole . str_repeat("\0", 512), $said), 'zeros behind the last write');
foreach ([3, $at[0] + 3, $at[0] + 40, $at[1] + 9, strlen($whole) - 2] as $octet) {
    $damaged = $whole;
    $damaged[$octet] = chr(ord($damaged[$octet]) ^ 1);
    $line = substr_count(substr($whole, 0, max([0, ...array_filter($at, fn($begin) => $begin <= $octet)])), "\n") + 1;
    expect_same(null, rows_with($damaged, $said), "octet $octet damaged");
    expect_same("rmon-agent: $journal is damaged in line $line\n", $said, 'what it says');
}
// A journal of another file: an older one, or none.
$foreign = "rmon-agent: $journal belongs to another settings file: nothing is taken from it\n";
file_put_contents($settings, $files[$settings]);
unlink($journal);
$agent = started();
expect_same(NO_ERROR, set_ether(client($agent), 1001, 0, 'other', UNDER_CREATION), 'a set of another file');
end_agent($agent);
$files[$settings] = file_get_contents($settings);
expect_same(['other', 'last', 'last'], rows_with($whole, $said), 'rows with a journal of another file');
$of_files = preg_grep("#^rmon-agent: $directory#", preg_split('/(?<=\n)/', $said));
expect_same($foreign, implode('', $of_files), 'what it says of it');
unlink($settings);
$agent = started();
expect_same(true, str_contains($agent->said(), $foreign), 'what it says of a journal without a file');
expect_same(NO_SUCH_NAME, ether_row(client($agent), 1001)['status'], 'a row of it');

agent_done($agent);
--EXPECT--
OK
