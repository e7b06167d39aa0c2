<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use BundledAgent;
use RuntimeException;

/** The demo of script/server, for tests of what it shows. */
final class Demo
{
    private const FOLDER = __DIR__ . '/../../script/demo';

    /**
     * Makes the captures "office" and "wan" in a directory, and "known.json" with what the generator knows of them.
     *
     * The generator is PHP alone: under the sanitizers' allocator it takes minutes and shows nothing.
     */
    public static function capture(string $directory): void
    {
        $environment = array_diff_key(getenv(), ['LD_PRELOAD' => '', 'USE_ZEND_ALLOC' => '']);
        self::quietly([PHP_BINARY, '-n', self::FOLDER . '/make_capture.php', $directory], $environment);
    }

    /** Makes the demo's rows on an agent. */
    public static function rows(BundledAgent $agent): void
    {
        self::quietly([...\php_command(), self::FOLDER . '/rows.php', (string) $agent->port], getenv());
    }

    /**
     * @param list<string> $command
     * @param array<string, string> $environment
     */
    private static function quietly(array $command, array $environment): void
    {
        $process = proc_open($command, [['null'], ['pipe', 'w'], ['redirect', 1]], $pipes, null, $environment);
        $said = $process === false ? 'it does not start' : (string) stream_get_contents($pipes[1]);
        if ($process === false || proc_close($process) !== 0 || $said !== '') {
            throw new RuntimeException(implode(' ', $command) . ": $said");
        }
    }
}
