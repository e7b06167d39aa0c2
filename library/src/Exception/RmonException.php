<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

use RuntimeException;
use Throwable;

/**
 * What went wrong, where and in which call. Everything that the library throws by itself is one of these; catch the
 * subclasses to tell the cases apart.
 */
abstract class RmonException extends RuntimeException
{
    /**
     * @param string $text          what happened, without host and function
     * @param string|null $host     the probe, as it was named to connect()
     * @param int|null $port        its TCP port
     * @param string|null $function the module's function that was called
     */
    final public function __construct(
        public readonly string $text,
        public readonly ?string $host = null,
        public readonly ?int $port = null,
        public readonly ?string $function = null,
        ?Throwable $previous = null,
    ) {
        $where = $host === null ? '' : "$host:$port: ";
        parent::__construct($where . $text . ($function === null ? '' : " ($function)"), 0, $previous);
    }
}
