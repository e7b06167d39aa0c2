<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\Alarm\Alarm;
use Rmon\Console\Pages\InterfacesPage;
use Rmon\Format;

/** A probe in a few sentences: what its interfaces carry, and where to look first. */
final class Glance
{
    /** Interfaces that are called by name where there may be many. */
    private const NAMED = 3;

    /**
     * @param list<array<string, mixed>> $interfaces see InterfacesPage::rows()
     * @param list<Alarm> $alarms
     * @param list<array{time: float, text: string}> $log of the last hour, the latest entry first
     * @return list<array{string, string}> each with its kind: "answer" or "warning"
     */
    public static function sentences(array $interfaces, array $alarms, array $log): array
    {
        $sentences = [[self::busiest($interfaces), 'answer']];
        $full = array_filter(
            $interfaces,
            static fn(array $row): bool => InterfacesPage::utilization($row) >= InterfacesPage::BUSY,
        );
        usort($full, static fn(array $one, array $other): int =>
            InterfacesPage::utilization($other) <=> InterfacesPage::utilization($one));
        foreach (array_slice($full, 0, self::NAMED) as $row) {
            $sentences[] = [self::name($row) . ' is nearly full: ' . self::load($row) . '.', 'warning'];
        }
        $bad = array_filter(
            $interfaces,
            static fn(array $row): bool => $row['ifInErrors'] + $row['ifOutErrors'] > 0,
        );
        if ($bad !== []) {
            $others = count($bad) - self::NAMED;
            $sentences[] = [
                'Frames with errors were seen on '
                    . implode(', ', array_map(self::name(...), array_slice($bad, 0, self::NAMED)))
                    . ($others > 0 ? " and $others more" : '') . '.',
                'warning',
            ];
        }
        array_push($sentences, ...self::high($alarms));
        if ($log !== []) {
            $ago = Format::ago(microtime(true) - $log[0]['time']);
            $sentences[] = ["Logged last: {$log[0]['text']}, $ago.", 'answer'];
        }
        return $sentences;
    }

    /**
     * The alarms that are high.
     *
     * @param list<Alarm> $alarms
     * @return list<array{string, string}>
     */
    public static function high(array $alarms): array
    {
        return array_values(array_map(static fn(Alarm $alarm) => [
            $alarm->variable->name() . ' is high: ' . ($alarm->happened() === ''
                ? $alarm->variable->amount((int) $alarm->value) . " over $alarm->rising"
                : $alarm->happened()) . '.',
            'warning',
        ], array_filter($alarms, static fn(Alarm $alarm) => $alarm->state() === 'high')));
    }

    /** @param list<array<string, mixed>> $interfaces */
    private static function busiest(array $interfaces): string
    {
        $rate = static fn(array $row): float => $row['last']?->bitsPerSecond('etherHistoryOctets') ?? -1.0;
        usort($interfaces, static fn(array $one, array $other): int => $rate($other) <=> $rate($one));
        $most = $interfaces === [] ? null : $rate($interfaces[0]);
        return match (true) {
            $most === null => 'The agent has no interface.',
            $most < 0 => 'What the interfaces carry is being measured.',
            $most == 0 => 'No interface carried anything in the last ' . InterfacesPage::SECONDS . ' s.',
            default => self::name($interfaces[0]) . ' carries most: ' . self::load($interfaces[0]) . '.',
        };
    }

    /**
     * "12.3 Mbit/s, 1.2 % of its 1.0 Gbit/s".
     *
     * @param array<string, mixed> $row with a sample
     */
    private static function load(array $row): string
    {
        $part = InterfacesPage::utilization($row);
        return Format::bitsPerSecond($row['last']->bitsPerSecond('etherHistoryOctets') ?? 0)
            . ($part === null ? '' : ', ' . Format::part($part) . ' of its ' . InterfacesPage::speed($row['ifSpeed']));
    }

    /** @param array<string, mixed> $row */
    private static function name(array $row): string
    {
        return Text::shown($row['ifDescr'], 20);
    }
}
