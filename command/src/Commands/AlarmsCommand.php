<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Generator;
use Rmon\Command\Output\Field;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Format;
use Rmon\Probe;
use Rmon\RowStatus;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon alarms */
final class AlarmsCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('alarms')
            ->setDescription('Alarms, their values and thresholds; or what was logged')
            ->addOption('log', null, InputOption::VALUE_NONE, 'The log instead, the latest entry first');
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $probe = $this->probe($input);
        [$rows, $fields, $none] = $input->getOption('log')
            ? [self::log($probe), self::logFields(), 'The log is empty.']
            : [self::alarms($probe), self::alarmFields(), 'There is no alarm. See: rmon describe alarmTable'];
        if ($options->show($rows, $fields, OutputOptions::plain($fields), $this->screen()) === 0) {
            $this->screen()->remark($none);
        }
        return self::SUCCESS;
    }

    private static function alarms(Probe $probe): Generator
    {
        foreach ($probe->table('alarmTable') as $row) {
            $valid = $row['alarmStatus'] === RowStatus::valid->value;
            yield [
                'alarm' => $row['alarmIndex'],
                'variable' => $row['alarmVariable'],
                'value' => $valid ? $row['alarmValue'] : null,
                'falling' => $row['alarmFallingThreshold'],
                'rising' => $row['alarmRisingThreshold'],
                'interval' => $row['alarmInterval'],
                'state' => match (true) {
                    !$valid => RowStatus::nameOf($row['alarmStatus']),
                    $row['alarmValue'] >= $row['alarmRisingThreshold'] => 'high',
                    $row['alarmValue'] <= $row['alarmFallingThreshold'] => 'low',
                    default => 'between',
                },
                'owner' => $row['alarmOwner'],
            ];
        }
    }

    /** @return list<array<string, mixed>> */
    private static function log(Probe $probe): array
    {
        $now = $probe->uptime();
        $rows = [];
        foreach ($probe->table('logTable') as $row) {
            $rows[] = [
                'ago' => max(0, $now - $row['logTime']),
                'time' => $row['logTime'],
                'event' => $row['logEventIndex'],
                'entry' => $row['logIndex'],
                'description' => $row['logDescription'],
            ];
        }
        usort($rows, static fn(array $one, array $other) => $other['time'] <=> $one['time']);
        return $rows;
    }

    /** @return list<Field> */
    private static function alarmFields(): array
    {
        return [
            Field::number('alarm', heading: 'Alarm'),
            Field::text('variable', 'Variable'),
            Field::number('value', heading: 'Value'),
            Field::text('state', 'State'),
            Field::number('falling', heading: 'Low at'),
            Field::number('rising', heading: 'High at'),
            Field::number('interval', static fn(int|float $value) => Format::whole($value) . ' s', 'Every'),
            Field::text('owner', 'Owner'),
        ];
    }

    /** @return list<Field> */
    private static function logFields(): array
    {
        return [
            Field::number('ago', Format::ticks(...), 'Ago'),
            Field::number('event', heading: 'Event'),
            Field::number('entry', heading: 'Entry'),
            Field::text('description', 'What happened'),
        ];
    }
}
