<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** What happens to the packets of a stream on their way. */
final class Quality
{
    /**
     * @param int $lost       packets that don't arrive
     * @param int $reordered  packets that the one behind them overtakes
     * @param int $duplicates packets that arrive twice
     * @param int $jitter     about where the estimate of RFC 3550 settles, in microseconds
     */
    public function __construct(
        public readonly int $lost = 0,
        public readonly int $reordered = 0,
        public readonly int $duplicates = 0,
        public readonly int $jitter = 0,
    ) {
    }
}
