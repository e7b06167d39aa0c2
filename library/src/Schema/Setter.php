<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/** A function that changes a table: it takes the link and these columns, in this order. */
final class Setter
{
    /** @var list<string> */
    public readonly array $columns;

    public function __construct(public readonly string $function, string ...$columns)
    {
        $this->columns = array_values($columns);
    }
}
