<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * The exporter behind nginx with php-fpm, by the samples of packaging/, and Debian's Prometheus that scrapes three agents
 * through it: one that plays the demo's capture, one that measures this machine, one that plays frames at a known rate and
 * is restarted in between. Rules, configuration and the dashboards' queries are those of packaging/. Exit code 1 when
 * something is not what it should be.
 *
 * usage: prometheus.php rmon-agent rmon.so php-fpm
 */

[, $agent, $module, $fpm] = $argv;
$folder = sys_get_temp_dir() . '/rmon-prometheus-' . getmypid();
require __DIR__ . '/services.inc';
require "$root/tests/agent/captures.inc";

function stop(string $name): void
{
    global $processes;
    proc_terminate($processes[$name], 9);
    proc_close($processes[$name]);
    unset($processes[$name]);
}

function start_agent(string $name, int $port, string ...$options): void
{
    global $agent;
    start($name, $agent, '--port', "$port", ...$options);
    await($name, fn() => @fsockopen('127.0.0.1', $port) !== false);
}

/** @return array{int, string} exit code and output */
function run_to_end(array $command, string $input = ''): array
{
    global $folder;
    file_put_contents("$folder/input", $input);
    $pipe = [['file', "$folder/input", 'r'], ['pipe', 'w'], ['redirect', 1]];
    $process = proc_open($command, $pipe, $pipes, $folder);
    $said = stream_get_contents($pipes[1]);
    return [proc_close($process), $said];
}

/** @return list<array{metric: array<string, string>, value: array{float, string}}> what PromQL gives now */
function query(string $expression): array
{
    global $prometheus;
    $address = "http://127.0.0.1:$prometheus/api/v1/query?" . http_build_query(['query' => $expression]);
    $answer = @file_get_contents($address, false, stream_context_create(['http' => ['ignore_errors' => true]]));
    $answer = json_decode((string) $answer, true);
    if (($answer['status'] ?? '') === 'error') {
        exit("$expression: $answer[error]\n");
    }
    return $answer['data']['result'] ?? [];
}

/** The one value that PromQL gives; null when there is none. */
function value(string $expression): ?float
{
    $found = query($expression);
    return count($found) === 1 ? (float) $found[0]['value'][1] : null;
}

// ---- Agents ------------------------------------------------------------------

$php = [PHP_BINARY, '-n', '-d', "extension=$module"];
[$code, $said] = run_to_end([...$php, "$root/script/demo/make_capture.php", $folder]);
$code === 0 || exit($said);
$known = json_decode(file_get_contents("$folder/known.json"), true);
$demo = free_port();
start_agent(
    'demo',
    $demo,
    ...['--read', 'office', '--read', 'wan', '--hold', '--netflow', '0', '--voice', "$root/agent/voice.ini"],
);
[$code, $said] = run_to_end([...$php, "$root/script/demo/rows.php", "$demo"]);
$code === 0 || exit($said);
$live = free_port();
start_agent('live', $live, '--no-capture');

// 50 frames a second of 200 octets, the check sum among them.
$frames = '';
for ($number = 0; $number < 500; $number++) {
    $packet = ip4('10.0.0.1', '10.0.0.2', 17, udp(40000, 53, str_repeat('x', 154)));
    $frames .= captured($number / 50, ethernet(mac(9), mac(1), 0x0800, $packet));
}
file_put_contents("$folder/steady", CAPTURE_OPENING . $frames);
const RATE = 50 * 200;
$steady = free_port();
$playing = ['--read', 'steady', '--speed', 'recorded', '--loop'];
start_agent('steady', $steady, ...$playing);

// ---- The exporter ------------------------------------------------------------

$isRoot = posix_geteuid() === 0;
$own = posix_getpwuid(posix_geteuid())['name'];
$group = posix_getgrgid(posix_getegid())['name'];
file_put_contents("$folder/exporter.ini", sample('prometheus/exporter.ini', ["ports = 9911\n" => "ports = 1-65535\n"]));
file_put_contents("$folder/fpm.conf", "[global]\nerror_log = $folder/fpm.log\ndaemonize = no\n" . sample('php-fpm/rmon-exporter.conf', [
    "user = rmon-exporter\ngroup = rmon-exporter\n" => $isRoot ? "user = $own\ngroup = $group\n" : '',
    '/run/php/rmon-exporter.sock' => "$folder/fpm.sock",
    "listen.owner = www-data\nlisten.group = www-data\n" => "listen.owner = $own\nlisten.group = $group\n",
]));
start('fpm', $fpm, '--nodaemonize', ...($isRoot ? ['--allow-to-run-as-root'] : []), ...['-d', "extension=$module"], ...['-y', "$folder/fpm.conf"]);
await('fpm', fn() => file_exists("$folder/fpm.sock"));
$exporter = free_port();
file_put_contents("$folder/nginx.conf", ($isRoot ? "user $own $group;\n" : '') . "daemon off;\npid $folder/nginx.pid;\nerror_log stderr;\nevents {}\nhttp {\n"
    . implode('', array_map(fn($what) => "{$what}_temp_path $folder/$what;\n", ['client_body', 'proxy', 'fastcgi', 'uwsgi', 'scgi']))
    . sample('nginx/rmon-exporter.conf', [
        'listen 127.0.0.1:9912;' => "listen 127.0.0.1:$exporter;",
        '/usr/share/rmon/exporter' => "$root/exporter",
        '/etc/rmon/exporter.ini' => "$folder/exporter.ini",
        '/run/php/rmon-exporter.sock' => "$folder/fpm.sock",
        'include fastcgi_params;' => 'include /etc/nginx/fastcgi_params;',
    ]) . "}\n");
