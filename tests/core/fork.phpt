--TEST--
A forked process has none of its parent's links: calls on them fail, persistent ones are made anew, the parent's go on
--EXTENSIONS--
pcntl
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

// What the scripts below share; what $fork is given runs in a process of its own.
$begin = 'require ' . var_export(dirname(__DIR__) . '/checks.inc', true) . '; require '
    . var_export(dirname(__DIR__) . '/process.inc', true) . ';' . <<<'PHP'

    $set = fn(mixed $link): mixed => rmon_etherstats_set($link, 1, 2, 'me', 1);
    const LOST = ['rmon_etherstats_set: RPC: Unable to send; errno = Transport endpoint is not connected'];
    $fork = function (callable $child): void {
        if (($pid = pcntl_fork()) === 0) {
            $child();
            exit(0);
        }
        pcntl_waitpid($pid, $status);
        expect_same(0, $status, 'how the child ends');
    };
    $sockets = fn(): int => count(preg_grep('/^socket:/', array_map(
        fn(string $number) => (string) @readlink("/proc/self/fd/$number"),
        scandir('/proc/self/fd'),
    )));

    PHP;
$run = fn(string $code, array $directives = []): array => run_php($begin . $code, $directives);

// 64 links by as many texts of one address, half of them persistent.
$agent = scripted_agent(always(reply(i32(5))));
$directives = ['rmon.default_port' => $agent->port];
expect_same(['', 0], $run(<<<'PHP'
    $before = $sockets();
    $hosts = array_map(fn(int $zeros) => '127.0.0.' . str_repeat('0', $zeros) . '1', range(1, 64));
    $open = fn(int $i) => $i % 2 ? rmon_connect($hosts[$i]) : rmon_pconnect($hosts[$i]);
    $links = array_map($open, range(0, 63));
    expect_same([64, 32], link_counts(), 'counted in the parent');
    expect_same($before + 64, $sockets(), 'sockets of the parent');
    $fork(function () use ($links, $hosts, $open, $set, $sockets, $before): void {
        expect_same([0, 0], link_counts(), 'none is open in the child');
        expect_same($before, $sockets(), 'sockets of the child');
        foreach ($links as $i => $link) {
            expect_result(fn() => $set($link), false, LOST);
            expect_result(fn() => $set(get_resource_id($link)), false, LOST);
        }
        foreach (range(0, 63) as $i) {
            expect_result(function () use ($i, $open, &$anew): bool {
                return is_resource($anew[$i] = $open($i));
            }, true);
            expect_result(fn() => $set($anew[$i]), 5);
        }
        expect_same([64, 32], link_counts(), 'counted in the child');
        foreach ($links as $i => $link) {
            // A persistent one ended with its handle; a normal one is closed like any other.
            expect_same($i % 2 === 1, is_resource($link), "what the child had of link $i");
            if ($i % 2) {
                expect_same([true, true, 64], [rmon_close($link), rmon_close($link), link_counts()[0]], "closing link $i");
            }
        }
        expect_same([$anew[1]], [rmon_connect($hosts[1])], 'the one that the child made');
        rmon_close($anew[1]);
        rmon_close($anew[1]);
        rmon_close($anew[1]);
        expect_same([63, 32], link_counts(), 'one of its own was closed');
    });
    expect_same([64, 32], link_counts(), 'counted in the parent after the child');
    foreach ($links as $link) {
        expect_result(fn() => $set($link), 5);
    }
    PHP, $directives), '64 links');
expect_same(64 + 64, $agent->connections(), 'connections of both');
expect_same(64 + 64, count($agent->calls()), 'calls of both');
$agent->wait_open_connections(0);

// The agent hears nothing of it: every connection of the parent is still open when the child has ended.
$agent = scripted_agent(always(reply(i32(6))));
expect_same(['', 0], $run(<<<'PHP'
    $links = [rmon_connect('127.0.0.1'), rmon_pconnect('127.1')];
    $fork(fn() => [rmon_close(), rmon_close($links[0]), rmon_close($links[1])]);
    $fork(fn() => null);
    // Parent and child at once, each on its own.
    $children = [];
    for ($i = 0; $i < 4; $i++) {
        if (($children[] = pcntl_fork()) === 0) {
            $own = rmon_pconnect('127.1');
            for ($call = 0; $call < 50; $call++) {
                expect_same([6, false], [$set($own), @$set($links[0])], 'in a child');
            }
            exit(0);
        }
    }
    for ($call = 0; $call < 50; $call++) {
        expect_same([6, 6], array_map($set, $links), 'in the parent');
    }
    foreach ($children as $child) {
        pcntl_waitpid($child, $status);
        expect_same(0, $status, 'how a child ends');
    }
    expect_same([6, 6], array_map($set, $links), 'in the parent, alone again');
    expect_same([2, 1], link_counts(), 'its links');
    PHP, ['rmon.default_port' => $agent->port]), 'at once');
