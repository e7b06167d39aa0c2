<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** A control row that is in use: the table and index that other tables' rows are found by. */
final class ControlRow
{
    /**
     * @param string $table the control table
     * @param bool $made    whether it is the user's own, and goes with the user; otherwise somebody else's
     */
    public function __construct(
        public readonly string $table,
        public readonly int $index,
        public readonly bool $made,
    ) {
    }
}
