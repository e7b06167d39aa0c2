<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Form;
use Rmon\Console\Block\Panels;
use Rmon\Console\Block\Words;
use Rmon\Console\Form\Changes;
use Rmon\Console\Form\Input;
use Rmon\Console\Form\Plan;
use Rmon\Console\Page;
use Rmon\Console\Response;
use Rmon\Console\Table\Field;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\Voice\Call;
use Rmon\Voice\EModel;
use Rmon\Voice\Leg;
use Rmon\Voice\Party;
use Rmon\Voice\Phone;
use Rmon\VoiceMonitor;

/** Calls that run and that are over, the worst ones first, their phones, and the three monitors that see them. */
final class VoicePage extends Page
{
    public const PATH = '/probe/{probe}/voice';
    public const TITLE = 'Voice';
    public const GROUP = 'Applications';

    public const NAMES = ['sccp' => 'SCCP', 'h323' => 'H.323', 'mgcp' => 'MGCP'];

    /** A rating below which many are not content. */
    private const CONTENT = 70;

    /** What each monitor has an alarm for, and where its settings and sums have it. */
    private const FIGURES = [
        'sccp' => ['jitter' => 'jitter', 'loss' => 'pkt_lost', 'latency' => 'latency'],
        'h323' => ['jitter' => 'jitter', 'loss' => 'pkt_lost'],
        'mgcp' => ['jitter' => 'jitter', 'loss' => 'pkt_lost'],
    ];

    private const UNITS = ['jitter' => 'ms', 'loss' => 'packets', 'latency' => 'ms'];

    private const SWITCH = ['off', 'on'];

    /** @var list<Call>|null the worst one first */
    private ?array $calls = null;

    /** @var array<string, array<string, int>> settings by monitor */
    private array $settings = [];

    public function blocks(): iterable
    {
        yield 'answer' => new Words(fn(): array => $this->answer());
        yield 'calls' => $this->callTable();
        yield 'phones' => $this->phoneTable();
        $monitors = [];
        foreach (self::NAMES as $monitor => $name) {
            $monitors["monitor-$monitor"] = new Facts(fn(): array => $this->about($monitor), "$name monitor");
        }
        yield 'monitors' => new Panels($monitors);
        foreach (self::NAMES as $monitor => $name) {
            yield "set-$monitor" => new Form(
                "Set the $name monitor",
                "set-$monitor",
                'Change it',
                fn(): array => $this->inputs($monitor),
                'What will change is shown before it does.',
            );
        }
        yield 'clear' => new Form('Empty a table', 'clear', 'Empty it', static fn(): array => [
            Input::choice('monitor', 'Monitor', self::NAMES),
            Input::choice('table', 'Table', ['calls' => 'calls', 'phones' => 'phones', 'top jitter' => 'most jitter',
                'top loss' => 'most lost']),
        ]);
    }

    public function post(): Response
    {
        $plans = ['clear' => $this->planClearing(...)];
        foreach (array_keys(self::NAMES) as $monitor) {
            $plans["set-$monitor"] = fn(array $given): Plan => $this->planSettings($monitor, $given);
        }
        return Changes::answer($this->visit, $plans);
    }

    /** Who a party is: "2003 Office". */
    public static function who(Party $party): string
    {
        $name = trim("$party->number $party->name");
        return $name === '' ? $party->address : $name;
    }

    /** "3.21, low": an opinion score and the class of its rating. */
    public static function quality(?float $rating): string
    {
        return $rating === null
            ? 'not known' : number_format(EModel::opinion($rating), 2) . ', ' . EModel::word($rating);
    }

    /** @return list<array{string, string}> */
    private function answer(): array
    {
        $calls = $this->calls();
        if ($calls === []) {
            $on = array_filter(VoiceMonitor::ALL, fn(string $monitor) => $this->settings($monitor)['enable'] !== 0);
            return [[
                $on === [] ? 'No call is known: all three monitors are switched off.' : 'No call was seen yet.',
                'answer',
            ]];
        }
        $running = count(array_filter($calls, static fn(Call $call) => $call->isRunning()));
        $poor = array_values(array_filter(
            $calls,
            static fn(Call $call) => $call->rating() !== null && $call->rating() < self::CONTENT,
        ));
        $sentences = [[self::count(count($calls), 'call') . ', ' . ($running === 0 ? 'none' : $running)
            . ' of them running; ' . self::count(count($poor), 'call') . ' below a rating of ' . self::CONTENT
            . ', where many are not content.', 'answer']];
        if ($poor !== []) {
            $worst = $poor[0];
            $sentences[] = ['The worst: ' . self::who($worst->caller) . " \u{2192} " . self::who($worst->callee)
                . ' with a rating of ' . number_format((float) $worst->rating()) . ', '
                . self::count($worst->lost(), 'packet') . " lost and {$worst->jitter()} ms of jitter.", 'warning'];
        }
        return $sentences;
    }

    private static function count(int $count, string $of): string
    {
        return ($count === 0 ? 'no' : number_format($count)) . " $of" . ($count === 1 ? '' : 's');
    }

