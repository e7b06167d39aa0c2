<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/** A link that was up is lost; the next call makes a new one. */
class ConnectionLost extends ConnectionFailed
{
}
