<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** What an agent answers a set (RFC 3416, error-status). */
enum ErrorStatus: int
{
    case noError = 0;
    case tooBig = 1;
    case noSuchName = 2;
    case badValue = 3;
    case readOnly = 4;
    case genErr = 5;
    case noAccess = 6;
    case wrongType = 7;
    case wrongLength = 8;
    case wrongEncoding = 9;
    case wrongValue = 10;
    case noCreation = 11;
    case inconsistentValue = 12;
    case resourceUnavailable = 13;
    case commitFailed = 14;
    case undoFailed = 15;
    case authorizationError = 16;
    case notWritable = 17;
    case inconsistentName = 18;

    public static function nameOf(int $status): string
    {
        return self::tryFrom($status)?->name ?? "error-status $status";
    }
}
