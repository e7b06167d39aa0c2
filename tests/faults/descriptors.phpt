--TEST--
A process without descriptors left can't connect, and can again when it has one
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent(always(reply(i32(7))));
$code = <<<'PHP'
    $early = rmon_connect('127.0.0.1');
    $files = [];
    while ($file = @fopen('/dev/null', 'r')) {
        $files[] = $file;
    }
    var_dump(rmon_connect('127.1'), rmon_pconnect('127.1'), rmon_etherstats_set($early, 1, 2, 'x', 1));
    array_pop($files);
    $late = rmon_connect('127.1');
    var_dump(rmon_etherstats_set($late, 1, 2, 'x', 1), rmon_pconnect('127.1'));
    rmon_close($late);
    rmon_close($late);
    var_dump(rmon_etherstats_set(rmon_pconnect('127.1'), 1, 2, 'x', 1));
    PHP;
$command = implode(
    ' ',
    array_map(escapeshellarg(...), [...php_command(['rmon.default_port' => $agent->port]), '-r', $code]),
);
$output = shell_exec("ulimit -n 40; exec $command 2>&1");
expect_same(<<<'OUTPUT'

    Warning: RMON: RPC connection failed! in Command line code on line 6
    bool(false)
    bool(false)
    int(7)
    int(7)
    bool(false)
    int(7)

    OUTPUT, $output, 'outcome');
done();
?>
--EXPECT--
OK
