<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * The console behind nginx and Apache with php-fpm, by the samples of packaging/: their paths, port and names become
 * those of a folder of this test, everything else stays. Exit code 1 when a page is not what it should be.
 *
 * usage: webservers.php rmon-agent rmon.so php-fpm
 */

[, $agent, $module, $fpm] = $argv;
$folder = sys_get_temp_dir() . '/rmon-webservers-' . getmypid();
require __DIR__ . '/services.inc';
mkdir("$folder/state", 0700);

/** @return array{int, string, string} status, headers, text */
function ask(int $port, string $path, array $headers = [], string $form = ''): array
{
    $context = stream_context_create([
        'ssl' => ['verify_peer' => false, 'verify_peer_name' => false],
        'http' => [
            'method' => $form === '' ? 'GET' : 'POST',
            'content' => $form,
            'header' => ['Host: console.example.net', 'Content-Type: application/x-www-form-urlencoded', ...$headers],
            'ignore_errors' => true,
            'follow_location' => 0,
            'timeout' => 30,
        ],
    ]);
    $text = (string) file_get_contents("https://127.0.0.1:$port$path", false, $context);
    return [(int) explode(' ', $http_response_header[0] ?? ' 0')[1], implode("\n", $http_response_header ?? []), $text];
}

$port = free_port();
start('agent', $agent, '--port', "$port", '--no-capture');
await('agent', fn() => @fsockopen('127.0.0.1', $port) !== false);

$hash = password_hash('a secret', PASSWORD_BCRYPT, ['cost' => 4]);
file_put_contents("$folder/console.ini", <<<END
    [console]
    state = "$folder/state"
    names = console.example.net
    secure = on
    [probe here]
    host = 127.0.0.1
    port = $port
    [user anna]
    password_hash = "$hash"
    role = operator
    END);
exec('openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=console.example.net -keyout '
    . escapeshellarg("$folder/key") . ' -out ' . escapeshellarg("$folder/pem") . ' 2>&1', $said, $code);
$code === 0 || exit(implode("\n", $said));

$isRoot = posix_geteuid() === 0;
$own = posix_getpwuid(posix_geteuid())['name'];
$group = posix_getgrgid(posix_getegid())['name'];
file_put_contents("$folder/fpm.conf", "[global]\nerror_log = $folder/fpm.log\ndaemonize = no\n" . sample('php-fpm/rmon-console.conf', [
    "user = rmon-console\ngroup = rmon-console\n" => $isRoot ? "user = $own\ngroup = $group\n" : '',
    '/run/php/rmon-console.sock' => "$folder/fpm.sock",
    "listen.owner = www-data\nlisten.group = www-data\n" => "listen.owner = $own\nlisten.group = $group\n",
]));
start('fpm', $fpm, '--nodaemonize', ...($isRoot ? ['--allow-to-run-as-root'] : []), ...['-d', "extension=$module"], ...['-y', "$folder/fpm.conf"]);
await('fpm', fn() => file_exists("$folder/fpm.sock"));

// As a package has it: readable for everybody, which a clone in somebody's home is not.
mkdir("$folder/rmon");
exec('cp -R ' . implode(' ', array_map(escapeshellarg(...), ["$root/console", "$root/library", "$folder/rmon"])) . ' && chmod -R a+rX '
    . escapeshellarg("$folder/rmon") . ' 2>&1', $said, $code);
$code === 0 || exit(implode("\n", $said));

$ports = ['nginx' => free_port(), 'apache' => free_port()];
$common = [
    '/usr/share/rmon/console' => "$folder/rmon/console",
    '/etc/rmon/console.ini' => "$folder/console.ini",
    '/run/php/rmon-console.sock' => "$folder/fpm.sock",
    '/etc/ssl/certs/console.example.net.pem' => "$folder/pem",
    '/etc/ssl/private/console.example.net.key' => "$folder/key",
];
file_put_contents("$folder/nginx.conf", ($isRoot ? "user $own $group;\n" : '') . "daemon off;\npid $folder/nginx.pid;\nerror_log stderr;\nevents {}\nhttp {\naccess_log off;\ninclude /etc/nginx/mime.types;\n"
    . implode('', array_map(fn($what) => "{$what}_temp_path $folder/$what;\n", ['client_body', 'proxy', 'fastcgi', 'uwsgi', 'scgi']))
    . sample('nginx/rmon-console.conf', $common + [
        'listen 443 ssl http2;' => "listen 127.0.0.1:$ports[nginx] ssl http2;",
        'listen 80;' => 'listen 127.0.0.1:' . free_port() . ';',
        'listen [::]:443 ssl http2;' => '',
        'listen [::]:80;' => '',
        'include fastcgi_params;' => 'include /etc/nginx/fastcgi_params;',
        'include snippets/' => "include $root/packaging/nginx/",
    ]) . "}\n");
