<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Rmon\Console\Layout;
use Rmon\Console\Problem;
use Rmon\Console\Visit;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\RmonException;

/** Blocks side by side, where there is room. */
final class Panels implements Block
{
    /** @param array<string, Block> $blocks by id */
    public function __construct(public readonly array $blocks)
    {
    }

    public function template(): string
    {
        return 'panels';
    }

    public function shown(Visit $visit, string $id): array
    {
        $panels = [];
        foreach ($this->blocks as $inner => $block) {
            try {
                $panels[] = Layout::block($visit, $inner, $block);
            } catch (ConnectionFailed $lost) {
                throw $lost;
            } catch (RmonException $failure) {
                $panels[] = Layout::block($visit, $inner, new Failed(Problem::of($failure)));
            }
        }
        return ['panels' => $panels];
    }

    public function isLive(): bool
    {
        return false;
    }
}
