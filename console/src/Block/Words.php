<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Text;
use Rmon\Console\Visit;

/** The answer in words: sentences that are found out only when they are shown. */
final class Words implements Block
{
    /** @param Closure(): list<array{string, string}> $sentences each with its kind: "answer" or "warning" */
    public function __construct(private readonly Closure $sentences)
    {
    }

    public function template(): string
    {
        return 'words';
    }

    public function shown(Visit $visit, string $id): array
    {
        return ['sentences' => array_map(
            static fn(array $sentence) => ['text' => Text::shown($sentence[0], 400), 'kind' => $sentence[1]],
            ($this->sentences)(),
        )];
    }

    public function isLive(): bool
    {
        return true;
    }
}
