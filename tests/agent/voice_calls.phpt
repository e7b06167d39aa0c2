--TEST--
Calls of a capture are measured: parties, lost packets and jitter are tshark's, what phones tell is kept as theirs
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

const CALLS = 4;

/** An agent that has read the file and seen its calls, and a link to it. */
function seeing(string $file, int $calls, string ...$protocols): array
{
    $agent = reading_agent([$file]);
    $link = module_link($agent);
    read_files($agent);
    expect_measured($link, $calls, ...$protocols);
    return [$agent, $link];
}

/** The row of a call: that of its caller's number. */
function row_of(array $rows, string $key, array $call): array
{
    $found = array_values(array_filter($rows, fn(array $row) => $row[$key] === $call['caller']['number']));
    expect_same(1, count($found), 'rows of the call of ' . $call['caller']['number']);
    return $found[0] ?? [];
}

/**
 * Packets sent and received, lost ones, jitter and latency, as one side has them: what its phone told, or what was
 * measured of the stream to it.
 */
function check_figures(string $what, array $call, string $side, array $shown, array $stream, bool $told): void
{
    if ($told) {
        $keys = ['packets_sent', 'packets_received', 'lost', 'jitter', 'latency'];
        expect_same(values($call['told'][$side], $keys), $shown, "$what: what the phone told");
        return;
    }
    [, $received, $lost, $jitter, $latency] = $shown;
    expect_same([$stream['packets'], max(0, $stream['lost'])], [$received, $lost], "$what: packets");
    expect_same(true, is_near($jitter, $stream['mean_jitter']), "$what: jitter $jitter, $stream[mean_jitter]");
    expect_same(true, is_near($latency, $call['round_trip'] / 1000), "$what: latency $latency");
}

/** The calls, against what was chosen and what tshark measured; whether the phones told figures of their own. */
function check_sccp(mixed $link, array $calls, array $streams, bool $told): void
{
    $rows = voice_rows($link, 'sccp_call_rec');
    expect_same(count($calls), count($rows), 'calls of SCCP');
    foreach ($calls as $call) {
        $row = row_of($rows, 'phone_num', $call);
        [$caller, $callee] = [$call['caller'], $call['callee']];
        expect_same(
            [$caller['address'], $caller['name'], $callee['address'], $callee['number'], $callee['name'], 2, 1],
            values($row, [
                ...['phone_ipAddr', 'phone_owner', 'callee_phone_ipAddr', 'callee_phone_num', 'callee_phone_owner'],
                ...['call_direction', 'callee_direction'],
            ]),
            'parties of SCCP',
        );
        expect_same(
            [$call['reverse']['to_port'], $call['forward']['to_port'], 20, 20],
            values($row, ['rtp_port', 'callee_rtp_port', 'rtp_sampling_period', 'callee_rtp_sampling_period']),
            'media of SCCP',
        );
        foreach (measured($call, $streams) as $side => $stream) {
            $before = $side === 'caller' ? '' : 'callee_';
            $keys = ['pkt_sent', 'pkt_recv', 'pkt_lost', 'jitter', 'latency'];
            $shown = values($row, array_map(fn(string $key) => $before . $key, $keys));
            check_figures("SCCP, $side", $call, $side, $shown, $stream, $told);
        }
    }
}

function check_mgcp(mixed $link, array $calls, array $streams, bool $told): void
{
    $rows = voice_rows($link, 'mgcp_call_rec');
    expect_same(count($calls), count($rows), 'calls of MGCP');
    foreach ($calls as $call) {
        [$caller, $callee] = [$call['caller'], $call['callee']];
        $found = array_values(array_filter($rows, fn(array $row) => $row['caller_ip_addr'] === $caller['address']));
        expect_same(1, count($found), "rows of the call of $caller[number]");
        $row = $found[0] ?? [];
        expect_same(
            [
                $callee['address'], $callee['number'], "aaln/1@gw$caller[number].example",
                "aaln/1@gw$callee[number].example",
            ],
            values($row, ['callee_ip_addr', 'callee_phone_num', 'caller_endpoint_id', 'callee_endpoint_id']),
            'parties of MGCP',
        );
        expect_same(
            [$call['reverse']['to_port'], $call['forward']['to_port'], 20, 'PCMU'],
            values($row, ['rtp_port_1', 'rtp_port_2', 'sampling_period', 'audio_codec']),
            'media of MGCP',
        );
        foreach (measured($call, $streams) as $side => $stream) {
            $leg = $side === 'caller' ? 1 : 2;
            $keys = ['pkt_sent', 'pkt_recv', 'pkt_loss', 'jitter', 'latency'];
            $shown = values($row, array_map(fn(string $key) => "{$key}_$leg", $keys));
            check_figures("MGCP, $side", $call, $side, $shown, $stream, $told);
        }
    }
}

