<?php

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\Chart;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\Console\Visit;
use Rmon\ControlRows;

/** What an interface carried, from the agent's own samples. */
final class HistoryPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/history';
    public const TITLE = 'History';
    public const GROUP = 'Interface';

    public function blocks(): iterable
    {
        $row = fn() => self::row($this->visit, 10, 60);
        yield 'traffic' => self::chart($this->visit, 10, 60);
        yield 'samples' => DataTable::of(
            $this->visit,
            fn() => $this->visit->probe()->table('etherHistoryTable', control: $row()),
            [
                'etherHistoryIntervalStart', 'etherHistoryOctets', 'etherHistoryPkts', 'etherHistoryUtilization',
                'etherHistoryBroadcastPkts', 'etherHistoryMulticastPkts', 'etherHistoryCRCAlignErrors',
                'etherHistoryDropEvents',
            ],
        )->sortedBy('-etherHistorySampleIndex')->titled('Samples');
    }

    /** A chart of what the page's interface carried, of so many samples of so many seconds. */
    public static function chart(Visit $visit, int $seconds, int $samples): Chart
    {
        $data = static function () use ($visit, $seconds, $samples): array {
            $row = self::row($visit, $seconds, $samples);
            $x = [];
            $bits = [];
            foreach ($visit->probe()->table('etherHistoryTable', control: $row) as $sample) {
                $x[] = $visit->timeOf($sample['etherHistoryIntervalStart']);
                $bits[] = 8 * $sample['etherHistoryOctets'] / $seconds;
            }
            return ['x' => $x, 'series' => ['Traffic' => $bits]];
        };
        $empty = "Sampling has begun: the first sample is there after $seconds seconds.";
        return new Chart('Traffic', 'area', 'bit/s', $data, true, $empty);
    }

    private static function row(Visit $visit, int $seconds, int $samples): int
    {
        $interface = $visit->interface()->index;
        return $visit->needs(static fn(ControlRows $rows) => $rows->history($interface, $seconds, $samples))->index;
    }
}
