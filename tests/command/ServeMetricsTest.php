<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

/** rmon serve-metrics, from its first line to its end. */
final class ServeMetricsTest extends CommandTestCase
{
    /** A port that was free a moment ago. */
    private static function port(): int
    {
        $server = stream_socket_server('tcp://127.0.0.1:0');
        $port = (int) substr(strrchr(stream_socket_get_name($server, false), ':'), 1);
        fclose($server);
        return $port;
    }

    public function testMetricsAreServed(): void
    {
        $agent = $this->bundled();
        $port = self::port();
        $options = ['--listen', "127.0.0.1:$port", '--workers', '2', '--ports', (string) $agent->port];
        $run = $this->begin(null, 'serve-metrics', ...$options);
        $run->until(static fn(Run $run) => str_contains($run->out, 'Ctrl-C'));
        self::assertStringStartsWith("http://127.0.0.1:$port/metrics?target=", $run->out, $run->error);
        $ask = "http://127.0.0.1:$port/metrics?module=system&target=127.0.0.1:$agent->port";
        $text = (string) file_get_contents($ask);
        self::assertStringContainsString("\nrmon_scrape_success 1\n", $text);
        self::assertSame(1, preg_match('/^rmon_sys_up_time_seconds [0-9.]+$/m', $text));
        // No door but the agents' own is knocked at.
        $refused = stream_context_create(['http' => ['ignore_errors' => true]]);
        file_get_contents("http://127.0.0.1:$port/metrics?target=127.0.0.1:$port", false, $refused);
        self::assertStringContainsString(' 403 ', $http_response_header[0]);
        $run->signal(SIGTERM);
        self::assertSame(0, $run->code());
        // Its workers are gone as well.
        self::assertTrue(\wait_until(static fn() => @fsockopen('127.0.0.1', $port) === false));
    }

    public function testWrongUsage(): void
    {
        $wrong = [
            'an address and a port' => ['--listen', 'localhost'],
            'whole number' => ['--workers', '0'],
            'no IPv4 network' => ['--networks', 'here'],
            'no TCP port' => ['--ports', '70000'],
            "can't be read" => ['--config', '/no/such/file.ini'],
            'says which networks' => ['--config', '/no/such/file.ini', '--networks', '10.0.0.0/8'],
            'and ports' => ['--config', '/no/such/file.ini', '--ports', '1-9'],
        ];
        foreach ($wrong as $expected => $options) {
            $run = $this->rmon(null, 'serve-metrics', ...$options);
            self::assertSame(2, $run->code());
            self::assertStringContainsString($expected, $run->error);
        }
        $taken = stream_socket_server('tcp://127.0.0.1:0');
        $run = $this->rmon(null, 'serve-metrics', '--listen', (string) stream_socket_get_name($taken, false));
        self::assertSame([1, ''], [$run->code(), $run->out]);
        self::assertStringContainsString('Nothing can listen on', $run->error);
    }
}
