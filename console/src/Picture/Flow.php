<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

/** How much one end sent to another. */
final class Flow
{
    public function __construct(
        public readonly string $source,
        public readonly string $destination,
        public readonly float $amount,
    ) {
    }
}
