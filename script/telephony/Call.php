<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** One call with its media. Times are microseconds since 1970. */
final class Call
{
    /** How long a call takes before it is answered, and from the hang-up to the last message. */
    public const BEFORE = 2_400_000;
    public const AFTER = 600_000;

    /** What the two phones tell themselves at the end, "caller" and "callee"; empty where they tell nothing. */
    public array $told = [];

    /** Of a call by H.323: its identifier in hexadecimal digits, and how the media were agreed on. */
    public string $id = '';
    public string $form = '';

    /**
     * @param int $number  from 0 on, of its protocol
     * @param int $begin   when the caller begins
     * @param int $answer  when the callee answers, and the media begin
     * @param int $hangUp  when one of them hangs up
     * @param int $roundTrip from one phone to the other and back, in microseconds
     */
    public function __construct(
        public readonly int $number,
        public readonly Phone $caller,
        public readonly Phone $callee,
        public readonly int $begin,
        public readonly int $answer,
        public readonly int $hangUp,
        public readonly Stream $forward,
        public readonly Stream $reverse,
        public readonly int $roundTrip,
    ) {
    }

    public function end(): int
    {
        return $this->hangUp + self::AFTER;
    }

    /**
     * What both phones count themselves. They stand behind the place of the capture, where some more packets are lost:
     * their figures are not the captured ones.
     */
    public function tell(): void
    {
        $sides = ['caller' => [$this->forward, $this->reverse], 'callee' => [$this->reverse, $this->forward]];
        foreach ($sides as $side => [$sent, $received]) {
            $known = $received->known();
            $behind = mt_rand(1, 3);
            $packets = $known['packets'] - $known['duplicates'] - $behind;
            $this->told[$side] = [
                'packets_sent' => $sent->count,
                'octets_sent' => $sent->count * $sent->codec->octets(),
                'packets_received' => $packets,
                'octets_received' => $packets * $received->codec->octets(),
                'lost' => $known['missing'] + $behind,
                'jitter' => (int) ceil($known['jitter']) + 1,
                'latency' => intdiv($this->roundTrip, 1000) + $behind,
            ];
        }
    }

    /** The streams, and what their ends report every so many microseconds (0: nothing). */
    public function writeMedia(Line $line, int $every): void
    {
        $this->forward->write($line);
        $this->reverse->write($line);
        $sides = [[$this->forward, $this->reverse], [$this->reverse, $this->forward]];
        $sent = [0, 0];
        for ($time = $this->answer + $every; $every > 0 && $time < $this->hangUp; $time += $every) {
            foreach ($sides as $side => [$own, $other]) {
                $at = $time + intdiv($every, 2) * $side;
                $this->report($line, $at, $at - $every, $own, $other, $sent[1 - $side]);
                $sent[$side] = $at;
            }
        }
    }

    /** A sender's report about its own stream and the one that it receives, whose sender reported last at $heard. */
    private function report(Line $line, int $time, int $since, Stream $own, Stream $other, int $heard): void
    {
        [$echo, $delay] = [0, 0];
        if ($heard > 0) {
            [$seconds, $fraction] = Stream::ntp($heard);
            $echo = ($seconds & 0xffff) << 16 | $fraction >> 16;
            // The capture is made halfway.
            $delay = (int) ceil(max(0, $time - $heard - intdiv($this->roundTrip, 2)) * 0.065_536);
        }
        $block = $other->receiverReport($time, $since, $echo, $delay);
        $report = $own->senderReport($time) . $block;
        $name = "phone@$own->from";
        $item = pack('NCC', $own->source, 1, strlen($name)) . $name . "\0";
        $item .= str_repeat("\0", -strlen($item) & 3);
        $bytes = pack('CCn', $block === '' ? 0x80 : 0x81, 200, strlen($report) / 4) . $report
            . pack('CCn', 0x81, 202, strlen($item) / 4) . $item;
        $segment = udp($own->fromPort + 1, $own->toPort + 1, $bytes);
        $line->packet($time, $own->from, $own->to, UDP, $segment, Line::MEDIA);
    }

    public function known(string $protocol): array
    {
        return [
            'protocol' => $protocol,
            'caller' => $this->caller->known(),
            'callee' => $this->callee->known(),
            'begin' => $this->begin,
            'answer' => $this->answer,
            'end' => $this->hangUp,
            'id' => $this->id,
            'form' => $this->form,
            'round_trip' => $this->roundTrip,
            'told' => $this->told,
            'forward' => $this->forward->known(),
            'reverse' => $this->reverse->known(),
        ];
    }
}
