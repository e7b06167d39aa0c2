<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** Somebody who may sign in. */
final class User
{
    /** @param string $hash what password_hash() made of the password */
    public function __construct(
        public readonly string $name,
        public readonly string $hash,
        public readonly Role $role,
    ) {
    }
}
