<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Visit;

/** Links to other views of the page: in each group, one of several, or a step from here. */
final class Choices implements Block
{
    /** @param Closure(): array<string, list<array{string, string, bool}>> $groups label: text, address, whether it is here */
    public function __construct(private readonly Closure $groups)
    {
    }

    public function template(): string
    {
        return 'choices';
    }

    public function shown(Visit $visit, string $id): array
    {
        return ['groups' => ($this->groups)()];
    }

    public function isLive(): bool
    {
        return true;
    }
}
