<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * The library without Composer: classes of the namespace Rmon are the files under src/.
 */

spl_autoload_register(static function (string $class): void {
    if (!str_starts_with($class, 'Rmon\\')) {
        return;
    }
    $file = __DIR__ . '/src/' . strtr(substr($class, 5), '\\', '/') . '.php';
    if (is_file($file)) {
        require $file;
    }
});
