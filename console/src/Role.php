<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** What somebody may do. */
enum Role: string
{
    /** Look at everything. */
    case Reader = 'read-only';
    /** Change things as well: capture, settings, control rows. */
    case Operator = 'operator';

    public function mayChange(): bool
    {
        return $this === self::Operator;
    }
}
