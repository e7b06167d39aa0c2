<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Voice;

/**
 * Codecs, and how much each spoils speech: the impairment that it makes by itself (Ie), and how well it bears losses
 * (Bpl, where losses are random), as ITU-T G.113, Appendix I, has them. Where that gives no Bpl, that of G.711 without
 * concealment stands, which is the worst.
 */
enum Codec: string
{
    case G711 = 'G.711';
    case G722 = 'G.722';
    case G7231 = 'G.723.1';
    case G726 = 'G.726';
    case G728 = 'G.728';
    case G729 = 'G.729';
    case G729A = 'G.729A';
    case GsmFullRate = 'GSM FR';
    case GsmHalfRate = 'GSM HR';
    case GsmEnhanced = 'GSM EFR';

    /** What SCCP calls them. */
    private const SCCP = [
        2 => self::G711, 3 => self::G711, 4 => self::G711, 5 => self::G711,
        6 => self::G722, 7 => self::G722, 8 => self::G722,
        9 => self::G7231, 10 => self::G728, 11 => self::G729, 12 => self::G729A, 15 => self::G729, 16 => self::G729A,
        18 => self::GsmFullRate, 19 => self::GsmHalfRate, 20 => self::GsmEnhanced,
        82 => self::G726, 83 => self::G726, 84 => self::G726,
    ];

    /** Names as texts of sessions have them, in small letters and without signs. */
    private const NAMES = [
        'pcmu' => self::G711, 'pcma' => self::G711, 'g711' => self::G711, 'g711u' => self::G711, 'g711a' => self::G711,
        'g711ulaw' => self::G711, 'g711alaw' => self::G711,
        'g722' => self::G722, 'g723' => self::G7231, 'g7231' => self::G7231, 'g72632' => self::G726,
        'g726' => self::G726, 'g728' => self::G728, 'g729' => self::G729, 'g729a' => self::G729A,
        'g729b' => self::G729, 'g729ab' => self::G729A, 'gsm' => self::GsmFullRate, 'gsmfr' => self::GsmFullRate,
        'gsmhr' => self::GsmHalfRate, 'gsmefr' => self::GsmEnhanced,
    ];

    /** The codec of a payload type of SCCP; null when it isn't one of these. */
    public static function ofSccp(int $payload): ?self
    {
        return self::SCCP[$payload] ?? null;
    }

    /** The codec of a name such as "PCMU", "G.729A" or "G711.u"; null when it isn't one of these. */
    public static function named(string $name): ?self
    {
        $name = preg_replace('/[^a-z0-9]/', '', strtolower(strtok($name, '/ ') ?: ''));
        return self::NAMES[$name] ?? null;
    }

    /** Ie. G.722 carries more than the telephone's band, for which this scale has no better mark than G.711's. */
    public function impairment(): float
    {
        return match ($this) {
            self::G711, self::G722 => 0.0,
            self::GsmEnhanced => 5.0,
            self::G726, self::G728 => 7.0,
            self::G729 => 10.0,
            self::G729A => 11.0,
            self::G7231 => 15.0,
            self::GsmFullRate => 20.0,
            self::GsmHalfRate => 23.0,
        };
    }

    /** Bpl. */
    public function robustness(): float
    {
        return match ($this) {
            self::G729, self::G729A => 19.0,
            self::G7231 => 16.1,
            self::GsmEnhanced => 10.0,
            default => 4.3,
        };
    }
}
