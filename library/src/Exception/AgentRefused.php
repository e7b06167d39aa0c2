<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

use Rmon\ErrorStatus;

/** The agent answered a read or a set with an error-status. */
class AgentRefused extends RmonException
{
    /** The agent's answer as a number; see error(). */
    public int $status = 0;

    public static function with(int $status, string $host, int $port, string $function): self
    {
        $name = ErrorStatus::nameOf($status);
        $made = new self("The agent refused with $name.", $host, $port, $function);
        $made->status = $status;
        return $made;
    }

    /** The answer by name; null for a number that SNMP has no name for. */
    public function error(): ?ErrorStatus
    {
        return ErrorStatus::tryFrom($this->status);
    }
}
