<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Closure;
use Rmon\Exception\BadArgument;
use Rmon\Exception\CallFailed;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\TableBroken;
use Rmon\Exporter\Text\Family;
use Rmon\Presence;
use Rmon\Probe;
use Rmon\VoiceMonitor;

/** One look at a target. */
final class Scrape
{
    /** The least time that connecting is tried for, in seconds. */
    private const LEAST = 0.05;

    private readonly Tally $tally;

    private readonly Families $families;

    private readonly float $begun;

    /**
     * @param float $seconds  how long it may take
     * @param float $patience how long the target may take to say that it is there
     * @param bool $keepLink  whether the link stays open for the next scrape of this process
     * @param Closure(string): void $log
     */
    public function __construct(
        private readonly Target $target,
        private readonly Module $module,
        private readonly float $seconds,
        private readonly float $patience,
        private readonly bool $keepLink,
        private readonly Closure $log,
    ) {
        $this->tally = new Tally();
        $this->families = new Families($module->series);
        $this->begun = hrtime(true) / 1e9;
    }

    /**
     * Whatever happens to the target, there is an answer that says so.
     *
     * @return list<Family>
     */
    public function families(): array
    {
        $failure = null;
        try {
            $this->read();
        } catch (OutOfTime $late) {
            $failure = $this->failed('time', $late->getMessage());
        } catch (ConnectionLost $lost) {
            $failure = $this->failed($this->left() <= 0 ? 'time' : 'lost', $lost->text);
        } catch (ConnectionFailed $absent) {
            $failure = $this->failed('absent', $absent->text);
        } catch (CallFailed $refused) {
            $failure = $this->failed('refused', $refused->text);
        }
        return [...$this->families->all(), ...$this->tally->families($failure, $this->spent())];
    }

    private function read(): void
    {
        $place = [$this->target->address, $this->target->port];
        $missing = Presence::missing([$place], min($this->patience, $this->left()));
        if ($missing !== []) {
            throw new ConnectionFailed($missing[0], ...$place);
        }
        $timeout = max(self::LEAST, min($this->patience, $this->left()));
        $end = $this->begun + $this->seconds;
        $probe = Probe::connect(...$place, persistent: $this->keepLink, timeout: $timeout, end: $end);
        try {
            $this->readFrom($probe);
        } finally {
            $probe->close();
        }
    }

    private function readFrom(Probe $probe): void
    {
        $uptime = $probe->uptime();
        $clock = new Clock($uptime, microtime(true));
        $left = $this->left(...);
        $tables = new TableCollector($probe, $clock, $this->families, $this->tally, $this->module->created, $left);
        foreach ($this->module->tables as $name => $choice) {
            $this->attempt($name, static fn() => $tables->collect($choice));
        }
        if ($this->module->calls > 0) {
            $voice = new VoiceCollector($probe, $uptime, $this->families, $this->tally, $left);
            foreach (VoiceMonitor::ALL as $monitor) {
                $this->attempt($monitor, fn() => $voice->collect($monitor, $this->module->calls));
            }
        }
    }

    /** Something that an agent may be without: the rest is read all the same. */
    private function attempt(string $what, Closure $do): void
    {
        if ($this->left() <= 0) {
            throw new OutOfTime("the time was up before $what");
        }
        try {
            $do();
        } catch (ConnectionFailed $failed) {
            throw $failed;
        } catch (CallFailed | TableBroken | BadArgument $refused) {
            $this->tally->refuse();
            ($this->log)("{$this->target->address}:{$this->target->port} $what: $refused->text");
        }
    }

    private function failed(string $reason, string $text): string
    {
        ($this->log)("{$this->target->address}:{$this->target->port} $reason: $text");
        return $reason;
    }

    private function spent(): float
    {
        return hrtime(true) / 1e9 - $this->begun;
    }

    private function left(): float
    {
        return $this->seconds - $this->spent();
    }
}
