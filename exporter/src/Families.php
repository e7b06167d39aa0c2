<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Rmon\Exporter\Text\Family;

/** The families of a scrape: each name once, and no more series than the module may have. */
final class Families
{
    /** @var array<string, Family> by name */
    private array $families = [];

    private int $series = 0;

    public function __construct(private readonly int $most)
    {
    }

    /**
     * Takes a family up.
     *
     * @throws ConfigurationError when there is one of its name: their samples could be the same
     */
    public function add(Family $family): void
    {
        if (isset($this->families[$family->name])) {
            throw new ConfigurationError("Two tables of the module would have metrics called $family->name.");
        }
        $this->families[$family->name] = $family;
    }

    /** This family, or the one of the same name that is there already. */
    public function of(Family $family): Family
    {
        return $this->families[$family->name] ??= $family;
    }

    /** Whether there is room for so many series more, which are then taken for used. */
    public function take(int $series): bool
    {
        if ($this->series + $series > $this->most) {
            return false;
        }
        $this->series += $series;
        return true;
    }

    /** @return list<Family> */
    public function all(): array
    {
        return array_values($this->families);
    }
}
