<?php

// SPDX-License-Identifier: MIT

/*
 * One contestant of the bench, in a process of its own: what one leaves in the
 * allocator's lists is none of the others' business. Reads commands, a line
 * each, and answers in lines:
 *
 *     TABLE ROWS CALLS     nanoseconds of each call, then the processor time of all of them
 *     TABLE ROWS show      what the rows come to: a hash and their number
 *     TABLE ROWS values    how many values are in them, bytes of addresses and what stands in a row twice not counted
 *     TABLE ROWS memory    bytes of the engine's memory that the rows take
 *
 * usage: contestant.php module|raw|naive|floor|snmp PORT
 */

declare(strict_types=1);

/** Reads a table by the module; all rows where a function returns them under a key. */
function module_reader(int $port): Closure
{
    ini_set('rmon.default_port', (string)$port);
    $link = rmon_connect('127.0.0.1');
    $readers = [
        'nlhost' => fn(int $rows) => rmon_nlhost_getbulk($link, 1, 0, 1, [], $rows),
        'etherhistory' => fn(int $rows) => rmon_etherhistory_getbulk($link, 1, 0, $rows),
        'host' => fn(int $rows) => rmon_host_getbulk($link, 1, [], $rows),
        'matrix_sd' => fn(int $rows) => rmon_matrix_sd_getbulk($link, 1, [], [], $rows),
        'almatrix_sd' => fn(int $rows) => rmon_almatrix_sd_getbulk($link, 1, 0, 1, [], [], 2, $rows),
        'art_rpt' => fn(int $rows) => rmon_art_rpt_getbulk($link, 1, 2, [], [], $rows),
        'h323_phone_rec' => fn(int $rows) => h323_phone_rec_getbulk($link, 0, $rows)['phone_rec'],
        'sccp_phone_rec' => fn(int $rows) => sccp_phone_rec_getbulk($link, 0, $rows)['phone_rec'],
        'mgcp_call_rec' => fn(int $rows) => mgcp_call_rec_getbulk($link, 0, $rows)['call_rec'],
        'aggprofs' => fn() => dsmon_aggprofs_get($link, 1),
        // The link is there from the first call on: what is left is the question whether it lives.
        'pconnect' => fn() => rmon_pconnect('127.0.0.1'),
    ];
    return fn(string $table) => $readers[$table];
}

/** Reads by one of the plain clients. */
function plain_reader(string $function, int $port): Closure
{
    rmon_bench_open($port) || exit(1);
    return fn(string $table) => fn(int $rows) => $function($table, $rows);
}

/** Walks what an SNMP agent has. */
function snmp_reader(int $port): Closure
{
    $session = new SNMP(SNMP::VERSION_2c, "127.0.0.1:$port", 'public');
    $session->oid_output_format = SNMP_OID_OUTPUT_NUMERIC;
    $session->valueretrieval = SNMP_VALUE_PLAIN;
    return fn(string $subtree) => fn(int $repetitions) => $session->walk($subtree, false, $repetitions);
}

/** Microseconds of processor time that this process used. */
function spent(): int
{
    $used = getrusage();
    return 1000000 * ($used['ru_utime.tv_sec'] + $used['ru_stime.tv_sec']) + $used['ru_utime.tv_usec']
        + $used['ru_stime.tv_usec'];
}

function times_of(Closure $read, int $rows, int $calls): string
{
    $times = [];
    $before = spent();
    for ($i = 0; $i < $calls; $i++) {
        $start = hrtime(true);
        $read($rows);
        $times[] = hrtime(true) - $start;
    }
    $times[] = 1000 * (spent() - $before);
    return implode(' ', $times);
}

function shown(mixed $rows): string
{
    return is_array($rows) ? md5(serialize($rows)) . ' ' . count($rows) : "- $rows";
}

/** The status stands in a row under two keys. */
function values_of(array $rows): string
{
    return (string)array_sum(array_map(fn(array $row) => count($row) - 1, $rows));
}

function memory_of(Closure $read, int $rows): string
{
    $before = memory_get_usage();
    $kept = $read($rows);
    return (string)(memory_get_usage() - $before);
}

[, $name, $port] = $argv;
$reader = match ($name) {
    'module' => module_reader((int)$port),
    'snmp' => snmp_reader((int)$port),
    default => plain_reader("rmon_bench_$name", (int)$port),
};
while (($line = fgets(STDIN)) !== false) {
    [$table, $rows, $what] = explode(' ', trim($line));
    $read = $reader($table);
    echo match ($what) {
        'show' => shown($read((int)$rows)),
        'values' => values_of($read((int)$rows)),
        'memory' => memory_of($read, (int)$rows),
        default => times_of($read, (int)$rows, (int)$what),
    }, "\n";
}
