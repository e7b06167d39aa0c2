<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use RuntimeException;

/** A scrape has taken as long as it may. */
final class OutOfTime extends RuntimeException
{
}
