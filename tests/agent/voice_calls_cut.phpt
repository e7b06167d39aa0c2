--TEST--
Calls that ran when the capture began, and calls whose end it lacks, are there as far as they were seen
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

/** The frames of a capture from a time on and before another one; seconds since its begin. */
function cut_capture(string $file, float $from, float $to): string
{
    $bytes = (string) file_get_contents($file);
    $kept = substr($bytes, 0, 24);
    [, $seconds, $microseconds] = unpack('V2', $bytes, 24);
    for ($at = 24; $at < strlen($bytes); $at += 16 + $length) {
        [, $s, $us, $length] = unpack('V3', $bytes, $at);
        $time = $s - $seconds + ($us - $microseconds) / 1e6;
        if ($time >= $from && $time < $to) {
            $kept .= substr($bytes, $at, 16 + $length);
        }
    }
    return file_of($kept);
}

/** The frames as they are after something happened to each of them: null where it is gone. */
function changed_capture(string $file, callable $change): string
{
    $bytes = (string) file_get_contents($file);
    $kept = substr($bytes, 0, 24);
    for ($at = 24; $at < strlen($bytes); $at += 16 + $length) {
        [, $seconds, $microseconds, $length] = unpack('V3', $bytes, $at);
        $frame = $change(substr($bytes, $at + 16, $length));
        if ($frame !== null) {
            $kept .= pack('V4', $seconds, $microseconds, strlen($frame), max(strlen($frame), $length)) . $frame;
        }
    }
    return file_of($kept);
}

function random_octets(int $count): string
{
    return implode('', array_map(fn() => chr(mt_rand(0, 255)), range(1, $count)));
}

// Begins at 2 s, answered at 4.4 s, and all phones hang up at 8.4 s.
$options = ['--calls', '1', '--talk', '4', '--told', 'no', '--loss', '3', '--jitter', '2', '--reports', '1'];
[$file, $known] = voice_capture(...$options);

// From the middle: the signalling that ends the calls is there, and nobody crashes of it.
$agent = reading_agent([cut_capture($file, 6.0, 100.0)]);
$link = module_link($agent);
read_files($agent);
foreach (VOICE_PROTOCOLS as $protocol) {
    expect_same(true, ("{$protocol}_config_params_get")($link)['enable'] === 1, "$protocol is served");
}
end_measuring($agent, $link, 'calls');

// To the middle: the calls run, in the tables of calls, and none is in the sums yet.
$agent = reading_agent([cut_capture($file, 0.0, 7.0)]);
$link = module_link($agent);
read_files($agent);
foreach (VOICE_PROTOCOLS as $protocol) {
    expect_decoded(1, fn() => count(voice_rows($link, "{$protocol}_call_rec")), "running calls of $protocol");
    expect_same(0, ("{$protocol}_aggregate_data_get")($link)['num_call_mon'], "ended calls of $protocol");
    expect_same(0, voice_rows($link, "{$protocol}_call_rec")[0]['end_time'], "end of a running call of $protocol");
}
$parties = fn() => values(voice_rows($link, 'sccp_call_rec')[0] ?? [], ['phone_num', 'callee_phone_num']);
expect_decoded(['1000', '1001'], $parties, 'parties of a running call');
end_measuring($agent, $link, 'calls');

// Frames of which little was kept, frames that are missing, and octets that were changed on the way: nothing that is
// made of them ends the agent, and what comes later is measured.
mt_srand(4);
$damage = [
    'cut' => fn(string $frame): string => substr($frame, 0, mt_rand(42, 110)),
    'lost' => fn(string $frame): ?string => mt_rand(0, 4) === 0 ? null : $frame,
    'changed' => fn(string $frame): string => mt_rand(0, 2) ? $frame
        : substr_replace($frame, random_octets(mt_rand(1, 8)), mt_rand(42, strlen($frame) - 1), 0),
];
[$later, $known] = voice_capture('--calls', '2', '--talk', '2', '--start', '1770001000', '--reports', '1');
foreach ($damage as $what => $change) {
    $frames = file_get_contents(changed_capture($file, $change)) . substr(file_get_contents($later), 24);
    $agent = reading_agent([file_of($frames)]);
    $link = module_link($agent);
    read_files($agent);
    foreach (VOICE_PROTOCOLS as $protocol) {
        $key = ['sccp' => 'phone_num', 'mgcp' => 'caller_ip_addr', 'h323' => 'f_num'][$protocol];
        $caller = calls_of($known, $protocol)[1]['caller'];
        $party = $protocol === 'mgcp' ? $caller['address'] : $caller['number'];
        $seen = fn() => in_array($party, array_column(voice_rows($link, "{$protocol}_call_rec"), $key), true);
        expect_decoded(true, $seen, "$what: a call of $protocol");
    }
    end_measuring($agent, $link, $what);
}

done();
--EXPECT--
OK
