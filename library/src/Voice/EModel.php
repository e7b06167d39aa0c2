<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Voice;

use Rmon\Exception\BadArgument;

/**
 * How good a call can sound, from delay, loss and codec: the E-model of ITU-T G.107. All that packets don't tell, as
 * loudness, noise and echo, has the values that the model proposes, with which nothing lost and no delay rates 93.2.
 */
final class EModel
{
    /** The model's own default values; levels in dB. */
    private const SEND_LOUDNESS = 8.0;
    private const RECEIVE_LOUDNESS = 2.0;
    private const SIDE_TONE = 15.0;
    private const LISTENER_SIDE_TONE = 18.0;
    private const SEND_DIFFERENCE = 3.0;
    private const TALKER_ECHO = 65.0;
    private const LISTENER_ECHO = 110.0;
    private const CIRCUIT_NOISE = -70.0;
    private const FLOOR_NOISE = -64.0;
    private const ROOM_NOISE = 35.0;
    private const QUANTIZATION_UNITS = 1.0;

    /** A delay that nobody notices yet, in milliseconds. */
    private const UNNOTICED = 100.0;

    /**
     * The rating R, from 0 (useless) to 93.2 here (nothing to complain about).
     *
     * @param float $delay from mouth to ear, in milliseconds
     * @param float $loss  the part of the packets that is lost, from 0 to 1
     * @param float $burst how much more than by chance losses come together: 1 for random ones (BurstR)
     */
    public static function rating(float $delay, float $loss, Codec $codec = Codec::G711, float $burst = 1.0): float
    {
        if (!($delay >= 0) || !($loss >= 0 && $loss <= 1) || !($burst >= 1)) {
            throw new BadArgument('A delay is at least 0 ms, a loss a part of 1, bursts are at least 1.');
        }
        $rating = self::base() - self::simultaneous() - self::delayed($delay) - self::equipment($loss, $codec, $burst);
        return max(0.0, $rating);
    }

    /** What people would say of it on average, from 1 (bad) to 4.5 (excellent): the mean opinion score of a rating. */
    public static function opinion(float $rating): float
    {
        return match (true) {
            $rating <= 0 => 1.0,
            $rating >= 100 => 4.5,
            // The curve goes below 1 for ratings below 6.5.
            default => max(1.0, 1 + 0.035 * $rating + $rating * ($rating - 60) * (100 - $rating) * 7e-6),
        };
    }

    /** A rating in a word, by the classes of ITU-T G.109. */
    public static function word(float $rating): string
    {
        return match (true) {
            $rating >= 90 => 'best',
            $rating >= 80 => 'high',
            $rating >= 70 => 'medium',
            $rating >= 60 => 'low',
            $rating >= 50 => 'poor',
            default => 'bad',
        };
    }

    /** All noise, as one level at the receiving side (No). */
    private static function noise(): float
    {
        $overall = self::SEND_LOUDNESS + self::RECEIVE_LOUDNESS;
        $sent = self::ROOM_NOISE - self::SEND_LOUDNESS - self::SEND_DIFFERENCE - 100
            + 0.004 * (self::ROOM_NOISE - $overall - self::SEND_DIFFERENCE - 14) ** 2;
        $heard = self::ROOM_NOISE + 10 * log10(1 + 10 ** ((10 - self::LISTENER_SIDE_TONE) / 10));
        $received = self::RECEIVE_LOUDNESS - 121 + $heard + 0.008 * ($heard - 35) ** 2;
        $floor = self::FLOOR_NOISE + self::RECEIVE_LOUDNESS;
        return 10 * log10(
            10 ** (self::CIRCUIT_NOISE / 10) + 10 ** ($sent / 10) + 10 ** ($received / 10) + 10 ** ($floor / 10),
        );
    }

    /** Speech over noise (Ro). */
    private static function base(): float
    {
        return 15 - 1.5 * (self::SEND_LOUDNESS + self::noise());
    }

    /** What comes along with speech: loudness, side tone, quantization (Is). */
    private static function simultaneous(): float
    {
        $overall = self::SEND_LOUDNESS + self::RECEIVE_LOUDNESS;
        $loud = ($overall + 0.2 * (64 + self::noise() - self::RECEIVE_LOUDNESS)) / 8;
        $loudness = 20 * ((1 + $loud ** 8) ** (1 / 8) - $loud);
        $side = self::sideTone();
        $quality = 37 - 15 * log10(self::QUANTIZATION_UNITS);
        $goodness = 1.07 + 0.258 * $quality + 0.0602 * $quality ** 2;
        $low = (self::base() - 100) / 15 + 46 / 8.4 - $goodness / 9;
        $high = 46 / 30 - $goodness / 40;
        return $loudness + $side + 15 * log10(1 + 10 ** $low + 10 ** $high);
    }

    /** Side tone that isn't as people like it (Ist). */
    private static function sideTone(): float
    {
        $tone = -10 * log10(10 ** (-self::SIDE_TONE / 10) + 10 ** (-self::TALKER_ECHO / 10));
        return 12 * (1 + (($tone - 13) / 6) ** 8) ** (1 / 8)
            - 28 * (1 + (($tone + 1) / 19.4) ** 35) ** (1 / 35)
            - 13 * (1 + (($tone - 3) / 33) ** 13) ** (1 / 13)
            + 29;
    }

    /** What comes by delay: echo of both sides, and waiting for each other (Id). */
    private static function delayed(float $delay): float
    {
        $echo = self::TALKER_ECHO - 40 * log10((1 + $delay / 10) / (1 + $delay / 150)) + 6 * exp(-0.3 * $delay ** 2);
        $half = (-1.5 * (self::noise() - self::RECEIVE_LOUDNESS) - (80 + 2.5 * ($echo - 14))) / 2;
        $talker = ($half + sqrt($half ** 2 + 100) - 1) * (1 - exp(-$delay));
        $half = (self::base() - 10.5 * (self::LISTENER_ECHO + 7) * (2 * $delay + 1) ** -0.25) / 2;
        $listener = $half + sqrt($half ** 2 + 169);
        return $talker + $listener + self::waiting($delay);
    }

    /** Too long a delay, even without echo (Idd). */
    private static function waiting(float $delay): float
    {
        if ($delay <= self::UNNOTICED) {
            return 0.0;
        }
        $doubled = log($delay / self::UNNOTICED, 2);
        return 25 * ((1 + $doubled ** 6) ** (1 / 6) - 3 * (1 + ($doubled / 3) ** 6) ** (1 / 6) + 2);
    }

    /** What the codec and losses spoil (Ie-eff). */
    private static function equipment(float $loss, Codec $codec, float $burst): float
    {
        $own = $codec->impairment();
        $percent = 100 * $loss;
        return $own + (95 - $own) * $percent / ($percent / $burst + $codec->robustness());
    }
}
