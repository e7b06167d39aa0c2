<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** A record, its fields in wire order. */
final class WireRecord
{
    /** @param list<WireField> $fields */
    public function __construct(
        public readonly string $name,
        public readonly string $header,
        public readonly string $section,
        public readonly string $note,
        public readonly array $fields,
    ) {
    }
}
