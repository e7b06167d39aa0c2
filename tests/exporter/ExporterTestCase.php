<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use BundledAgent;
use Rmon\Exporter\Configuration;
use Rmon\Exporter\Exporter;
use Rmon\Exporter\Request;
use Rmon\Exporter\Response;
use Rmon\Tests\AgentTestCase;
use ScriptedAgent;

/** A test of the exporter against agents of its own. */
abstract class ExporterTestCase extends AgentTestCase
{
    protected const OPEN = ['HTTP_ACCEPT' => 'application/openmetrics-text; version=1.0.0'];

    /** @var list<string> what was logged */
    protected array $log = [];

    /** @param string|null $configuration the text of a configuration file; null: none */
    protected function exporter(?string $configuration = null): Exporter
    {
        $file = $configuration === null ? null : \file_of($configuration);
        return new Exporter(Configuration::read($file, ports: '1-65535'), function (string $text): void {
            $this->log[] = $text;
        });
    }

    /** @param array<string, string> $server */
    protected function ask(
        Exporter $exporter,
        BundledAgent|ScriptedAgent|string $target,
        string $module = 'default',
        array $server = self::OPEN,
    ): Response {
        $target = is_string($target) ? $target : "127.0.0.1:$target->port";
        return $exporter->answer(new Request('GET', '/metrics', ['target' => $target, 'module' => $module], $server));
    }

    /** What a module says of an agent; it must be well formed. */
    protected function scraped(
        BundledAgent|ScriptedAgent $agent,
        string $module,
        ?string $configuration = null,
    ): OpenText {
        $answer = $this->ask($this->exporter($configuration), $agent, $module);
        self::assertSame(200, $answer->status, $answer->body);
        return new OpenText($answer->body);
    }
}
