<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Closure;

/** What a browser gets. */
final class Response
{
    /** No script, style, frame or connection but the console's own, and none that stands in a page. */
    private const POLICY = "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
        . "connect-src 'self'; form-action 'self'; base-uri 'none'; frame-ancestors 'none'";

    /**
     * @param string|Closure(): void $body          a function prints it
     * @param array<string, string> $headers
     */
    public function __construct(
        public readonly string|Closure $body,
        public readonly int $status = 200,
        public readonly array $headers = ['Content-Type' => 'text/html; charset=utf-8'],
    ) {
    }

    /** After a change: the browser goes on to another page of the console by GET. */
    public static function seeOther(string $path): self
    {
        return new self('', 303, ['Location' => $path]);
    }

    public static function text(string $text, int $status = 200): self
    {
        return new self($text, $status, ['Content-Type' => 'text/plain; charset=utf-8']);
    }

    /** Something for a program or a disk. */
    public static function download(string|Closure $body, string $type, string $file): self
    {
        $name = preg_replace('/[^\w.-]+/', '-', $file);
        return new self($body, 200, [
            'Content-Type' => $type,
            'Content-Disposition' => "attachment; filename=\"$name\"",
        ]);
    }

    public function send(): void
    {
        http_response_code($this->status);
        $headers = $this->headers + [
            'Cache-Control' => 'no-store',
            'Content-Security-Policy' => self::POLICY,
            'X-Content-Type-Options' => 'nosniff',
            'Referrer-Policy' => 'same-origin',
            'Cross-Origin-Opener-Policy' => 'same-origin',
            'Cross-Origin-Resource-Policy' => 'same-origin',
        ];
        foreach ($headers as $name => $value) {
            header("$name: $value");
        }
        header_remove('X-Powered-By');
        if ($this->body instanceof Closure) {
            ($this->body)();
        } else {
            echo $this->body;
        }
    }
}
