<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Closure;
use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\Labels;
use Rmon\Exporter\Text\MetricType;
use Rmon\Probe;
use Rmon\Voice\Call;
use Rmon\Voice\EModel;
use Rmon\VoiceMonitor;

/**
 * The quality of the calls that last or ended lately. Calls come and go: what is handed out is how many of them are how
 * good, never a series of a call.
 */
final class VoiceCollector
{
    /** How long a call counts behind its end, in hundredths of a second: five minutes. */
    private const LATELY = 30000;

    private const FIGURES = [1 => 'jitter', 2 => 'loss', 4 => 'latency'];

    private const UNKNOWN = 'unknown';

    private const MILLISECONDS = 1000;

    /** @param Closure(): float $left the seconds that are left of the scrape */
    public function __construct(
        private readonly Probe $probe,
        private readonly int $uptime,
        private readonly Families $families,
        private readonly Tally $tally,
        private readonly Closure $left,
    ) {
    }

    /** @param int $most calls that are looked at, the latest ones */
    public function collect(string $monitor, int $most): void
    {
        $calls = [];
        $read = 0;
        $matched = 0;
        foreach ((new VoiceMonitor($this->probe, $monitor))->calls() as $call) {
            $read++;
            if ($call->end === null || $this->uptime - $call->end <= self::LATELY) {
                $calls[] = $call;
                $matched++;
                if (count($calls) >= 2 * $most) {
                    $calls = array_slice($calls, -$most);
                }
            }
            if (($this->left)() <= 0) {
                throw new OutOfTime("the calls of $monitor are too many for the time of a scrape");
            }
        }
        $looked = array_slice($calls, -$most);
        $table = "{$monitor}CallTable";
        $this->tally->read($table, $read);
        $this->tally->leaveOut($table, 'limit', $matched - count($looked));
        if ($read > 0) {
            $this->show($monitor, $looked);
        }
    }

    /** @param list<Call> $calls */
    private function show(string $monitor, array $calls): void
    {
        $ratings = array_values(array_filter(
            array_map(static fn(Call $call) => $call->rating(), $calls),
            static fn(?float $rating) => $rating !== null,
        ));
        $words = array_count_values(array_map(EModel::word(...), $ratings));
        $words[self::UNKNOWN] = count($calls) - count($ratings);
        $running = count(array_filter($calls, static fn(Call $call) => $call->isRunning()));
        $this->add('calls', 'Calls that last, or ended in the last five minutes.', $monitor, 'state', [
            'running' => $running,
            'ended' => count($calls) - $running,
        ]);
        $qualities = ['best', 'high', 'medium', 'low', 'poor', 'bad', self::UNKNOWN];
        $this->add(
            'calls_by_quality',
            'The same calls by how they sounded, in the words of ITU-T G.109.',
            $monitor,
            'quality',
            array_replace(array_fill_keys($qualities, 0), $words),
        );
        $over = [];
        foreach (self::FIGURES as $bit => $figure) {
            $over[$figure] = count(array_filter($calls, static fn(Call $call) => ($call->flags() & $bit) !== 0));
        }
        $this->add('calls_over_threshold', 'The same calls that are over a threshold.', $monitor, 'figure', $over);
        if ($ratings !== []) {
            $opinions = array_map(EModel::opinion(...), $ratings);
            $this->add('opinion_score', 'Mean opinion score of those calls, from 1 to 4.5.', $monitor, 'of', [
                'worst' => round(min($opinions), 3),
                'mean' => round(array_sum($opinions) / count($opinions), 3),
            ]);
        }
        if ($calls !== []) {
            $jitter = max(array_map(static fn(Call $call) => $call->jitter(), $calls));
            $labels = Labels::text(['monitor' => $monitor]);
            $this->families->of(new Family(
                'rmon_voice_worst_jitter_seconds',
                MetricType::Gauge,
                'The most jitter of those calls, in seconds.',
                'seconds',
            ))->add($labels, $jitter / self::MILLISECONDS);
        }
    }

    /** @param array<string, int|float> $values by the value of the label */
    private function add(string $name, string $help, string $monitor, string $label, array $values): void
    {
        $family = $this->families->of(new Family("rmon_voice_$name", MetricType::Gauge, $help));
        foreach ($values as $word => $value) {
            $family->add(Labels::text(['monitor' => $monitor, $label => $word]), $value);
        }
    }
}
