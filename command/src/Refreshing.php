<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Command\Output\AlignedWriter;
use Rmon\Command\Output\Field;
use Rmon\Command\Output\Screen;
use Rmon\Command\Output\Text;
use Rmon\Exception\CallFailed;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** Rows that are measured again and again: a picture that changes on a terminal, one list after the other elsewhere. */
final class Refreshing
{
    private function __construct(
        public readonly float $interval,
        private readonly ?int $count,
        private readonly bool $draws,
        private readonly OutputOptions $options,
        private readonly Screen $screen,
    ) {
    }

    public static function define(Command $command): void
    {
        $command
            ->addOption('interval', 't', InputOption::VALUE_REQUIRED, 'Seconds to measure', '5')
            ->addOption('count', null, InputOption::VALUE_REQUIRED, 'End after so many measurements');
    }

    public static function from(InputInterface $input, OutputOptions $options, Screen $screen): self
    {
        $count = Options::whole($input, 'count', 1);
        $draws = $screen->isTerminal && $options->form === 'text' && $count === null;
        return new self(
            Options::seconds($input, 'interval'),
            $count ?? ($draws || $options->form !== 'text' && $screen->isTerminal ? null : 1),
            $draws,
            $options,
            $screen,
        );
    }

    /**
     * @param callable(Live): iterable<array<string, mixed>> $measure
     * @param list<Field> $fields
     */
    public function run(string $title, callable $measure, array $fields, callable $resolve): int
    {
        return Live::run($this->screen, function (Live $live) use ($title, $measure, $fields, $resolve): int {
            if ($this->draws) {
                $live->draw("$title\nmeasuring for {$this->seconds()} s ...");
            }
            for ($done = 0; $this->count === null || $done < $this->count; $done++) {
                if ($this->draws) {
                    $live->draw($this->picture($live, $title, $measure, $fields, $resolve));
                    continue;
                }
                if ($done > 0 && $this->options->form === 'text') {
                    $this->screen->line();
                }
                if ($this->options->show($measure($live), $fields, $resolve, $this->screen) === 0) {
                    $this->screen->remark("$title: nothing was counted in these {$this->seconds()} s.");
                }
            }
            return ExitCode::DONE;
        }, $this->draws);
    }

    /** An agent that goes and comes again doesn't end the picture. */
    private function picture(Live $live, string $title, callable $measure, array $fields, callable $resolve): string
    {
        $memory = fopen('php://memory', 'w+');
        $page = new Screen($memory, $memory, $this->screen->colours, false, $this->screen->width());
        try {
            $shown = $this->options->show($measure($live), $fields, $resolve, $page);
            $remark = $shown === 0 ? "Nothing was counted in these {$this->seconds()} s.\n" : '';
        } catch (ConnectionLost | ConnectionFailed | CallFailed $failure) {
            $live->wait($this->interval);
            $remark = $this->screen->bad(Text::visible($failure->getMessage())) . "\n";
        }
        $head = $this->screen->strong($title) . ', ' . date('H:i:s') . ", over {$this->seconds()} s; q ends it";
        return "$head\n\n" . stream_get_contents($memory, offset: 0) . $remark;
    }

    private function seconds(): string
    {
        return rtrim(rtrim(sprintf('%.1f', $this->interval), '0'), '.');
    }
}
