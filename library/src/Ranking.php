<?php

declare(strict_types=1);

namespace Rmon;

/**
 * The first rows by some value, out of any number of rows: no more of them are held at a time than are wanted, and as
 * many again. Rows of the same value stay in the order in which they came.
 */
final class Ranking
{
    /**
     * @param list<array<string, mixed>> $rows the first ones, in order
     * @param int $read      how many rows were looked at
     * @param int $matched   how many of them were wanted at all
     * @param bool $complete whether that were all; otherwise the time was up
     */
    private function __construct(
        public readonly array $rows,
        public readonly int $read,
        public readonly int $matched,
        public readonly bool $complete,
    ) {
    }

    /**
     * @param iterable<list<array<string, mixed>>> $pages       rows, some at a time: see Table::pages()
     * @param string|callable(array<string, mixed>): mixed $by  what to order by: a column of numbers or of lists, or
     *                                                          what is made of a row
     * @param bool $descending                                  whether the largest stands first
     * @param int $most                                         how many rows are wanted
     * @param (callable(array<string, mixed>): bool)|null $keep which rows count; all when not given
     * @param float|null $seconds                               when to stop reading further pages
     */
    public static function of(
        iterable $pages,
        string|callable $by,
        bool $descending,
        int $most,
        ?callable $keep = null,
        ?float $seconds = null,
    ): self {
        $end = $seconds === null ? INF : hrtime(true) / 1e9 + $seconds;
        $order = $descending
            ? static fn(array $one, array $other) => $other[0] <=> $one[0]
            : static fn(array $one, array $other) => $one[0] <=> $other[0];
        $room = 2 * max(1, $most);
        $kept = [];
        $worst = null;
        $full = false;
        $read = 0;
        $matched = 0;
        foreach ($pages as $rows) {
            if (hrtime(true) / 1e9 > $end) {
                return new self(self::first($kept, $order, $most), $read, $matched, false);
            }
            $read += count($rows);
            if ($keep !== null) {
                $rows = array_values(array_filter($rows, $keep));
            }
            $matched += count($rows);
            foreach (self::values($rows, $by) as $place => $value) {
                // Behind the worst of those that are kept: no place for it.
                if ($full && ($descending ? $value <= $worst : $value >= $worst)) {
                    continue;
                }
                $kept[] = [$value, $rows[$place]];
                if (count($kept) >= $room) {
                    usort($kept, $order);
                    array_splice($kept, max(1, $most));
                    $worst = end($kept)[0];
                    $full = true;
                }
            }
        }
        return new self(self::first($kept, $order, $most), $read, $matched, true);
    }

    /**
     * @param list<array<string, mixed>> $rows
     * @return list<mixed> what each is ordered by
     */
    private static function values(array $rows, string|callable $by): array
    {
        if (!is_string($by)) {
            return array_map($by, $rows);
        }
        $values = array_column($rows, $by);
        // A column that some rows are without.
        return count($values) === count($rows)
            ? $values
            : array_map(static fn(array $row): mixed => $row[$by] ?? null, $rows);
    }

    /**
     * @param list<array{mixed, array<string, mixed>}> $kept
     * @return list<array<string, mixed>>
     */
    private static function first(array $kept, callable $order, int $most): array
    {
        usort($kept, $order);
        return array_column(array_slice($kept, 0, max(0, $most)), 1);
    }
}
