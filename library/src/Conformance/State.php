<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Conformance;

/** What a check found. */
enum State: string
{
    /** The agent does it as it should. */
    case Kept = 'ok';
    /** There was nothing to see it by; the finding says why. */
    case Empty = 'empty';
    /** The agent doesn't have it. */
    case Lacking = 'lacks';
    /** The agent does it in another way. */
    case Broken = 'fault';
}
