<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Voice;

use Rmon\Exception\UnknownName;

/** A phone as a voice monitor saw it, in the same words for all three. */
final class Phone
{
    /** Where each monitor's rows have what it is. */
    private const PARTIES = [
        'sccp' => ['phone_num', 'phone_ipAddr', 'phone_owner'],
        'h323' => ['forward_num', 'forward_q931_ipAddr', 'forward_alias'],
        'mgcp' => ['phone_num', 'phone_ipAddr', 'phone_owner'],
    ];

    /**
     * @param int $index       the phone's own in the monitor's table
     * @param int $calls       calls that were monitored
     * @param int $lost        packets that a call lost on average
     * @param int $jitter      milliseconds on average
     * @param int $worstLost   packets that the worst call lost
     * @param int $worstJitter milliseconds in the worst call
     * @param int $flags       figures above their thresholds, where alarms are on: 1 jitter, 2 loss, 4 latency
     */
    private function __construct(
        public readonly string $monitor,
        public readonly int $index,
        public readonly Party $party,
        public readonly int $calls,
        public readonly int $lost,
        public readonly int $jitter,
        public readonly int $worstLost,
        public readonly int $worstJitter,
        public readonly int $flags,
    ) {
    }

    /**
     * @param array<string, mixed> $row of sccpPhoneTable, h323PhoneTable or mgcpPhoneTable
     * @throws UnknownName
     */
    public static function of(string $monitor, array $row): self
    {
        $names = self::PARTIES[$monitor]
            ?? throw UnknownName::among('voice monitor', $monitor, array_keys(self::PARTIES));
        $party = new Party(...array_map(static fn(string $name) => $row[$name], $names));
        $numbers = ['num_call_mon', 'avg_pkt_lost', 'avg_jitter', 'worst_pkt_lost', 'worst_jitter', 'flag'];
        // Numbers without a sign, which the module shows with one.
        $numbers = array_map(static fn(string $name) => $row[$name] & 0xffffffff, $numbers);
        return new self($monitor, $row['index'], $party, ...$numbers);
    }
}