    private function callTable(): DataTable
    {
        $leg = static fn(string $which) => static fn(array $row): Leg => $row['call']->$which;
        return DataTable::ofRows([
            Field::text('from', 'From', static fn(array $row) => self::who($row['call']->caller))
                ->linked(fn(array $row) => $this->visit->to(VoiceCallPage::class, [
                    'monitor' => $row['call']->monitor,
                    'call' => $row['call']->index,
                ])),
            Field::text('to', 'To', static fn(array $row) => self::who($row['call']->callee)),
            Field::text('state', 'State', static fn(array $row) =>
                $row['call']->isRunning() ? "\u{25cf} running" : 'over'),
            Field::number(
                'rating',
                'Rating',
                static fn(array $row) => $row['call']->rating() === null ? null : round($row['call']->rating(), 1),
                static fn(int|float $value) => number_format($value, 1),
                'R of the E-model, of the direction that is worse: 93.2 at most',
            )->bar(static fn(array $row) => $row['call']->rating() === null ? null : $row['call']->rating() / 100),
            Field::text('quality', 'Opinion', static fn(array $row) => self::quality($row['call']->rating())),
            Field::time('start', 'Began', fn(array $row) => $this->visit->timeOf($row['call']->start)),
            Field::number(
                'duration',
                'Took',
                fn(array $row) => $row['call']->duration($row['now']) / 100,
                Format::duration(...),
                's',
            ),
            ...self::legFields('caller', 'Caller', $leg('heardByCaller')),
            ...self::legFields('callee', 'Callee', $leg('heardByCallee')),
            Field::text('monitor', 'Monitor', static fn(array $row) => self::NAMES[$row['call']->monitor]),
        ], function (): array {
            $now = $this->visit->probe()->uptime();
            return array_map(static fn(Call $call) => ['call' => $call, 'now' => $now], $this->calls());
        }, 'No call was seen yet.')->titled('Calls, the worst first');
    }

    /**
     * @param Closure(array): Leg $leg
     * @return list<Field>
     */
    private static function legFields(string $name, string $who, Closure $leg): array
    {
        $milliseconds = static fn(int|float $value) => number_format($value) . ' ms';
        return [
            Field::number(
                "$name-loss",
                "$who lost",
                static fn(array $row) => $leg($row)->loss(),
                static fn(float $part) => number_format(100 * $part, 2) . ' %',
                "part of the packets to the $name",
            ),
            Field::number(
                "$name-jitter",
                "$who jitter",
                static fn(array $row) => $leg($row)->jitter,
                $milliseconds,
                'ms',
            ),
            Field::number(
                "$name-latency",
                "$who latency",
                static fn(array $row) => $leg($row)->latency,
                $milliseconds,
                'ms',
            ),
        ];
    }

    private function phoneTable(): DataTable
    {
        $number = static fn(string $name, string $heading, Closure $value, string $unit) => Field::number(
            $name,
            $heading,
            static fn(array $row) => $value($row['phone']),
            static fn(int|float $value) => number_format($value) . ($unit === 'ms' ? ' ms' : ''),
            $unit,
        );
        return DataTable::ofRows([
            Field::text('number', 'Number', static fn(array $row) => $row['phone']->party->number),
            Field::text('name', 'Owner', static fn(array $row) => $row['phone']->party->name),
            Field::text('address', 'Address', static fn(array $row) => $row['phone']->party->address),
            $number('calls', 'Calls', static fn(Phone $phone) => $phone->calls, 'calls'),
            $number('worst-lost', 'Most lost', static fn(Phone $phone) => $phone->worstLost, 'packets'),
            $number('worst-jitter', 'Most jitter', static fn(Phone $phone) => $phone->worstJitter, 'ms'),
            $number('lost', 'Lost on average', static fn(Phone $phone) => $phone->lost, 'packets'),
            $number('jitter', 'Jitter on average', static fn(Phone $phone) => $phone->jitter, 'ms'),
            Field::text('alarm', 'Above its threshold', static fn(array $row) => self::flags($row['phone']->flags)),
            Field::text('monitor', 'Monitor', static fn(array $row) => self::NAMES[$row['phone']->monitor]),
        ], function (): array {
            $phones = [];
            foreach (array_keys(self::NAMES) as $monitor) {
                foreach ($this->visit->probe()->voice($monitor)->phones() as $phone) {
                    $phones[] = ['phone' => $phone];
                }
            }
            return $phones;
        }, 'No phone was seen yet.')->titled('Phones')->sortedBy('-worst-lost')->beside('phones');
    }

    /** "jitter, loss" */
    public static function flags(int $flags): string
    {
        $words = array_filter(
            [1 => 'jitter', 2 => 'loss', 4 => 'latency'],
            static fn(int $bit) => ($flags & $bit) !== 0,
            ARRAY_FILTER_USE_KEY,
        );
        return implode(', ', $words);
    }

