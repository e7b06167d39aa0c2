<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Rmon\Console\Problem;
use Rmon\Console\Visit;

/** What stands in the place of a block that couldn't be made. */
final class Failed implements Block
{
    public function __construct(private readonly Problem $problem)
    {
    }

    public function template(): string
    {
        return 'failed';
    }

    public function shown(Visit $visit, string $id): array
    {
        return ['problem' => $this->problem];
    }

    public function isLive(): bool
    {
        return true;
    }
}
