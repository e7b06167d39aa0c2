--TEST--
Captures of calls from elsewhere, of a folder that RMON_CALL_CAPTURES names, have the calls that tshark finds in them
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

/** The values of a field in the frames that a filter passes, each once. */
function tshark_values(string $file, string $filter, string $field): array
{
    $values = explode("\n", tshark($file, '-Y', $filter, '-T', 'fields', '-E', 'occurrence=f', '-e', $field));
    $values = array_values(array_unique(array_filter($values)));
    sort($values);
    return $values;
}

/** The values of a row's key, each once. */
function shown(mixed $link, string $table, string $key): array
{
    $values = array_values(array_unique(array_column(voice_rows($link, $table), $key)));
    sort($values);
    return $values;
}

// One is always there, so that something is compared.
$files = [voice_capture('--calls', '3', '--talk', '1', '--seed', '11')[0]];
$folder = (string) getenv('RMON_CALL_CAPTURES');
$files = [...$files, ...($folder === '' ? [] : (glob("$folder/*.pcap*") ?: []))];
foreach ($files as $file) {
    $name = basename($file);
    $agent = reading_agent([$file]);
    $link = module_link($agent);
    read_files($agent);
    $calls = array_map(
        fn(string $guid) => implode(' ', str_split(str_replace('-', '', $guid), 4)),
        tshark_values($file, 'h225.setup_element', 'h225.guid'),
    );
    sort($calls);
    expect_decoded($calls, fn() => shown($link, 'h323_call_rec', 'call_id'), "$name: calls of H.323");
    $calls = tshark_values($file, 'mgcp.req.verb == "CRCX"', 'mgcp.param.callid');
    expect_decoded($calls, fn() => shown($link, 'mgcp_call_rec', 'call_id_1'), "$name: calls of MGCP");
    $callers = tshark_values($file, 'skinny.callType == 2', 'ip.dst');
    expect_decoded($callers, fn() => shown($link, 'sccp_call_rec', 'phone_ipAddr'), "$name: callers of SCCP");
    end_measuring($agent, $link, $name);
}

done();
--EXPECT--
OK
