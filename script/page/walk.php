<?php

declare(strict_types=1);

/*
 * Prints the interface table of the agent on this machine, one line for each row.
 */

require __DIR__ . '/tables.php';

$link = rmon_connect('127.0.0.1');
if (!$link) {
    exit(1);
}
$columns = interface_columns();
$lines = [array_map('strval', array_keys($columns))];
foreach (interfaces($link) as $row) {
    $lines[] = array_map(fn (callable $cell) => $cell($row), array_values($columns));
}
$widths = array_map(fn (int $column) => max(array_map('strlen', array_column($lines, $column))), array_keys($lines[0]));
foreach ($lines as $line) {
    echo rtrim(implode('  ', array_map('str_pad', $line, $widths))), "\n";
}
exit(count($lines) > 1 ? 0 : 1);
