<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\Ranking;
use Rmon\Rates;
use Rmon\Reading;
use Rmon\Table;

/**
 * Rates of tables without waiting for them: each look at a table is kept in a file, and the next one, by whomever, is
 * held against it. Two looks are kept, so that the time between stays about as long as was asked for.
 *
 * Of a large table only the rows that have counted most are kept: memory and time stay the same however large it is.
 */
final class Sampler
{
    /** Rows of a table that are kept. */
    private const MOST = 1000;

    /** The least time between two looks, in seconds, from which rates are made. */
    private const LEAST = 1.0;

    /** So many seconds a look is of use, or as many times the time that was asked for. */
    private const FRESH = 60.0;

    /** Seconds after which a file is nobody's. */
    private const FORGOTTEN = 3600;

    public function __construct(private readonly string $directory)
    {
    }

    /**
     * How fast the rows of a table grow.
     *
     * @param Table $table    with a control row, if it is one of those
     * @param string $counter by which rows are kept where there are many
     * @param float $window   seconds over which to measure, about
     * @return Measured|null  null: this was the first look, and the next one can tell
     */
    public function measure(Table $table, string $counter, float $window = 10): ?Measured
    {
        $probe = $table->probe;
        $schema = $table->schema;
        $name = json_encode([$probe->link->host, $probe->link->port, $schema->name, $table->where, $counter, $window]);
        $file = "$this->directory/" . hash('sha256', (string) $name);
        $uptime = $probe->uptime();
        $time = hrtime(true) / 1e9;
        $ranking = Ranking::of($table->pages(), $counter, true, self::MOST);
        $kept = array_fill_keys([
            ...array_keys($schema->keys),
            ...array_keys(Rates::counters($schema)),
            ...array_filter([$schema->createTime()], is_string(...)),
            ...preg_grep('/CreationOrder$/D', array_keys($schema->columns)),
        ], true);
        $rows = [];
        foreach ($ranking->rows as $row) {
            $rows[Reading::key($schema, $row)] = array_intersect_key($row, $kept);
        }
        $now = new Reading($schema, $rows, $uptime, $time);
        $looks = array_values(array_filter(
            $this->looks($file),
            static fn(array $look) => $look[1] < $time && $time - $look[1] < max(self::FRESH, 6 * $window),
        ));
        $last = end($looks);
        if ($last === false || $time - $last[1] >= $window) {
            $looks[] = [$uptime, $time, $rows];
            State::replace($file, serialize(array_slice($looks, -2)));
            $this->tidy();
        }
        $before = $looks[0];
        if ($time - $before[1] < self::LEAST) {
            return null;
        }
        return new Measured(
            Rates::between(new Reading($schema, $before[2], $before[0], $before[1]), $now),
            $time - $before[1],
            $ranking->read,
            $ranking->read <= self::MOST,
        );
    }

    /** @return list<array{int, float, array<string, array<string, mixed>>}> the agent's clock, this machine's, rows */
    private function looks(string $file): array
    {
        $bytes = @file_get_contents($file);
        $looks = $bytes === false ? false : @unserialize($bytes, ['allowed_classes' => false]);
        return is_array($looks) ? $looks : [];
    }

    /** Now and then, removes what nobody looks at any more. */
    private function tidy(): void
    {
        if (random_int(0, 99) === 0) {
            foreach (glob("$this->directory/*") as $file) {
                if (@filemtime($file) < time() - self::FORGOTTEN) {
                    @unlink($file);
                }
            }
        }
    }
}
