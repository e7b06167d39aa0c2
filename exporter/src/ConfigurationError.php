<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use RuntimeException;

/** The configuration file says something that can't be. */
final class ConfigurationError extends RuntimeException
{
}
