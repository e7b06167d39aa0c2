<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * What the tests in a browser hold pages against, as JSON: the console's list of pages, and rows as the library reads
 * them.
 *
 * usage: ask.php pages
 *        ask.php tables
 *        ask.php PORT rows TABLE [COLUMN=VALUE ...]     each row's exact values
 *        ask.php PORT create TABLE COLUMN=VALUE ...
 *        ask.php PORT has TABLE                         how many rows, at most 2
 */

use Rmon\Console\Pages;
use Rmon\Probe;
use Rmon\Schema\Catalog;

require __DIR__ . '/../../console/autoload.php';

/** @param list<string> $words */
function pairs(array $words): array
{
    $pairs = [];
    foreach ($words as $word) {
        [$name, $value] = explode('=', $word, 2);
        $pairs[$name] = $value;
    }
    return $pairs;
}

/** @return list<array<string, mixed>> */
function exact_rows(Probe $probe, string $name, array $keys): array
{
    $table = $probe->table($name, ...$keys);
    $rows = [];
    foreach ($table as $row) {
        $exact = [];
        foreach ($table->schema->columns as $column) {
            $exact[$column->name] = $probe->values()->exact($column, $row[$column->name] ?? null);
        }
        $rows[] = $exact;
    }
    return $rows;
}

[, $first, $what, $table] = $argv + [1 => '', '', ''];
$rest = pairs(array_slice($argv, 4));
$answer = match ($first) {
    'pages' => array_map(static fn(string $page) => [
        'name' => substr(strrchr($page, '\\'), 1, -4),
        'path' => $page::PATH,
        'everybody' => $page::FOR_EVERYBODY,
    ], Pages::ALL),
    'tables' => array_keys(array_filter(
        array_column(Catalog::all(), null, 'name'),
        static fn($schema) => $schema->hasRows(),
    )),
    default => null,
};
if ($answer === null) {
    $probe = Probe::connect('127.0.0.1', (int) $first);
    $answer = match ($what) {
        'rows' => exact_rows($probe, $table, $rest),
        'create' => $probe->table($table)->create(...$rest),
    };
}
echo json_encode($answer, JSON_THROW_ON_ERROR | JSON_PARTIAL_OUTPUT_ON_ERROR | JSON_INVALID_UTF8_SUBSTITUTE), "\n";
