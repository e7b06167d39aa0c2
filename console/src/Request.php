<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** What a browser asks for. */
final class Request
{
    /**
     * @param string $path                 as it was sent, percent signs and all
     * @param array<string, string> $query
     * @param array<string, string> $form  what a POST brings
     * @param array<string, string> $cookies
     * @param array<string, mixed> $server what the web server tells
     */
    public function __construct(
        public readonly string $method,
        public readonly string $path,
        public readonly array $query = [],
        public readonly array $form = [],
        public readonly array $cookies = [],
        private readonly array $server = [],
    ) {
    }

    public static function now(): self
    {
        [$path] = explode('?', (string) ($_SERVER['REQUEST_URI'] ?? '/'), 2);
        return new self(
            (string) ($_SERVER['REQUEST_METHOD'] ?? 'GET'),
            $path,
            self::texts($_GET),
            self::texts($_POST),
            self::texts($_COOKIE),
            $_SERVER,
        );
    }

    public function server(string $name): string
    {
        $value = $this->server[$name] ?? '';
        return is_scalar($value) ? (string) $value : '';
    }

    public function isPost(): bool
    {
        return $this->method === 'POST';
    }

    /**
     * Query and form have texts alone here; whoever sends lists gets none of them.
     *
     * @param array<int|string, mixed> $given
     * @return array<string, string>
     */
    private static function texts(array $given): array
    {
        $texts = [];
        foreach ($given as $name => $value) {
            if (is_string($value) && strlen($value) <= 65536) {
                $texts[(string) $name] = $value;
            }
        }
        return $texts;
    }
}