function check_h323(mixed $link, array $calls, array $streams): void
{
    $rows = voice_rows($link, 'h323_call_rec');
    expect_same(count($calls), count($rows), 'calls of H.323');
    foreach ($calls as $call) {
        $row = row_of($rows, 'f_num', $call);
        [$caller, $callee] = [$call['caller'], $call['callee']];
        expect_same(
            [$caller['address'], $caller['name'], $callee['address'], $callee['number']],
            values($row, ['f_q931_ipAddr', 'f_alias', 'reverse_q931_ipAddr', 'reverse_num']),
            'parties of H.323',
        );
        expect_same(
            [
                implode(' ', str_split($call['id'], 4)), (int) ($call['form'] === 'fast'),
                (int) ($call['form'] === 'tunnel'),
            ],
            values($row, ['call_id', 'faststart', 'tunneling']),
            "an H.323 call, $call[form]",
        );
        foreach (['forward', 'reverse'] as $way) {
            $stream = $streams[$call[$way]['ssrc']];
            expect_same(
                [(float) $call[$way]['ssrc'], max(0, $stream['lost'])],
                values($row, ["{$way}_ssrc", "{$way}_sr_pkt_lost"]),
                "$way of H.323",
            );
            $jitter = $row["{$way}_sr_jitter"];
            expect_same(true, is_near($jitter, $stream['mean_jitter']), "$way jitter: $jitter, $stream[mean_jitter]");
        }
    }
}

$damage = ['--loss', '0-6', '--jitter', '1-5', '--reordered', '0-2', '--duplicates', '0-2', '--round-trip', '60'];
foreach ([
    'clean, told' => ['--told', 'yes'],
    'damaged, not told' => ['--told', 'no', ...$damage],
] as $what => $options) {
    [$file, $known] = voice_capture('--calls', (string) CALLS, '--talk', '6', '--reports', '2', ...$options);
    $streams = tshark_streams($file);
    [$agent, $link] = seeing($file, CALLS, ...VOICE_PROTOCOLS);
    $told = !str_contains($what, 'not told');
    foreach (VOICE_PROTOCOLS as $protocol) {
        ("check_$protocol")($link, calls_of($known, $protocol), $streams, $told);
    }

    // All phones that registered, and each knows of its call.
    foreach (VOICE_PROTOCOLS as $protocol) {
        $key = ['sccp' => 'phone_num', 'mgcp' => 'phone_ipAddr', 'h323' => 'forward_num'][$protocol];
        $phones = array_column(voice_rows($link, "{$protocol}_phone_rec"), 'num_hist_row', $key);
        ksort($phones);
        $expected = [];
        foreach (calls_of($known, $protocol) as $call) {
            foreach (['caller', 'callee'] as $side) {
                $expected[$call[$side][$protocol === 'mgcp' ? 'address' : 'number']] = 1;
            }
        }
        ksort($expected);
        expect_same($expected, $phones, "$what: phones of $protocol");
    }

    // The worst come first.
    foreach (VOICE_PROTOCOLS as $protocol) {
        $key = ['sccp' => 'pkt_lost', 'mgcp' => 'pkt_loss', 'h323' => 'forward_sr_pkt_lost'][$protocol];
        $rows = voice_rows($link, "{$protocol}_top_pkt_lost_rec");
        $count = $protocol === 'sccp' ? 2 * CALLS : CALLS;
        expect_same($count, count($rows), "$what: ranks of $protocol");
        if ($protocol !== 'h323') {
            $lost = array_column($rows, $key);
            $sorted = $lost;
            rsort($sorted);
            expect_same($sorted, $lost, "$what: order of $protocol");
        }
    }
    end_measuring($agent, $link, $what);
}

done();
--EXPECT--
OK
