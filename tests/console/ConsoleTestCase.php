<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use BundledAgent;
use Rmon\Tests\AgentTestCase;
use ScriptedAgent;

/** A test of the console against agents of its own. */
abstract class ConsoleTestCase extends AgentTestCase
{
    /** @var list<Served> */
    private array $served = [];

    protected function tearDown(): void
    {
        foreach ($this->served as $served) {
            $served->end();
        }
        $this->served = [];
        parent::tearDown();
    }

    /**
     * A console that knows these probes.
     *
     * @param array<string, BundledAgent|ScriptedAgent|int> $probes by name; a number is a port
     * @param string $more further lines of its configuration
     */
    protected function console(
        array $probes,
        string $more = '',
        string $settings = 'sign_in = off',
        int $workers = 1,
    ): Served {
        $text = "[console]\nstate = STATE\n$settings\n";
        foreach ($probes as $name => $probe) {
            $port = is_int($probe) ? $probe : $probe->port;
            $text .= "[probe $name]\nhost = 127.0.0.1\nport = $port\n";
        }
        return $this->served[] = new Served($text . $more, $workers);
    }
}
