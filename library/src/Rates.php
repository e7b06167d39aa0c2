<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Generator;
use Rmon\Exception\BadArgument;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** Two readings of a table make rates. */
final class Rates
{
    private const TWO_32 = 4294967296;
    private const TWO_64 = 18446744073709551616.0;

    /** By how much the agent's clock and this machine's can differ between two readings: seconds, and a part. */
    private const CLOCK_SLACK = 5.0;
    private const CLOCK_DRIFT = 0.01;

    /** Agents that stamp rows by a clock they look at now and then are so late with it, in hundredths of a second. */
    private const STAMP_SLACK = 10;

    /** The columns that tell one row of a name from the next: what they count from. */
    private const ORDERS = ['hostCreationOrder', 'hostTimeCreationOrder'];

    /**
     * What each row of the later reading grew by. Told apart are
     *
     * - a counter that wrapped: it is smaller than before, and the row is the same. A 32-bit counter wraps at 2^32; one
     *   of 64 bits at 2^64, which it has to be near to, otherwise it was set back and nothing can be said;
     * - an agent that was restarted: its clock went back, and didn't wrap by itself. What counters show was counted
     *   since then;
     * - a row that was replaced by another one of the same name: it was created later. What it shows was counted since
     *   the reading before, if it was created after it.
     *
     * @return array<string, RowRate> by the rows' keys, in the order of the later reading
     */
    public static function between(Reading $before, Reading $after): array
    {
        if ($before->schema !== $after->schema) {
            throw new BadArgument('Rates are of two readings of one table.');
        }
        $schema = $after->schema;
        $counters = self::counters($schema);
        $createTime = $schema->createTime();
        $elapsed = $after->time - $before->time;
        $restarted = self::restarted($before, $after);
        $rates = [];
        foreach ($after->rows as $key => $row) {
            $old = $before->rows[$key] ?? null;
            $change = match (true) {
                $restarted => Change::Restarted,
                $old === null => Change::Appeared,
                self::replaced($old, $row, $createTime) => Change::Replaced,
                default => Change::Counted,
            };
            $created = $createTime === null ? null : $row[$createTime];
            $isNew = $created !== null && $created >= $before->uptime - self::STAMP_SLACK;
            $fromZero = match ($change) {
                Change::Counted => false,
                Change::Restarted => true,
                // Without a create time, a row that wasn't there in a whole reading is a new one.
                Change::Appeared => $created === null || $isNew,
                Change::Replaced => $isNew,
            };
            $grown = [];
            foreach ($counters as $counter => $type) {
                $grown[$counter] = $change === Change::Counted
                    ? self::growth($type, $old[$counter], $row[$counter])
                    : ($fromZero ? $row[$counter] : null);
            }
            $seconds = $change === Change::Restarted ? min($elapsed, $after->uptime / 100) : $elapsed;
            $rates[$key] = new RowRate($row, $change, $seconds, $grown);
        }
        return $rates;
    }

    /**
     * Reads a table again and again, and gives the rates between each two readings. Ends when the caller does.
     *
     * @param float $interval      seconds from one reading to the next
     * @param callable|null $wait  what waits so many seconds; usleep() when not given
     * @return Generator<int, array<string, RowRate>>
     */
    public static function sample(Table $table, float $interval, ?callable $wait = null): Generator
    {
        if ($interval <= 0) {
            throw new BadArgument('An interval is longer than 0 seconds.');
        }
        $wait ??= static fn(float $seconds) => usleep((int) ($seconds * 1e6));
        $before = Reading::of($table);
        while (true) {
            $wait(max(0.0, $interval - (hrtime(true) / 1e9 - $before->time)));
            $after = Reading::of($table);
            yield self::between($before, $after);
            $before = $after;
        }
    }

    /** @return array<string, Type> the counters of a table */
    public static function counters(TableSchema $schema): array
    {
        $counters = [];
        foreach ($schema->columns as $name => $column) {
            if ($column->type->isCounter()) {
                $counters[$name] = $column->type;
            }
        }
        return $counters;
    }

    private static function growth(Type $type, int|float $before, int|float $after): int|float|null
    {
        $growth = $after - $before;
        if ($growth >= 0) {
            return $growth;
        }
        if ($type === Type::Counter32) {
            return $growth + self::TWO_32;
        }
        // 2^64 counted in one interval is out of reach: it has to have been near the end, and be near the start.
        $wrapped = $growth + self::TWO_64;
        return $wrapped < self::TWO_64 / 2 ? $wrapped : null;
    }

    /** Both clocks went on by the same; the agent's wraps after 497 days. Otherwise the agent was restarted. */
    private static function restarted(Reading $before, Reading $after): bool
    {
        $elapsed = $after->time - $before->time;
        $ticks = fmod($after->uptime - $before->uptime + self::TWO_32, self::TWO_32);
        return abs($ticks / 100 - $elapsed) > self::CLOCK_SLACK + self::CLOCK_DRIFT * $elapsed;
    }

    /**
     * @param array<string, mixed> $old
     * @param array<string, mixed> $row
     */
    private static function replaced(array $old, array $row, ?string $createTime): bool
    {
        if ($createTime !== null) {
            return $row[$createTime] != $old[$createTime];
        }
        foreach (self::ORDERS as $order) {
            if (isset($row[$order])) {
                return $row[$order] !== $old[$order];
            }
        }
        return false;
    }
}
