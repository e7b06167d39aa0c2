<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Closure;
use Rmon\ControlRow;
use Rmon\ControlRows;
use Rmon\Exception\RmonException;
use Rmon\Probe;

/**
 * The control rows that pages need, for as long as somebody looks.
 *
 * All users share the rows that the console makes on a probe, under one owner "rmon:console:ID". A file notes when a
 * page last needed something of a probe. A request that finds a probe at which nobody has looked for a while removes
 * the console's rows there; should no request come any more, the rows' own lease ends, and whoever sweeps removes them.
 */
final class Leases
{
    /** Seconds from the last look until rows go. */
    public const LOOK = 180;

    /** Seconds that the agent keeps rows in any case, should the console be gone. */
    private const LEASE = 600;

    /** Seconds between two renewals of the lease. */
    private const RENEW = 60;

    /** @param Closure(ConfiguredProbe): Probe $connect */
    public function __construct(
        private readonly Configuration $configuration,
        private readonly State $state,
        private readonly Closure $connect,
    ) {
    }

    /** The console's rows on a probe. */
    public function rows(Probe $probe): ControlRows
    {
        return new ControlRows($probe, 'console:' . $this->id(), self::LEASE, again: true);
    }

    /**
     * A row that is there already, or is made, and is noted as looked at.
     *
     * @param callable(ControlRows): ControlRow $make
     */
    public function take(ConfiguredProbe $configured, Probe $probe, callable $make): ControlRow
    {
        $rows = $this->rows($probe);
        $row = $make($rows);
        if ($row->made) {
            $this->look($configured, $rows);
        }
        return $row;
    }

    /** Notes that somebody looks at rows that the console made on a probe. */
    public function look(ConfiguredProbe $configured, ControlRows $rows): void
    {
        $now = time();
        $known = $this->state->read('looks')[$configured->name] ?? null;
        if ($known === null || $now - $known['look'] >= 10 || $now - $known['renewed'] >= self::RENEW) {
            $renew = $this->state->change('looks', static function (array $looks) use ($configured, $now): array {
                $renewed = $looks[$configured->name]['renewed'] ?? $now;
                $renew = $now - $renewed >= self::RENEW;
                $looks[$configured->name] = ['look' => $now, 'renewed' => $renew ? $now : $renewed];
                return [$looks, $renew];
            });
            if ($renew) {
                $rows->adopt();
                $rows->renew();
            }
        }
    }

    /** Removes the console's rows from probes at which nobody looks any more. */
    public function sweep(): void
    {
        $late = static fn(array $look) => $look['look'] < time() - self::LOOK;
        if (array_filter($this->state->read('looks'), $late) === []) {
            return;
        }
        $left = $this->state->change('looks', static function (array $looks) use ($late): array {
            $left = array_filter($looks, $late);
            return [array_diff_key($looks, $left), $left];
        });
        foreach (array_intersect_key($this->configuration->probes, $left) as $configured) {
            try {
                $rows = $this->rows(($this->connect)($configured));
                $rows->adopt();
                $rows->release();
            } catch (RmonException) {
                // A probe that is gone has lost its rows, or keeps them until their lease is over.
            }
        }
    }

    /** What tells this console from another one on the same probes. */
    private function id(): string
    {
        $id = $this->state->read('console')['id'] ?? null;
        return is_string($id) ? $id : $this->state->change('console', static function (array $console): array {
            $console['id'] ??= bin2hex(random_bytes(4));
            return [$console, $console['id']];
        });
    }
}
