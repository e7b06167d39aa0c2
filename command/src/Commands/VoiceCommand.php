<?php

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
    private const MONITORS = ['sccp', 'h323', 'mgcp'];

    /** Where each monitor's rows have what is shown of a call; of both directions, the worse one counts. */
    private const CALLS = [
        'sccp' => [
            'from' => 'phone_num', 'fromAddress' => 'phone_ipAddr',
            'to' => 'callee_phone_num', 'toAddress' => 'callee_phone_ipAddr',
            'jitter' => ['jitter', 'callee_jitter'],
            'lost' => ['pkt_lost', 'callee_pkt_lost'],
            'latency' => ['latency', 'callee_latency'],
        ],
        'h323' => [
            'from' => 'forward_num', 'fromAddress' => 'forward_q931_ipAddr',
            'to' => 'reverse_num', 'toAddress' => 'reverse_q931_ipAddr',
            'jitter' => ['forward_sr_jitter', 'reverse_sr_jitter'],
            'lost' => ['forward_sr_pkt_lost', 'reverse_sr_pkt_lost'],
            'latency' => [],
        ],
        'mgcp' => [
            'from' => 'caller_phone_num', 'fromAddress' => 'caller_ip_addr',
            'to' => 'callee_phone_num', 'toAddress' => 'callee_ip_addr',
            'jitter' => ['jitter'],
            'lost' => ['pkt_loss'],
            'latency' => [],
        ],
    ];

    /** The same of a phone. */
    private const PHONES = [
        'sccp' => ['number' => 'phone_num', 'address' => 'phone_ipAddr', 'owner' => 'phone_owner'],
        'h323' => ['number' => 'forward_num', 'address' => 'forward_q931_ipAddr', 'owner' => 'forward_alias'],
        'mgcp' => ['number' => 'phone_num', 'address' => 'phone_ipAddr', 'owner' => 'phone_owner'],
    ];

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('what')) {
            $suggestions->suggestValues(['calls', 'phones']);
        } elseif ($input->mustSuggestOptionValuesFor('monitor')) {
            $suggestions->suggestValues(self::MONITORS);
        }
    }

    protected function configure(): void
    {
        $this->setName('voice')
            ->setDescription('Calls and phones of the voice monitors, the worst ones first')
            ->addArgument('what', InputArgument::OPTIONAL, 'calls, phones', 'calls')
            ->addOption('monitor', 'm', InputOption::VALUE_REQUIRED, 'Only this one: ' . implode(', ', self::MONITORS));
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $what = $input->getArgument('what');
        $monitor = $input->getOption('monitor');
        $monitors = $monitor === null ? self::MONITORS : [$monitor];
        if (array_diff($monitors, self::MONITORS) !== []) {
            throw UnknownName::among('voice monitor', $monitor, self::MONITORS);
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
            $names = self::CALLS[$monitor];
            foreach ($probe->table("{$monitor}CallTable") as $row) {
                yield [
                    'monitor' => $monitor,
                    'call' => $row['index'],
                    'from' => $row[$names['from']],
                    'fromAddress' => $row[$names['fromAddress']],
                    'to' => $row[$names['to']],
                    'toAddress' => $row[$names['toAddress']],
                    'lost' => self::worse($row, $names['lost']),
                    'jitter' => self::worse($row, $names['jitter']),
                    'latency' => self::worse($row, $names['latency']),
                    'start' => $row['start_time'],
                    'duration' => $row['end_time'] > $row['start_time'] ? $row['end_time'] - $row['start_time'] : null,
                ];
            }
        }
    }

    /** @param list<string> $monitors */
    private static function phones(Probe $probe, array $monitors): Generator
    {
        foreach ($monitors as $monitor) {
            $names = self::PHONES[$monitor];
            foreach ($probe->table("{$monitor}PhoneTable") as $row) {
                yield [
                    'monitor' => $monitor,
                    'number' => $row[$names['number']],
                    'address' => $row[$names['address']],
                    'owner' => $row[$names['owner']],
                    'calls' => $row['num_call_mon'],
                    'lost' => $row['worst_pkt_lost'],
                    'jitter' => $row['worst_jitter'],
                ];
            }
        }
    }

    /** @param list<string> $names */
    private static function worse(array $row, array $names): ?int
    {
        return $names === [] ? null : max(array_map(static fn(string $name) => (int) $row[$name], $names));
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
