<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\ControlRows;
use Rmon\Exception\BadArgument;
use Rmon\History\Sample;
use Rmon\History\Series;

/** Samples of a history row in time. */
final class HistoryTest extends AgentTestCase
{
    /**
     * A series of samples of 30 seconds.
     *
     * @param list<array{int, int, int}> $samples index, start in hundredths of a second, octets
     */
    private static function series(array $samples, int $now): Series
    {
        $rows = array_map(static fn(array $sample) => [
            'etherHistorySampleIndex' => $sample[0],
            'etherHistoryIntervalStart' => $sample[1],
            'etherHistoryOctets' => (float) $sample[2],
            'etherHistoryUtilization' => intdiv($sample[2], 100),
        ], $samples);
        return Series::of($rows, 30, $now);
    }

    /** @return list<array{float, float}> */
    private static function times(Series $series): array
    {
        return array_map(static fn(Sample $sample) => [$sample->start, $sample->end], $series->samples);
    }

    public function testSamplesThatFollowEachOther(): void
    {
        // The second came 6 s late, so that the third is shorter.
        $series = self::series([[4, 10000, 300], [5, 13000, 720], [6, 16600, 240]], 20000);
        self::assertSame([[-100.0, -70.0], [-70.0, -34.0], [-34.0, -4.0]], self::times($series));
        self::assertSame([], $series->gaps, 'the next one is still being taken');
        self::assertSame([10.0, 160.0], [
            $series->samples[0]->perSecond('etherHistoryOctets'),
            $series->samples[1]->bitsPerSecond('etherHistoryOctets'),
        ]);
    }

    public function testMissingSamples(): void
    {
        $series = self::series([[4, 10000, 300], [7, 19000, 600]], 22000);
        self::assertSame([[-120.0, -90.0], [-30.0, 0.0]], self::times($series));
        self::assertSame([[-90.0, -30.0]], $series->gaps);
    }

    public function testSamplesThatCameNoMore(): void
    {
        self::assertSame([[-50.0, 0.0]], self::series([[1, 2000, 1]], 10000)->gaps);
        self::assertSame([], self::series([[1, 2000, 1]], 2000 + 7400)->gaps, 'only late');
    }

    public function testAnIntervalThatWasChanged(): void
    {
        // Samples of 1800 s, then of 30: each has the time that it took.
        $series = self::series([[1, 0, 18000], [2, 180000, 300], [3, 183000, 330]], 186000);
        self::assertSame([10.0, 10.0, 11.0], array_map(
            static fn(Sample $sample) => $sample->perSecond('etherHistoryOctets'),
            $series->samples,
        ));
    }

    public function testTheAgentsClockThatWraps(): void
    {
        $series = self::series([[1, 4294966296, 300], [2, 2000, 300]], 5000);
        self::assertSame([[-60.0, -30.0], [-30.0, 0.0]], self::times($series));
        self::assertSame(0, $series->forgotten);
    }

    public function testSamplesFromBeforeARestart(): void
    {
        $series = self::series([[1, 9000000, 5], [2, 9003000, 5], [3, 1000, 300], [4, 4000, 300]], 7000);
        self::assertSame([[-60.0, -30.0], [-30.0, 0.0]], self::times($series));
        self::assertSame(2, $series->forgotten);
    }

    public function testAPartOfIt(): void
    {
        $series = self::series([[1, 0, 1], [2, 3000, 2], [3, 6000, 3], [6, 15000, 4]], 18000);
        $part = $series->between(-140.0, -60.0);
        self::assertSame([[-150.0, -120.0], [-120.0, -90.0]], self::times($part));
        self::assertSame([[-90.0, -30.0]], $part->gaps);
    }

    public function testPointsOfAChart(): void
    {
        $series = self::series([[1, 0, 30], [2, 3000, 60], [5, 12000, 90]], 15000);
        $points = $series->points([
            'octets' => static fn(Sample $sample) => $sample->row['etherHistoryOctets'],
            'rate' => static fn(Sample $sample) => $sample->perSecond('etherHistoryOctets'),
        ], 1000.0);
        self::assertSame([
            'x' => [865.0, 895.0, 940.0, 985.0],
            'series' => ['octets' => [30.0, 60.0, null, 90.0], 'rate' => [1.0, 2.0, null, 3.0]],
        ], $points);
    }

    public function testFewerSamples(): void
    {
        // Five of 30 s, a gap of 60, one more.
        $samples = [[1, 0, 100], [2, 3000, 300], [3, 6000, 200], [4, 9000, 0], [5, 12000, 500], [8, 21000, 900]];
        $thin = self::series($samples, 24000)->thinned(3);
        self::assertSame([[-240.0, -180.0], [-180.0, -120.0], [-120.0, -90.0], [-30.0, 0.0]], self::times($thin));
        $columns = array_map(static fn(Sample $sample) => [
            $sample->row['etherHistoryOctets'], (float) $sample->row['etherHistoryUtilization'],
        ], $thin->samples);
        self::assertSame([[400.0, 2.0], [200.0, 1.0], [500.0, 5.0], [900.0, 9.0]], $columns);
        self::assertSame([[-90.0, -30.0]], $thin->gaps);
        self::assertSame(60.0, $thin->interval);
        $few = self::series($samples, 24000);
        self::assertSame($few, $few->thinned(6));
    }

    public function testNothing(): void
    {
        $none = self::series([], 100);
        self::assertSame([[], [], ['x' => [], 'series' => ['a' => []]]], [
            $none->samples, $none->gaps, $none->points(['a' => static fn() => 1]),
        ]);
        self::assertSame($none, $none->thinned(5));
        $this->expectException(BadArgument::class);
        Series::of([], 0, 100);
    }

    public function testWhatTheAgentSampled(): void
    {
        $packet = \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1, 2, str_repeat('x', 100)));
        $frame = \ethernet(\mac(2), \mac(1), 0x0800, $packet);
        $agent = $this->playing([[1.0, $frame], [1.1, $frame]]);
        $probe = $this->probe($agent);
        $probe->withRows('test', function (ControlRows $rows) use ($agent, $probe): void {
            $control = $rows->history(1, 1, 20);
            $this->read($agent);
            $table = $probe->table('etherHistoryTable', control: $control->index);
            $read = static fn() => Series::read($table, 1, ['etherHistoryPkts', 'etherHistoryOctets'])->samples;
            $packets = static fn() => array_sum(array_column(array_column($read(), 'row'), 'etherHistoryPkts'));
            \expect_soon(2.0, $packets, 'both frames in samples');
            $samples = $read();
            self::assertSame([
                'etherHistorySampleIndex', 'etherHistoryIntervalStart', 'etherHistoryOctets', 'etherHistoryPkts',
            ], array_keys($samples[0]->row));
            self::assertLessThanOrEqual(0.0, end($samples)->end);
            // 142 octets each, and a check sequence of 4.
            self::assertSame(292.0, array_sum(array_column(array_column($samples, 'row'), 'etherHistoryOctets')));
        });
    }
}
