<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * The packets of RTP from one end of a call to the other: planned first, so that what becomes of them is known, and
 * written then.
 */
final class Stream
{
    /** @var list<array{int, int}> arrivals at the place of the capture: microseconds, number of the packet */
    private array $arrivals = [];

    /** Jitter in microseconds as RFC 3550 6.4.1 estimates it, behind each arrival. @var list<float> */
    private array $estimates = [];

    public readonly int $source;
    private readonly int $sequence;
    private readonly int $timestamp;

    /**
     * @param int $begin microseconds since 1970
     * @param int $count packets that are sent
     */
    public function __construct(
        public readonly string $from,
        public readonly int $fromPort,
        public readonly string $to,
        public readonly int $toPort,
        public readonly Codec $codec,
        public readonly int $begin,
        public readonly int $count,
        public readonly Quality $quality,
    ) {
        $this->source = mt_rand(1, 0x7fffffff) << 1 | mt_rand(0, 1);
        // Some wrap around: sequence numbers after a few packets, timestamps after some seconds.
        $this->sequence = mt_rand(0, 3) === 0 ? 0xffff - mt_rand(0, 40) : mt_rand(0, 0xffff);
        $this->timestamp = mt_rand(0, 7) === 0 ? 0xffffffff - mt_rand(0, 20_000) : mt_rand(0, 0x7fffffff);
        $this->plan();
        $this->estimate();
    }

    private function plan(): void
    {
        $quality = $this->quality;
        // The first packet and the last ones arrive as they were sent, so that each loss shows as a gap.
        $free = $this->count > 4 ? range(1, $this->count - 3) : [];
        // One that is overtaken leaves at most five fewer to choose from.
        $special = $quality->lost + 5 * $quality->reordered + $quality->duplicates;
        if ($special > count($free)) {
            throw new DomainException("a stream of $this->count packets is too short for what shall happen to it");
        }
        $overtaken = [];
        // Those that are overtaken first, while there is room: neither they nor their neighbours are anything else.
        while (count($overtaken) < $quality->reordered) {
            $at = $free[mt_rand(0, count($free) - 1)];
            if (array_diff([$at - 1, $at, $at + 1], $free, [0]) === []) {
                $overtaken[$at] = true;
                $free = array_values(array_diff($free, [$at - 1, $at, $at + 1]));
            }
        }
        shuffle($free);
        $lost = array_flip(array_slice($free, 0, $quality->lost));
        $twice = array_flip(array_slice($free, $quality->lost, $quality->duplicates));

        $period = 1000 * $this->codec->period();
        // Two values of an even distribution are a third of its width apart on average, and never so far that one
        // packet overtakes the other.
        $width = min(3 * $quality->jitter, $period - 2000);
        for ($i = 0; $i < $this->count; $i++) {
            $time = $this->begin + $i * $period + mt_rand(0, max(0, $width));
            if (isset($lost[$i])) {
                continue;
            }
            $this->arrivals[] = [$time, $i];
            if (isset($twice[$i])) {
                $this->arrivals[] = [$time + 150, $i];
            }
            if (isset($overtaken[$i - 1])) {
                $last = count($this->arrivals) - 1;
                [$this->arrivals[$last - 1][1], $this->arrivals[$last][1]] = [$i, $i - 1];
            }
        }
    }

    private function estimate(): void
    {
        $before = null;
        $jitter = 0.0;
        $sampled = 1_000_000 * $this->samples() / $this->codec->clock();
        foreach ($this->arrivals as [$time, $number]) {
            // How much longer this one was on its way than the one that arrived before it.
            $transit = $time - $number * $sampled;
            $jitter += (abs($transit - ($before ?? $transit)) - $jitter) / 16;
            $before = $transit;
            $this->estimates[] = $jitter;
        }
    }

    /** By how much the timestamp grows from packet to packet. */
    private function samples(): int
    {
        return intdiv($this->codec->clock() * $this->codec->period(), 1000);
    }

