<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use RuntimeException;

/** A signal or a key asks to end; what was made on the agent is removed on the way out. */
final class Interrupted extends RuntimeException
{
    public function __construct(public readonly int $exitCode)
    {
        parent::__construct('Interrupted.');
    }
}
