<?php

// SPDX-License-Identifier: MIT

/*
 * Loads the classes of the console, of the library and of Twig, which is Debian's package php-twig or what Composer
 * installed.
 */

declare(strict_types=1);

require_once __DIR__ . '/../library/autoload.php';

spl_autoload_register(static function (string $class): void {
    if (str_starts_with($class, 'Rmon\\Console\\')) {
        $file = __DIR__ . '/src/' . strtr(substr($class, 13), '\\', '/') . '.php';
        if (is_file($file)) {
            require $file;
        }
    }
});

(static function (): void {
    $composer = __DIR__ . '/../vendor/autoload.php';
    if (is_file($composer)) {
        require_once $composer;
        return;
    }
    // A PHP that Debian hasn't built looks for nothing where Debian's packages are.
    foreach (['Twig/autoload.php', '/usr/share/php/Twig/autoload.php'] as $debian) {
        if (stream_resolve_include_path($debian) !== false) {
            require_once $debian;
            return;
        }
    }
})();