start('nginx', 'nginx', '-p', $folder, '-c', "$folder/nginx.conf");
await('nginx', fn() => @fsockopen('127.0.0.1', $exporter) !== false);

// ---- Prometheus --------------------------------------------------------------

file_put_contents("$folder/rmon-rules.yml", sample('prometheus/rmon-rules.yml', ['interval: 30s' => 'interval: 1s']));
file_put_contents("$folder/rmon-rules-test.yml", sample('prometheus/rmon-rules-test.yml', []));
$addresses = array_map(fn(int $port) => "127.0.0.1:$port", [$demo, $live, $steady, free_port()]);
file_put_contents("$folder/rmon-targets.json", json_encode([['targets' => $addresses, 'labels' => ['site' => 'test']]]));
file_put_contents("$folder/prometheus.yml", "global:\n  evaluation_interval: 1s\n" . sample('prometheus/prometheus.yml', [
    '/etc/prometheus/' => "$folder/",
    '127.0.0.1:9912' => "127.0.0.1:$exporter",
    'scrape_interval: 15s' => 'scrape_interval: 1s',
    'scrape_timeout: 10s' => 'scrape_timeout: 1s',
    'scrape_interval: 60s' => 'scrape_interval: 2s',
    'scrape_timeout: 30s' => 'scrape_timeout: 2s',
]));
foreach ([['check', 'config', 'prometheus.yml'], ['check', 'rules', 'rmon-rules.yml'], ['test', 'rules', 'rmon-rules-test.yml']] as $what) {
    [$code, $said] = run_to_end(['promtool', ...$what]);
    check($code === 0, 'promtool ' . implode(' ', $what), $said);
}
// A rule that says something else does not pass.
file_put_contents("$folder/other.yml", strtr(sample('prometheus/rmon-rules-test.yml', []), ['{labels: \'{job="rmon",instance="a",interface="eth0"}\', value: 1000}' => '{labels: \'{job="rmon",instance="a",interface="eth0"}\', value: 1001}']));
[$code] = run_to_end(['promtool', 'test', 'rules', 'other.yml']);
check($code === 1, 'a rule with another result is noticed');

$prometheus = free_port();
start(
    'prometheus',
    ...['prometheus', "--config.file=$folder/prometheus.yml", "--storage.tsdb.path=$folder/data", '--log.level=warn'],
    ...["--web.listen-address=127.0.0.1:$prometheus"],
);
await('prometheus', fn() => str_contains((string) @file_get_contents("http://127.0.0.1:$prometheus/-/ready"), 'eady'));

