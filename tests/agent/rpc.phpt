--TEST--
The bundled agent answers calls, good and bad, as RPC requires
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$agent = bundled_agent();
$client = client($agent);

/** Sends a message, record mark included; what comes back. */
function exchange(string $record): string
{
    global $client;
    fwrite($client, $record);
    return message_from($client);
}

// Procedure 0 answers 0; the transaction comes back as it was.
expect_same(answer(ACCEPTED, i32(0)), ask($client, 0), 'procedure 0');
expect_same(answer(ACCEPTED, i32(0), 0xfedcba98), exchange(marked(call(0, xid: 0xfedcba98))), 'high transaction');

// Each procedure of which there is a stub is served, and nothing else. Calls without arguments change nothing
// that matters, and procedures that need arguments refuse them.
preg_match_all('/ procedure<\s*(\d+),/', file_get_contents(__DIR__ . '/../../rmon/rpc/rmonrpc_clnt.h'), $stubs);
$stubs = array_map(intval(...), $stubs[1]);
$status = fn(string $reply) => unpack('N', $reply, 20)[1];
foreach ([...range(0, 300), 0x7fffffff, 0xffffffff] as $procedure) {
    $served = $status(ask($client, $procedure)) !== PROC_UNAVAIL;
    expect_same(in_array($procedure, $stubs, true), $served, "procedure $procedure is served");
}
expect_same([0, 204, 180], [min($stubs), max($stubs), count(array_unique($stubs))], 'stubs');

expect_same(answer(PROG_UNAVAIL), exchange(marked(call(0, program: 100000))), 'another program');
foreach ([0, 2, 0xffffffff] as $version) {
    $lowest_and_highest = u32(1) . u32(1);
    expect_same(
        answer(PROG_MISMATCH, $lowest_and_highest),
        exchange(marked(call(0, version: $version))),
        "version $version",
    );
}
// Denied: RPC itself has version 2 only.
expect_same(u32(1) . u32(1) . u32(1) . u32(0) . u32(2) . u32(2), exchange(marked(call(0, rpc: 3))), 'RPC version 3');

// Arguments that end early, or whose text is longer than its bound or than the message.
expect_same(answer(GARBAGE_ARGS), ask($client, 3, i32(1)), 'half a key');
expect_same(answer(GARBAGE_ARGS), ask($client, 3), 'no key');
expect_same(answer(GARBAGE_ARGS), ask($client, 2, text('') . u32(0) . text(str_repeat('x', 256))), 'a text of 256');
expect_same(answer(GARBAGE_ARGS), ask($client, 2, u32(0xffffffff)), 'a text of 4 GiB');
expect_same(answer(GARBAGE_ARGS), ask($client, 2, u32(255) . 'short'), 'a text that ends early');
// What follows the arguments is ignored.
expect_same(answer(ACCEPTED, i32(0)), ask($client, 0, text('more than asked for')), 'bytes behind the arguments');

// Credentials of the common kind, with a verifier, are accepted; others are not.
$unix = u32(7) . text('host') . u32(1000) . u32(1000) . u32(0);
expect_same(
    answer(ACCEPTED, i32(0)),
    exchange(marked(call(0, auth: u32(1) . text($unix) . u32(1) . text('abc')))),
    'credentials',
);
$denied = fn(int $why) => u32(1) . u32(1) . u32(1) . u32(1) . u32($why);
expect_same($denied(2), exchange(marked(call(0, auth: u32(6) . text('') . u32(0) . text('')))), 'unknown credentials');
expect_same($denied(1), exchange(marked(call(0, auth: u32(1) . u32(404) . str_repeat('x', 500)))), 'long credentials');
expect_same($denied(3), exchange(marked(call(0, auth: u32(0) . u32(0) . u32(0) . u32(500)))), 'long verifier');

// Record marking: fragments of any size, empty ones too, arriving in any pieces.
$message = call(0);
$fragments = marked(substr($message, 0, 1), false) . marked('', false) . marked(substr($message, 1, 38), false)
    . marked(substr($message, 39), false) . marked('');
expect_same(answer(ACCEPTED, i32(0)), exchange($fragments), 'fragments');
foreach (str_split($fragments, 3) as $piece) {
    fwrite($client, $piece);
    usleep(2000); // so that each piece arrives alone
}
expect_same(answer(ACCEPTED, i32(0)), message_from($client), 'fragments in pieces');

// Calls that follow each other without waiting are answered in their order.
$calls = '';
for ($xid = 1; $xid <= 1000; $xid++) {
    $calls .= marked(call($xid % 2 ? 0 : 55, xid: $xid));
}
fwrite($client, $calls);
for ($xid = 1; $xid <= 1000; $xid++) {
    $expected = $xid % 2 ? answer(ACCEPTED, i32(0), $xid) : answer(PROC_UNAVAIL, '', $xid);
    if (message_from($client) !== $expected) {
        fail("answer $xid of calls that follow each other");
        break;
    }
}

// A client that closes its half of the connection still gets its answer.
$half = client($agent);
fwrite($half, marked(call(0)));
stream_socket_shutdown($half, STREAM_SHUT_WR);
expect_same(answer(ACCEPTED, i32(0)), message_from($half), 'answer after a half close');
expect_same(true, hung_up($half), 'the connection is closed after that');

// What is not a call has no answer; the agent closes the connection.
foreach ([
    '', 'abc', u32(1) . u32(1), answer(ACCEPTED), call(0, auth: ''), call(0, auth: u32(0) . u32(8)),
] as $i => $junk) {
    $other = client($agent);
    fwrite($other, marked($junk));
    expect_same(true, hung_up($other), "hung up on message $i");
}

agent_done($agent);
--EXPECT--
OK
