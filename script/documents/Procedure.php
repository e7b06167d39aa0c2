<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** A procedure: number, name, argument and result. */
final class Procedure
{
    public function __construct(
        public readonly int $number,
        public readonly string $name,
        public readonly string $argument,
        public readonly string $result,
    ) {
    }
}
