<?php

declare(strict_types=1);

namespace Rmon;

/**
 * The first rows by some value, out of any number of rows: no more of them are held at a time than are wanted, and as
 * many again. Rows of the same value stay in the order in which they came.
 */
final class Ranking
{
    /** Rows between two looks at the clock. */
    private const STRIDE = 500;

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
     * @param iterable<array<string, mixed>> $rows
     * @param callable(array<string, mixed>): mixed $value what to order by: numbers, texts, or lists of one length
     * @param bool $descending                              whether the largest stands first
     * @param int $most                                     how many rows are wanted
     * @param (callable(array<string, mixed>): bool)|null $keep which rows count; all when not given
     * @param float|null $seconds                           when to stop looking at further rows
     */
    public static function of(
        iterable $rows,
        callable $value,
        bool $descending,
        int $most,
        ?callable $keep = null,
        ?float $seconds = null,
    ): self {
        $end = $seconds === null ? INF : hrtime(true) / 1e9 + $seconds;
        $order = $descending
            ? static fn(array $one, array $other) => $other[0] <=> $one[0]
            : static fn(array $one, array $other) => $one[0] <=> $other[0];
        $room = 2 * $most;
        $kept = [];
        $worst = null;
        $full = $most <= 0;
        $read = 0;
        $matched = 0;
        $complete = true;
        foreach ($rows as $row) {
            if ($read % self::STRIDE === 0 && $read > 0 && hrtime(true) / 1e9 > $end) {
                $complete = false;
                break;
            }
            $read++;
            if ($keep !== null && !$keep($row)) {
                continue;
            }
            $matched++;
            $at = $value($row);
            // Behind the worst of those that are kept: no place for it.
            if ($full && ($most <= 0 || ($descending ? $at <= $worst : $at >= $worst))) {
                continue;
            }
            $kept[] = [$at, $row];
            if (count($kept) >= $room) {
                usort($kept, $order);
                array_splice($kept, $most);
                $worst = $kept[$most - 1][0];
                $full = true;
            }
        }
        usort($kept, $order);
        return new self(array_column(array_slice($kept, 0, max(0, $most)), 1), $read, $matched, $complete);
    }
}
