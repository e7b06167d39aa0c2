<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** What a key of a row is, as the stub says it. */
final class Key
{
    /** @param list<Key> $rows the keys of the rows that it holds */
    public function __construct(
        public readonly string $name,
        public readonly string $type,
        public readonly bool $optional,
        public readonly array $rows,
    ) {
    }
}
