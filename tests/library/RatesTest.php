<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\TestCase;
use Rmon\Change;
use Rmon\Exception\BadArgument;
use Rmon\Rates;
use Rmon\Reading;
use Rmon\RowRate;
use Rmon\Schema\Catalog;

/** Two readings make rates. */
final class RatesTest extends TestCase
{
    /**
     * The rates of a row that was read twice, 10 seconds apart.
     *
     * @param array<string, mixed>|null $before
     * @param array<string, mixed> $after
     * @param array{int, int} $uptimes in hundredths of a second
     */
    private static function rate(
        string $table,
        ?array $before,
        array $after,
        array $uptimes = [100000, 101000],
        float $elapsed = 10.0,
    ): RowRate {
        $schema = Catalog::find($table);
        $zeros = array_fill_keys(array_keys($schema->columns), 0);
        $rates = Rates::between(
            new Reading($schema, $before === null ? [] : ['row' => $before + $zeros], $uptimes[0], 5000.0),
            new Reading($schema, ['row' => $after + $zeros], $uptimes[1], 5000.0 + $elapsed),
        );
        return $rates['row'];
    }

    public function testGrowth(): void
    {
        $rate = self::rate('etherStatsTable', ['etherStatsOctets' => 1000.0], ['etherStatsOctets' => 6000.0]);
        self::assertSame(Change::Counted, $rate->change);
        self::assertSame(5000.0, $rate->grown['etherStatsOctets']);
        self::assertSame(500.0, $rate->perSecond('etherStatsOctets'));
        self::assertSame(4000.0, $rate->bitsPerSecond('etherStatsOctets'));
        self::assertSame(0.0, (float) $rate->perSecond('etherStatsPkts'));
        self::assertNull($rate->perSecond('etherStatsIndex'), 'no counter');
    }

    public function testWrapOf32Bits(): void
    {
        $rate = self::rate('ifTable', ['ifInOctets' => 4294967000], ['ifInOctets' => 704]);
        self::assertSame(Change::Counted, $rate->change);
        self::assertSame(1000, $rate->grown['ifInOctets']);
    }

    public function testWrapOf64Bits(): void
    {
        // Doubles near 2^64 are 2048 apart: 18446744073709547520 is 2^64 - 4096.
        $rate = self::rate(
            'etherStatsTable',
            ['etherStatsOctets' => 18446744073709547520.0],
            ['etherStatsOctets' => 4096.0],
        );
        self::assertSame(8192.0, $rate->grown['etherStatsOctets']);
    }

    public function testACounterOf64BitsThatWasSetBackIsNoWrap(): void
    {
        $rate = self::rate('dsmonStatsTable', ['dsmonStatsInHCPkts' => 1e6], ['dsmonStatsInHCPkts' => 10.0]);
        self::assertNull($rate->grown['dsmonStatsInHCPkts']);
        self::assertNull($rate->perSecond('dsmonStatsInHCPkts'));
    }

    public function testARestartedAgent(): void
    {
        $rate = self::rate(
            'etherStatsTable',
            ['etherStatsOctets' => 1e9, 'etherStatsCreateTime' => 0],
            ['etherStatsOctets' => 300.0, 'etherStatsCreateTime' => 0],
            [100000, 300],
        );
        self::assertSame(Change::Restarted, $rate->change);
        // 3 seconds since the start, in which 300 octets were counted.
        self::assertSame([300.0, 3.0], [$rate->grown['etherStatsOctets'], $rate->seconds]);
        self::assertSame(100.0, $rate->perSecond('etherStatsOctets'));
    }

    public function testARestartIsSeenByGreaterUptimesToo(): void
    {
        // 10 minutes passed, of which the new agent knows 2; it had run for 1 before.
        $rate = self::rate(
            'ifTable',
            ['ifInOctets' => 5000],
            ['ifInOctets' => 400],
            [6000, 12000],
            600.0,
        );
        self::assertSame(Change::Restarted, $rate->change);
        self::assertSame(400, $rate->grown['ifInOctets']);
    }

    public function testTheAgentsClockThatWrapsIsNoRestart(): void
    {
        $rate = self::rate(
            'ifTable',
            ['ifInOctets' => 100],
            ['ifInOctets' => 300],
            [4294967296 - 400, 600],
        );
        self::assertSame(Change::Counted, $rate->change);
        self::assertSame(200, $rate->grown['ifInOctets']);
    }

    public function testAReplacedRow(): void
    {
        $rate = self::rate(
            'nlHostTable',
            ['nlHostOutOctets' => 500.0, 'nlHostCreateTime' => 5],
            ['nlHostOutOctets' => 700.0, 'nlHostCreateTime' => 100500],
        );
        self::assertSame(Change::Replaced, $rate->change);
        self::assertSame(700.0, $rate->grown['nlHostOutOctets'], 'all of it came after the first reading');
    }

    public function testAReplacedRowOfWhichNothingCanBeSaid(): void
    {
        $rate = self::rate(
            'hostTable',
            ['hostOutOctets' => 500.0, 'hostCreationOrder' => 3],
            ['hostOutOctets' => 700.0, 'hostCreationOrder' => 40],
        );
        self::assertSame(Change::Replaced, $rate->change);
        self::assertNull($rate->grown['hostOutOctets']);
    }

    public function testARowThatAppeared(): void
    {
        $new = ['nlHostOutOctets' => 70.0, 'nlHostCreateTime' => 100001];
        self::assertSame(70.0, self::rate('nlHostTable', null, $new)->grown['nlHostOutOctets']);
        // It is older than the first reading, which missed it: what it counted since then isn't known.
        $old = ['nlHostCreateTime' => 99] + $new;
        self::assertNull(self::rate('nlHostTable', null, $old)->grown['nlHostOutOctets']);
        $untold = self::rate('protocolDistStatsTable', null, ['protocolDistStatsPkts' => 4.0]);
        self::assertSame(Change::Appeared, $untold->change);
        self::assertSame(4.0, $untold->grown['protocolDistStatsPkts']);
    }

    public function testReadingsOfTwoTables(): void
    {
        $this->expectException(BadArgument::class);
        Rates::between(
            new Reading(Catalog::find('ifTable'), [], 0, 0.0),
            new Reading(Catalog::find('hostTable'), [], 0, 0.0),
        );
    }

    public function testNoTimeNoRate(): void
    {
        $rate = self::rate('ifTable', ['ifInOctets' => 1], ['ifInOctets' => 2], [100, 100], 0.0);
        self::assertSame(1, $rate->grown['ifInOctets']);
        self::assertNull($rate->perSecond('ifInOctets'));
    }
}
