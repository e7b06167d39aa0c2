--TEST--
Made captures of calls are what they shall be: tshark decodes each frame, and measures what was chosen
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/calls.inc';

const CHECKSUMS = ['-o', 'ip.check_checksum:TRUE', '-o', 'tcp.check_checksum:TRUE', '-o', 'udp.check_checksum:TRUE'];

/** The protocols whose messages tshark has something against: malformed ones, wrong checksums, what TCP lacks. */
function complaints(string $file): array
{
    $fields = ['-T', 'fields', '-e', 'frame.number', '-e', '_ws.expert.message'];
    $filter = '_ws.expert.severity >= warning or _ws.malformed or tcp.analysis.flags';
    return array_filter(explode("\n", tshark($file, '-Y', $filter, ...CHECKSUMS, ...$fields)));
}

/** Whether tshark measures the streams that are known, and none else. */
function compare(string $what, string $file, array $known, array $figures = ['mean_jitter', 'max_jitter']): void
{
    $found = tshark_streams($file);
    $streams = known_streams($known);
    $count = 2 * count($known['calls']);
    expect_same([$count, $count], [count($streams), count($found)], "$what: streams");
    foreach ($streams as $ssrc => $stream) {
        $row = $found[$ssrc] ?? [];
        foreach ($figures as $figure) {
            // tshark prints three digits behind the point.
            $near = abs($stream[$figure] - ($row[$figure] ?? -1)) < 0.0011;
            expect_same(true, $near, "$what: $figure of $ssrc, $stream[$figure] and " . ($row[$figure] ?? 'none'));
        }
        $exact = ['from', 'from_port', 'to', 'to_port', 'packets', 'lost'];
        $of = fn(array $all) => array_map(fn(string $key) => $all[$key] ?? null, $exact);
        expect_same($of($stream), $of($row), "$what: stream $ssrc");
    }
}

// Nothing happens to the packets: nothing is lost, nothing late.
[$file, $known] = calls('--calls', '4', '--talk', '4');
expect_same([], complaints($file), 'clean calls');
compare('clean calls', $file, $known);
foreach (known_streams($known) as $stream) {
    $shown = [$stream['sent'], $stream['packets'], $stream['lost'], (float) $stream['max_jitter']];
    expect_same([199, 199, 0, 0.0], $shown, 'a clean stream');
}

// From 4.4 on tshark leaves a packet out of the jitter when a later one overtook it, where RFC 3550 takes each.
preg_match('/^TShark \(Wireshark\) (\d+\.\d+)/', run('tshark', '--version')[1], $version);
$figures = version_compare($version[1], '4.4', '<') ? ['mean_jitter', 'max_jitter'] : [];
[$file, $known] = calls('--calls', '4', '--seed', '7', '--loss', '4', '--jitter', '3', '--duplicates', '3');
compare('calls in order', $file, $known);

// All at once, with all codecs. Of 499 packets of 20 ms, or 332 of 30 ms, four percent are lost: 20 or 13.
$each = 'PCMU,PCMA,G722,G723,G729';
foreach (['sccp' => $each, 'mgcp' => "$each,opus", 'h323' => $each] as $protocol => $codecs) {
    $what = "damaged calls of $protocol";
    [$file, $known] = calls(
        ...['--protocol', $protocol, '--calls', '12', '--codec', $codecs, '--seed', '7', '--round-trip', '80'],
        ...['--loss', '4', '--jitter', '3', '--reordered', '2', '--duplicates', '3'],
    );
    expect_same([], complaints($file), $what);
    compare($what, $file, $known, $figures);
    foreach (known_streams($known) as $stream) {
        [$sent, $missing] = $stream['payload_type'] === 4 ? [332, 13] : [499, 20];
        expect_same(
            [$sent, $sent - $missing + 3, $missing - 3],
            [$stream['sent'], $stream['packets'], $stream['lost']],
            "$what: a stream",
        );
        // It settles about there, and is higher for a while where one packet overtook another.
        $mean = $stream['mean_jitter'];
        expect_same(true, $mean > 2.4 && $mean < 4.2, "$what: jitter $mean");
    }
    $reckon = ['-o', 'rtcp.show_roundtrip_calculation:TRUE', '-Y', 'rtcp.roundtrip-delay'];
    $trips = tshark($file, ...$reckon, ...['-T', 'fields', '-e', 'rtcp.roundtrip-delay']);
    // From the place of the capture to either phone and back.
    expect_same(['40' => 12], array_count_values(explode("\n", trim($trips))), "$what: round trips");
}

