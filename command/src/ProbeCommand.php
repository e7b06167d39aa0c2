<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Command\Output\Screen;
use Rmon\Probe;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** What the commands share: the screen, the way to the agent, and completion of names. */
abstract class ProbeCommand extends Command
{
    private Screen $screen;

    final protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $this->screen = $this->getApplication()->screen();
        return $this->perform($input);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('table')) {
            $suggestions->suggestValues(array_keys(Catalog::all()));
        }
    }

    /** @return int an exit code */
    abstract protected function perform(InputInterface $input): int;

    protected function screen(): Screen
    {
        return $this->screen;
    }

    /** The agent that -H names. */
    protected function probe(InputInterface $input): Probe
    {
        $host = $input->getOption('host') ?? (getenv('RMON_HOST') ?: '127.0.0.1');
        return Probe::connect($host, timeout: Options::seconds($input, 'timeout') ?? 5.0);
    }
}
