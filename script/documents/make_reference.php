<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Writes the pages about functions, or looks whether they are what would be written.
 *
 * usage: make_reference.php [--check]
 */

namespace Rmon\Documents;

use Rmon\Schema\Catalog;
use Rmon\Schema\Type;

$root = dirname(__DIR__, 2);
require __DIR__ . '/begin.php';

$stub = new Stub("$root/rmon/rmon.stub.php");
$world = new World($root);
$examples = new Examples($world->probe);
$outcomes = (new Calls($world, $examples))->outcomes($stub);
$records = new Records("$root/rmon/rpc");
$pages = [];
foreach ((new Reference($stub, $records, $examples, $outcomes))->pages() as $file => $text) {
    $pages["reference/$file"] = $text;
}
foreach ((new Wire($records))->pages() as $file => $text) {
    $pages["protocol/$file"] = $text;
}

/** A page without what is other at each run: times, a history's samples, what was counted in a report's interval. */
function lasting(string $text): string
{
    $times = ['sysDescr', 'hostTopNDuration', 'artControlDuration', 'artControlTimeRemaining'];
    foreach (Catalog::all() as $schema) {
        foreach ($schema->columns as $column) {
            if ($column->type === Type::Ticks) {
                $times[] = $column->name;
            }
        }
    }
    $text = preg_replace("/'(" . implode('|', $times) . ")' => .*/", "'$1' => ...", $text);
    return preg_replace_callback(
        '/^show\(rmon_(?:etherhistory|hosttopn)_get.*?^```\n\n```text\n(.*?)^```/ms',
        static fn(array $found) => preg_replace('/=> [\d.]+$|=> \[.*\]$/m', '=> ...', $found[0]),
        $text,
    );
}

$folder = "$root/docs";
// What is written by hand has no such head.
$there = [];
foreach ([...glob("$folder/reference/*.md"), ...glob("$folder/protocol/*.md")] as $path) {
    if (str_contains((string) file_get_contents($path), Markdown::MADE)) {
        $there[] = substr($path, strlen("$folder/"));
    }
}
$differences = array_diff($there, array_keys($pages));
foreach (($argv[1] ?? '') === '--check' ? [] : $differences as $file) {
    unlink("$folder/$file");
}
foreach ($pages as $file => $text) {
    $known = (string) @file_get_contents("$folder/$file");
    if (lasting($known) === lasting($text)) {
        continue; // other times are no news
    }
    $differences[] = $file;
    if (($argv[1] ?? '') === '--check') {
        file_put_contents("$world->folder/new", lasting($text));
        file_put_contents("$world->folder/known", lasting($known));
        [$known, $new] = ["$world->folder/known", "$world->folder/new"];
        echo run('diff', '-u', '--label', "docs/$file", '--label', 'now', $known, $new)[1];
    } else {
        file_put_contents("$folder/$file", $text);
    }
}
if (($argv[1] ?? '') === '--check' && $differences !== []) {
    echo 'docs is not what the sources yield (', implode(', ', $differences), "): run script/docs reference\n";
    exit(1);
}
echo count($stub->pages), ' functions on ', count($pages), " pages\n";
