--TEST--
A thousand calls at once are measured, each with its own figures
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

/** Of each protocol, a thousand together. */
define('CALLS', intdiv(1002, count(VOICE_PROTOCOLS)));

/** Rows that a table has at most, and twice as many phones as calls where there is room for them. */
const ROWS = 1000;
define('PHONES', min(ROWS, 2 * CALLS));

/** Where rows have who called, and what was lost to the caller and to the callee. */
const KEYS = [
    'sccp' => ['phone_ipAddr', 'pkt_lost', 'callee_pkt_lost'],
    'mgcp' => ['caller_ip_addr', 'pkt_loss_1', 'pkt_loss_2'],
    'h323' => ['f_q931_ipAddr', 'reverse_sr_pkt_lost', 'forward_sr_pkt_lost'],
];

[$file, $known] = voice_capture(
    ...['--calls', (string) CALLS, '--apart', '0', '--talk', '1', '--told', 'no', '--codec', 'G729'],
    ...['--loss', '0-9', '--jitter', '0-4', '--reports', '0'],
);
$streams = tshark_streams($file);
expect_same(2 * count(VOICE_PROTOCOLS) * CALLS, count($streams), 'streams');
$agent = reading_agent([$file]);
$link = module_link($agent);
foreach (VOICE_PROTOCOLS as $protocol) {
    expect_same(0, ("{$protocol}_voice_coll_table_sizes_set")($link, ROWS, ROWS, ROWS, ROWS), 'sizes');
}
read_files($agent);
expect_measured($link, CALLS, ...VOICE_PROTOCOLS);
foreach (VOICE_PROTOCOLS as $protocol) {
    [$party, $toCaller, $toCallee] = KEYS[$protocol];
    $rows = array_column(voice_rows($link, "{$protocol}_call_rec"), null, $party);
    expect_same(CALLS, count($rows), "rows of $protocol");
    $expected = $shown = [];
    foreach (calls_of($known, $protocol) as $call) {
        $address = $call['caller']['address'];
        $both = measured($call, $streams);
        $expected[$address] = [$both['caller']['lost'], $both['callee']['lost']];
        $shown[$address] = values($rows[$address] ?? [], [$toCaller, $toCallee]);
    }
    expect_same($expected, $shown, "what was lost by $protocol");
    expect_same(PHONES, count(voice_rows($link, "{$protocol}_phone_rec")), "phones of $protocol");
}
end_measuring($agent, $link, 'calls');

done();
--EXPECT--
OK
