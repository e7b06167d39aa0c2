<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use BundledAgent;
use PHPUnit\Framework\TestCase;
use Rmon\Probe;
use ScriptedAgent;
use Step;

/** A test with agents of its own. Warnings that leave the library fail it. */
abstract class AgentTestCase extends TestCase
{
    /** @var list<BundledAgent> */
    private array $bundled = [];

    /** @var list<Probe> */
    private array $probes = [];

    protected function tearDown(): void
    {
        foreach ($this->probes as $probe) {
            $probe->close();
        }
        array_map($this->kill(...), $this->bundled);
        $this->bundled = [];
        $this->probes = [];
    }

    protected function bundled(string ...$options): BundledAgent
    {
        return $this->bundled[] = \bundled_agent(...$options);
    }

    /**
     * An agent that will read a capture file, as interface 1, when read() says so.
     *
     * @param list<array{float, string}> $frames
     */
    protected function playing(array $frames, string ...$options): BundledAgent
    {
        return $this->bundled[] = \reading_agent([\capture_file($frames)], ...$options);
    }

    /** Ends an agent at once; its port is free when this returns. */
    protected function kill(BundledAgent $agent): void
    {
        if (is_resource($agent->process)) {
            proc_terminate($agent->process, 9);
            proc_close($agent->process);
        }
    }

    /** Has the capture file read, and returns when all of it is counted. */
    protected function read(BundledAgent $agent): void
    {
        \read_files($agent);
    }

    protected function scripted(Step ...$steps): ScriptedAgent
    {
        return \scripted_agent(...$steps);
    }

    protected function probe(BundledAgent|ScriptedAgent $agent): Probe
    {
        return $this->probes[] = Probe::connect('127.0.0.1', $agent->port);
    }

    /** What a function throws; the test fails when it throws nothing. */
    protected function thrown(callable $function): \Throwable
    {
        try {
            $function();
        } catch (\Throwable $thrown) {
            return $thrown;
        }
        self::fail('Nothing was thrown.');
    }

    /**
     * @param iterable<array<string, mixed>> $rows
     * @return list<array<string, mixed>>
     */
    protected static function listOf(iterable $rows): array
    {
        return is_array($rows) ? $rows : iterator_to_array($rows, false);
    }
}
