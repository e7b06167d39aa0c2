<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Runs the programs and commands that pages show, against the agent of the reference's examples, and renews what they
 * print, or looks whether it is what the pages say.
 *
 *   ```php that begins with <?php     a program, whose output is the ```text behind it; without one it prints nothing
 *   ```php of another beginning      a part of a program: it is looked whether it parses
 *   ```console                       commands behind "$ ": those of rmon are run, each with its output below
 *   ```sh                            it is looked whether it parses
 *
 * Of the READMEs, parts of programs are looked at alone; what they show has tests of its own.
 *
 * usage: make_guides.php [--check]
 */

namespace Rmon\Documents;

$root = dirname(__DIR__, 2);
require __DIR__ . '/begin.php';

$check = ($argv[1] ?? '') === '--check';
$world = new World($root);
$guides = new Guides($root, $world);
$files = [
    ...glob("$root/docs/*.md"), ...glob("$root/docs/*/*.md"),
    "$root/README.md", ...glob("$root/{library,console,exporter,agent}/README.md", GLOB_BRACE),
];
foreach ($files as $path) {
    $text = (string) file_get_contents($path);
    $file = substr($path, strlen("$root/"));
    if (str_contains($text, Markdown::MADE)) {
        continue;
    }
    if (!str_starts_with($file, 'docs/')) {
        $guides->parse($file, $text);
        continue;
    }
    $new = $guides->renewed($file, $text);
    if ($new !== $text && $check) {
        file_put_contents("$world->folder/new", $new);
        $guides->faults[] = run('diff', '-u', '--label', $file, '--label', 'now', $path, "$world->folder/new")[1];
    } elseif ($new !== $text) {
        file_put_contents($path, $new);
    }
}
foreach ($guides->faults as $fault) {
    echo "$fault\n";
}
echo "$guides->runs programs and commands were run\n";
exit($guides->faults === [] ? 0 : 1);
