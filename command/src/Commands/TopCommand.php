<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Listing;
use Rmon\Command\Live;
use Rmon\Command\Options;
use Rmon\Command\Output\Field;
use Rmon\Command\Output\Screen;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Command\Refreshing;
use Rmon\Command\UsageError;
use Rmon\Exception\UnknownName;
use Rmon\Format;
use Rmon\NetInterface;
use Rmon\Probe;
use Rmon\Talker;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon top */
final class TopCommand extends ProbeCommand
{
    /** What each list can be sorted by, and the counter that tells it; the first one when nothing is said. */
    private const LISTS = [
        'hosts' => [
            'octets' => 'nlHostOutOctets', 'packets' => 'nlHostOutPkts',
            'received-octets' => 'nlHostInOctets', 'received-packets' => 'nlHostInPkts',
        ],
        'talkers' => ['octets' => 'alMatrixSDOctets', 'packets' => 'alMatrixSDPkts'],
        'protocols' => ['octets' => '', 'packets' => ''],
        'conversations' => ['octets' => 'nlMatrixSDOctets', 'packets' => 'nlMatrixSDPkts'],
    ];

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('what')) {
            $suggestions->suggestValues(array_keys(self::LISTS));
        } elseif ($input->mustSuggestOptionValuesFor('by')) {
            $suggestions->suggestValues(array_keys(self::LISTS['hosts']));
        }
    }

    protected function configure(): void
    {
        $this->setName('top')
            ->setDescription('Who has most of the traffic, measured now')
            ->setHelp(
                "<info>hosts</info> who sends; <info>talkers</info> who sends to whom, by protocol; "
                . "<info>conversations</info> who sends to whom; <info>protocols</info> what the traffic is.\n"
                . 'On a terminal it goes on until q is pressed; elsewhere it measures once. What it needs on the agent '
                . 'is made for as long, and removed.',
            )
            ->addArgument('what', InputArgument::OPTIONAL, implode(', ', array_keys(self::LISTS)), 'talkers')
            ->addOption(
                'by',
                'b',
                InputOption::VALUE_REQUIRED,
                'octets or packets; of hosts received-octets, received-packets too',
            )
            ->addOption('on', 'i', InputOption::VALUE_REQUIRED, 'The interface; else the one that carried most');
        Refreshing::define($this);
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $what = $input->getArgument('what');
        $ways = self::LISTS[$what] ?? throw UnknownName::among('list', $what, array_keys(self::LISTS));
        $by = $input->getOption('by') ?? array_key_first($ways);
        if (!isset($ways[$by])) {
            throw new UsageError("$what can't be sorted by \"$by\": " . implode(', ', array_keys($ways)) . '.');
        }
        $refreshing = Refreshing::from($input, $options, $this->screen());
        $limit = $options->limit ?? 10;
        $probe = $this->probe($input);
        $on = $this->interface($probe, $input->getOption('on'));
        $fields = self::fields($what, str_ends_with($by, 'octets'), $options->exact);
        $title = "$what by $by on $on->name of {$probe->link->host}:{$probe->link->port}";
        $measure = static function (NetInterface $of) use ($what, $ways, $by, $refreshing, $limit): array {
            return $what === 'protocols'
                ? self::shares($of, $refreshing->interval, $limit, $by)
                : array_map(self::row(...), $of->top($ways[$by], $refreshing->interval, $limit));
        };
        return $refreshing->run(
            $title,
            static fn(Live $live) => $measure($probe->interface($on->index, $live->wait(...))),
            $fields,
            OutputOptions::plain($fields),
        );
    }

    private function interface(Probe $probe, ?string $name): NetInterface
    {
        if ($name !== null) {
            return $probe->interface(Listing::interfaceIndex($probe, $name));
        }
        $most = -1;
        $index = null;
        foreach ($probe->table('ifTable') as $row) {
            $octets = $row['ifInOctets'] + $row['ifOutOctets'];
            if ($octets > $most) {
                $most = $octets;
                $index = $row['ifIndex'];
            }
        }
        return $probe->interface($index ?? throw new UsageError('The agent has no interface.'));
    }

    /** @return list<Field> */
    private static function fields(string $what, bool $octets, bool $exact): array
    {
        $rate = match (true) {
            $exact => Format::whole(...),
            $octets => Format::bitsPerSecond(...),
            default => static fn(float $rate) => Format::scaled($rate, '/s'),
        };
        $names = match ($what) {
            'hosts' => [Field::text('address', 'Host')],
            'protocols' => [Field::text('protocol', 'Protocol')],
            'conversations' => [Field::text('address', 'From'), Field::text('peer', 'To')],
            'talkers' => [
                Field::text('address', 'From'),
                Field::text('peer', 'To'),
                Field::text('protocol', 'Protocol'),
            ],
        };
        return [
            ...$names,
            Field::number('rate', $rate, $octets ? 'Rate' : 'Packets'),
            Field::number('part', Format::part(...), 'Share'),
        ];
    }

    /** @return array<string, mixed> */
    private static function row(Talker $talker): array
    {
        return [
            'address' => $talker->address,
            'peer' => $talker->peer,
            'protocol' => $talker->protocol,
            'rate' => round($talker->rate, 1),
            'part' => round($talker->part, 4),
        ];
    }

    /** @return list<array<string, mixed>> */
    private static function shares(NetInterface $interface, float $seconds, int $limit, string $by): array
    {
        $shares = $interface->protocols($seconds);
        $rows = [];
        foreach ($shares as $share) {
            $rows[] = $by === 'octets'
                ? ['protocol' => $share->path, 'rate' => round($share->rate, 1), 'part' => round($share->part, 4)]
                : ['protocol' => $share->path, 'rate' => round($share->packets, 1), 'part' => null];
        }
        return array_slice($rows, 0, $limit);
    }
}
