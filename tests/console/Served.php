<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use Rmon\Console\State;

/** The console as PHP's own server serves it, and one browser without script. */
final class Served
{
    public readonly int $port;

    /** @var array<string, string> */
    public array $cookies = [];

    /** @var resource */
    private mixed $process;

    private readonly string $log;

    private readonly string $directory;

    /** @param string $configuration the text of its configuration file; STATE stands for a directory of its own */
    public function __construct(string $configuration, int $workers = 1)
    {
        $directory = sys_get_temp_dir() . '/rmon-console-' . bin2hex(random_bytes(6));
        $this->directory = $directory;
        mkdir($directory, 0700);
        $this->log = "$directory/log";
        file_put_contents("$directory/console.ini", str_replace('STATE', "$directory/state", $configuration));
        $probe = stream_socket_server('tcp://127.0.0.1:0');
        $this->port = (int) substr(strrchr(stream_socket_get_name($probe, false), ':'), 1);
        fclose($probe);
        $command = [
            PHP_BINARY, '-d', 'extension=' . \module_file(), '-d', 'log_errors=1', '-S', "127.0.0.1:$this->port",
            dirname(__DIR__, 2) . '/console/public/index.php',
        ];
        $environment = ['RMON_CONSOLE' => "$directory/console.ini"] + getenv();
        if ($workers > 1) {
            $environment['PHP_CLI_SERVER_WORKERS'] = (string) $workers;
        }
        $files = [['file', '/dev/null', 'r'], ['file', $this->log, 'w'], ['file', $this->log, 'a']];
        $this->process = proc_open($command, $files, $pipes, null, $environment);
        \expect_soon(true, fn() => @fsockopen('127.0.0.1', $this->port) !== false, 'the console listens');
    }

    /** What it has logged besides requests. */
    public function log(): string
    {
        $usual = '/(Accepted|Closing|Closed without|Development Server|\]: [A-Z]+ )/';
        return implode('', preg_grep($usual, file($this->log), PREG_GREP_INVERT));
    }

    /** @param array<string, string> $headers */
    public function get(string $path, array $headers = []): Answer
    {
        return $this->ask('GET', $path, '', $headers);
    }

    /**
     * @param array<string, string> $form
     * @param array<string, string> $headers
     */
    public function post(string $path, array $form, array $headers = []): Answer
    {
        return $this->ask(
            'POST',
            $path,
            http_build_query($form),
            $headers + ['Content-Type' => 'application/x-www-form-urlencoded'],
        );
    }

    /**
     * Changes what the console keeps, as time would.
     *
     * @param callable(array<int|string, mixed>): array<int|string, mixed> $change
     */
    public function change(string $name, callable $change): void
    {
        (new State("$this->directory/state"))->change($name, static fn(array $value): array => [$change($value), null]);
    }

    public function end(): void
    {
        \end_server($this->process);
        exec('rm -rf ' . escapeshellarg($this->directory));
    }

    /**
     * Asks for a page and doesn't wait for it.
     *
     * @return resource the connection, on which the answer will come
     */
    public function begin(string $path): mixed
    {
        $socket = stream_socket_client("tcp://127.0.0.1:$this->port");
        $cookies = http_build_query($this->cookies, '', '; ');
        fwrite($socket, "GET $path HTTP/1.0\r\nHost: 127.0.0.1:$this->port\r\nCookie: $cookies\r\n\r\n");
        return $socket;
    }

    /** @param array<string, string> $headers */
    private function ask(string $method, string $path, string $body, array $headers): Answer
    {
        $headers += ['Host' => "127.0.0.1:$this->port", 'Connection' => 'close'];
        if ($this->cookies !== []) {
            $headers['Cookie'] = implode('; ', array_map(
                static fn(string $name, string $value) => "$name=$value",
                array_keys($this->cookies),
                $this->cookies,
            ));
        }
        $lines = array_map(static fn(string $name, string $text) => "$name: $text", array_keys($headers), $headers);
        $context = stream_context_create(['http' => [
            'method' => $method,
            'header' => $lines,
            'content' => $body,
            'ignore_errors' => true,
            'follow_location' => 0,
            'timeout' => 30,
        ]]);
        $text = file_get_contents("http://127.0.0.1:$this->port$path", false, $context);
        $found = [];
        foreach (array_slice($http_response_header, 1) as $line) {
            [$name, $value] = explode(':', $line, 2);
            $found[strtolower($name)] = trim($value);
            if (strcasecmp($name, 'Set-Cookie') === 0 && preg_match('/^([^=]+)=([^;]*)/', trim($value), $cookie)) {
                $this->cookies[$cookie[1]] = $cookie[2];
            }
        }
        preg_match('/ (\d{3})/', $http_response_header[0], $status);
        return new Answer((int) $status[1], $found, (string) $text);
    }
}
