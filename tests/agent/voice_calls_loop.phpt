--TEST--
Calls of a file that is read again and again are calls of their own each time, with the figures of that time
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/calls.inc';
require __DIR__ . '/voice_calls.inc';

/** Rounds that have to be in the sums: those that are begun are more by one. */
const ROUNDS = 3;

/** How much faster than life it is. */
const HASTE = 20;

/** A capture whose time goes faster. */
function hurried_capture(string $file): string
{
    $bytes = (string) file_get_contents($file);
    $hurried = substr($bytes, 0, 24);
    [, $begin] = unpack('V', $bytes, 24);
    for ($at = 24; $at < strlen($bytes); $at += 16 + $length) {
        [, $seconds, $microseconds, $length, $octets] = unpack('V4', $bytes, $at);
        $time = intdiv(($seconds - $begin) * 1_000_000 + $microseconds, HASTE);
        $hurried .= pack('V4', $begin + intdiv($time, 1_000_000), $time % 1_000_000, $length, $octets);
        $hurried .= substr($bytes, $at + 16, $length);
    }
    return file_of($hurried);
}

/** Where rows have what was received and lost by the caller and by the callee, or of H.323 what was lost. */
const KEYS = [
    'sccp' => ['pkt_recv', 'callee_pkt_recv', 'pkt_lost', 'callee_pkt_lost'],
    'mgcp' => ['pkt_recv_1', 'pkt_recv_2', 'pkt_loss_1', 'pkt_loss_2'],
    'h323' => ['reverse_sr_pkt_lost', 'forward_sr_pkt_lost'],
];

$options = ['--calls', '1', '--talk', '4', '--told', 'no', '--loss', '2-9', '--reports', '0'];
[$file, $known] = voice_capture(...$options);
$streams = tshark_streams($file);
$agent = reading_agent([hurried_capture($file)], '--speed', 'recorded', '--loop');
$link = module_link($agent);
proc_terminate($agent->process, 10); // SIGUSR1: it begins to read
foreach (VOICE_PROTOCOLS as $protocol) {
    $calls = fn() => ("{$protocol}_aggregate_data_get")($link)['num_call_mon'] >= ROUNDS;
    expect_decoded(true, $calls, "rounds of $protocol");
    $both = measured(calls_of($known, $protocol)[0], $streams);
    $lost = array_column($both, 'lost');
    $expected = $protocol === 'h323' ? $lost : [...array_column($both, 'packets'), ...$lost];
    $over = array_filter(voice_rows($link, "{$protocol}_call_rec"), fn(array $row) => $row['end_time'] !== 0);
    $shown = array_map(fn(array $row) => values($row, KEYS[$protocol]), array_slice($over, 0, ROUNDS));
    expect_same(array_fill(0, ROUNDS, $expected), $shown, "each call of $protocol");
}
end_measuring($agent, $link, 'rounds');

done();
--EXPECT--
OK
