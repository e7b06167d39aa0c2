<?php

// SPDX-License-Identifier: MIT

/*
 * The processor time of a scrape that hands out all of 10,000 hosts, four counters of each. Fails when it takes longer
 * than it may.
 *
 * usage: exporter.php AGENT
 */

declare(strict_types=1);

require __DIR__ . '/../exporter/autoload.php';
require __DIR__ . '/hosts.inc';

use Rmon\Exporter\Configuration;
use Rmon\Exporter\Exporter;
use Rmon\Exporter\Request;

const MOST = 50.0; // milliseconds

$probe = probe_of_hosts($argv[1]);
$settings = tempnam(sys_get_temp_dir(), 'rmon-bench');
file_put_contents($settings, <<<'END'
    [exporter]
    networks = 127.0.0.0/8
    ports = 1-65535
    [module hosts]
    series = 100000
    created = off
    [table hosts nlHostTable]
    columns = nlHostInPkts nlHostOutPkts nlHostInOctets nlHostOutOctets
    labels = nlHostAddress:address
    limit = 20000
    END);
$exporter = new Exporter(Configuration::read($settings), static fn(string $text) => print("$text\n"));
unlink($settings);
$query = ['target' => "127.0.0.1:{$probe->link->port}", 'module' => 'hosts'];
$server = ['HTTP_ACCEPT' => 'application/openmetrics-text; version=1.0.0'];
$text = '';
$took = least(static function () use ($exporter, $query, $server, &$text): void {
    $text = $exporter->answer(new Request('GET', '/metrics', $query, $server))->body;
});
$samples = preg_match_all('/^rmon_nl_host_\w+_total\{/m', $text);
printf(
    "a scrape of %d hosts: %.1f ms for %d samples, %d kB, %.1f us a host\n",
    HOSTS,
    $took,
    $samples,
    strlen($text) / 1000,
    1000 * $took / HOSTS,
);
exit((int) ($samples < 4 * HOSTS || $took > MOST));
