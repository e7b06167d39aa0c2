<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Generator;
use Rmon\Exception\BadArgument;
use Rmon\Exception\RmonException;
use Rmon\Voice\Call;
use Rmon\Voice\Phone;

/**
 * A voice monitor: what can be switched, set and cleared. Its phones, calls, sums and settings are tables, as
 * "sccpPhoneTable" and "sccpConfig".
 */
final class VoiceMonitor
{
    /** The monitors that an agent has. */
    public const ALL = ['sccp', 'h323', 'mgcp'];

    /** Calls or phones that are read at a time. */
    private const PAGE = 40;

    /** The functions by what they do; where a monitor lacks one, it has no such alarm or table. */
    private const FUNCTIONS = [
        'sccp' => [
            'sizes' => 'sccp_voice_coll_table_sizes_set',
            'thresholds' => 'sccp_voice_coll_thresholds_set',
            'enable' => 'sccp_voice_coll_enable',
            'disable' => 'sccp_voice_coll_disable',
            'enable jitter' => 'sccp_voice_jitter_alarm_enable',
            'disable jitter' => 'sccp_voice_jitter_alarm_disable',
            'enable loss' => 'sccp_voice_pkt_lost_alarm_enable',
            'disable loss' => 'sccp_voice_pkt_lost_alarm_disable',
            'enable latency' => 'sccp_voice_latency_alarm_enable',
            'disable latency' => 'sccp_voice_latency_alarm_disable',
            'clear phones' => 'sccp_voice_phone_table_clear',
            'clear calls' => 'sccp_voice_call_table_clear',
            'clear top jitter' => 'sccp_voice_top_jitter_table_clear',
            'clear top loss' => 'sccp_voice_top_pkt_lost_table_clear',
            'clear top latency' => 'sccp_voice_top_latency_table_clear',
        ],
        'h323' => [
            'sizes' => 'h323_voice_coll_table_sizes_set',
            'thresholds' => 'h323_voice_coll_thresholds_set',
            'enable' => 'h323_voice_coll_enable',
            'disable' => 'h323_voice_coll_disable',
            'enable jitter' => 'h323_voice_jitter_alarm_enable',
            'disable jitter' => 'h323_voice_jitter_alarm_disable',
            'enable loss' => 'h323_voice_pkt_lost_alarm_enable',
            'disable loss' => 'h323_voice_pkt_lost_alarm_disable',
            'clear phones' => 'h323_voice_phone_table_clear',
            'clear calls' => 'h323_voice_call_table_clear',
            'clear top jitter' => 'h323_voice_top_jitter_table_clear',
            'clear top loss' => 'h323_voice_top_pkt_lost_table_clear',
        ],
        'mgcp' => [
            'sizes' => 'mgcp_voice_coll_table_sizes_set',
            'thresholds' => 'mgcp_voice_coll_thresholds_set',
            'enable' => 'mgcp_voice_coll_enable',
            'disable' => 'mgcp_voice_coll_disable',
            'enable jitter' => 'mgcp_voice_jitter_alarm_enable',
            'disable jitter' => 'mgcp_voice_jitter_alarm_disable',
            'enable loss' => 'mgcp_voice_pkt_lost_alarm_enable',
            'disable loss' => 'mgcp_voice_pkt_lost_alarm_disable',
            'enable latency' => 'mgcp_voice_latency_alarm_enable',
            'disable latency' => 'mgcp_voice_latency_alarm_disable',
            'clear phones' => 'mgcp_voice_phone_table_clear',
            'clear calls' => 'mgcp_voice_call_table_clear',
            'clear top jitter' => 'mgcp_voice_top_jitter_table_clear',
            'clear top loss' => 'mgcp_voice_top_pkt_lost_table_clear',
            'clear top latency' => 'mgcp_voice_top_latency_table_clear',
        ],
    ];

    public function __construct(public readonly Probe $probe, public readonly string $monitor)
    {
        if (!isset(self::FUNCTIONS[$monitor])) {
            throw Exception\UnknownName::among('voice monitor', $monitor, self::ALL);
        }
    }

    /**
     * Its settings; the alarms and "enable" are not 0 when on.
     *
     * @return array<string, int>
     */
    public function config(): array
    {
        return $this->probe->table("{$this->monitor}Config")->get();
    }

    /**
     * Its sums over all calls.
     *
     * @return array<string, int>
     */
    public function aggregate(): array
    {
        return $this->probe->table("{$this->monitor}Aggregate")->get();
    }

    /**
     * Its calls, as they were seen, the first one first.
     *
     * @return Generator<int, Call>
     */
    public function calls(): Generator
    {
        foreach ($this->rows('CallTable') as $row) {
            yield Call::of($this->monitor, $row);
        }
    }

    /**
     * Its phones, as they were seen, the first one first.
     *
     * @return Generator<int, Phone>
     */
    public function phones(): Generator
    {
        foreach ($this->rows('PhoneTable') as $row) {
            yield Phone::of($this->monitor, $row);
        }
    }

    /** Switches the collection of calls on or off. */
    public function enable(bool $on = true): void
    {
        $this->call($on ? 'enable' : 'disable');
    }

    /**
     * Switches an alarm on or off.
     *
     * @param string $figure "jitter", "loss" or "latency"
     * @throws BadArgument when the monitor has none by this figure
     */
    public function alarm(string $figure, bool $on = true): void
    {
        $this->call(($on ? 'enable ' : 'disable ') . $figure);
    }

    /**
     * Empties a table.
     *
     * @param string $table "phones", "calls", "top jitter", "top loss" or "top latency"
     * @throws BadArgument when the monitor has no such table
     */
    public function clear(string $table): void
    {
        $this->call("clear $table");
    }

    /** Sets how many rows the tables have. The one by latency is as long as the one by loss. */
    public function setTableSizes(int $phones, int $calls, int $topJitter, int $topLoss): void
    {
        $this->call('sizes', $phones, $calls, $topJitter, $topLoss);
    }

    /** Sets the figures from which alarms go off. The one for latency is always 1000 ms. */
    public function setThresholds(int $jitter, int $loss): void
    {
        $this->call('thresholds', $jitter, $loss);
    }

    /**
     * Few at a time: each has a hundred columns and more.
     *
     * @return Generator<int, array<string, mixed>>
     */
    private function rows(string $name): Generator
    {
        $table = $this->probe->table($this->monitor . $name);
        $behind = null;
        while (($rows = $table->page(self::PAGE, $behind)) !== []) {
            foreach ($rows as $row) {
                yield $row;
                $behind = $table->keysOf($row);
            }
        }
    }

    /** @throws RmonException */
    private function call(string $what, int ...$numbers): void
    {
        $function = self::FUNCTIONS[$this->monitor][$what]
            ?? throw new BadArgument("The $this->monitor monitor doesn't know \"$what\".");
        foreach ($numbers as $number) {
            if ($number < 0 || $number > 0x7fffffff) {
                throw new BadArgument("$number is not a number from 0 to 2147483647.");
            }
        }
        $this->probe->link->set($function, array_values($numbers));
    }
}
