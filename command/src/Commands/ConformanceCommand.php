<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Generator;
use Rmon\Command\ExitCode;
use Rmon\Command\Options;
use Rmon\Command\Output\Field;
use Rmon\Command\Output\Text;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Conformance\Checks;
use Rmon\Conformance\State;
use Rmon\Probe;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon conformance */
final class ConformanceCommand extends ProbeCommand
{
    /** @var array<string, int> how many findings of each state there were */
    private array $counts = [];

    protected function configure(): void
    {
        $this->setName('conformance')
            ->setDescription('What an agent lacks, and where it doesn\'t keep the protocol')
            ->addArgument('agent', InputArgument::OPTIONAL, 'HOST[:PORT], where -H is not given')
            ->addOption('sets', null, InputOption::VALUE_NONE, 'Make and remove control rows too');
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $this->counts = array_fill_keys(array_column(State::cases(), 'value'), 0);
        $agent = $input->getArgument('agent');
        $probe = $agent === null
            ? $this->probe($input)
            : Probe::connect($agent, timeout: Options::seconds($input, 'timeout') ?? 5.0);
        $findings = $this->findings($probe, $input->getOption('sets'));
        if ($options->form === 'text') {
            $this->tell($findings);
        } else {
            $fields = [Field::text('state', ''), Field::text('what', ''), Field::text('finding', '')];
            $options->show($findings, $fields, OutputOptions::plain($fields), $this->screen());
        }
        return $this->counts[State::Lacking->value] + $this->counts[State::Broken->value] === 0
            ? ExitCode::DONE
            : ExitCode::FAILED;
    }

    /** @param Generator<array{state: string, what: string, finding: string}> $findings */
    private function tell(Generator $findings): void
    {
        $screen = $this->screen();
        foreach ($findings as $finding) {
            $state = Text::padRight($finding['state'], 5);
            $coloured = match ($finding['state']) {
                State::Kept->value => $screen->good($state),
                State::Empty->value => $screen->doubtful($state),
                default => $screen->bad($state),
            };
            $what = Text::padRight(Text::visible($finding['what']), 26);
            $screen->line("$coloured $what " . Text::visible($finding['finding']));
        }
        $total = [];
        foreach ($this->counts as $state => $count) {
            $total[] = "$count $state";
        }
        $screen->line(implode(', ', $total));
        $screen->flush();
    }

    /** @return Generator<array{state: string, what: string, finding: string}> */
    private function findings(Probe $probe, bool $sets): Generator
    {
        foreach ((new Checks($probe))->findings($sets) as $finding) {
            $this->counts[$finding->state->value]++;
            yield ['state' => $finding->state->value, 'what' => $finding->what, 'finding' => $finding->text];
        }
    }
}
