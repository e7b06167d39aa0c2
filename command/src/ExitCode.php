<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\CallFailed;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\TableBroken;
use Symfony\Component\Console\Exception\ExceptionInterface as ConsoleException;
use Throwable;

/** What the command ends with. */
final class ExitCode
{
    public const DONE = 0;
    public const FAILED = 1;
    public const USAGE = 2;
    public const NO_AGENT = 3;
    public const REFUSED = 4;
    public const INTERRUPTED = 130;
    public const CLOSED_PIPE = 141;

    /** What people read about each, in the manual. */
    public const MEANINGS = [
        self::DONE => 'Done.',
        self::FAILED => 'There is no such row, the doctor found a fault, or something else went wrong.',
        self::USAGE => 'Wrong usage: an unknown command, option, table, column or value.',
        self::NO_AGENT => 'No agent can be reached, or the link to it was lost.',
        self::REFUSED => 'The agent refused, or gave no usable answer.',
        self::INTERRUPTED => 'Ended by Ctrl-C before it was done.',
        self::CLOSED_PIPE => 'Who read the output closed it.',
    ];

    public static function of(Throwable $failure): int
    {
        return match (true) {
            $failure instanceof ClosedPipe => self::CLOSED_PIPE,
            $failure instanceof Interrupted => $failure->exitCode,
            $failure instanceof ConnectionFailed, $failure instanceof ConnectionLost => self::NO_AGENT,
            $failure instanceof AgentRefused, $failure instanceof CallFailed,
            $failure instanceof TableBroken => self::REFUSED,
            $failure instanceof BadArgument, $failure instanceof ConsoleException,
            $failure instanceof UsageError => self::USAGE,
            default => self::FAILED,
        };
    }
}