    /** @return array<string, string> */
    private function about(string $monitor): array
    {
        $settings = $this->settings($monitor);
        $sums = $this->visit->probe()->voice($monitor)->aggregate();
        $facts = ['Collects calls' => $settings['enable'] === 0 ? 'no' : 'yes'];
        foreach (self::FIGURES[$monitor] as $figure => $name) {
            $on = $settings["{$name}_alarm_enable"] === 0 ? 'alarm off' : 'alarm on';
            $threshold = number_format($settings["{$name}_threshold"] & 0xffffffff);
            $facts[ucfirst($figure) . ' threshold'] = "$threshold " . self::UNITS[$figure] . ", $on";
        }
        return $facts + [
            'Calls' => number_format($sums['num_call_mon']),
            'Lost, on average and at most' => "$sums[avg_pkt_lost] and $sums[worst_pkt_lost] packets",
            'Jitter, on average and at most' => "$sums[avg_jitter] and $sums[worst_jitter] ms",
            'Above its threshold' => self::flags($sums['flag']) ?: 'nothing',
        ];
    }

    /** @return list<Input> */
    private function inputs(string $monitor): array
    {
        $settings = $this->settings($monitor);
        $inputs = [Input::choice('enable', 'Collects calls', self::SWITCH, (int) ($settings['enable'] !== 0))];
        foreach (self::FIGURES[$monitor] as $figure => $name) {
            if ($figure !== 'latency') {
                $inputs[] = Input::number(
                    "{$figure}_threshold",
                    ucfirst($figure) . ' threshold, ' . self::UNITS[$figure],
                    $settings["{$name}_threshold"] & 0xffffffff,
                    '',
                    0,
                    0x7fffffff,
                );
            }
            $on = (int) ($settings["{$name}_alarm_enable"] !== 0);
            $inputs[] = Input::choice("{$figure}_alarm", ucfirst($figure) . ' alarm', self::SWITCH, $on);
        }
        return $inputs;
    }

    /** @param array<string, string> $given */
    private function planSettings(string $monitor, array $given): Plan
    {
        $settings = $this->settings($monitor);
        $switched = static fn(string $name): bool => ($given[$name] ?? '0') === '1';
        $lines = [];
        $steps = [];
        $voice = $this->visit->probe()->voice($monitor);
        $on = $switched('enable');
        if ($on !== ($settings['enable'] !== 0)) {
            $lines[] = ['Collects calls', self::SWITCH[(int) !$on], self::SWITCH[(int) $on]];
            $steps[] = static fn() => $voice->enable($on);
        }
        $thresholds = [];
        foreach (['jitter', 'loss'] as $figure) {
            $before = $settings[self::FIGURES[$monitor][$figure] . '_threshold'] & 0xffffffff;
            $after = $given["{$figure}_threshold"] ?? '';
            if (!ctype_digit($after) || strlen($after) > 10) {
                throw new BadArgument("The threshold of $figure is a whole number.");
            }
            $thresholds[] = (int) $after;
            if ((int) $after !== $before) {
                $unit = self::UNITS[$figure];
                $lines[] = [ucfirst($figure) . ' threshold', "$before $unit", "$after $unit"];
                $steps['thresholds'] = static function () use ($voice, &$thresholds): void {
                    $voice->setThresholds(...$thresholds);
                };
            }
        }
        foreach (self::FIGURES[$monitor] as $figure => $name) {
            $on = $switched("{$figure}_alarm");
            if ($on !== ($settings["{$name}_alarm_enable"] !== 0)) {
                $lines[] = [ucfirst($figure) . ' alarm', self::SWITCH[(int) !$on], self::SWITCH[(int) $on]];
                $steps[] = static fn() => $voice->alarm($figure, $on);
            }
        }
        return new Plan(self::NAMES[$monitor] . ' monitor changes', $lines, static function () use ($steps): void {
            foreach ($steps as $step) {
                $step();
            }
        });
    }

    /** @param array<string, string> $given */
    private function planClearing(array $given): Plan
    {
        $monitor = $given['monitor'] ?? '';
        $table = $given['table'] ?? '';
        $voice = $this->visit->probe()->voice($monitor);
        return new Plan(
            'The table of ' . self::NAMES[$monitor] . ' is emptied',
            [[self::NAMES[$monitor] . ", $table", 'all rows', 'none']],
            static fn() => $voice->clear($table),
            true,
        );
    }

    /** @return list<Call> */
    private function calls(): array
    {
        if ($this->calls === null) {
            $this->calls = [];
            foreach (VoiceMonitor::ALL as $monitor) {
                array_push($this->calls, ...$this->visit->probe()->voice($monitor)->calls());
            }
            // Calls of which nothing can be said come last.
            $rated = static fn(Call $call) => [$call->rating() ?? INF, -$call->lost(), -$call->jitter()];
            usort($this->calls, static fn(Call $one, Call $other) => $rated($one) <=> $rated($other));
        }
        return $this->calls;
    }

    /** @return array<string, int> */
    private function settings(string $monitor): array
    {
        return $this->settings[$monitor] ??= $this->visit->probe()->voice($monitor)->config();
    }
}
