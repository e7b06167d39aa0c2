<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter\Text;

use InvalidArgumentException;

/** All samples of one name. What a name, a unit and a type may be is checked here, once for each family. */
final class Family
{
    /** What samples may end with, so that no family's name may: one's samples would look like another's. */
    private const RESERVED = '/_(total|created|bucket|count|sum|info|gcount|gsum)$/D';

    /** @var list<string> what stands between the braces of each sample */
    public array $labels = [];

    /** @var list<int|float|array<string, int>> for a histogram: by bound, how many events were no larger */
    public array $values = [];

    /** @var list<float|null> when each began, in seconds since 1970 */
    public array $created = [];

    /**
     * @param string $name without what its samples end with, "_total" or "_info"
     * @param string $unit a base unit that the name ends with; empty for none
     */
    public function __construct(
        public readonly string $name,
        public readonly MetricType $type,
        public readonly string $help,
        public readonly string $unit = '',
    ) {
        if (!preg_match('/^[a-zA-Z_:][a-zA-Z0-9_:]*$/D', $name) || preg_match(self::RESERVED, $name)) {
            throw new InvalidArgumentException("\"$name\" is no name of a family.");
        }
        if ($unit !== '' && !str_ends_with($name, "_$unit")) {
            throw new InvalidArgumentException("$name doesn't end with its unit, $unit.");
        }
    }

    /**
     * @param string $labels see Labels::text()
     * @param int|float|array<string, int> $value
     */
    public function add(string $labels, int|float|array $value, ?float $created = null): void
    {
        $this->labels[] = $labels;
        $this->values[] = $value;
        $this->created[] = $created;
    }

    /**
     * Several samples at once.
     *
     * @param list<string> $labels
     * @param list<int|float> $values
     * @param list<float|null> $created none for samples that don't begin
     */
    public function addAll(array $labels, array $values, array $created): void
    {
        array_push($this->labels, ...$labels);
        array_push($this->values, ...$values);
        array_push($this->created, ...($created === [] ? array_fill(0, count($labels), null) : $created));
    }
}
