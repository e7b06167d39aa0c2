<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Alarm;

use Rmon\Probe;

/** An agent's alarms, its events, and what they logged last. */
final class Alarms
{
    /** The agent's clock (sysUpTime) goes on from 0 here, in hundredths of a second. */
    private const CLOCK = 2 ** 32;

    /** Events of which as many entries are read as was asked for. */
    private const FULL = 6;

    /**
     * @param list<Alarm> $alarms
     * @param array<int, array<string, mixed>> $events rows of eventTable by index
     * @param list<LogEntry> $log the latest one first
     */
    private function __construct(
        public readonly array $alarms,
        public readonly array $events,
        public readonly array $log,
    ) {
    }

    /**
     * @param int $most entries that are read of each event's log, the latest ones; fewer of each where there are many
     *                  events, as each entry is a call
     */
    public static function read(Probe $probe, int $most = 50): self
    {
        $events = array_column($probe->table('eventTable')->page(PHP_INT_MAX), null, 'eventIndex');
        $happened = array_filter($events, static fn(array $event) => $event['eventLastTimeSent'] !== 0);
        $most = min($most, max(1, intdiv(self::FULL * $most, max(1, count($happened)))));
        $rows = [];
        foreach (array_keys($happened) as $event) {
            array_push($rows, ...self::latest($probe, $event, $most));
        }
        // Asked behind them: none is later.
        $now = $probe->uptime();
        $log = array_map(static fn(array $row) => LogEntry::of($row, $now), $rows);
        usort($log, static fn(LogEntry $one, LogEntry $other) =>
            [$one->ago, $other->event, $other->index] <=> [$other->ago, $one->event, $one->index]);
        $alarms = [];
        $variables = [];
        foreach ($probe->table('alarmTable') as $row) {
            $variable = $row['alarmVariable'];
            $variables[$variable] ??= Variable::of($probe, $variable);
            $alarms[] = Alarm::of($row, $variables[$variable], $log);
        }
        return new self($alarms, $events, $log);
    }

    /** An entry of the log; of an alarm, with the name of what it watches, and without the event's own words. */
    public function told(LogEntry $entry): string
    {
        foreach ($entry->variable === null ? [] : $this->alarms as $alarm) {
            if ($alarm->variable->text === $entry->variable) {
                $way = $entry->rose ? 'rose' : 'fell';
                return "{$alarm->variable->name()} $way to {$alarm->variable->amount($entry->value)}, threshold "
                    . number_format($entry->threshold);
            }
        }
        return $entry->text;
    }

    /**
     * The latest entries of an event's log, which can only be read forwards: where it ends is found by halving.
     *
     * @return list<array<string, mixed>> rows of logTable
     */
    public static function latest(Probe $probe, int $event, int $most): array
    {
        $table = $probe->table('logTable', logEventIndex: $event);
        $page = static fn(int $most, int $index) => $table->page($most, [
            'logEventIndex' => $event,
            'logIndex' => $index,
        ]);
        $behind = static fn(int $index) => $page(1, $index)[0]['logIndex'] ?? null;
        $last = $behind(0);
        if ($last === null) {
            return [];
        }
        // There is something behind $last, and nothing behind $end.
        $step = $most;
        while (($found = $behind($last + $step - 1)) !== null) {
            $last = $found;
            $step *= 2;
        }
        $end = $last + $step - 1;
        while ($last < $end) {
            $middle = intdiv($last + $end, 2);
            $found = $behind($middle);
            if ($found === null) {
                $end = $middle;
            } else {
                $last = $found;
            }
        }
        return $page($most, max(0, $last - $most));
    }

    /** Seconds from one time on the agent's clock to a later one. */
    public static function seconds(int $time, int $now): float
    {
        return fmod($now - $time + self::CLOCK, self::CLOCK) / 100;
    }
}
