<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/**
 * Files that pages load: the console's own, and Debian's Chart.js from where its package has it. A web server that
 * serves them itself never comes here.
 */
final class Assets
{
    private const TYPES = ['css' => 'text/css', 'js' => 'text/javascript', 'svg' => 'image/svg+xml'];

    private const CHARTS = [
        '/usr/share/javascript/chart.js/chart.umd.js',
        '/usr/share/javascript/chart.js/chart.min.js',
        '/usr/share/javascript/chart.js/chart.js',
        '/usr/share/javascript/chart.js/Chart.min.js',
    ];

    /** The file behind an address; null when it is no asset's. */
    public static function find(string $root, Request $request): ?Response
    {
        if (!preg_match('#^/assets/([a-z][a-z-]*\.(css|js|svg))$#D', $request->path, $parts)) {
            return null;
        }
        $file = $parts[1] === 'chart.js' ? self::charts() : "$root/assets/$parts[1]";
        $text = $file === null ? false : @file_get_contents($file);
        if ($text === false) {
            return Response::text("There is no $parts[1].\n", 404);
        }
        $tag = '"' . hash('xxh64', $text) . '"';
        $headers = [
            'Content-Type' => self::TYPES[$parts[2]] . '; charset=utf-8',
            // An address that names the version stands for this text; one without it has to be asked for.
            'Cache-Control' => $request->query === [] ? 'no-cache' : 'max-age=31536000, immutable',
            'ETag' => $tag,
        ];
        return $request->server('HTTP_IF_NONE_MATCH') === $tag
            ? new Response('', 304, $headers)
            : new Response($text, 200, $headers);
    }

    /** What an address says besides, so that browsers keep a file until it is another one. */
    public static function version(string $name): string
    {
        $file = $name === 'chart.js' ? self::charts() : dirname(__DIR__) . "/assets/$name";
        return $file === null ? '' : dechex((int) @filemtime($file));
    }

    private static function charts(): ?string
    {
        foreach (self::CHARTS as $file) {
            if (is_file($file)) {
                return $file;
            }
        }
        return null;
    }
}
