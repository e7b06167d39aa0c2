--TEST--
The memory limit is reached while many rows are made, in every table; nothing leaks, the next request works
--ENV--
USE_TRACKED_ALLOC=1
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../hostile/hostile.inc';

/** Rows in a reply, the most first: the longest rows fill a reply of this size before there are many. */
const ROWS = [10000, 3000, 1000, 300];

// Each unit of a row is 1: texts and lists of one byte, flags that are set, one call in a history.
$units = str_repeat(u32(1), 3200000);
$agents = array_map(fn (int $rows) => scripted_agent(always(reply(u32($rows) . $units))), ROWS);

$page = 'require ' . var_export(dirname(__DIR__) . '/hostile/hostile.inc', true) . ';' . <<<'PHP'

    [$function, $port] = explode(' ', $do);
    ini_set('rmon.default_port', $port);
    $parameters = functions()[$function];
    $arguments = plain_arguments($function, $parameters);
    $rows = $function(...$arguments);
    echo is_array($rows) ? count(is_string(key($rows)) ? current($rows) : $rows) : 'none';
    PHP;
$server = new OneProcessServer($page, ['memory_limit' => '1G', 'rmon.allow_persistent' => 1]);
// A process of its own: engines keep some of the memory that they once had, and then don't count it.
$small = new OneProcessServer($page, ['memory_limit' => '2M', 'rmon.allow_persistent' => 1]);

/** @return list{int, int} rows and port of the first agent whose whole reply the function makes an array of */
function longest_reply(OneProcessServer $server, string $function, array $agents): array
{
    foreach (ROWS as $which => $rows) {
        if ($server->request("$function {$agents[$which]->port}") === (string) $rows) {
            return [$rows, $agents[$which]->port];
        }
    }
    fail("$function makes no array of any reply");
    return [0, 0];
}

$tables = 0;
// This one answers without a call.
foreach (array_diff(preg_grep('/_getbulk$/', array_keys(functions())), ['mgcp_top_latency_rec_getbulk']) as $function) {
    [$rows, $port] = longest_reply($server, $function, $agents);
    $output = $small->request("$function $port");
    if (preg_match('/Allowed memory size of \d+ bytes exhausted/', $output) !== 1) {
        fail("$function, $rows rows in little memory: " . substr($output, 0, 300));
    }
    $tables++;
}
expect_same(true, $tables > 25, "$tables tables");
$single = scripted_agent(always(reply(u32(1) . str_repeat(u32(1), 19))));
expect_same('1', $small->request("rmon_host_getbulk $single->port"), 'the next request');
expect_same(true, $small->is_running(), 'the server lives');
done();
?>
--EXPECT--
OK
