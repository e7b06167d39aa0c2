<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use RuntimeException;

/** What was asked for makes no sense; the message says why, and what would. */
final class UsageError extends RuntimeException
{
}
