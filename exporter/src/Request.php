<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** What a scraper asks for. */
final class Request
{
    /**
     * @param array<int|string, mixed> $query
     * @param array<string, mixed> $server what the web server tells
     */
    public function __construct(
        public readonly string $method,
        public readonly string $path,
        private readonly array $query = [],
        private readonly array $server = [],
    ) {
    }

    public static function now(): self
    {
        [$path] = explode('?', (string) ($_SERVER['REQUEST_URI'] ?? '/'), 2);
        return new self((string) ($_SERVER['REQUEST_METHOD'] ?? 'GET'), $path, $_GET, $_SERVER);
    }

    /**
     * @return string|null null when it isn't given
     * @throws Refusal when it is no text
     */
    public function parameter(string $name): ?string
    {
        $value = $this->query[$name] ?? null;
        if ($value !== null && (!is_string($value) || strlen($value) > 300)) {
            throw new Refusal(400, "$name is one text.");
        }
        return $value;
    }

    public function server(string $name): string
    {
        $value = $this->server[$name] ?? '';
        return is_scalar($value) ? (string) $value : '';
    }
}
