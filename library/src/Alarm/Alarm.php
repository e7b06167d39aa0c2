<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Alarm;

use Rmon\Format;
use Rmon\RowStatus;

/** An alarm: what it watches, between which thresholds, and what happened last. */
final class Alarm
{
    /**
     * @param int $interval       seconds between two samples
     * @param bool $isDelta       whether a sample is by how much the variable grew in an interval
     * @param int|null $value     the last sample; null while the alarm doesn't work
     * @param int $risingEvent    the index of the event when it rises; 0: none
     * @param RowStatus|null $status null for a number that is no status
     * @param LogEntry|null $last when it crossed a threshold last, as far as that was logged
     */
    private function __construct(
        public readonly int $index,
        public readonly Variable $variable,
        public readonly int $interval,
        public readonly bool $isDelta,
        public readonly ?int $value,
        public readonly int $rising,
        public readonly int $falling,
        public readonly int $risingEvent,
        public readonly int $fallingEvent,
        public readonly string $owner,
        public readonly ?RowStatus $status,
        public readonly ?LogEntry $last,
    ) {
    }

    /**
     * @param array<string, mixed> $row of alarmTable
     * @param list<LogEntry> $log the latest one first
     */
    public static function of(array $row, Variable $variable, array $log): self
    {
        $status = RowStatus::tryFrom($row['alarmStatus']);
        $last = null;
        foreach ($log as $entry) {
            if (
                $entry->variable === $row['alarmVariable']
                && $entry->event === $row[$entry->rose ? 'alarmRisingEventIndex' : 'alarmFallingEventIndex']
                && $entry->threshold === $row[$entry->rose ? 'alarmRisingThreshold' : 'alarmFallingThreshold']
            ) {
                $last = $entry;
                break;
            }
        }
        return new self(
            $row['alarmIndex'],
            $variable,
            $row['alarmInterval'],
            $row['alarmSampleType'] === 2,
            $status === RowStatus::valid ? $row['alarmValue'] : null,
            $row['alarmRisingThreshold'],
            $row['alarmFallingThreshold'],
            $row['alarmRisingEventIndex'],
            $row['alarmFallingEventIndex'],
            $row['alarmOwner'],
            $status,
            $last,
        );
    }

    /** Where its value is: "high", "low", "between", or the status of a row that doesn't work. */
    public function state(): string
    {
        return match (true) {
            $this->value === null => $this->status?->name ?? 'unknown',
            $this->value >= $this->rising => 'high',
            $this->value <= $this->falling => 'low',
            default => 'between',
        };
    }

    /** "rose to 170 packets over 150, 12 s ago"; empty when nothing was logged. */
    public function happened(): string
    {
        if ($this->last === null) {
            return '';
        }
        $way = $this->last->rose ? ['rose to', 'over'] : ['fell to', 'under'];
        $threshold = number_format($this->last->threshold);
        return "$way[0] {$this->variable->amount($this->last->value)} $way[1] $threshold, "
            . Format::ago($this->last->ago);
    }
}
