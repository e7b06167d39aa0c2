<?php

// SPDX-License-Identifier: MIT

/*
 * Loads the classes of the exporter and of the library. Nothing else is needed.
 */

declare(strict_types=1);

require_once __DIR__ . '/../library/autoload.php';

spl_autoload_register(static function (string $class): void {
    if (str_starts_with($class, 'Rmon\\Exporter\\')) {
        $file = __DIR__ . '/src/' . strtr(substr($class, 14), '\\', '/') . '.php';
        if (is_file($file)) {
            require $file;
        }
    }
});
