<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Alarm\Alarm;
use Rmon\Alarm\Alarms;
use Rmon\Alarm\LogEntry;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Form;
use Rmon\Console\Block\Words;
use Rmon\Console\Form\Changes;
use Rmon\Console\Form\Input;
use Rmon\Console\Form\Plan;
use Rmon\Console\Glance;
use Rmon\Console\Page;
use Rmon\Console\Response;
use Rmon\Console\Table\Field;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\Schema\Catalog;

/** Alarms with their thresholds, events, and what was logged. "alarm=7" in the address is the one to change. */
final class AlarmsPage extends Page
{
    public const PATH = '/probe/{probe}/alarms';
    public const TITLE = 'Alarms, events, log';
    public const GROUP = 'Probe';

    /** Entries of each event's log that are shown; each is a call to the agent. */
    private const ENTRIES = 50;

    private const STATES = ['high' => "\u{25b2} high", 'low' => "\u{25bc} low", 'between' => 'between'];

    /** What alarms are usually set on, of each interface. */
    private const USUAL = [
        'etherStatsOctets', 'etherStatsPkts', 'etherStatsBroadcastPkts', 'etherStatsCRCAlignErrors',
        'etherStatsDropEvents',
    ];

    private const SAMPLES = [1 => 'the value itself', 2 => 'by how much it grew'];

    private const EVENTS = [1 => 'nothing', 2 => 'log', 3 => 'SNMP trap', 4 => 'log and SNMP trap'];

    /** What the agent's fields are called here. */
    private const LABELS = [
        'alarmVariable' => 'Variable',
        'alarmSampleType' => 'What counts',
        'alarmInterval' => 'Every, in seconds',
        'alarmRisingThreshold' => 'High from',
        'alarmFallingThreshold' => 'Low to',
        'alarmRisingEventIndex' => 'Event when it rises',
        'alarmFallingEventIndex' => 'Event when it falls',
        'eventDescription' => 'Description',
        'eventType' => 'What it does',
        'eventCommunity' => 'Community of traps',
    ];

    /** Whose rows are that people set here: they stay, also when nobody looks. */
    private const OWNER = 'console';

    private ?Alarms $alarms = null;

    public function blocks(): iterable
    {
        yield 'answer' => new Words(fn(): array => $this->answer());
        yield 'alarms' => $this->alarmTable();
        yield 'set-alarm' => (new Form(
            $this->chosen() === null ? 'Set an alarm' : "Change alarm {$this->chosen()}",
            'alarm',
            $this->chosen() === null ? 'Set it' : 'Change it',
            fn(): array => $this->alarmInputs(),
            'What will change is shown before it does.',
        ))->open($this->chosen() !== null);
        if ($this->chosen() !== null) {
            yield 'remove-alarm' => new Form("Remove alarm {$this->chosen()}", 'remove', 'Remove it', fn(): array => [
                Input::hidden('alarm', (int) $this->chosen()),
            ]);
        }
        yield 'log' => $this->logTable();
        yield 'events' => $this->eventTable();
        yield 'set-event' => new Form('Add an event', 'event', 'Add it', static fn(): array => [
            Input::text('eventDescription', self::LABELS['eventDescription'], '', 'stands before each entry of the log')
                ->required(),
            Input::choice('eventType', self::LABELS['eventType'], self::EVENTS, 2),
            Input::text('eventCommunity', self::LABELS['eventCommunity']),
        ]);
    }

    public function post(): Response
    {
        return Changes::answer($this->visit, [
            'alarm' => $this->planAlarm(...),
            'event' => $this->planEvent(...),
            'remove' => $this->planRemoval(...),
        ]);
    }

    /** @return list<array{string, string}> sentences and their kinds */
    private function answer(): array
    {
        $alarms = $this->alarms()->alarms;
        if ($alarms === []) {
            return [['No alarm is set on this probe.', 'answer']];
        }
        $high = Glance::high($alarms);
        if ($high === []) {
            $all = count($alarms) === 1 ? 'The only alarm is' : 'All ' . count($alarms) . ' alarms are';
            return [["$all below the upper threshold.", 'answer']];
        }
        return $high;
    }

