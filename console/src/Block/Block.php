<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Rmon\Console\Visit;

/** A part of a page: a table, a chart, a sentence. */
interface Block
{
    /** The name of its template below templates/block/. */
    public function template(): string;

    /**
     * What its template gets as "block". Work is done here, so that a refresh of another block costs nothing.
     *
     * @return array<string, mixed>
     */
    public function shown(Visit $visit, string $id): array;

    /** Whether it changes with time, and is refreshed. */
    public function isLive(): bool;
}
