<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

use Rmon\Command\ClosedPipe;
use Symfony\Component\Console\Terminal;

/** Where results and remarks go: standard output in large pieces, and standard error. */
final class Screen
{
    /** How many octets may wait before they are written, and for how long, where no person looks on. */
    private const PIECE = 65536;
    private const PATIENCE = 0.1;

    /** Seconds after which progress is shown, and between two marks of it. */
    private const SLOW = 1.0;
    private const BEAT = 0.1;

    public readonly bool $isTerminal;
    private readonly bool $showsProgress;
    private readonly float $started;

    private string $waiting = '';
    private float $written;
    private float $marked = 0.0;
    private bool $hasMark = false;

    /**
     * @param resource $out
     * @param resource $error
     * @param bool $colours      whether standard output may have colours
     * @param bool $errorColours whether standard error may
     * @param int|null $width    columns of the terminal that what is written gets to in the end
     */
    public function __construct(
        private readonly mixed $out,
        private readonly mixed $error,
        public readonly bool $colours,
        public readonly bool $errorColours,
        private ?int $width = null,
    ) {
        $this->isTerminal = $width !== null || stream_isatty($out);
        $this->showsProgress = stream_isatty($error);
        $this->started = $this->written = hrtime(true) / 1e9;
    }

    /** The width of the terminal in columns. */
    public function width(): int
    {
        return $this->width ??= (new Terminal())->getWidth();
    }

    /** The height of the terminal in lines. */
    public function height(): int
    {
        return (new Terminal())->getHeight();
    }

    /** Bold, where there are colours. */
    public function strong(string $text): string
    {
        return $this->colours ? "\e[1m$text\e[0m" : $text;
    }

    /** Less than the rest, where there are colours. */
    public function faint(string $text): string
    {
        return $this->colours ? "\e[2m$text\e[0m" : $text;
    }

    public function good(string $text): string
    {
        return $this->colours ? "\e[32m$text\e[0m" : $text;
    }

    public function bad(string $text): string
    {
        return $this->colours ? "\e[1;31m$text\e[0m" : $text;
    }

    public function doubtful(string $text): string
    {
        return $this->colours ? "\e[33m$text\e[0m" : $text;
    }

    public function write(string $octets): void
    {
        $this->waiting .= $octets;
        if (
            $this->isTerminal || strlen($this->waiting) >= self::PIECE
            || hrtime(true) / 1e9 - $this->written >= self::PATIENCE
        ) {
            $this->flush();
        }
    }

    public function line(string $text = ''): void
    {
        $this->write("$text\n");
    }

    /** @throws ClosedPipe */
    public function flush(): void
    {
        $this->clearMark();
        while ($this->waiting !== '') {
            // The failed write's notice says nothing that its result doesn't.
            $count = @fwrite($this->out, $this->waiting);
            if ($count === false || $count === 0) {
                $this->waiting = '';
                throw new ClosedPipe();
            }
            $this->waiting = substr($this->waiting, $count);
        }
        $this->written = hrtime(true) / 1e9;
    }

    /** A remark about the results, for people alone: only on a terminal. */
    public function remark(string $text): void
    {
        if ($this->showsProgress) {
            $this->complain($this->errorColours ? "\e[2m$text\e[0m" : $text);
        }
    }

    /** A line on standard error. */
    public function complain(string $text): void
    {
        $this->clearMark();
        @fwrite($this->error, "$text\n");
    }

    /**
     * Says how far a long work has got; it shows after a second, on a terminal.
     *
     * @param callable(): string $text
     */
    public function progress(callable $text): void
    {
        if (!$this->showsProgress) {
            return;
        }
        $now = hrtime(true) / 1e9;
        if ($now - $this->started >= self::SLOW && $now - $this->marked >= self::BEAT) {
            $this->marked = $now;
            $this->hasMark = true;
            @fwrite($this->error, "\r\e[K" . $text());
        }
    }

    private function clearMark(): void
    {
        if ($this->hasMark) {
            $this->hasMark = false;
            @fwrite($this->error, "\r\e[K");
        }
    }
}
