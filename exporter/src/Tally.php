<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\Labels;
use Rmon\Exporter\Text\MetricType;

/** What a scrape says of itself. */
final class Tally
{
    /** @var array<string, int> rows that were read, by table */
    private array $rows = [];

    /** @var array<string, array<string, int>> rows that are not handed out, by table and reason */
    private array $leftOut = [];

    private int $refusals = 0;

    public function read(string $table, int $rows): void
    {
        $this->rows[$table] = ($this->rows[$table] ?? 0) + $rows;
    }

    /** @param string $reason "limit" of the table, "series" of the module, or "duplicate": other rows have the labels */
    public function leaveOut(string $table, string $reason, int $rows): void
    {
        if ($rows > 0) {
            $this->leftOut[$table][$reason] = ($this->leftOut[$table][$reason] ?? 0) + $rows;
        }
    }

    public function refuse(): void
    {
        $this->refusals++;
    }

    /**
     * @param string|null $failure why there is no whole answer; null when there is one
     * @return list<Family>
     */
    public function families(?string $failure, float $seconds): array
    {
        $success = self::gauge('success', 'Whether the agent was there and all of the module was read.');
        $success->add('', $failure === null ? 1 : 0);
        $duration = self::gauge('duration_seconds', 'How long the scrape took, in seconds.', 'seconds');
        $duration->add('', round($seconds, 6));
        $refusals = self::gauge('refusals', 'Tables that the agent would not hand out; the log says which.');
        $refusals->add('', $this->refusals);
        $read = self::gauge('rows', 'Rows that were read.');
        foreach ($this->rows as $table => $rows) {
            $read->add(Labels::text(['table' => $table]), $rows);
        }
        $left = self::gauge(
            'left_out_rows',
            'Rows that are not handed out: limit of the table, series of the module, duplicate labels.',
        );
        foreach ($this->leftOut as $table => $reasons) {
            foreach ($reasons as $reason => $rows) {
                $left->add(Labels::text(['table' => $table, 'reason' => $reason]), $rows);
            }
        }
        $why = new Family('rmon_scrape_failure', MetricType::Info, 'Why the scrape did not succeed.');
        if ($failure !== null) {
            $why->add(Labels::text(['reason' => $failure]), 1);
        }
        return [$success, $duration, $refusals, $read, $left, $why];
    }

    private static function gauge(string $name, string $help, string $unit = ''): Family
    {
        return new Family("rmon_scrape_$name", MetricType::Gauge, $help, $unit);
    }
}
