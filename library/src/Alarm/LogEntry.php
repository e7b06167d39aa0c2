<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Alarm;

/** Something that was logged. */
final class LogEntry
{
    /** What the bundled agent writes of a threshold that was crossed, behind the event's own description. */
    private const CROSSING = '/(?:^|: )(\S+) (rose|fell) to (\d+), threshold (\d+)$/D';

    /**
     * @param int $event         the index of the event
     * @param int $index         its own
     * @param float $ago         seconds from then to the reading
     * @param int $time          the same on the agent's clock (sysUpTime)
     * @param string $text       as the agent wrote it
     * @param string|null $variable what crossed a threshold, as the alarm names it; null where it was something else
     * @param bool $rose         whether it rose; it fell otherwise
     */
    private function __construct(
        public readonly int $event,
        public readonly int $index,
        public readonly float $ago,
        public readonly int $time,
        public readonly string $text,
        public readonly ?string $variable,
        public readonly bool $rose,
        public readonly int $value,
        public readonly int $threshold,
    ) {
    }

    /**
     * @param array<string, mixed> $row of logTable
     * @param int $now the agent's clock
     */
    public static function of(array $row, int $now): self
    {
        $text = $row['logDescription'];
        $crossed = preg_match(self::CROSSING, $text, $parts) === 1;
        return new self(
            $row['logEventIndex'],
            $row['logIndex'],
            Alarms::seconds($row['logTime'], $now),
            $row['logTime'],
            $text,
            $crossed ? $parts[1] : null,
            $crossed && $parts[2] === 'rose',
            $crossed ? (int) $parts[3] : 0,
            $crossed ? (int) $parts[4] : 0,
        );
    }
}
