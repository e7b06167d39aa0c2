<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** What a function takes. */
final class Parameter
{
    public function __construct(
        public readonly string $name,
        public readonly string $type,
        public readonly string $text,
        public readonly bool $optional,
    ) {
    }
}
