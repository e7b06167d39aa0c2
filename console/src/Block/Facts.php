<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Text;
use Rmon\Console\Visit;

/** Names and values, one line each. */
final class Facts implements Block
{
    /** @param Closure(): array<string, string> $facts by name */
    public function __construct(private readonly Closure $facts, private readonly string $title = '')
    {
    }

    public function template(): string
    {
        return 'facts';
    }

    public function shown(Visit $visit, string $id): array
    {
        return ['title' => $this->title, 'facts' => array_map(Text::shown(...), ($this->facts)())];
    }

    public function isLive(): bool
    {
        return true;
    }
}
