--TEST--
A call is given up after 25 seconds, but saving captured packets may take 40
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';
require __DIR__ . '/../process.inc';

// A call that is never answered, in a process of its own, so that this test waits only once.
$code = <<<'PHP'
    $link = rmon_connect('127.0.0.1');
    $started = microtime(true);
    $result = rmon_capture_buf_get($link, 1, 2);
    $seconds = microtime(true) - $started;
    var_dump($result, $seconds >= 25 && $seconds < 30 ? 'in time' : $seconds);
    PHP;
$silent = scripted_agent(no_answer());
$command = php_command(['rmon.default_port' => $silent->port]);
$process = proc_open([...$command, '-r', $code], [1 => ['pipe', 'w']], $pipes);

the_agent()->add(late(40.0, reply(record(lastPktIndex: u32(17), totalPktsSaved: u32(5)))));
$started = microtime(true);
expect_result(
    fn() => rmon_capture_save_file(the_link(), 'file', 1, 2, 3, 4),
    [0 => 5, 'totalPktsSaved' => 5, 1 => 17, 'lastPktIndex' => 17],
);
$seconds = microtime(true) - $started;
expect_same(true, $seconds >= 40 && $seconds < 45, "$seconds seconds of saving");

expect_same(
    "\nWarning: capture_buf_get: RPC: Timed out in Command line code on line 3\nbool(false)\nstring(7) \"in time\"\n",
    stream_get_contents($pipes[1]),
    'outcome of the other call',
);
expect_same(0, proc_close($process));

done();
--EXPECT--
OK
