<?php

// SPDX-License-Identifier: MIT

/*
 * What a page with one call over a persistent link takes through php-fpm, held
 * against an empty page on the same worker.
 *
 * usage: page.php BUILD FPM
 */

declare(strict_types=1);

require __DIR__ . '/contest.inc';
require __DIR__ . '/../tests/soak/fastcgi.inc';

const PAGES = [
    'empty' => '<?php exit(\'0\');',
    'one call' => <<<'PHP'
        <?php
        $link = rmon_pconnect('127.0.0.1');
        exit((string)count(rmon_nlhost_getbulk($link, 1, 0, 1, [], 10)));
        PHP,
];

[, $build, $fpm] = $argv;
[$server, $port] = start_server("$build/bench/reply_server");
$directory = temporary_directory();
copy("$build/modules/rmon.so", "$directory/rmon.so"); // the worker is of another user
$fpm_port = free_port('tcp');
file_put_contents("$directory/fpm.conf", <<<CONF
    [global]
    error_log = $directory/fpm.log
    daemonize = no
    [bench]
    listen = 127.0.0.1:$fpm_port
    pm = static
    pm.max_children = 1
    user = nobody
    group = nogroup
    CONF);
$process = proc_open(
    [$fpm, '-n', '-R', '-d', "extension=$directory/rmon.so", '-d', "rmon.default_port=$port",
        '-y', "$directory/fpm.conf"],
    [['null'], ['null'], ['file', "$directory/fpm.err", 'w']],
    $pipes,
);

/** One request and its page; the worker has one connection, so the script's name travels with each. */
function request(Requests $client, string $directory, string $name): string
{
    $client->script = "$directory/$name.php";
    $client->begin();
    while (($page = $client->page()) === null);
    return $page;
}

foreach (PAGES as $name => $text) {
    file_put_contents("$directory/$name.php", $text);
}
$client = new Requests($fpm_port, '');
stream_set_blocking($client->socket, true);
check(request($client, $directory, 'empty') === '0', 'no empty page');
check(request($client, $directory, 'one call') === '10', 'no page with ten rows');

$ratios = $microseconds = [];
for ($measurement = 0; $measurement < 5; $measurement++) {
    $times = [];
    for ($turn = 0; $turn < 400; $turn++) {
        foreach (array_keys(PAGES) as $name) {
            $start = hrtime(true);
            request($client, $directory, $name);
            $times[$name][] = hrtime(true) - $start;
        }
    }
    $median = array_map(median(...), $times);
    $ratios[] = $median['one call'] / $median['empty'];
    foreach ($median as $name => $time) {
        $microseconds[$name][] = $time / 1000;
    }
}
printf(
    "php-fpm: a page with one call over a persistent link %.1f us, an empty page %.1f us, ratio %.2f (goal %.2f)\n",
    median($microseconds['one call']),
    median($microseconds['empty']),
    median($ratios),
    GOAL_OF_PAGE,
);
proc_terminate($process);
proc_close($process);
