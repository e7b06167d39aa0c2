<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Voice;

/** One end of a call. */
final class Party
{
    /**
     * @param string $number  the phone's number; empty where it isn't known
     * @param string $address its IPv4 address as text
     * @param string $name    whose it is: the owner or the alias
     */
    public function __construct(
        public readonly string $number,
        public readonly string $address,
        public readonly string $name,
    ) {
    }
}
