<?php

// SPDX-License-Identifier: MIT

/*
 * What a value costs the client: PHP's own snmp extension reading Debian's
 * snmpd, held against the module reading as many, in processor time of the
 * process that reads. Exit code 1 when the gate is missed.
 *
 * usage: snmp.php BUILD SNMPD
 */

declare(strict_types=1);

require __DIR__ . '/contest.inc';

/** What every machine's snmpd has hundreds of: the rows of its own tables. */
const SUBTREE = '1.3.6.1.2.1';
const REPETITIONS = 50;
const TABLE = 'nlhost';
const ROWS = 1000;

[, $build, $snmpd] = $argv;
$directory = temporary_directory();
mkdir("$directory/cert_indexes"); // the library tells of it when it makes it
$port = free_port('udp');
file_put_contents("$directory/snmpd.conf", "rocommunity public 127.0.0.1\n");
// No MIB files are read, by neither side, and nothing is kept for another start.
putenv('MIBS=');
putenv("SNMP_PERSISTENT_DIR=$directory");
$agent = proc_open(
    [$snmpd, '-f', '-C', '-c', "$directory/snmpd.conf", '-Lf', "$directory/snmpd.log", "udp:127.0.0.1:$port"],
    [['null'], ['null'], ['file', "$directory/snmpd.err", 'w']],
    $pipes,
);

/** Microseconds of processor time for each value, of several runs. */
function microseconds_a_value(Contestant $reader, string $table, int $rows, int $values, int $calls): array
{
    $spent = [];
    for ($i = 0; $i < 5; $i++) {
        $spent[] = (int)array_slice($reader->asked($table, $rows, $calls), -1)[0] / 1000 / $calls / $values;
    }
    return $spent;
}

[$server, $module_port] = start_server("$build/bench/reply_server");
$module = new Contestant('module', "$build/modules/rmon.so", $module_port);
$snmp = new Contestant('snmp', 'snmp', $port);

for ($tries = 0, $walked = 0; $tries < 50 && $walked < 100; $tries++) {
    usleep(100000); // snmpd says nowhere that it listens
    $walked = (int)$snmp->asked(SUBTREE, REPETITIONS, 'show')[1];
}
check($walked >= 100, 'snmpd has no values');
$values = (int)$module->asked(TABLE, ROWS, 'values')[0];

$ratio = median(microseconds_a_value($snmp, SUBTREE, REPETITIONS, $walked, 5))
    / ($a_value = median(microseconds_a_value($module, TABLE, ROWS, $values, 200)));
printf(
    "snmp: a value takes PHP's own extension %.0f times the module's processor time, %.3f us (at least %d; "
        . "%d values a walk)\n",
    $ratio,
    $a_value,
    LEAST_OF_SNMP,
    $walked,
);
proc_terminate($agent);
proc_close($agent);
exit($ratio < LEAST_OF_SNMP ? 1 : 0);