// The signalling says who calls whom.
[$file, $known] = calls('--calls', '2', '--talk', '1', '--seed', '3');
[$first] = $known['calls'];
expect_same(
    ['sccp', '10.1.0.1', '1000', 'Reception', '10.1.0.2', '1001', 'Workshop'],
    [$first['protocol'], ...array_values($first['caller']), ...array_values($first['callee'])],
    'a call',
);
$fields = fn(string ...$names) => ['-T', 'fields', ...array_merge(...array_map(fn($name) => ['-e', $name], $names))];
$names = ['ip.dst', 'skinny.callingParty', 'skinny.calledParty', 'skinny.callType'];
$seen = tshark($file, '-Y', 'skinny.callType', ...$fields(...$names));
expect_same(
    [
        "10.1.0.1\t1000\t1001\t0x00000002",
        "10.1.0.2\t1000\t1001\t0x00000001",
        "10.1.0.3\t1002\t1003\t0x00000002",
        "10.1.0.4\t1002\t1003\t0x00000001",
    ],
    explode("\n", trim($seen)),
    'parties of SCCP',
);
$seen = tshark($file, '-Y', 'mgcp.req.verb == "DLCX"', ...$fields('ip.dst', 'mgcp.req.endpoint'));
expect_same(
    [["10.2.0.1\taaln/1@gw2000.example", "10.2.0.2\taaln/1@gw2001.example"], 4],
    [array_slice(explode("\n", $seen), 0, 2), substr_count($seen, "\n")],
    'connections of MGCP',
);

$names = ['ip.src', 'h225.dialledDigits', 'h225.h323_ID', 'h225.guid'];
$setups = explode("\n", trim(tshark($file, '-Y', 'h225.setup_element', ...$fields(...$names))));
$expected = [];
foreach ([0, 1] as $i) {
    $call = $known['calls'][4 + $i];
    $id = preg_replace('/^(.{8})(.{4})(.{4})(.{4})/', '$1-$2-$3-$4-', $call['id']);
    // The numbers of both, the caller's name.
    $expected[] = ['10.3.0.' . 2 * $i + 1, (3000 + 2 * $i) . ',' . (3001 + 2 * $i), ['Reception', 'Office'][$i], $id];
}
expect_same(array_map(fn(array $row) => implode("\t", $row), $expected), $setups, 'parties of H.323');

// The phones' own figures are of what they received: some packets fewer than there were where the capture was made.
foreach (array_slice($known['calls'], 0, 4) as $call) {
    foreach (['caller' => 'reverse', 'callee' => 'forward'] as $side => $way) {
        $told = $call['told'][$side];
        $more = $told['lost'] - $call[$way]['lost'];
        expect_same(true, $more > 0, 'told losses');
        expect_same($call[$way]['packets'] - $more, $told['packets_received'], 'told packets');
    }
}
$told = tshark($file, '-Y', 'skinny.numberPacketsLost or skinny.jitter', '-T', 'fields', '-e', 'skinny.callReference');
expect_same(4, substr_count($told, "\n"), 'statistics of SCCP');
$silent = ['--calls', '2', '--talk', '1', '--told', 'no', '--reports', '0'];
[$file] = calls(...$silent);
expect_same('', tshark($file, '-Y', 'skinny.jitter or mgcp.param.connectionparam or rtcp'), 'nothing told');

// The same seed gives the same file, another one another.
$bytes = fn(string $seed) => md5_file(calls('--talk', '1', '--loss', '0-50', '--seed', $seed)[0]);
expect_same($bytes('5'), $bytes('5'), 'a seed');
expect_same(false, $bytes('5') === $bytes('6'), 'another seed');

done();
--EXPECT--
OK
