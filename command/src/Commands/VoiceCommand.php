<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Generator;
use Rmon\Command\Output\Field;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Exception\UnknownName;
use Rmon\Format;
use Rmon\Probe;
use Rmon\VoiceMonitor;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon voice */
final class VoiceCommand extends ProbeCommand
{
    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('what')) {
            $suggestions->suggestValues(['calls', 'phones']);
        } elseif ($input->mustSuggestOptionValuesFor('monitor')) {
            $suggestions->suggestValues(VoiceMonitor::ALL);
        }
    }

    protected function configure(): void
    {
        $monitors = implode(', ', VoiceMonitor::ALL);
        $this->setName('voice')
            ->setDescription('Calls and phones of the voice monitors, the worst ones first')
            ->addArgument('what', InputArgument::OPTIONAL, 'calls, phones', 'calls')
            ->addOption('monitor', 'm', InputOption::VALUE_REQUIRED, "Only this one: $monitors");
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $what = $input->getArgument('what');
        $monitor = $input->getOption('monitor');
        $monitors = $monitor === null ? VoiceMonitor::ALL : [$monitor];
        if (array_diff($monitors, VoiceMonitor::ALL) !== []) {
            throw UnknownName::among('voice monitor', $monitor, VoiceMonitor::ALL);
        }
        $probe = $this->probe($input);
        [$rows, $fields] = match ($what) {
            'calls' => [self::calls($probe, $monitors), self::callFields()],
            'phones' => [self::phones($probe, $monitors), self::phoneFields()],
            default => throw UnknownName::among('list', $what, ['calls', 'phones']),
        };
        if ($options->sort === []) {
            $rows = iterator_to_array($rows, false);
            $badness = static fn(array $row) => [$row['lost'], $row['jitter']];
            usort($rows, static fn(array $one, array $other) => $badness($other) <=> $badness($one));
        }
        $count = $options->show($rows, $fields, OutputOptions::plain($fields), $this->screen());
        if ($count === 0) {
            $this->explain($probe, $monitors, $what);
        }
        return self::SUCCESS;
    }

    /** @param list<string> $monitors */
    private static function calls(Probe $probe, array $monitors): Generator
    {
        foreach ($monitors as $monitor) {
            foreach ($probe->voice($monitor)->calls() as $call) {
                yield [
                    'monitor' => $monitor,
                    'call' => $call->index,
                    'from' => $call->caller->number,
                    'fromAddress' => $call->caller->address,
                    'to' => $call->callee->number,
                    'toAddress' => $call->callee->address,
                    'lost' => $call->lost(),
                    'jitter' => $call->jitter(),
                    'latency' => $call->latency(),
                    'start' => $call->start,
                    'duration' => $call->isRunning() ? null : $call->duration($call->end),
                ];
            }
        }
    }

    /** @param list<string> $monitors */
    private static function phones(Probe $probe, array $monitors): Generator
    {
        foreach ($monitors as $monitor) {
            foreach ($probe->voice($monitor)->phones() as $phone) {
                yield [
                    'monitor' => $monitor,
                    'number' => $phone->party->number,
                    'address' => $phone->party->address,
                    'owner' => $phone->party->name,
                    'calls' => $phone->calls,
                    'lost' => $phone->worstLost,
                    'jitter' => $phone->worstJitter,
                ];
            }
        }
    }

    /** @return list<Field> */
    private static function callFields(): array
    {
        $milliseconds = static fn(int|float $value) => Format::whole($value) . ' ms';
        return [
            Field::text('monitor', 'Monitor'),
            Field::number('call', heading: 'Call'),
            Field::text('from', 'From'),
            Field::text('fromAddress', 'Address'),
            Field::text('to', 'To'),
            Field::text('toAddress', 'Address'),
            Field::number('lost', heading: 'Lost'),
            Field::number('jitter', $milliseconds, 'Jitter'),
            Field::number('latency', $milliseconds, 'Latency'),
            Field::number('start', Format::ticks(...), 'Start'),
            Field::number('duration', Format::ticks(...), 'Duration'),
        ];
    }

    /** @return list<Field> */
    private static function phoneFields(): array
    {
        return [
            Field::text('monitor', 'Monitor'),
            Field::text('number', 'Number'),
            Field::text('address', 'Address'),
            Field::text('owner', 'Owner'),
            Field::number('calls', heading: 'Calls'),
            Field::number('lost', heading: 'Most lost'),
            Field::number('jitter', static fn(int|float $value) => Format::whole($value) . ' ms', 'Most jitter'),
        ];
    }

    /** @param list<string> $monitors */
    private function explain(Probe $probe, array $monitors, string $what): void
    {
        foreach ($monitors as $monitor) {
            $on = (new VoiceMonitor($probe, $monitor))->config()['enable'] !== 0;
            $this->screen()->remark(
                "No $what: the $monitor monitor " . ($on ? 'is on and saw none.' : 'is switched off.'),
            );
        }
    }
}
