<?php

declare(strict_types=1);

namespace Rmon\Command;

use RuntimeException;

/** Who read the output wants no more of it. */
final class ClosedPipe extends RuntimeException
{
}
