<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

use RuntimeException;

/** A filter that rows of the filter table can't say. */
final class Inexpressible extends RuntimeException
{
}
