<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use RuntimeException;

/** A request that isn't answered with metrics. */
final class Refusal extends RuntimeException
{
    /** @param int $status of HTTP */
    public function __construct(public readonly int $status, string $message)
    {
        parent::__construct($message);
    }
}
