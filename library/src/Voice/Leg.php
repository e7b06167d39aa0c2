<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Voice;

/** What one party of a call got to hear: one direction of its media. */
final class Leg
{
    /**
     * A receiver holds packets back until the late ones are there. For want of its own figure, for so many times the
     * jitter.
     */
    private const HELD_BACK = 2.0;

    /**
     * @param bool $toCaller      whether the caller hears it; otherwise the one who was called
     * @param int $packets        packets that came, or where nobody counted those, that were sent
     * @param int $octets         octets of the same
     * @param int $lost           packets that were lost
     * @param int|null $expected  how many there should have been; null where no media were seen
     * @param int $jitter         in milliseconds
     * @param int|null $latency   one way, in milliseconds; null where it isn't measured
     * @param Codec|null $codec   null where it isn't known
     * @param int $flags          figures above their thresholds, where alarms are on: 1 jitter, 2 loss, 4 latency
     */
    public function __construct(
        public readonly bool $toCaller,
        public readonly int $packets,
        public readonly int $octets,
        public readonly int $lost,
        public readonly ?int $expected,
        public readonly int $jitter,
        public readonly ?int $latency,
        public readonly ?Codec $codec,
        public readonly int $flags,
    ) {
    }

    /** The part of the packets that was lost, from 0 to 1; null where no media were seen. */
    public function loss(): ?float
    {
        return $this->expected === null || $this->expected < 1 ? null : min(1.0, $this->lost / $this->expected);
    }

    /** Milliseconds from mouth to ear: what is known of the network's, and what the receiver adds. */
    public function delay(): float
    {
        return ($this->latency ?? 0) + self::HELD_BACK * $this->jitter;
    }

    /** How good it can have sounded: the rating of the E-model, as of G.711 where the codec isn't known. */
    public function rating(): ?float
    {
        $loss = $this->loss();
        return $loss === null ? null : EModel::rating($this->delay(), $loss, $this->codec ?? Codec::G711);
    }

    /** The same as a mean opinion score. */
    public function opinion(): ?float
    {
        $rating = $this->rating();
        return $rating === null ? null : EModel::opinion($rating);
    }
}
