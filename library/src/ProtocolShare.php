<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** How much of an interface's traffic a protocol had. */
final class ProtocolShare
{
    /**
     * @param string $path      such as "ip.tcp.https"
     * @param int $localIndex   its protocolDirLocalIndex
     * @param float $rate       bits in each second, those of the protocols above it included
     * @param float $part       of all traffic, 0 to 1
     * @param float $own        of all traffic, what belongs to no protocol above it
     * @param float $packets    packets in each second
     */
    public function __construct(
        public readonly string $path,
        public readonly int $localIndex,
        public readonly float $rate,
        public readonly float $part,
        public readonly float $own,
        public readonly float $packets,
    ) {
    }
}
