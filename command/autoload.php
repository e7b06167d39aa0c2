<?php

// SPDX-License-Identifier: MIT

/*
 * Loads the classes of the command, of the library and of Symfony's console, which is Debian's package
 * php-symfony-console or what Composer installed.
 */

declare(strict_types=1);

require_once __DIR__ . '/../library/autoload.php';

spl_autoload_register(static function (string $class): void {
    if (str_starts_with($class, 'Rmon\\Command\\')) {
        $file = __DIR__ . '/src/' . strtr(substr($class, 13), '\\', '/') . '.php';
        if (is_file($file)) {
            require $file;
        }
    }
});

(static function (): void {
    $composer = __DIR__ . '/../vendor/autoload.php';
    $debian = 'Symfony/Component/Console/autoload.php';
    if (is_file($composer)) {
        require_once $composer;
    } elseif (stream_resolve_include_path($debian) !== false) {
        require_once $debian;
    }
})();
