<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter\Text;

/** What the values of a family are. */
enum MetricType: string
{
    /** A number that only grows. */
    case Counter = 'counter';
    /** A number that goes up and down. */
    case Gauge = 'gauge';
    /** Labels alone, whose value is 1. */
    case Info = 'info';
    /** How many events were no larger than each of some bounds. */
    case Histogram = 'histogram';

    /** What the names of its samples end with, behind the family's name. */
    public function suffix(): string
    {
        return match ($this) {
            self::Counter => '_total',
            self::Info => '_info',
            default => '',
        };
    }

    /** The type's word in the older form, which knows fewer. */
    public function plain(): string
    {
        return $this === self::Info ? self::Gauge->value : $this->value;
    }
}
