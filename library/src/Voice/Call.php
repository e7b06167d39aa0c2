<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Voice;

use Rmon\Exception\UnknownName;

/** A call as a voice monitor saw it, in the same words for all three. */
final class Call
{
    /** Numbers without a sign, which the module shows with one. */
    private const UNSIGNED = 0xffffffff;

    private const MONITORS = ['sccp', 'h323', 'mgcp'];

    /**
     * @param string $monitor "sccp", "h323" or "mgcp"
     * @param int $index      the call's own in the monitor's table
     * @param int $start      when it began, on the agent's clock (sysUpTime)
     * @param int|null $end   when it ended; null while it lasts
     * @param Leg $heardByCaller what came to the one who called
     * @param Leg $heardByCallee what came to the one who was called
     */
    private function __construct(
        public readonly string $monitor,
        public readonly int $index,
        public readonly Party $caller,
        public readonly Party $callee,
        public readonly int $start,
        public readonly ?int $end,
        public readonly Leg $heardByCaller,
        public readonly Leg $heardByCallee,
    ) {
    }

    /**
     * @param array<string, mixed> $row of sccpCallTable, h323CallTable or mgcpCallTable
     * @throws UnknownName
     */
    public static function of(string $monitor, array $row): self
    {
        [$caller, $callee, $toCaller, $toCallee] = match ($monitor) {
            'sccp' => [
                new Party($row['phone_num'], $row['phone_ipAddr'], $row['phone_owner']),
                new Party($row['callee_phone_num'], $row['callee_phone_ipAddr'], $row['callee_phone_owner']),
                self::sccpLeg($row, '', true),
                self::sccpLeg($row, 'callee_', false),
            ],
            'h323' => [
                new Party($row['forward_num'], $row['forward_q931_ipAddr'], $row['forward_alias']),
                new Party($row['reverse_num'], $row['reverse_q931_ipAddr'], $row['reverse_alias']),
                // What is sent forward is heard at the far end.
                self::h323Leg($row, 'reverse', true),
                self::h323Leg($row, 'forward', false),
            ],
            'mgcp' => [
                new Party($row['caller_phone_num'], $row['caller_ip_addr'], $row['caller_alias']),
                new Party($row['callee_phone_num'], $row['callee_ip_addr'], $row['callee_alias']),
                self::mgcpLeg($row, 1, true),
                self::mgcpLeg($row, 2, false),
            ],
            default => throw UnknownName::among('voice monitor', $monitor, self::MONITORS),
        };
        $start = $row['start_time'] & self::UNSIGNED;
        $end = $row['end_time'] & self::UNSIGNED;
        // A call that lasts has no end yet; one that was over at the agent's start has neither.
        $end = $end === 0 && $start !== 0 ? null : $end;
        return new self($monitor, $row['index'], $caller, $callee, $start, $end, $toCaller, $toCallee);
    }

    public function isRunning(): bool
    {
        return $this->end === null;
    }

    /**
     * How long it took or takes, in hundredths of a second.
     *
     * @param int $now the agent's clock, for a call that lasts
     */
    public function duration(int $now): int
    {
        return max(0, ($this->end ?? $now) - $this->start);
    }

    /** @return array{Leg, Leg} what the caller heard, what the one who was called heard */
    public function legs(): array
    {
        return [$this->heardByCaller, $this->heardByCallee];
    }

    /** The worse of both directions: packets that were lost. */
    public function lost(): int
    {
        return max($this->heardByCaller->lost, $this->heardByCallee->lost);
    }

    /** The worse of both directions, in milliseconds. */
    public function jitter(): int
    {
        return max($this->heardByCaller->jitter, $this->heardByCallee->jitter);
    }

    /** The worse of both directions, in milliseconds; null where it isn't measured. */
    public function latency(): ?int
    {
        return max($this->heardByCaller->latency, $this->heardByCallee->latency);
    }

    /** The worse of both directions; null where no media were seen. */
    public function rating(): ?float
    {
        $ratings = array_filter(
            [$this->heardByCaller->rating(), $this->heardByCallee->rating()],
            static fn(?float $rating) => $rating !== null,
        );
        return $ratings === [] ? null : min($ratings);
    }

    /** Figures above their thresholds, of either direction: 1 jitter, 2 loss, 4 latency. */
    public function flags(): int
    {
        return $this->heardByCaller->flags | $this->heardByCallee->flags;
    }

    /** @param array<string, mixed> $row */
    private static function sccpLeg(array $row, string $of, bool $toCaller): Leg
    {
        return self::received(
            $toCaller,
            $row["{$of}pkt_recv"],
            $row["{$of}oct_recv"],
            $row["{$of}pkt_lost"],
            $row["{$of}jitter"],
            $row["{$of}latency"],
            Codec::ofSccp($row["{$of}payload_type"]),
            $row["{$of}flag"],
        );
    }

    /** @param array<string, mixed> $row */
    private static function h323Leg(array $row, string $way, bool $toCaller): Leg
    {
        $sent = $row["{$way}_sr_pkt_sent"] & self::UNSIGNED;
        return new Leg(
            $toCaller,
            $sent,
            $row["{$way}_sr_oct_sent"] & self::UNSIGNED,
            $row["{$way}_sr_pkt_lost"] & self::UNSIGNED,
            $sent === 0 ? null : $sent,
            $row["{$way}_sr_jitter"] & self::UNSIGNED,
            null,
            // The agent doesn't say by which list its codecs are numbered.
            null,
            $row['flag'],
        );
    }

    /** @param array<string, mixed> $row */
    private static function mgcpLeg(array $row, int $leg, bool $toCaller): Leg
    {
        return self::received(
            $toCaller,
            $row["pkt_recv_$leg"],
            $row["oct_recv_$leg"],
            $row["pkt_loss_$leg"],
            $row["jitter_$leg"],
            $row["latency_$leg"],
            Codec::named($row['audio_codec']),
            $row['flag'],
        );
    }

    private static function received(
        bool $toCaller,
        int $packets,
        int $octets,
        int $lost,
        int $jitter,
        int $latency,
        ?Codec $codec,
        int $flags,
    ): Leg {
        $packets &= self::UNSIGNED;
        $lost &= self::UNSIGNED;
        return new Leg(
            $toCaller,
            $packets,
            $octets & self::UNSIGNED,
            $lost,
            $packets + $lost === 0 ? null : $packets + $lost,
            $jitter & self::UNSIGNED,
            $latency & self::UNSIGNED,
            $codec,
            $flags,
        );
    }
}
