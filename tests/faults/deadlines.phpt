--TEST--
The time-out is the whole call's: replies in drips, replies to other calls without end, a call that nobody reads
--FILE--
<?php
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

// Each in a process of its own, so that this test waits once.
$cases = [];
$drips = scripted_agent(fragmented(i32(5), 1, 1.5));
$cases['drips'] = [$drips->port, '"x"', "\nWarning: rmon_etherstats_set: RPC: Timed out in Command line code on line 3\n"];
$others = scripted_agent(sequence(...array_fill(0, 20, late(2.0, wrong_xid(i32(5))))));
$cases['replies to others'] = [$others->port, '"x"', "\nWarning: rmon_etherstats_set: RPC: Timed out in Command line code on line 3\n"];
$deaf = stream_socket_server('tcp://127.0.0.1:0');
$cases['nobody reads'] = [port_of($deaf), 'str_repeat("x", 64 << 20)', '']; // this function reports no failed call

$processes = [];
foreach ($cases as $what => [$port, $text]) {
    $call = $what === 'nobody reads' ? "rmon_get_mib_var(\$link, $text)" : "rmon_etherstats_set(\$link, 1, 2, $text, 1)";
    $code = <<<PHP
        \$link = rmon_connect('127.0.0.1');
        \$started = microtime(true);
        \$result = $call;
        \$seconds = microtime(true) - \$started;
        var_dump(\$result, \$seconds >= 25 && \$seconds < 30 ? 'in time' : \$seconds);
        PHP;
    $command = php_command(['rmon.default_port' => $port, 'memory_limit' => '512M']);
    $pipes = [];
    $processes[$what] = [proc_open([...$command, '-r', $code], [1 => ['pipe', 'w']], $pipes), $pipes[1]];
}
foreach ($processes as $what => [$process, $output]) {
    expect_same("{$cases[$what][2]}bool(false)\nstring(7) \"in time\"\n", stream_get_contents($output), $what);
    expect_same(0, proc_close($process), $what);
}
done();
?>
--EXPECT--
OK
