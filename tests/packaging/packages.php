<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Debian packages that were unpacked into one folder, used from there: the agent by its configuration, the command, the
 * console's first page, the exporter's metrics, and what nginx says of their sites. Exit code 1 when something of them
 * is not as it should be. The PHP that runs this has the packages' module.
 *
 * usage: packages.php FOLDER
 */

[, $unpacked] = $argv;
$folder = sys_get_temp_dir() . '/rmon-packages-' . getmypid();
require __DIR__ . '/services.inc';
mkdir("$folder/state", 0700);
$share = "$unpacked/usr/share/rmon";
$php = [PHP_BINARY, '-d', 'extension=' . glob("$unpacked/usr/lib/php/*/rmon.so")[0]];

/** @return array{int, string} exit code, what it says */
function ran(string ...$command): array
{
    global $folder;
    $said = ['file', "$folder/said", 'w'];
    $code = proc_close(proc_open($command, [['null'], $said, $said], $pipes, $folder));
    return [$code, (string) file_get_contents("$folder/said")];
}

/** A file of the packages, with ports and paths of this test; each of those that are replaced has to be there. */
function unpacked(string $file, array $replaced): string
{
    global $unpacked;
    $text = (string) file_get_contents("$unpacked/$file");
    foreach (array_keys($replaced) as $part) {
        str_contains($text, $part) || exit("$file has no \"$part\"\n");
    }
    return strtr($text, $replaced);
}

$port = free_port();
file_put_contents("$folder/agent.conf", unpacked('etc/rmon-agent.conf', ['/var/lib/rmon-agent' => "$folder/state"]));
start('agent', "$unpacked/usr/sbin/rmon-agent", '--config', "$folder/agent.conf", '--port', "$port");
await('agent', fn() => @fsockopen('127.0.0.1', $port) !== false);

$command = "$unpacked/usr/bin/rmon";
$is_there = realpath($command) === realpath("$share/bin/rmon");
check($is_there, 'the command is where it is called', (string) @readlink($command));
[$code, $said] = ran(...[...$php, "$share/bin/rmon", 'list']);
check($code === 0 && str_contains($said, 'ifTable'), 'rmon list', $said);
[$code, $said] = ran(...[...$php, "$share/bin/rmon", '-H', "127.0.0.1:$port", 'ifTable']);
check($code === 0 && preg_match('/\blo\b/', $said) === 1, 'rmon ifTable', $said);

$pages = free_port();
file_put_contents("$folder/console.ini", unpacked('etc/rmon/console.ini', [
    'host = 127.0.0.1' => "host = 127.0.0.1\nport = $port",
    '/var/lib/rmon-console' => "$folder/state",
]));
putenv("RMON_CONSOLE=$folder/console.ini");
start('console', ...[...$php, '-S', "127.0.0.1:$pages", "$share/console/public/index.php"]);
await('console', fn() => @fsockopen('127.0.0.1', $pages) !== false);
$page = (string) file_get_contents("http://127.0.0.1:$pages/");
check(str_contains($page, 'This machine') && str_contains($page, '</html>'), "the console's first page", $page);
foreach (['console.css', 'console.js'] as $asset) {
    check(filesize("$share/console/assets/$asset") > 0, "the console's $asset");
}

$metrics = free_port();
file_put_contents("$folder/exporter.ini", unpacked('etc/rmon/exporter.ini', ['ports = 9911' => "ports = $port"]));
putenv("RMON_EXPORTER=$folder/exporter.ini");
start('exporter', ...[...$php, '-S', "127.0.0.1:$metrics", "$share/exporter/public/index.php"]);
await('exporter', fn() => @fsockopen('127.0.0.1', $metrics) !== false);
$text = (string) file_get_contents("http://127.0.0.1:$metrics/metrics?target=127.0.0.1:$port&module=default");
check(str_contains($text, "\nrmon_scrape_success 1\n"), "the exporter's metrics", $text);

// The sites, as nginx reads them where they are.
$sites = '';
foreach (['console' => 9980, 'exporter' => 9912] as $name => $usual) {
    $sites .= unpacked("etc/nginx/sites-available/rmon-$name", [
        "listen 127.0.0.1:$usual" => 'listen 127.0.0.1:' . free_port(),
        'include fastcgi_params;' => 'include /etc/nginx/fastcgi_params;',
        ...($name === 'console' ? ['include snippets/' => "include $unpacked/etc/nginx/snippets/"] : []),
    ]);
}
file_put_contents("$folder/nginx.conf", "pid $folder/pid;\nevents {}\nhttp {\naccess_log off;\n$sites}\n");
[$code, $said] = ran('nginx', '-t', '-e', 'stderr', '-p', $folder, '-c', "$folder/nginx.conf");
check($code === 0, 'the sites of nginx', $said);

exit($failed ? 1 : 0);
