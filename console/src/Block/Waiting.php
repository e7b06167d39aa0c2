<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use RuntimeException;

/** A block that has nothing to show yet and will have in a moment: it says so, and is refreshed soon. */
final class Waiting extends RuntimeException
{
    public function __construct(string $text, public readonly string $title = '')
    {
        parent::__construct($text);
    }
}
