<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use RuntimeException;

/** The reader of the output has closed it. */
final class ClosedPipe extends RuntimeException
{
}
