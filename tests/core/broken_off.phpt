--TEST--
A request that ends in the middle of a conversion: nothing is lost, the next one works
--FILE--
<?php
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$host = fn (int $i): string => record(
    status: i32(0), hostAddress: byte_list(str_repeat(chr($i & 255), 40)), hostCreationOrder: i32($i), hostIndex: i32(1),
    counters: str_repeat(u64($i), 7),
);
$agent = scripted_agent(always(reply(many_rows(10000, $host))));
$server = new OneProcessServer(<<<'PHP'
    $link = rmon_pconnect('127.0.0.1');
    register_shutdown_function(function () use ($link) {
        ini_set('memory_limit', '512M');
        $rows = rmon_host_getbulk($link, 1, [], 3);
        echo is_array($rows) ? ' then ' . count($rows) : ' then nothing';
    });
    ini_set('memory_limit', $do === 'little' ? '4M' : '512M');
    echo count(rmon_host_getbulk($link, 1, [], 3));
    ini_set('memory_limit', '512M');
    PHP, ['rmon.default_port' => $agent->port, 'rmon.allow_persistent' => 1]);
if (getenv('USE_ZEND_ALLOC') === '0') {
    // The engine's memory limit is its own allocator's; without it there is nothing to run into.
    expect_same('10000 then 10000', $server->request('little'), 'no limit');
} else {
    for ($i = 0; $i < 5; $i++) {
        $output = $server->request('little');
        expect_same(true, str_contains($output, 'Allowed memory size of 4194304 bytes exhausted'), substr($output, 0, 500));
    }
}
expect_same('10000 then 10000', $server->request(), 'the next request');
expect_same(true, $server->is_running(), 'the server lives');
done();
?>
--EXPECT--
OK
