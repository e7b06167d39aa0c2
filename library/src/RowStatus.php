<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** The state of a control row (RFC 2819, EntryStatus). */
enum RowStatus: int
{
    case valid = 1;
    case createRequest = 2;
    case underCreation = 3;
    case invalid = 4;

    public static function nameOf(int $status): string
    {
        return self::tryFrom($status)?->name ?? (string) $status;
    }
}
