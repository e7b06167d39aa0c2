<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** One place of a list of the most: who, and how much. */
final class Talker
{
    /**
     * @param string $address  the host; of conversations the sender
     * @param string|null $peer of conversations the receiver
     * @param string|null $protocol the path, where the table tells hosts by application as well
     * @param float $rate      bits in each second of octets; otherwise of what is counted, so many in each second
     * @param float $part      of the sum over all, 0 to 1
     * @param float $grown     what was counted in the time
     * @param array<string, mixed> $row as it was read last
     */
    public function __construct(
        public readonly string $address,
        public readonly ?string $peer,
        public readonly ?string $protocol,
        public readonly float $rate,
        public readonly float $part,
        public readonly float $grown,
        public readonly array $row,
    ) {
    }
}
