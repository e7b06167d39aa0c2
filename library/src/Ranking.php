<?php

// SPDX-License-Identifier: MIT

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
     * @param string|(callable(array<string, mixed>): mixed)|null $by what to order by: a column of numbers or of lists,
     *                                                          or what is made of a row; null: rows stay as they come
     * @param bool $descending                                  whether the largest stands first
     * @param int $most                                         how many rows are wanted
     * @param (callable(array<string, mixed>): bool)|null $keep which rows count; all when not given
     * @param float|null $seconds                               when to stop reading further pages
     */
    public static function of(
        iterable $pages,
        string|callable|null $by,
        bool $descending,
        int $most,
        ?callable $keep = null,
        ?float $seconds = null,
    ): self {
        $end = $seconds === null ? INF : hrtime(true) / 1e9 + $seconds;
        $room = 2 * max(1, $most);
        $kept = [];
        $values = [];
        $worst = null;
        $full = false;
        $read = 0;
        $matched = 0;
        foreach ($pages as $rows) {
            if (hrtime(true) / 1e9 > $end) {
                return new self(self::first($values, $kept, $descending, $most)[1], $read, $matched, false);
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
                $values[] = $value;
                $kept[] = $rows[$place];
                if (count($kept) >= $room) {
                    [$values, $kept] = self::first($values, $kept, $descending, max(1, $most));
                    $worst = end($values);
                    $full = true;
                }
            }
        }
        return new self(self::first($values, $kept, $descending, $most)[1], $read, $matched, true);
    }

    /**
     * @param list<array<string, mixed>> $rows
     * @return list<mixed> what each is ordered by
     */
    private static function values(array $rows, string|callable|null $by): array
    {
        if ($by === null) {
            return array_fill(0, count($rows), 0);
        }
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
     * The first of some rows, in order.
     *
     * @param list<mixed> $values what each is ordered by
     * @param list<array<string, mixed>> $rows
     * @return array{list<mixed>, list<array<string, mixed>>}
     */
    private static function first(array $values, array $rows, bool $descending, int $most): array
    {
        // The engine's own sorts keep equal values in their order, and ask no function of ours.
        $descending ? arsort($values) : asort($values);
        $values = array_slice($values, 0, max(0, $most), true);
        $first = [];
        foreach ($values as $place => $value) {
            $first[] = $rows[$place];
        }
        return [array_values($values), $first];
    }
}
