<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/** No link could be made: the host has no address, nothing listens there, or no link is free. */
class ConnectionFailed extends RmonException
{
}
