<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Reads the agent's tables through the module and says what they look like: title => cell of a row.
 * The first walk that script/server shows stands on this.
 */

/** The rows of a table, from the first to the last: each index is fed back into the next getnext call. */
function walk(callable $getnext, mixed $link, string $key): Generator
{
    $index = 0;
    while (is_array($row = $getnext($link, $index)) && $row['status'] === 0 && $row[$key] > $index) {
        yield $row;
        $index = $row[$key];
    }
}

function interfaces(mixed $link): array
{
    return iterator_to_array(walk(rmon_ifentry_getnext(...), $link, 'ifIndex'), false);
}

/** What a table shows: for each row the texts of its columns. */
function cells(array $rows, array $columns): array
{
    return array_map(fn (array $row) => array_map(fn (callable $cell) => $cell($row), array_values($columns)), $rows);
}

/** Whether a cell's text is a number, which stands to the right. */
function is_count(string $text): bool
{
    return preg_match('/^[\d ]+$/D', $text) === 1;
}

function count_of(int|float $value): string
{
    return number_format($value, 0, '.', ' ');
}

/** @param int $value as ifSpeed states it, whose largest value means that or more */
function bits_per_second(int $value): string
{
    if ($value === 0xffffffff) {
        return 'over 4.2 Gbit/s';
    }
    foreach (['G' => 1_000_000_000, 'M' => 1_000_000, 'k' => 1_000] as $unit => $size) {
        if ($value >= $size) {
            return round($value / $size, 1) . " {$unit}bit/s";
        }
    }
    return $value === 0 ? '-' : "$value bit/s";
}

/** Hundredths of a second, the agent's clock. */
function duration(int $ticks): string
{
    $seconds = intdiv($ticks, 100);
    return sprintf(
        '%d d %02d:%02d:%02d',
        intdiv($seconds, 86400),
        intdiv($seconds, 3600) % 24,
        intdiv($seconds, 60) % 60,
        $seconds % 60
    );
}

function word(array $words, int $value): string
{
    return $words[$value] ?? (string) $value;
}

function interface_columns(): array
{
    $types = [
        1 => 'other',
        6 => 'Ethernet',
        24 => 'loopback',
        71 => 'wireless',
        131 => 'tunnel',
        135 => 'VLAN',
        209 => 'bridge',
    ];
    $states = [
        1 => 'up',
        2 => 'down',
        3 => 'testing',
        4 => 'unknown',
        5 => 'dormant',
        6 => 'absent',
        7 => 'lower layer down',
    ];
    return [
        '#' => fn (array $row) => (string) $row['ifIndex'],
        'Interface' => fn (array $row) => $row['ifDescr'],
        'Type' => fn (array $row) => word($types, $row['ifType']),
        'State' => fn (array $row) => word($states, $row['ifOperStatus']),
        'MTU' => fn (array $row) => (string) $row['ifMtu'],
        'Speed' => fn (array $row) => bits_per_second($row['ifSpeed']),
        'Address' => fn (array $row) => $row['ifPhysAddress'],
        'Octets in' => fn (array $row) => count_of($row['ifInOctets']),
        'Packets in' => fn (array $row) => count_of($row['ifInUcastPkts'] + $row['ifInNUcastPkts']),
        'Errors in' => fn (array $row) => count_of($row['ifInErrors']),
        'Octets out' => fn (array $row) => count_of($row['ifOutOctets']),
        'Packets out' => fn (array $row) => count_of($row['ifOutUcastPkts'] + $row['ifOutNUcastPkts']),
        'Errors out' => fn (array $row) => count_of($row['ifOutErrors']),
    ];
}
