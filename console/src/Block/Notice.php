<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Rmon\Console\Visit;

/** A sentence: an answer in words, or why there is none. */
final class Notice implements Block
{
    /** @param string $kind "answer", "empty" or "warning" */
    public function __construct(
        private readonly string $text,
        private readonly string $kind = 'answer',
        private readonly string $advice = '',
    ) {
    }

    public function template(): string
    {
        return 'notice';
    }

    public function shown(Visit $visit, string $id): array
    {
        return ['text' => $this->text, 'kind' => $this->kind, 'advice' => $this->advice];
    }

    public function isLive(): bool
    {
        return true;
    }
}