expect_same(2 + 4, $agent->connections(), 'connections');
expect_same(4 * 50 + 2 * 51, count($agent->calls()), 'calls');

// The limits are for what the process has open itself.
expect_same(['', 0], $run(<<<'PHP'
    $link = rmon_pconnect('127.1');
    $fork(function () use ($set): void {
        expect_result(fn() => $set(rmon_connect('127.0.0.1')), 6);
        expect_result(fn() => rmon_pconnect('127.1'), false, ['RMON: Too many open links (1)']);
    });
    expect_result(fn() => rmon_connect('127.0.0.1'), false, ['RMON:Too many open connections (1)']);
    expect_result(fn() => $set($link), 6);
    // A child of a child, and the default link.
    $fork(function () use ($fork, $set): void {
        $link = rmon_pconnect('127.1');
        $fork(function () use ($link, $set): void {
            expect_result(fn() => $set($link), false, LOST);
            expect_result(fn() => [rmon_close(), rmon_close(), rmon_close()], [true, true, null],
                ['rmon_close(): supplied resource is not a valid RMON RPC link resource']);
            expect_same([0, 0], link_counts(), 'nothing was open');
            expect_result(fn() => $set(rmon_pconnect('127.1')), 6);
            expect_same([1, 1], link_counts(), 'made anew');
        });
        expect_result(fn() => $set($link), 6);
    });
    PHP, ['rmon.default_port' => $agent->port, 'rmon.max_links' => 1]), 'limits');

// A web server whose workers are forked when its preloaded script has opened a persistent link. An engine that
// preloads leaves memory behind, at which the sanitizers end it.
if (getenv('USE_ZEND_ALLOC') === '0') {
    done();
    exit;
}
$preloaded = tempnam(sys_get_temp_dir(), 'rmon');
file_put_contents($preloaded, '<?php rmon_etherstats_set(rmon_pconnect("127.0.0.1"), 1, 2, "", 1);'
    . 'file_put_contents(__FILE__ . ".pid", getmypid());');
putenv('PHP_CLI_SERVER_WORKERS=4');
$agent = scripted_agent(always(reply(i32(7))));
$server = new OneProcessServer(<<<'PHP'
    $wrong = 0;
    for ($call = 0; $call < 20; $call++) {
        $link = rmon_pconnect('127.0.0.1');
        $wrong += rmon_etherstats_set($link, 1, 2, 'me', 1) !== 7;
    }
    echo getmypid(), " $wrong";
    PHP, ['rmon.default_port' => $agent->port, 'zend_extension=opcache', 'opcache.enable_cli=1',
        'opcache.preload' => $preloaded, 'opcache.preload_user' => get_current_user()]);
putenv('PHP_CLI_SERVER_WORKERS');
expect_same(1, $agent->connections(), 'the preloaded script connected');
$pages = [];
$urls = array_fill(0, 40, "http://127.0.0.1:$server->port/");
foreach (array_chunk($urls, 8) as $chunk) {
    $requests = array_map(fn() => stream_socket_client("tcp://127.0.0.1:$server->port"), $chunk);
    array_map(fn($request) => fwrite($request, "GET / HTTP/1.0\r\n\r\n"), $requests);
    foreach ($requests as $request) {
        $page = stream_get_contents($request);
        $pages[] = substr($page, strpos($page, "\r\n\r\n") + 4);
    }
}
foreach ($pages as $page) {
    expect_same(1, preg_match('/^\d+ 0$/', $page), "a page: $page");
}
// Each process has one connection. The preloaded script ran in one that may answer pages too, by the engine's release.
$processes = array_unique(array_map(intval(...), [file_get_contents("$preloaded.pid"), ...$pages]));
expect_same(count($processes), $agent->connections(), 'connections of the preloaded script and of who answered');
expect_same(true, count($processes) > 2, 'there were several');
unset($server);
array_map(unlink(...), [$preloaded, "$preloaded.pid"]);
done();
?>
--EXPECT--
OK