$capture = "instance=\"127.0.0.1:$demo\"";
check(soon(fn() => value('sum(rmon_scrape_success{job="rmon"})') === 3.0), 'three agents are read, one is not there', json_encode(query('rmon_scrape_success')));
check(soon(fn() => value('sum(up{job="rmon"})') === 4.0), 'the exporter answers for all four', json_encode(query('up')));
check(soon(fn() => query("rmon_if_info{instance=\"127.0.0.1:$live\",interface=\"lo\"}") !== []), 'this machine\'s interfaces are there');
check(soon(fn() => value("rmon_ether_stats_packets_total{{$capture},interface=\"office\"}") === 0.0), 'the capture has not begun', json_encode(query("rmon_ether_stats_packets_total{{$capture}}")));
proc_terminate($processes['demo'], SIGUSR1);
$of = static fn(string $metric, string $labels) => value("{$metric}{job=\"rmon\",$capture,$labels}");
foreach (['office', 'wan'] as $interface) {
    $row = $known[$interface];
    soon(fn() => $of('rmon_ether_stats_bytes_total', "interface=\"$interface\"") === (float) $row['octets']);
    // What it grew by, by the counter's own values: a rate over so few samples says more about its borders.
    $range = "rmon_ether_stats_bytes_total{job=\"rmon\",$capture,interface=\"$interface\"}[10m]";
    $grown = value("max_over_time($range) - min_over_time($range)");
    check($grown === (float) $row['octets'], "$interface: the octets of the capture", var_export($grown, true));
    $label = "interface=\"$interface\"";
    check(
        soon(fn() => value("sum(rmon_ether_stats_size_packets_total{job=\"rmon\",$capture,$label})") === (float) array_sum($row['sizes'])),
        "$interface: its frames by size",
    );
    $https = (float) $row['protocols']['ip.tcp.https']['octets'];
    check(
        soon(fn() => $of('rmon_protocol_dist_stats_bytes_total', "$label,protocol=\"ip.tcp.https\"") === $https),
        "$interface: the octets of https",
    );
}
$sent = $known['office']['hosts'];
uasort($sent, fn(array $a, array $b) => $b['outoctets'] <=> $a['outoctets']);
$top = 'topk(1, rmon_nl_host_out_bytes_total{' . $capture . ',interface="office"})';
soon(fn() => value($top) === (float) current($sent)['outoctets']);
check((query($top)[0]['metric']['address'] ?? '') === (string) array_key_first($sent), 'the host that sent most', json_encode(query($top)));

$rate = "rate(rmon_ether_stats_bytes_total{job=\"rmon\",instance=\"127.0.0.1:$steady\"}[10s])";
// Samples of a busy machine are not a second apart; the rate is that of the capture when two of them are.
$near = fn(): bool => abs((value($rate) ?? 0) - RATE) < 0.1 * RATE;
check(soon($near), 'the rate of the capture', json_encode(query($rate)));

$uptime = "rmon_sys_up_time_seconds{job=\"rmon\",instance=\"127.0.0.1:$steady\"}";
soon(fn() => value($uptime) > 12);
stop('steady');
$gone = soon(fn() => value("rmon_scrape_success{job=\"rmon\",instance=\"127.0.0.1:$steady\"}") === 0.0);
check($gone, 'an agent that went is noticed');
start_agent('steady', $steady, ...$playing);
check(soon(fn() => value("resets({$uptime}[5m])") === 1.0), 'it came back, as another beginning');
check(soon($near), 'the same rate again', json_encode(query($rate)));
$created = "rmon_ether_stats_bytes_created{job=\"rmon\",instance=\"127.0.0.1:$steady\"}[5m]";
check(value("max_over_time($created) > min_over_time($created)") > 0, 'when the counter began says so', json_encode(query($created)));
$spike = value("max_over_time({$rate}[5m:1s])");
check($spike !== null && $spike < 2 * RATE, 'no spike in between', var_export($spike, true));

// ---- Every module, every query -----------------------------------------------

preg_match_all('/^  (\w+) /m', (string) file_get_contents("http://127.0.0.1:$exporter/"), $modules);
check(count($modules[1]) > 10, 'the exporter lists its modules');
foreach ($modules[1] as $name) {
    foreach ([$demo, $live] as $port) {
        $text = (string) file_get_contents("http://127.0.0.1:$exporter/metrics?target=127.0.0.1:$port&module=$name");
        [$code, $said] = run_to_end(['promtool', 'check', 'metrics'], $text);
        check($code === 0 && trim($said) === '' && str_contains($text, "\nrmon_scrape_success 1\n"), "promtool check metrics: $name of $port", $said . $text);
    }
}
foreach (glob("$root/packaging/grafana/*.json") as $file) {
    $board = json_decode(file_get_contents($file), true, 64, JSON_THROW_ON_ERROR);
    $variables = ['$__rate_interval' => '1m', '$instance' => "127.0.0.1:$demo", '$interface' => '.*', '$job' => '.*'];
    foreach ($board['panels'] as $panel) {
        foreach ($panel['targets'] as $target) {
            $expression = strtr($target['expr'], $variables);
            check(soon(fn() => query($expression) !== [], 20), basename($file) . ": $panel[title]", $expression);
        }
    }
    foreach ($board['templating']['list'] as $variable) {
        if ($variable['type'] === 'query') {
            preg_match('/^label_values\((.*), (\w+)\)$/', strtr($variable['query']['query'], $variables), $parts);
            check(query("count by ($parts[2]) ($parts[1])") !== [], basename($file) . ": the choice of $variable[name]");
        }
    }
}
check(soon(fn() => query('interface:rmon_ether_stats_bytes:rate5m') !== []), 'recording rules have results');
$log = (string) file_get_contents("$folder/prometheus.log");
$complaints = '/append failed|error on ingesting|duplicate|evaluating rule failed/i';
check(!preg_match($complaints, $log), 'Prometheus takes all of it', $log);
exit($failed ? 1 : 0);
