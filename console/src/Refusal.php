<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use RuntimeException;

/** A page that isn't given out: there is none, or not for this user. */
final class Refusal extends RuntimeException
{
    public function __construct(public readonly int $status, string $message)
    {
        parent::__construct($message);
    }

    public static function notFound(string $message = 'There is no such page.'): self
    {
        return new self(404, $message);
    }
}
