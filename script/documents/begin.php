<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * For the programs of this folder: its classes, the library, and the agents of the tests.
 */

spl_autoload_register(static function (string $class): void {
    $file = __DIR__ . '/' . substr((string) strrchr("\\$class", '\\'), 1) . '.php';
    if (str_starts_with($class, 'Rmon\\Documents\\') && is_file($file)) {
        require $file;
    }
});

require_once __DIR__ . '/../../library/autoload.php';
foreach (['agent.inc', 'agent/client.inc', 'agent/captures.inc', 'process.inc'] as $file) {
    require_once __DIR__ . "/../../tests/$file";
}
require_once __DIR__ . '/show.php';
error_reporting(E_ALL);
