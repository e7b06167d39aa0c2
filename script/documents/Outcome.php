<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** What became of a function's calls: its example, and how it reports what goes wrong. */
final class Outcome
{
    /** @param list<array{string, list<string>, string}> $reports when, what was reported, what was returned */
    public function __construct(
        public readonly string $code,
        public readonly string $output,
        public readonly array $reports,
    ) {
    }
}
