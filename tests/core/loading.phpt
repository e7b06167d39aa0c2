--TEST--
Loaded twice, and with opcache
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

[$output, $code] = run_php('echo confirm_rmon_compiled("twice");', ['extension=' . module_file()]);
expect_same(0, $code, 'exit code');
expect_same(true, str_contains($output, 'Module "rmon" is already loaded'), "the engine says so: $output");
expect_same(true, str_ends_with($output, 'module twice in PHP'), 'and it works');

// Strings and arrays of a script lie in protected memory then; keys of rows must not be written to.
$agent = scripted_agent(always(reply(rows(record(
    status: i32(0), hostAddress: byte_list([10, 1, 1, 5]), hostCreationOrder: i32(3), hostIndex: i32(1),
    hostInPkts: u64(1), hostOutPkts: u64(2), hostInOctets: u64(3), hostOutOctets: u64(4), hostOutErrors: u64(5),
    hostOutBroadcastPkts: u64(6), hostOutMulticastPkts: u64(7),
)))));
$page = tempnam(sys_get_temp_dir(), 'rmon');
file_put_contents($page, '<?php
    $link = opcache_get_status(false)["opcache_enabled"] ? rmon_connect("127.0.0.1") : exit("no opcache");
    for ($i = 0; $i < 3; $i++) {
        $row = rmon_host_get($link, 1, ["10", 1, 1.0, true]);
        $row["added"] = 1;
        unset($row["status"]);
        echo count($row), " ", implode(".", $row["hostAddress"]), "\n";
    }');
$opcache = PHP_VERSION_ID < 80500 ? ['zend_extension=opcache'] : []; // which is part of the engine since
$command = [...php_command([...$opcache, 'opcache.enable_cli=1', 'opcache.protect_memory=1',
    'rmon.default_port=' . $agent->port]), $page];
$process = proc_open($command, [['file', '/dev/null', 'r'], ['pipe', 'w'], ['redirect', 1]], $pipes);
$output = stream_get_contents($pipes[1]);
expect_same(0, proc_close($process), 'exit code with opcache');
unlink($page);
expect_same(str_repeat("12 10.1.1.5\n", 3), $output, 'rows with opcache');
foreach ([1, 2, 3] as $call) {
    expect_call(
        $agent,
        $call,
        11,
        record(hostIndex: i32(1), hostAddress: byte_list([10, 1, 1, 1]), count: i32(1), getType: i32(1)),
    );
}
done();
?>
--EXPECT--
OK