    public function write(Line $line): void
    {
        $type = $this->codec->payloadType();
        foreach ($this->arrivals as [$time, $number]) {
            $header = pack(
                'CCnNN',
                0x80,
                $number === 0 ? 0x80 | $type : $type,
                $this->sequence + $number & 0xffff,
                $this->timestamp + $number * $this->samples() & 0xffffffff,
                $this->source,
            );
            $segment = udp($this->fromPort, $this->toPort, $header . $this->codec->speech());
            $line->packet($time, $this->from, $this->to, UDP, $segment, Line::MEDIA);
        }
    }

    /** How many arrivals there were until then. */
    private function arrived(int $until): int
    {
        [$low, $high] = [0, count($this->arrivals)];
        while ($low < $high) {
            $middle = intdiv($low + $high, 2);
            if ($this->arrivals[$middle][0] <= $until) {
                $low = $middle + 1;
            } else {
                $high = $middle;
            }
        }
        return $low;
    }

    /** What the receiver tells of this stream at that time: a block of RFC 3550 6.4.1; empty before it heard any. */
    public function receiverReport(int $time, int $since, int $echo, int $delay): string
    {
        $now = $this->upTo($time);
        if ($now['packets'] === 0) {
            return '';
        }
        $then = $this->upTo($since);
        $expected = $now['highest'] - $then['highest'];
        $lost = $now['lost'] - $then['lost'];
        $fraction = $expected > 0 && $lost > 0 ? intdiv($lost << 8, $expected) : 0;
        return pack(
            'NNNNNN',
            $this->source,
            $fraction << 24 | $now['lost'] & 0xffffff,
            $this->sequence + $now['highest'],
            (int) ($now['jitter'] * $this->codec->clock() / 1e6),
            $echo,
            $delay,
        );
    }

    /** @return array{packets: int, highest: int, lost: int, jitter: float} of what arrived until then */
    private function upTo(int $time): array
    {
        $packets = $this->arrived($time);
        if ($packets === 0) {
            return ['packets' => 0, 'highest' => -1, 'lost' => 0, 'jitter' => 0.0];
        }
        $last = array_slice($this->arrivals, max(0, $packets - 3), min(3, $packets));
        $highest = max(array_column($last, 1));
        return [
            'packets' => $packets,
            'highest' => $highest,
            'lost' => $highest + 1 - $packets,
            'jitter' => $this->estimates[$packets - 1],
        ];
    }

    /** What the sender tells of itself: NTP's and RTP's time, packets and octets sent. */
    public function senderReport(int $time): string
    {
        $sent = max(0, min($this->count, intdiv($time - $this->begin, 1000 * $this->codec->period()) + 1));
        [$seconds, $fraction] = self::ntp($time);
        $sampled = intdiv(($time - $this->begin) * $this->codec->clock(), 1_000_000);
        $stamp = $this->timestamp + $sampled & 0xffffffff;
        return pack('NNNNNN', $this->source, $seconds, $fraction, $stamp, $sent, $sent * $this->codec->octets());
    }

    /** @return array{int, int} seconds since 1900, and parts of a second of 2^32 */
    public static function ntp(int $time): array
    {
        return [intdiv($time, 1_000_000) + 2_208_988_800, intdiv(($time % 1_000_000) << 32, 1_000_000)];
    }

    public function end(): int
    {
        return $this->begin + $this->count * 1000 * $this->codec->period();
    }

    /** What an observer at the place of the capture has to find. Jitter in milliseconds. */
    public function known(): array
    {
        $packets = count($this->arrivals);
        return [
            'from' => $this->from,
            'from_port' => $this->fromPort,
            'to' => $this->to,
            'to_port' => $this->toPort,
            'ssrc' => $this->source,
            'payload_type' => $this->codec->payloadType(),
            'sent' => $this->count,
            'packets' => $packets,
            'octets' => $packets * $this->codec->octets(),
            'missing' => $this->quality->lost,
            'duplicates' => $this->quality->duplicates,
            'reordered' => $this->quality->reordered,
            'lost' => $this->count - $packets,
            'first' => $this->arrivals[0][0],
            'last' => $this->arrivals[$packets - 1][0],
            'jitter' => end($this->estimates) / 1000,
            'max_jitter' => max($this->estimates) / 1000,
            // Of those that came behind another one.
            'mean_jitter' => array_sum($this->estimates) / max(1, $packets - 1) / 1000,
        ];
    }
}
