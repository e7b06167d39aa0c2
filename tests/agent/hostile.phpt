--TEST--
The bundled agent serves many clients, whatever some of them do
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$agent = bundled_agent();
$steady = client($agent);
expect_same(0, status_of(ask($steady, 0)), 'answer at the start');

/** Kilobytes of memory that the agent has; 0 in a build with sanitizers, whose own memory is no measure. */
function memory(BundledAgent $agent): int
{
    $text = file_get_contents('/proc/' . $agent->pid() . '/status');
    preg_match('/^VmSize:\s*(\d+)/m', $text, $size);
    preg_match('/^VmRSS:\s*(\d+)/m', $text, $used);
    return $size[1] > 1 << 30 ? 0 : (int) $used[1];
}

function descriptors(BundledAgent $agent): int
{
    return count(scandir('/proc/' . $agent->pid() . '/fd'));
}

/** Seconds for which the agent and this test could run and had no processor, as others had them all. */
function waited(BundledAgent $agent): float
{
    $waited = fn(string $process) => (int) explode(' ', file_get_contents("/proc/$process/schedstat"))[1];
    return ($waited('self') + $waited((string) $agent->pid())) / 1e9;
}

/** The agent answers at once, to an old client and to a new one. */
function expect_prompt(string $what): void
{
    global $agent, $steady;
    $start = microtime(true) - waited($agent);
    expect_same(0, status_of(ask($steady, 0)), "answer to an old client, $what");
    expect_same(0, status_of(ask(client($agent), 0)), "answer to a new client, $what");
    $seconds = microtime(true) - waited($agent) - $start;
    if ($seconds > 1.0) {
        fail(sprintf('two answers took %.2f seconds, %s', $seconds, $what));
    }
}

$descriptors_before = descriptors($agent);
$memory_before = memory($agent);

// Half a message, then nothing, or the end.
$waiting = [];
foreach ([1, 3, 4, 5, 43] as $size) {
    fwrite($waiting[] = client($agent), substr(marked(call(0)), 0, $size));
    $gone = client($agent);
    fwrite($gone, substr(marked(call(0)), 0, $size));
    fclose($gone);
}
expect_prompt('with unfinished messages');

// The agent does not wait for an absurd length, in one fragment or summed up.
foreach ([
    u32(0xffffffff), u32(0x7fffffff), u32(0x80000000 | 1 << 20), u32(200000) . str_repeat('x', 200000) . u32(200000),
] as $i => $claim) {
    $other = client($agent);
    fwrite($other, $claim);
    expect_same(true, hung_up($other), "hung up on length $i");
}
// A message of some size is read whole, and found to be no call.
fwrite($long = client($agent), marked(str_repeat("\0\0\0\1", 50000)));
expect_same(true, hung_up($long), 'hung up on a long message');
// A long one that is a call is answered.
fwrite($long = client($agent), marked(call(0, str_repeat('x', 200000))));
expect_same(answer(ACCEPTED, i32(0)), message_from($long), 'answer to a long message');

// Calls without end from clients that never read. What they can't send waits on their side.
$deaf = [];
for ($i = 0; $i < 5; $i++) {
    $deaf[] = $other = client($agent);
    stream_set_blocking($other, false);
}
$calls = str_repeat(marked(call(1)), 500);
for ($round = 0; $round < 100; $round++) {
    foreach ($deaf as $other) {
        @fwrite($other, $calls);
    }
}
expect_prompt('with clients that do not read');
if (memory($agent) > $memory_before + 20000) {
    fail('clients that do not read make the agent grow to ' . memory($agent) . ' KB');
}

// It waits without a busy loop: once the calls that it took are answered, the process uses no time.
$ticks = fn() => array_sum(array_slice(explode(' ', file_get_contents('/proc/' . $agent->pid() . '/stat')), 13, 2));
expect_soon(0, function () use ($ticks): int {
    $before = $ticks();
    usleep(300000); // the time for which it is watched
    return $ticks() - $before;
}, 'hundredths of a second that the agent works while nobody asks for anything');

// Fifty clients at once, their calls mixed; every one gets its own answers.
$clients = [];
for ($i = 0; $i < 50; $i++) {
    $clients[] = client($agent);
}
for ($round = 0; $round < 20; $round++) {
    foreach ($clients as $i => $other) {
        fwrite($other, marked(call($i % 3, $i % 3 === 2 ? 'xx' : '', xid: 1000 * $i + $round)));
    }
    foreach ($clients as $i => $other) {
        $answer = message_from($other);
        $start = answer($i % 3 === 2 ? GARBAGE_ARGS : ACCEPTED, '', 1000 * $i + $round);
        if (!str_starts_with($answer, $start)) {
            fail("client $i, round $round:", bin2hex($answer));
            break 2;
        }
    }
}
$clients = [];

// Calls in fragments of one byte, and bytes at random (always the same ones), end nothing but their connection.
mt_srand(99999);
for ($i = 0; $i < 300; $i++) {
    $bytes = '';
    for ($size = mt_rand(1, 200); $size > 0; $size--) {
        $bytes .= chr(mt_rand(0, 255));
    }
    $procedure = mt_rand(0, 6);
    $message = $i % 3 === 0 ? $bytes : call($procedure, $bytes);
    if ($i % 3 === 1) {
        $message = substr_replace($message, chr(mt_rand(0, 255)), mt_rand(0, strlen($message) - 1), 1);
    }
    $other = client($agent);
    fwrite($other, $i % 2 ? marked($message) : implode('', array_map(fn($byte) => marked($byte, false), str_split($message))) . marked(''));
    stream_socket_shutdown($other, STREAM_SHUT_WR);
    message_from($other);
}
expect_prompt('after bytes at random');

// More clients than it keeps: the quietest are dropped, and the steady one is not among them.
$crowd = [];
for ($i = 0; $i < 700; $i++) {
    $crowd[] = client($agent);
    if ($i % 50 === 0) {
        expect_same(0, status_of(ask($steady, 0)), "answer after $i clients more");
    }
}
expect_prompt('with a crowd of clients');
if (descriptors($agent) > 600) {
    fail('the agent keeps ' . descriptors($agent) . ' descriptors');
}
expect_same(0, status_of(ask(end($crowd), 0)), 'answer to the last of the crowd');

// When clients are gone, what they held is released.
$crowd = $waiting = $deaf = [];
$other = $long = $gone = null;
expect_soon($descriptors_before, fn() => descriptors($agent), 'descriptors at the end');

agent_done($agent);
--EXPECT--
OK
