<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** What became of a row between two readings. */
enum Change: string
{
    /** It went on counting. */
    case Counted = 'counted';
    /** It wasn't there before. */
    case Appeared = 'appeared';
    /** It is another row of the same name, which began to count in between. */
    case Replaced = 'replaced';
    /** The agent was restarted in between, and all of its rows start over. */
    case Restarted = 'restarted';
}
