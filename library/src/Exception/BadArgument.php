<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/** What the caller gave can't be meant: a value out of range, a missing one, a name that isn't known. */
class BadArgument extends RmonException
{
}
