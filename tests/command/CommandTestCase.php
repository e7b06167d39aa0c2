<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use BundledAgent;
use Rmon\Tests\AgentTestCase;
use ScriptedAgent;

/** A test of the command against agents of its own. */
abstract class CommandTestCase extends AgentTestCase
{
    /** Runs the command to its end. */
    protected function rmon(BundledAgent|ScriptedAgent|null $agent, string ...$arguments): Run
    {
        return $this->begin($agent, ...$arguments)->end();
    }

    /** Runs the command to its end, where it must succeed; its results as rows. */
    protected function rowsOf(BundledAgent|ScriptedAgent $agent, string ...$arguments): array
    {
        $run = $this->rmon($agent, ...[...$arguments, '--json']);
        self::assertSame([0, ''], [$run->code(), $run->error], implode(' ', $arguments));
        return $run->rows();
    }

    protected function begin(BundledAgent|ScriptedAgent|null $agent, string ...$arguments): Run
    {
        return new Run(array_values($arguments), self::place($agent));
    }

    protected function onTerminal(BundledAgent|ScriptedAgent|null $agent, array $environment, string ...$arguments): Run
    {
        return new Run(array_values($arguments), $environment + self::place($agent), true);
    }

    /**
     * Frames of three hosts that ask a web server, one of them a name server too.
     *
     * @param int $third octets of the third one's text: with 200, it sends as many as the first one in all
     */
    protected static function frames(int $third = 200): array
    {
        $frames = [];
        foreach ([1 => 100, 2 => 300, 3 => $third] as $host => $size) {
            $segment = \tcp(40000 + $host, 443, 24, str_repeat('x', $size));
            $frames[] = [1.0, \ethernet(\mac(9), \mac($host), 0x0800, \ip4("10.0.0.$host", '10.0.9.9', 6, $segment))];
        }
        $question = \udp(50000, 53, str_repeat('q', 54));
        $frames[] = [1.5, \ethernet(\mac(9), \mac(1), 0x0800, \ip4('10.0.0.1', '10.0.8.8', 17, $question))];
        return $frames;
    }

    /** Waits until the agent has a row of a table that works. */
    protected function awaitRow(BundledAgent $agent, string $table, string $status, int $value = 1): void
    {
        $probe = $this->probe($agent);
        $works = static function () use ($probe, $table, $status, $value): bool {
            foreach ($probe->table($table) as $row) {
                if ($row[$status] === $value) {
                    return true;
                }
            }
            return false;
        };
        self::assertTrue(\wait_until($works, 60), "$table gets no row");
    }

    private static function place(BundledAgent|ScriptedAgent|null $agent): array
    {
        return ['RMON_HOST' => $agent === null ? '127.0.0.1:1' : "127.0.0.1:$agent->port"];
    }
}
