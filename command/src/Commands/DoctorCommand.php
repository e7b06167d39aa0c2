<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Generator;
use Rmon\Command\ExitCode;
use Rmon\Command\Listing;
use Rmon\Command\Live;
use Rmon\Command\Output\Field;
use Rmon\Command\Output\Text;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\ControlRows;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ExtensionMissing;
use Rmon\Exception\RmonException;
use Rmon\Format;
use Rmon\Machine;
use Rmon\Probe;
use Rmon\RowStatus;
use Rmon\Schema\Catalog;
use Rmon\Schema\TableSchema;
use Rmon\VoiceMonitor;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon doctor */
final class DoctorCommand extends ProbeCommand
{
    /** How far the agent's clock may be from this machine's in a second, as a part of it. */
    private const DRIFT = 0.1;

    private bool $failed = false;

    protected function configure(): void
    {
        $this->setName('doctor')
            ->setDescription('What works and what doesn\'t, what isn\'t counted, and why')
            ->addOption('seconds', null, InputOption::VALUE_REQUIRED, 'How long to look for frames', '1');
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $fields = [Field::text('state', ''), Field::text('what', ''), Field::text('finding', '')];
        if ($options->form === 'text') {
            foreach ($this->checks($input) as $check) {
                $this->line($check);
            }
            $this->screen()->flush();
        } else {
            $options->show($this->checks($input), $fields, OutputOptions::plain($fields), $this->screen());
        }
        return $this->failed ? ExitCode::FAILED : ExitCode::DONE;
    }

    /** @param array{state: string, what: string, finding: string} $check */
    private function line(array $check): void
    {
        $screen = $this->screen();
        $state = Text::padRight($check['state'], 5);
        $coloured = match ($check['state']) {
            'ok' => $screen->good($state),
            'fault' => $screen->bad($state),
            default => $screen->doubtful($state),
        };
        $screen->line("$coloured " . Text::padRight($check['what'], 10) . ' ' . Text::visible($check['finding']));
    }

    /** @return Generator<array{state: string, what: string, finding: string}> */
    private function checks(InputInterface $input): Generator
    {
        $php = 'PHP ' . PHP_VERSION;
        if (!Machine::hasModule()) {
            yield $this->fault(
                'module',
                "$php has no module rmon: extension=rmon in php.ini, or script/build release in a source tree",
            );
            return;
        }
        yield self::ok('module', 'rmon ' . Machine::moduleVersion() . " in $php");
        try {
            $begun = hrtime(true);
            $probe = $this->probe($input);
            $system = $probe->system();
            $time = (hrtime(true) - $begun) / 1e6;
        } catch (ConnectionFailed $failure) {
            yield $this->fault(
                'agent',
                "{$failure->getMessage()} Is rmon-agent running there? Another one: -H HOST[:PORT]",
            );
            return;
        } catch (ExtensionMissing | RmonException $failure) {
            yield $this->fault('agent', $failure->getMessage());
            return;
        }
        $link = $probe->link;
        yield self::ok(
            'agent',
            sprintf('%s:%d answered in %.1f ms: %s', $link->host, $link->port, $time, $system['sysDescr']),
        );
        try {
            yield from $this->measured($probe, (float) $input->getOption('seconds'));
            yield from $this->drops($probe);
            yield from $this->notCounted($probe);
        } catch (RmonException $failure) {
            yield $this->fault('agent', $failure->getMessage());
        }
    }

