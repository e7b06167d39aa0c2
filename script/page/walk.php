<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Prints the interface table of the agent on this machine, one line for each row.
 */

require __DIR__ . '/tables.php';

$link = rmon_connect('127.0.0.1');
if (!$link) {
    exit(1);
}
$rows = interfaces($link);
$columns = interface_columns();
$lines = [array_keys($columns), ...cells($rows, $columns)];
$widths = array_map(
    fn (int $column) => max(array_map(strlen(...), array_column($lines, $column))),
    array_keys($lines[0]),
);
$sides = array_map(fn (string $text) => is_count($text) ? STR_PAD_LEFT : STR_PAD_RIGHT, end($lines));
foreach ($lines as $line) {
    echo rtrim(implode('  ', array_map(str_pad(...), $line, $widths, array_fill(0, count($line), ' '), $sides))), "\n";
}
exit($rows === [] ? 1 : 0);
