<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\TestCase;
use Rmon\Ranking;

/** The first rows out of many. */
final class RankingTest extends TestCase
{
    /** @return iterable<list<array<string, int>>> rows 0 to $count - 1, whose values go round */
    private static function pages(int $count, int $page = 1000): iterable
    {
        for ($from = 0; $from < $count; $from += $page) {
            $rows = [];
            for ($number = $from; $number < min($count, $from + $page); $number++) {
                $rows[] = ['number' => $number, 'value' => $number * 7919 % 100003];
            }
            yield $rows;
        }
    }

    public function testTheLargestOfAHundredThousand(): void
    {
        $ranking = Ranking::of(self::pages(100000), 'value', true, 100);
        self::assertSame([100000, 100000, true], [$ranking->read, $ranking->matched, $ranking->complete]);
        // The values of 0 to 100002 are 0 to 100002, each once: 7919 and 100003 have no common divisor.
        $values = array_column($ranking->rows, 'value');
        $expected = [];
        for ($number = 0; $number < 100000; $number++) {
            $expected[] = $number * 7919 % 100003;
        }
        rsort($expected);
        self::assertSame(array_slice($expected, 0, 100), $values);
    }

    public function testMemoryIsThatOfAPageAndOfWhatIsKept(): void
    {
        $before = memory_get_usage();
        $most = 0;
        $watched = static function () use (&$most): iterable {
            foreach (self::pages(100000) as $rows) {
                yield $rows;
                $most = max($most, memory_get_usage());
            }
        };
        Ranking::of($watched(), 'value', true, 100);
        self::assertLessThan(2_000_000, $most - $before, 'of the table it would be some 40 MB');
    }

    public function testTheSmallest(): void
    {
        $ranking = Ranking::of(self::pages(5000, 7), static fn(array $row): int => $row['value'] % 50, false, 3);
        self::assertSame([0, 0, 0], array_map(static fn(array $row) => $row['value'] % 50, $ranking->rows));
    }

    public function testEqualOnesStayInTheirOrder(): void
    {
        foreach ([true, false] as $descending) {
            $ranking = Ranking::of(self::pages(3000, 10), static fn(): int => 1, $descending, 25);
            self::assertSame(range(0, 24), array_column($ranking->rows, 'number'));
        }
    }

    public function testTheFirstOnesWithoutAnOrder(): void
    {
        foreach ([true, false] as $descending) {
            $ranking = Ranking::of(self::pages(5000, 7), null, $descending, 30);
            self::assertSame(range(0, 29), array_column($ranking->rows, 'number'));
            self::assertSame([5000, 5000], [$ranking->read, $ranking->matched]);
        }
    }

    public function testWhatIsKept(): void
    {
        $keep = static fn(array $row): bool => $row['number'] % 1000 === 5;
        $ranking = Ranking::of(self::pages(10000), 'number', true, 3, $keep);
        self::assertSame([9005, 8005, 7005], array_column($ranking->rows, 'number'));
        self::assertSame([10000, 10], [$ranking->read, $ranking->matched]);
    }

    public function testFewerThanAreWanted(): void
    {
        self::assertCount(4, Ranking::of(self::pages(4), 'value', true, 100)->rows);
        self::assertSame([], Ranking::of([], 'value', true, 100)->rows);
        self::assertSame([], Ranking::of(self::pages(4), 'value', true, 0)->rows);
    }

    public function testAColumnThatSomeRowsLack(): void
    {
        $rows = [['name' => 'none'], ['name' => 'two', 'value' => 2], ['name' => 'one', 'value' => 1]];
        $ranking = Ranking::of([$rows], 'value', true, 2);
        self::assertSame(['two', 'one'], array_column($ranking->rows, 'name'));
    }

    public function testTheTimeIsUp(): void
    {
        $ranking = Ranking::of(self::pages(100000, 10), 'value', true, 5, null, 0.0);
        self::assertFalse($ranking->complete);
        self::assertSame(0, $ranking->read);
        self::assertSame([], $ranking->rows);
    }
}
