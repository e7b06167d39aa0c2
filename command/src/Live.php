<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Command\Output\Screen;

/**
 * Work that goes on until somebody ends it: by Ctrl-C or a signal, or on a terminal by the key q. Whoever waits here
 * is ended by Interrupted, and what was made on the agent is removed on the way out.
 */
final class Live
{
    private const SIGNALS = [SIGINT, SIGTERM, SIGHUP];

    private ?string $terminal = null;
    private bool $ended = false;
    private bool $isDrawing = false;

    private function __construct(private readonly Screen $screen, private readonly int $exitCode)
    {
    }

    /**
     * @template T
     * @param callable(self): T $do
     * @param bool $keys    whether the key q is listened for, and pictures are drawn
     * @param int $exitCode what Ctrl-C ends with
     * @return T
     */
    public static function run(Screen $screen, callable $do, bool $keys, int $exitCode = ExitCode::DONE): mixed
    {
        $live = new self($screen, $exitCode);
        $live->begin($keys);
        try {
            return $do($live);
        } finally {
            $live->end();
        }
    }

    /** Waits so many seconds. */
    public function wait(float $seconds): void
    {
        $end = hrtime(true) / 1e9 + $seconds;
        do {
            $this->check();
            $left = max(0.0, $end - hrtime(true) / 1e9);
            $this->rest(min($left, 0.5));
            if (!$this->isDrawing) {
                $this->screen->progress(static fn() => sprintf('measuring, %.0f s left', $left));
            }
        } while ($left > 0);
        $this->check();
    }

    /** @throws Interrupted when somebody wants it to end */
    public function check(): void
    {
        pcntl_signal_dispatch();
        if ($this->ended) {
            // Once: what cleans up may wait too.
            $this->ended = false;
            throw new Interrupted($this->exitCode);
        }
    }

    /** Shows a picture in the place of the one before. */
    public function draw(string $picture): void
    {
        $lines = explode("\n", rtrim($picture, "\n"));
        $height = max(1, $this->screen->height() - 1);
        $this->screen->write("\e[H" . implode("\e[K\n", array_slice($lines, 0, $height)) . "\e[K\n\e[J");
        $this->screen->flush();
    }

    private function begin(bool $keys): void
    {
        foreach (self::SIGNALS as $signal) {
            pcntl_signal($signal, function (): void {
                $this->ended = true;
            });
        }
        if (!$keys) {
            return;
        }
        $this->isDrawing = true;
        $this->screen->write("\e[?1049h\e[?25l\e[H\e[J");
        if (stream_isatty(STDIN)) {
            $this->terminal = self::stty('-g');
            self::stty('-icanon -echo min 1');
        }
    }

    private function end(): void
    {
        if ($this->isDrawing) {
            if ($this->terminal !== null && $this->terminal !== '') {
                self::stty($this->terminal);
            }
            $this->screen->write("\e[?25h\e[?1049l");
            $this->screen->flush();
        }
        foreach (self::SIGNALS as $signal) {
            pcntl_signal($signal, SIG_DFL);
        }
    }

    /** Rests for a while, or until a key is pressed or a signal comes. */
    private function rest(float $seconds): void
    {
        $microseconds = (int) ($seconds * 1e6);
        if ($this->terminal === null) {
            usleep($microseconds);
            return;
        }
        $read = [STDIN];
        $none = null;
        // A signal ends it early, with a warning.
        if (@stream_select($read, $none, $none, 0, $microseconds) === 1) {
            $key = fread(STDIN, 16);
            $this->ended = $this->ended || $key === '' || $key === false || str_contains($key, 'q');
        }
    }

    private static function stty(string $arguments): string
    {
        return trim((string) shell_exec('stty ' . escapeshellcmd($arguments) . ' 2>/dev/null'));
    }
}
