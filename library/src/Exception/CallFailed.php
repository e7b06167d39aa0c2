<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/**
 * The agent took the call and gave no usable answer: no such procedure, arguments or results that don't decode.
 */
class CallFailed extends RmonException
{
}
