<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/** The functions that change a table's rows. */
final class Writer
{
    /**
     * @param Setter|null $set    makes and changes rows; with a status column it removes them as well
     * @param Setter|null $add    only makes them
     * @param Setter|null $change only changes them
     * @param Setter|null $remove only removes them
     */
    public function __construct(
        public readonly ?Setter $set = null,
        public readonly ?Setter $add = null,
        public readonly ?Setter $change = null,
        public readonly ?Setter $remove = null,
    ) {
    }

    /** One function for all changes. */
    public static function set(string $function, string ...$columns): self
    {
        return new self(new Setter($function, ...$columns));
    }

    /** The same, and a function that removes a row. */
    public function remove(string $function, string ...$columns): self
    {
        return new self($this->set, $this->add, $this->change, new Setter($function, ...$columns));
    }

    /** @return list<Setter> */
    public function setters(): array
    {
        return array_values(array_filter([$this->set, $this->add, $this->change, $this->remove]));
    }
}