$modules = '';
foreach (['mpm_event', 'authz_core', 'alias', 'dir', 'env', 'headers', 'mime', 'ssl', 'socache_shmcb', 'setenvif', 'proxy', 'proxy_fcgi'] as $name) {
    $modules .= "LoadModule {$name}_module /usr/lib/apache2/modules/mod_$name.so\n";
}
file_put_contents("$folder/apache.conf", $modules . ($isRoot ? "User www-data\nGroup www-data\n" : '')
    . "ServerRoot $folder\nServerName localhost\nPidFile $folder/apache.pid\nErrorLog $folder/apache.log\nTypesConfig /etc/mime.types\nListen 127.0.0.1:$ports[apache]\nDefaultRuntimeDir $folder\n"
    . sample('apache/rmon-console.conf', $common + [
        '*:443' => "127.0.0.1:$ports[apache]",
        '*:80' => '127.0.0.1:' . free_port(),
    ]));
if ($isRoot) {
    // Apache's workers are somebody else.
    chmod($folder, 0755);
    chmod("$folder/fpm.sock", 0666);
}
start('nginx', 'nginx', '-p', $folder, '-c', "$folder/nginx.conf");
start('apache', 'apache2', '-f', "$folder/apache.conf", '-DFOREGROUND');

foreach ($ports as $server => $port) {
    await($server, fn() => @fsockopen('127.0.0.1', $port) !== false);
    [$status, $headers, $text] = ask($port, '/probe/here');
    check($status === 303 && str_contains($headers, '/sign-in?to='), "$server: who isn't signed in is asked to", "$headers\n$text");
    [$status, $headers, $text] = ask($port, '/sign-in');
    check($status === 200 && str_contains($headers, 'Content-Security-Policy'), "$server: the page to sign in at", "$headers\n$text");
    check(str_contains($headers, 'Strict-Transport-Security'), "$server: by https alone", $headers);
    preg_match('/Set-Cookie: (rmon_session=[^;]+); (.*)/i', $headers, $cookie);
    check(preg_match('/secure/i', $cookie[2] ?? '') === 1, "$server: its cookie too", $headers);
    preg_match('/name="token" value="([^"]+)"/', $text, $token);
    [$status, $headers] = ask($port, '/sign-in', ["Cookie: $cookie[1]"], http_build_query(['token' => $token[1] ?? '', 'name' => 'anna', 'user' => 'anna', 'password' => 'a secret']));
    check($status === 303, "$server: signing in", $headers);
    preg_match_all('/Set-Cookie: (rmon_session=[^;]+);/i', $headers, $cookies);
    $session = 'Cookie: ' . (end($cookies[1]) ?: '');
    [$status, $headers, $text] = ask($port, '/probe/here', [$session]);
    check($status === 200 && str_contains($text, '/probe/here/lo'), "$server: the overview", "$headers\n$text");
    [$status, $headers, $text] = ask($port, '/probe/here/table/etherStatsTable?format=json', [$session]);
    $rows = json_decode($text, true);
    check($status === 200 && is_array($rows) && $rows !== [], "$server: a table", "$headers\n$text");
    [$status, $headers, $text] = ask($port, '/probe/here/host%2Fname', [$session]);
    check($status === 404 && str_contains($headers, 'text/html'), "$server: an address with a slash in a name is the console's", "$headers\n$text");
    preg_match_all('~"(/assets/[^"]+)"~', $text, $assets);
    check(count($assets[1]) >= 3, "$server: a page has a style sheet, a script and an icon", $text);
    foreach ($assets[1] as $asset) {
        [$status, $headers] = ask($port, html_entity_decode($asset));
        check($status === 200 && str_contains($headers, 'nosniff'), "$server: $asset", $headers);
    }
    [$status, $headers] = ask($port, '/assets/chart.js');
    check($status === 200 && preg_match('~^Content-Type: (text|application)/javascript~mi', $headers) === 1, "$server: the chart library", $headers);
    [$status, $headers, $text] = ask($port, '/index.php/../../src/Console.php');
    check(!str_contains($text, '<?php'), "$server: no source", $text);
}
exit($failed ? 1 : 0);
