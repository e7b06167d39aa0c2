<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\ErrorStatus;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\ExtensionMissing;
use Rmon\Exception\RmonException;
use Throwable;

/** What went wrong, in words for people: what happened, to whom, and what to do. */
final class Problem
{
    public function __construct(
        public readonly string $title,
        public readonly string $text,
        public readonly string $advice = '',
    ) {
    }

    public static function of(Throwable $failure): self
    {
        return match (true) {
            $failure instanceof Refusal => new self(
                match ($failure->status) {
                    403 => 'Not permitted.',
                    404 => 'Not found.',
                    429 => 'Please wait.',
                    default => 'That did not work.',
                },
                $failure->getMessage(),
            ),
            $failure instanceof ExtensionMissing => new self(
                'The PHP module rmon is not loaded.',
                $failure->text,
                'Enable the module for the PHP that serves this page.',
            ),
            $failure instanceof ConnectionLost => new self(
                'The agent does not answer any more.',
                self::who($failure) . " was there and went, or takes too long: $failure->text",
                'Load the page again in a moment. If it stays away, look at the machine that it runs on.',
            ),
            $failure instanceof ConnectionFailed => new self(
                'The agent cannot be reached.',
                self::who($failure) . ": $failure->text",
                'Is rmon-agent running there, does it listen on that address, and is the way there open?',
            ),
            $failure instanceof AgentRefused => new self(
                'The agent refused.',
                self::who($failure) . " answered: $failure->text",
                $failure->error() === ErrorStatus::genErr
                    ? 'Its table is full: remove rows that nobody needs.'
                    : 'A row that works refuses most changes; remove it, or make another one.',
            ),
            $failure instanceof BadArgument => new self('That can\'t be.', $failure->text),
            $failure instanceof RmonException => new self(
                'The agent gave no usable answer.',
                self::who($failure) . ": $failure->text",
            ),
            default => new self(
                'Something went wrong in the console.',
                'That is a fault of the console, not of the probe. Its log has the details.',
            ),
        };
    }

    private static function who(RmonException $failure): string
    {
        return "The agent at $failure->host:$failure->port";
    }
}
