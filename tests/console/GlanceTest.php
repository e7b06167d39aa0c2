<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use PHPUnit\Framework\TestCase;
use Rmon\Console\Glance;
use Rmon\History\Sample;

/** The sentences on top of a probe's overview. */
final class GlanceTest extends TestCase
{
    /** An interface that carried so many octets in ten seconds, and this many hundredths of a percent of its speed. */
    private static function carrying(string $name, ?int $octets, int $utilization = 0, int $speed = 0): array
    {
        return [
            'ifDescr' => $name,
            'ifSpeed' => $speed,
            'ifInErrors' => 0,
            'ifOutErrors' => 0,
            'last' => $octets === null ? null : new Sample(-10.0, 0.0, [
                'etherHistoryOctets' => $octets,
                'etherHistoryUtilization' => $utilization,
            ]),
        ];
    }

    /** An entry of the log, five minutes old. */
    private static function entry(string $text): array
    {
        return ['time' => microtime(true) - 301, 'text' => $text];
    }

    public function testNothingIsThere(): void
    {
        self::assertSame([['The agent has no interface.', 'answer']], Glance::sentences([], [], []));
        self::assertSame(
            [['What the interfaces carry is being measured.', 'answer']],
            Glance::sentences([self::carrying('eth0', null)], [], []),
        );
        self::assertSame(
            [['No interface carried anything in the last 10 s.', 'answer']],
            Glance::sentences([self::carrying('eth0', 0), self::carrying('eth1', null)], [], []),
        );
    }

    public function testTheBusiest(): void
    {
        self::assertSame(
            [['eth1 carries most: 4.0 Mbit/s, 4.0 % of its 100 Mbit/s.', 'answer']],
            Glance::sentences([
                self::carrying('eth0', 10_000),
                self::carrying('eth1', 5_000_000, 400, 100_000_000),
                self::carrying('eth2', null),
            ], [], []),
        );
        // A speed that isn't known has no part.
        self::assertSame(
            [['eth0 carries most: 8.0 kbit/s.', 'answer']],
            Glance::sentences([self::carrying('eth0', 10_000, 9999)], [], []),
        );
    }

    public function testWhatNeedsALook(): void
    {
        $rows = [
            self::carrying('eth0', 87_500_000, 7000, 100_000_000),
            self::carrying('eth1', 86_250_000, 6900, 100_000_000),
            self::carrying('eth2', 12_375_000, 9900, 10_000_000),
        ];
        foreach (['eth3', 'eth4', 'eth5', 'eth6'] as $bad) {
            $rows[] = ['ifInErrors' => $bad === 'eth3' ? 1 : 0, 'ifOutErrors' => $bad === 'eth3' ? 0 : 2]
                + self::carrying($bad, null);
        }
        self::assertSame([
            ['eth0 carries most: 70.0 Mbit/s, 70.0 % of its 100 Mbit/s.', 'answer'],
            ['eth2 is nearly full: 9.9 Mbit/s, 99.0 % of its 10.0 Mbit/s.', 'warning'],
            ['eth0 is nearly full: 70.0 Mbit/s, 70.0 % of its 100 Mbit/s.', 'warning'],
            ['Frames with errors were seen on eth3, eth4, eth5 and 1 more.', 'warning'],
            ['Logged last: the latest, 5 min ago.', 'answer'],
        ], Glance::sentences($rows, [], [self::entry('the latest'), self::entry('one before')]));
    }
}
