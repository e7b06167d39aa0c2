<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

/** A frame out of a capture buffer. */
final class Packet
{
    /**
     * @param int $index       captureBufferIndex
     * @param int $time        when it came, by this machine's clock: nanoseconds since 1970
     * @param string $octets   what was captured of it
     * @param int $length      its own length, without the check sequence
     */
    public function __construct(
        public readonly int $index,
        public readonly int $time,
        public readonly string $octets,
        public readonly int $length,
    ) {
    }
}
