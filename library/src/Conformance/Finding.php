<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Conformance;

/** What a check of an agent came to. */
final class Finding
{
    /**
     * @param string $what a table, or what else was looked at
     * @param string $text what was found, in some words
     */
    public function __construct(
        public readonly State $state,
        public readonly string $what,
        public readonly string $text,
    ) {
    }
}
