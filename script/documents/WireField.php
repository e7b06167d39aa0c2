<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** A field of a wire record. */
final class WireField
{
    public function __construct(
        public readonly string $name,
        public readonly string $type,
        public readonly string $note,
    ) {
    }
}
