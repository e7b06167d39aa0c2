--TEST--
The memory limit is hit while many rows are made, in every table; nothing is lost, the next request works
--ENV--
USE_TRACKED_ALLOC=1
--FILE--
<?php
require __DIR__ . '/../hostile/hostile.inc';

const ROWS = 10000;
/** Rows of a table whose rows are long: the reply is as large as of the others. */
const LONG_ROWS = 100;

// Each unit of a row is 1: texts and lists of one byte, flags that are set, one call in a history.
$units = str_repeat(u32(1), 1600000);
$many = scripted_agent(always(reply(u32(ROWS) . $units)));
$few = scripted_agent(always(reply(u32(LONG_ROWS) . $units)));

$server = new OneProcessServer('require ' . var_export(dirname(__DIR__) . '/hostile/hostile.inc', true) . ';' . <<<'PHP'

    [$function, $port, $limit] = explode(' ', $do);
    ini_set('rmon.default_port', $port);
    $parameters = functions()[$function];
    $arguments = plain_arguments($function, $parameters);
    ini_set('memory_limit', $limit);
    echo count($function(...$arguments));
    PHP, ['memory_limit' => '512M', 'rmon.allow_persistent' => 1]);

$tables = 0;
foreach (preg_grep('/_getbulk$/', array_keys(functions())) as $function) {
    $port = $many->port;
    $enough = $server->request("$function $port 512M");
    if ($enough !== (string) ROWS) {
        $port = $few->port;
        expect_same((string) LONG_ROWS, $server->request("$function $port 512M"), "$function, enough memory");
    }
    $output = $server->request("$function $port 2M");
    if (preg_match('/Allowed memory size of \d+ bytes exhausted/', $output) !== 1) {
        fail("$function, little memory: " . substr($output, 0, 300));
    }
    $tables++;
}
expect_same(true, $tables > 25, "$tables tables");
expect_same((string) ROWS, $server->request("rmon_host_getbulk {$many->port} 512M"), 'the next request');
expect_same(true, $server->is_running(), 'the server lives');
done();
?>
--EXPECT--
OK