    /** Its clock, and whether it sees frames where the interfaces' own counters grow. */
    private function measured(Probe $probe, float $seconds): Generator
    {
        $findings = Live::run($this->screen(), fn(Live $live) => $probe->withRows(
            'doctor',
            function (ControlRows $rows) use ($probe, $seconds, $live): array {
                $channels = [];
                $refused = [];
                foreach ($probe->table('ifTable') as $row) {
                    if ($row['ifOperStatus'] === 1) {
                        try {
                            $channels[$row['ifIndex']] = $rows->row('channelTable', [
                                'channelIfIndex' => $row['ifIndex'],
                                'channelAcceptType' => 'acceptFailed',
                                'channelDescription' => 'does the agent see frames?',
                            ])->index;
                        } catch (AgentRefused $refusal) {
                            $refused[$row['ifIndex']] = $refusal->getMessage();
                        }
                    }
                }
                [$uptime, $time] = [$probe->uptime(), hrtime(true)];
                $before = $this->packets($probe);
                $live->wait($seconds);
                $after = $this->packets($probe);
                $frames = [];
                foreach ($channels as $interface => $channel) {
                    $frames[$interface] = $probe->table('channelTable')->get(channelIndex: $channel)['channelMatches'];
                }
                $pace = ($probe->uptime() - $uptime) / 100 / ((hrtime(true) - $time) / 1e9);
                return [$uptime, $pace, $before, $after, $frames, $refused];
            },
        ), false, ExitCode::INTERRUPTED);
        [$uptime, $pace, $before, $after, $frames, $refused] = $findings;
        $up = 'up for ' . Format::ticks($uptime);
        yield abs($pace - 1) <= self::DRIFT + 0.02 / $seconds
            ? self::ok('clock', $up)
            : $this->fault('clock', sprintf('%s; a second here is %.2f s there, which rates suffer from', $up, $pace));
        foreach ($refused as $interface => $why) {
            yield $this->fault('capture', "{$probe->interfaces()->name($interface)}: no channel can be made: $why");
        }
        foreach ($frames as $interface => $count) {
            $name = $probe->interfaces()->name($interface);
            $counted = ($after[$interface] ?? 0) - ($before[$interface] ?? 0);
            if ($count > 0) {
                yield self::ok('capture', sprintf('%s: %d frames in %.1f s', $name, $count, $seconds));
            } elseif ($counted > 0) {
                yield $this->fault('capture', "$name: $counted packets by the interface's counters, but the agent saw "
                    . 'no frame: it runs without the right to capture (setcap cap_net_raw+ep), or with --no-capture');
            } else {
                yield self::note('capture', "$name: nothing to see in these " . $seconds . ' s');
            }
        }
    }

    /** @return array<int, int> packets in and out, by ifIndex */
    private function packets(Probe $probe): array
    {
        $packets = [];
        foreach ($probe->table('ifTable') as $row) {
            $packets[$row['ifIndex']] = $row['ifInUcastPkts'] + $row['ifInNUcastPkts']
                + $row['ifOutUcastPkts'] + $row['ifOutNUcastPkts'];
        }
        return $packets;
    }

    /** Frames that tables had no room or time for. */
    private function drops(Probe $probe): Generator
    {
        foreach (Catalog::all() as $schema) {
            foreach (array_keys($schema->columns) as $name) {
                if (preg_match('/(DropEvents|DroppedFrames)$/D', $name) && $schema->writer !== null) {
                    yield from $this->dropsOf($probe, $schema, $name);
                }
            }
        }
    }

    private function dropsOf(Probe $probe, TableSchema $schema, string $column): Generator
    {
        foreach ($probe->table($schema->name) as $row) {
            if (($row[$column] ?? 0) > 0) {
                $key = array_key_first($schema->keys);
                $count = Format::whole($row[$column]);
                yield self::note(
                    'dropped',
                    "$count frames by $schema->name $row[$key] ($column): the agent can't keep up, or a table is full",
                );
            }
        }
    }

    /** Tables that stay empty because nobody asked for them. */
    private function notCounted(Probe $probe): Generator
    {
        $dependent = [];
        foreach (Catalog::all() as $schema) {
            if ($schema->control() !== null) {
                $dependent[$schema->control()][] = preg_replace('/Table$/D', '', $schema->name);
            }
        }
        foreach ($dependent as $control => $tables) {
            $schema = Catalog::find($control);
            if (Listing::interfaceColumn($schema) === null || $schema->status === null) {
                continue;
            }
            $rows = 0;
            $idle = 0;
            foreach ($probe->table($control) as $row) {
                $rows++;
                $idle += $row[$schema->status] === RowStatus::valid->value ? 0 : 1;
            }
            $names = implode(', ', $tables);
            if ($rows === 0) {
                yield self::note('not counted', "$names: $control has no row");
            } elseif ($idle > 0) {
                yield self::note('not counted', "$names: $idle of $rows rows of $control aren't valid");
            }
        }
        if ($probe->table('dsmonAggControlLocked')->get()['dsmonAggControlLocked'] !== 1) {
            yield self::note(
                'not counted',
                'dsmon tables: dsmonAggControlLocked is not set, and counting begins with it',
            );
        }
        foreach (['sccp', 'h323', 'mgcp'] as $monitor) {
            if ((new VoiceMonitor($probe, $monitor))->config()['enable'] === 0) {
                yield self::note('not counted', "calls of $monitor: its monitor is switched off");
            }
        }
    }

    private static function ok(string $what, string $finding): array
    {
        return ['state' => 'ok', 'what' => $what, 'finding' => $finding];
    }

    private static function note(string $what, string $finding): array
    {
        return ['state' => 'note', 'what' => $what, 'finding' => $finding];
    }

    private function fault(string $what, string $finding): array
    {
        $this->failed = true;
        return ['state' => 'fault', 'what' => $what, 'finding' => $finding];
    }
}
