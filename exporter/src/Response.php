<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** What a scraper gets. */
final class Response
{
    /** @param array<string, string> $headers */
    public function __construct(
        public readonly string $body,
        public readonly int $status = 200,
        public readonly array $headers = ['Content-Type' => 'text/plain; charset=utf-8'],
    ) {
    }

    public function send(bool $body = true): void
    {
        http_response_code($this->status);
        $headers = $this->headers + [
            'Cache-Control' => 'no-store',
            'X-Content-Type-Options' => 'nosniff',
            'Content-Length' => (string) strlen($this->body),
        ];
        foreach ($headers as $name => $value) {
            header("$name: $value");
        }
        if ($body) {
            echo $this->body;
        }
    }
}