    private function alarmTable(): DataTable
    {
        $amount = static fn(string $name, string $heading, Closure $value) => Field::number(
            $name,
            $heading,
            static fn(array $row) => $value($row['alarm']),
            static fn(int|float $value) => number_format($value),
        );
        return DataTable::ofRows([
            Field::number('index', 'Alarm', static fn(array $row) => $row['alarm']->index, Format::whole(...))
                ->linked(fn(array $row) => $this->visit->address(['alarm' => $row['alarm']->index]) . '#set-alarm'),
            Field::text('variable', 'Variable', static fn(array $row) => $row['alarm']->variable->name()),
            Field::text('state', 'State', static fn(array $row) =>
                self::STATES[$row['alarm']->state()] ?? $row['alarm']->state()),
            $amount('value', 'Value', static fn(Alarm $alarm) => $alarm->value),
            $amount('low', 'Low to', static fn(Alarm $alarm) => $alarm->falling),
            $amount('high', 'High from', static fn(Alarm $alarm) => $alarm->rising),
            Field::text('sample', 'Of', static fn(array $row) => ($row['alarm']->variable->column?->unit ?? '')
                . ($row['alarm']->isDelta ? ' in ' : ' every ') . "{$row['alarm']->interval} s"),
            Field::text('happened', 'What happened last', static fn(array $row) => $row['alarm']->happened()),
            Field::text('owner', 'Owner', static fn(array $row) => $row['alarm']->owner),
        ], fn(): array => array_map(
            static fn(Alarm $alarm) => ['alarm' => $alarm],
            $this->alarms()->alarms,
        ), 'No alarm is set. Set one below.')->titled('Alarms');
    }

    private function logTable(): DataTable
    {
        return DataTable::ofRows([
            Field::time('time', 'When', fn(array $row) => $this->visit->timeOf($row['entry']->time)),
            Field::text('what', 'What happened', fn(array $row) => $this->alarms()->told($row['entry'])),
            Field::text('event', 'Event', fn(array $row) => $this->eventName($row['entry']->event)),
            Field::number('entry', 'Entry', static fn(array $row) => $row['entry']->index, Format::whole(...)),
        ], fn(): array => array_map(
            static fn(LogEntry $entry) => ['entry' => $entry],
            $this->alarms()->log,
        ), 'Nothing was logged yet: an alarm writes the log through an event that does.')
            ->titled('Log, the latest ' . self::ENTRIES . ' of each event')->beside('log');
    }

    private function eventTable(): DataTable
    {
        $last = fn(array $row): ?float => $row['eventLastTimeSent'] === 0
            ? null
            : $this->visit->timeOf($row['eventLastTimeSent']);
        $events = Catalog::find('eventTable');
        return DataTable::ofRows([
            Field::number('index', 'Event', static fn(array $row) => $row['eventIndex'], Format::whole(...)),
            Field::text('description', 'Description', static fn(array $row) => $row['eventDescription']),
            Field::text('type', 'Does', static fn(array $row) => self::EVENTS[$row['eventType']] ?? "$row[eventType]"),
            Field::column($this->visit, $events, $events->columns['eventCommunity'])->titled('Community'),
            Field::time('last', 'Last time', $last),
            Field::text('owner', 'Owner', static fn(array $row) => $row['eventOwner']),
        ], fn(): array => array_values($this->alarms()->events), 'There is no event: alarms are seen here alone.')
            ->titled('Events')->beside('events');
    }

    private function eventName(int $index): string
    {
        $description = $this->alarms()->events[$index]['eventDescription'] ?? '';
        return $description === '' ? (string) $index : "$index: $description";
    }

    /** The alarm that the address asks for, if there is such one. */
    private function chosen(): ?int
    {
        $index = $this->visit->query('alarm');
        foreach (ctype_digit($index) ? $this->alarms()->alarms : [] as $alarm) {
            if ($alarm->index === (int) $index) {
                return $alarm->index;
            }
        }
        return null;
    }

    /** @return list<Input> */
    private function alarmInputs(): array
    {
        $row = $this->alarmRow($this->chosen());
        $events = [0 => 'none'];
        foreach (array_keys($this->alarms()->events) as $index) {
            $events[$index] = $this->eventName($index);
        }
        $names = array_slice($this->visit->probe()->interfaces()->names(), 0, 8, true);
        $usual = [];
        foreach ($names as $index => $name) {
            $usual[] = self::USUAL[3] . ".$index";
        }
        return [
            Input::hidden('alarm', (int) $this->chosen()),
            Input::text(
                'alarmVariable',
                self::LABELS['alarmVariable'],
                $row['alarmVariable'],
                'such as ' . implode(', ', array_slice($usual, 0, 2)),
            )->required(),
            Input::choice('alarmSampleType', self::LABELS['alarmSampleType'], self::SAMPLES, $row['alarmSampleType']),
            Input::number('alarmInterval', self::LABELS['alarmInterval'], $row['alarmInterval'], '', 1),
            Input::number('alarmRisingThreshold', self::LABELS['alarmRisingThreshold'], $row['alarmRisingThreshold']),
            Input::number(
                'alarmFallingThreshold',
                self::LABELS['alarmFallingThreshold'],
                $row['alarmFallingThreshold'],
                'not above the other one',
            ),
            Input::choice(
                'alarmRisingEventIndex',
                self::LABELS['alarmRisingEventIndex'],
                $events,
                $row['alarmRisingEventIndex'],
            ),
            Input::choice(
                'alarmFallingEventIndex',
                self::LABELS['alarmFallingEventIndex'],
                $events,
                $row['alarmFallingEventIndex'],
            ),
        ];
    }

