<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** How speech is packed. The values are the names that SDP has for them. */
enum Codec: string
{
    case Pcmu = 'PCMU';
    case Pcma = 'PCMA';
    case G722 = 'G722';
    case G723 = 'G723';
    case G729 = 'G729';
    case Opus = 'opus';

    /** Of RFC 3551; from 96 on a number that only signalling explains. */
    public function payloadType(): int
    {
        return match ($this) {
            self::Pcmu => 0,
            self::G723 => 4,
            self::Pcma => 8,
            self::G722 => 9,
            self::G729 => 18,
            self::Opus => 96,
        };
    }

    /** Of the RTP timestamps, in Hz. That of G.722 is 8000 though it samples twice as often: RFC 3551 4.5.2. */
    public function clock(): int
    {
        return $this === self::Opus ? 48_000 : 8_000;
    }

    /** How much speech a packet has, in milliseconds. */
    public function period(): int
    {
        return $this === self::G723 ? 30 : 20;
    }

    /** Octets of a packet's speech. */
    public function octets(): int
    {
        return match ($this) {
            self::Pcmu, self::Pcma, self::G722 => 160,
            self::G723 => 24,
            self::G729 => 20,
            self::Opus => 60,
        };
    }

    /** A packet's speech: noise, but for an octet that tells what it is. */
    public function speech(): string
    {
        // The best mode of Opus, 20 ms in one frame.
        return $this === self::Opus ? "\x78" . noise($this->octets() - 1) : noise($this->octets());
    }

    public function sdp(): string
    {
        return match ($this) {
            self::Opus => 'opus/48000/2',
            default => "$this->value/8000",
        };
    }

    /** Its number in SCCP, null where there is none. */
    public function sccp(): ?int
    {
        return match ($this) {
            self::Pcma => 2,
            self::Pcmu => 4,
            self::G722 => 6,
            self::G723 => 9,
            self::G729 => 11,
            self::Opus => null,
        };
    }

    /** Which of H.245's AudioCapability it is, null where there is none that this generator writes. */
    public function h245(): ?int
    {
        return match ($this) {
            self::Pcma => 1,
            self::Pcmu => 3,
            self::G722 => 5,
            self::G723 => 8,
            self::G729 => 10,
            self::Opus => null,
        };
    }
}
