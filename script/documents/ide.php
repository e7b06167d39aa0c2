<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Writes a package for editors and static analysers: the stub as they take it, and what Composer asks for.
 *
 * usage: ide.php FOLDER
 */

$root = dirname(__DIR__, 2);
$folder = $argv[1] ?? exit("usage: ide.php FOLDER\n");
if (!is_dir($folder)) {
    mkdir($folder, 0777, true);
}
$package = json_decode((string) file_get_contents("$root/composer.json"), true, 16, JSON_THROW_ON_ERROR);
$stub = (string) file_get_contents("$root/rmon/rmon.stub.php");
// What the engine's generator reads, and nobody else knows.
$stub = str_replace([" = UNKNOWN", "/** @generate-function-entries */\n\n"], [' = null', ''], $stub);
$stub = preg_replace('/^ \* @prefer-ref .*\n/m', '', $stub);
$settings = [
    'name' => $package['name'] . '-stubs',
    'description' => 'Stubs of the extension rmon for editors and static analysers',
    'type' => 'library',
    'license' => $package['license'] ?? null,
];
file_put_contents("$folder/rmon.php", $stub);
$flags = JSON_PRETTY_PRINT | JSON_UNESCAPED_SLASHES;
$settings = array_filter($settings, fn($value) => $value !== null);
file_put_contents("$folder/composer.json", json_encode($settings, $flags) . "\n");
file_put_contents("$folder/README.md", <<<'END'
    # Stubs of rmon

    `rmon.php` declares the functions and constants of the PHP extension rmon, with the keys of every row as array
    shapes. It is for editors and static analysers, and is never loaded:

    - intelephense: name this folder under `intelephense.environment.includePaths`.
    - PhpStorm: add this folder to the project's include path.
    - PHPStan: name `rmon.php` under `scanFiles`. Psalm: under `<stubs>`.

    END);
echo "$folder\n";
