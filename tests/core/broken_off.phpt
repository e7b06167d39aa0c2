--TEST--
A request that ends in the middle of a conversion: nothing leaks, the next one works
--ENV--
USE_TRACKED_ALLOC=1
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$host = fn (int $i): string => record(
    status: i32(0), hostAddress: byte_list(str_repeat(chr($i & 255), 40)), hostCreationOrder: i32($i), hostIndex: i32(
        1,
    ),
    counters: str_repeat(u64($i), 7),
);
$agent = scripted_agent(always(reply(many_rows(10000, $host))));
$page = <<<'PHP'
    $link = rmon_pconnect('127.0.0.1');
    register_shutdown_function(function () use ($link) {
        ini_set('memory_limit', '512M');
        $rows = rmon_host_getbulk($link, 1, [], 3);
        echo is_array($rows) ? ' then ' . count($rows) : ' then nothing';
    });
    ini_set('memory_limit', $do === 'little' ? '4M' : '512M');
    echo count(rmon_host_getbulk($link, 1, [], 3));
    PHP;
for ($round = 0; $round < 3; $round++) {
    // A process of its own each time: an engine may go on in memory that an earlier request has left it.
    $server = new OneProcessServer($page, ['rmon.default_port' => $agent->port]);
    $output = $server->request('little');
    expect_same(true, str_contains($output, 'Allowed memory size of 4194304 bytes exhausted'), substr($output, 0, 500));
    expect_same('10000 then 10000', $server->request(), 'the next request');
    expect_same('10000 then 10000', $server->request(), 'and the one behind it');
    expect_same(true, $server->is_running(), 'the server lives');
}
done();
?>
--EXPECT--
OK
