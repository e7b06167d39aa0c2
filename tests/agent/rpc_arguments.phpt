--TEST--
The bundled agent answers every procedure as RPC requires, whatever its arguments are
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

/** Numbers of the program's procedures, and some beyond. */
const LAST_PROCEDURE = 210;

$frame = ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1000, 53, "\0\1\1\0")));
$agent = bundled_agent(
    '--read',
    capture_file([[1.0, $frame]]),
    '--netflow',
    '0',
    '--voice',
    __DIR__ . '/../../agent/voice.ini',
);
$client = client($agent);

/** Kilobytes that the agent has at most so far; 0 in a build with sanitizers, whose own memory is no measure. */
$most_memory = function () use ($agent): int {
    $text = file_get_contents('/proc/' . $agent->pid() . '/status');
    preg_match('/^VmSize:\s*(\d+)/m', $text, $size);
    preg_match('/^VmHWM:\s*(\d+)/m', $text, $used);
    return $size[1] > 1 << 30 ? 0 : (int) $used[1];
};
$memory = $most_memory();

mt_srand(5531);
$arguments = [
    '',
    u32(0xffffffff),
    str_repeat(u32(0xffffffff), 200),
    str_repeat(u32(0x80000000), 200),
    str_repeat("\0", 800),
];
foreach ([1, 2, 3, 4, 5, 6, 16, 255, 256, 65535] as $unit) {
    $arguments[] = str_repeat(u32($unit), 200);
}
// Counts of all that follow, and of more, behind one, two and three numbers.
foreach ([1, 2, 3] as $numbers) {
    foreach ([1, 4, 0x10000, 0x7fffffff, 0xfffffffc, 0xffffffff] as $count) {
        $arguments[] = str_repeat(u32(1), $numbers) . u32($count) . str_repeat(u32(7), 40);
    }
}
for ($i = 0; $i < 30; $i++) {
    $units = '';
    for ($count = mt_rand(1, 80); $count > 0; $count--) {
        $units .= u32(mt_rand(0, 3) ? mt_rand(0, 8) : mt_rand(0, 0xffffffff));
    }
    $arguments[] = $units;
    $arguments[] = substr($units, 0, -mt_rand(1, 3));
}
// Each number of whole units, and what is left of the last one.
for ($size = 0; $size < 160; $size += 3) {
    $arguments[] = substr(str_repeat(u32(1), 40), 0, $size);
}

$answered = [];
for ($procedure = 0; $procedure <= LAST_PROCEDURE; $procedure++) {
    $calls = '';
    foreach ($arguments as $xid => $bytes) {
        $message = call($procedure, $bytes, $xid);
        // In one fragment, or in several.
        $calls .= $xid % 5 ? marked($message) : marked(substr($message, 0, 30), false) . marked(substr($message, 30));
    }
    stream_set_blocking($client, true);
    fwrite($client, $calls);
    $statuses = [];
    foreach ($arguments as $xid => $bytes) {
        $answer = message_from($client);
        $status = strlen($answer) < 24 ? -1 : unpack('N', $answer, 20)[1];
        if (substr($answer, 0, 20) !== substr(answer($status & 0xffffffff, '', $xid), 0, 20) || strlen($answer) % 4 !== 0) {
            fail("procedure $procedure, arguments $xid:", bin2hex($bytes), bin2hex($answer));
            exit;
        }
        if ($status !== ACCEPTED && strlen($answer) !== 24) {
            fail("procedure $procedure, arguments $xid: a refusal of " . strlen($answer) . ' bytes');
        }
        $statuses[$status] = true;
    }
    ksort($statuses);
    $answered[implode(' ', array_keys($statuses))][] = $procedure;
}
// Served ones accept some arguments; those that take any accept all of them. All others are unavailable.
expect_same([ACCEPTED, ACCEPTED . ' ' . GARBAGE_ARGS, PROC_UNAVAIL], (function () use ($answered): array {
    $kinds = array_map(strval(...), array_keys($answered));
    sort($kinds);
    return array_map(fn(string $kind) => is_numeric($kind) ? (int) $kind : $kind, $kinds);
})(), 'kinds of answers');
expect_same(true, in_array(1, $answered['0'], true), 'the system group takes no arguments');
expect_same(true, count($answered['0 4']) > 100, 'procedures with arguments');
if ($most_memory() > $memory + 65536) {
    fail('the agent grew from ' . $memory . ' to ' . $most_memory() . ' KB');
}
agent_done($agent);
?>
--EXPECT--
OK
