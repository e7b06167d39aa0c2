<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Visit;

/** A picture that was made on the server: SVG of the classes below Picture/, which escape all that it holds. */
final class Picture implements Block
{
    /** @param Closure(): string $svg empty when there is nothing to draw */
    public function __construct(
        private readonly string $title,
        private readonly Closure $svg,
        private readonly string $note = '',
        private readonly string $empty = 'There is nothing to draw yet.',
    ) {
    }

    public function template(): string
    {
        return 'picture';
    }

    public function shown(Visit $visit, string $id): array
    {
        return [
            'title' => $this->title,
            'svg' => ($this->svg)(),
            'note' => $this->note,
            'empty' => $this->empty,
        ];
    }

    public function isLive(): bool
    {
        return true;
    }
}