    /** @return array<string, mixed> the row of an alarm, or what a new one begins with */
    private function alarmRow(?int $index): array
    {
        return ($index === null ? null : $this->visit->probe()->table('alarmTable')->get(alarmIndex: $index)) ?? [
            'alarmVariable' => '',
            'alarmSampleType' => 2,
            'alarmInterval' => 10,
            'alarmRisingThreshold' => 100,
            'alarmFallingThreshold' => 0,
            'alarmRisingEventIndex' => array_key_first($this->alarms()->events) ?? 0,
            'alarmFallingEventIndex' => 0,
        ];
    }

    /** @param array<string, string> $given */
    private function planAlarm(array $given): Plan
    {
        $table = $this->visit->probe()->table('alarmTable');
        $index = (int) ($given['alarm'] ?? 0);
        $row = $index === 0 ? null : $table->get(alarmIndex: $index)
            ?? throw new BadArgument("There is no alarm $index any more.");
        $names = array_filter(
            array_keys(array_intersect_key(self::LABELS, $given)),
            static fn(string $name) => str_starts_with($name, 'alarm'),
        );
        $wanted = [];
        foreach ($names as $name) {
            $wanted[$name] = $table->probe->values()->parse($table->schema->columns[$name], trim($given[$name]));
        }
        if (($wanted['alarmVariable'] ?? '') === '') {
            throw new BadArgument('An alarm watches a variable, such as etherStatsPkts.1.');
        }
        if (($wanted['alarmFallingThreshold'] ?? 0) > ($wanted['alarmRisingThreshold'] ?? 0)) {
            throw new BadArgument('The lower threshold can\'t be above the upper one.');
        }
        $before = $row === null ? [] : $this->labelled($row, $names);
        $lines = Plan::differences($before, $this->labelled($wanted, $names));
        if ($row !== null) {
            return new Plan("Alarm $index changes", $lines, static fn() => $table->replace(...[
                'alarmIndex' => $index,
            ] + $wanted));
        }
        $index = $table->unusedIndex();
        return new Plan("Alarm $index is set", $lines, static fn() => $table->create(...[
            'alarmIndex' => $index,
            'alarmOwner' => self::OWNER,
        ] + $wanted));
    }

    /** @param array<string, string> $given */
    private function planRemoval(array $given): Plan
    {
        $table = $this->visit->probe()->table('alarmTable');
        $index = (int) ($given['alarm'] ?? 0);
        $row = $table->get(alarmIndex: $index) ?? throw new BadArgument("There is no alarm $index any more.");
        return new Plan(
            "Alarm $index is removed",
            [['Alarm', "$index: $row[alarmVariable], of $row[alarmOwner]", '']],
            static fn() => $table->delete(alarmIndex: $index),
            true,
        );
    }

    /** @param array<string, string> $given */
    private function planEvent(array $given): Plan
    {
        $table = $this->visit->probe()->table('eventTable');
        $values = [];
        foreach (['eventDescription', 'eventType', 'eventCommunity'] as $name) {
            $values[$name] = $table->probe->values()->parse($table->schema->columns[$name], trim($given[$name] ?? ''));
        }
        $index = $table->unusedIndex();
        $labelled = [];
        foreach ($values as $name => $value) {
            $labelled[self::LABELS[$name]] = $name === 'eventType' ? self::EVENTS[$value] ?? '' : (string) $value;
        }
        return new Plan("Event $index is added", Plan::differences([], $labelled), static fn() => $table->create(
            ...['eventIndex' => $index, 'eventOwner' => self::OWNER] + $values,
        ));
    }

    /**
     * @param array<string, mixed> $row
     * @param list<string> $names
     * @return array<string, string> texts by label
     */
    private function labelled(array $row, array $names): array
    {
        $told = [];
        foreach ($names as $name) {
            $told[self::LABELS[$name]] = match ($name) {
                'alarmSampleType' => self::SAMPLES[$row[$name]] ?? (string) $row[$name],
                'alarmRisingEventIndex', 'alarmFallingEventIndex' => $row[$name] === 0
                    ? 'none' : $this->eventName($row[$name]),
                default => (string) $row[$name],
            };
        }
        return $told;
    }

    private function alarms(): Alarms
    {
        return $this->alarms ??= Alarms::read($this->visit->probe(), self::ENTRIES);
    }
}
