<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use RuntimeException;

/** The command as a process. */
final class Run
{
    /** Seconds that anything is waited for. */
    private const PATIENCE = 60;

    public string $out = '';
    public string $error = '';

    /** @var resource */
    private mixed $process;

    /** @var array<int, resource> */
    private array $pipes = [];

    private ?int $code = null;

    /**
     * @param list<string> $arguments
     * @param array<string, string|null> $environment null takes a variable away
     * @param bool $terminal whether it writes to a terminal, both results and remarks
     * @param bool $module   whether PHP loads the module
     */
    public function __construct(array $arguments, array $environment = [], bool $terminal = false, bool $module = true)
    {
        $program = [
            PHP_BINARY,
            ...($module ? ['-d', 'extension=' . \module_file()] : []),
            \dirname(__DIR__, 2) . '/bin/rmon',
        ];
        $environment += [
            'RMON_STARTED_AGAIN' => '1',
            'NO_COLOR' => null,
            'TERM' => 'xterm',
            'COLUMNS' => '100',
            'LINES' => '30',
        ];
        $environment += getenv();
        $output = $terminal ? ['pty'] : ['pipe', 'w'];
        // A program inherits that a signal is ignored, and a test run in the background ignores this one.
        pcntl_signal(SIGINT, SIG_DFL);
        $this->process = proc_open(
            [...$program, ...$arguments],
            [$terminal ? ['pty'] : ['file', '/dev/null', 'r'], $output, $terminal ? ['redirect', 1] : ['pipe', 'w']],
            $this->pipes,
            \dirname(__DIR__, 2),
            array_filter($environment, is_string(...)),
        );
        foreach ($this->pipes as $pipe) {
            stream_set_blocking($pipe, false);
        }
    }

    /** Closes the end that its results are read from. */
    public function closeOutput(): void
    {
        fclose($this->pipes[1]);
        unset($this->pipes[1]);
    }

    /** What a person types. */
    public function type(string $keys): void
    {
        fwrite($this->pipes[0], $keys);
    }

    public function signal(int $signal): void
    {
        proc_terminate($this->process, $signal);
    }

    public function pid(): int
    {
        return proc_get_status($this->process)['pid'];
    }

    /** Waits until something is true of what it wrote. */
    public function until(callable $true): void
    {
        \wait_until(function () use ($true): bool {
            $this->take();
            return $true($this) || $this->ended();
        }, self::PATIENCE);
        $this->take();
        if (!$true($this)) {
            throw new RuntimeException("waited in vain\n$this->out\n$this->error");
        }
    }

    /** Waits for its end. */
    public function end(): self
    {
        $ended = \wait_until(function (): bool {
            $this->take();
            return $this->ended();
        }, self::PATIENCE);
        if (!$ended) {
            proc_terminate($this->process, 9);
            throw new RuntimeException("it doesn't end\n$this->out\n$this->error");
        }
        $this->take();
        return $this;
    }

    public function code(): int
    {
        $this->end();
        return $this->code;
    }

    /** @return list<array<string, mixed>> its lines of JSON */
    public function rows(): array
    {
        $this->end();
        $lines = array_filter(explode("\n", $this->out), static fn(string $line) => $line !== '');
        return array_values(
            array_map(static fn(string $line) => json_decode($line, true, 64, JSON_THROW_ON_ERROR), $lines),
        );
    }

    private function ended(): bool
    {
        $status = proc_get_status($this->process);
        if ($status['running']) {
            return false;
        }
        $this->code ??= $status['signaled'] ? 128 + $status['termsig'] : $status['exitcode'];
        return true;
    }

    private function take(): void
    {
        foreach ($this->pipes as $number => $pipe) {
            // A terminal whose other side is closed can't be read, which is its end.
            $octets = $number === 0 ? '' : (string) @stream_get_contents($pipe);
            if ($number === 1) {
                $this->out .= $octets;
            } else {
                $this->error .= $octets;
            }
        }
    }
}
