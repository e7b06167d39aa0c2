<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * The Skinny Client Control Protocol: each phone has a connection to its manager, which tells it all it does. Numbers
 * are little-endian; a message has its length, a version and its kind before it.
 */
final class SccpProtocol implements Protocol
{
    private const PORT = 2000;

    // What phones say.
    private const REGISTER = 0x0001;
    private const IP_PORT = 0x0002;
    private const KEYPAD_BUTTON = 0x0003;
    private const OFF_HOOK = 0x0006;
    private const ON_HOOK = 0x0007;
    private const SPEED_DIAL_STAT_REQ = 0x000a;
    private const LINE_STAT_REQ = 0x000b;
    private const BUTTON_TEMPLATE_REQ = 0x000e;
    private const UNREGISTER = 0x0027;
    private const OPEN_RECEIVE_CHANNEL_ACK = 0x0022;
    private const CONNECTION_STATISTICS_RES = 0x0023;

    // What the manager says.
    private const REGISTER_ACK = 0x0081;
    private const START_TONE = 0x0082;
    private const STOP_TONE = 0x0083;
    private const SET_RINGER = 0x0085;
    private const START_MEDIA_TRANSMISSION = 0x008a;
    private const STOP_MEDIA_TRANSMISSION = 0x008b;
    private const CALL_INFO = 0x008f;
    private const SPEED_DIAL_STAT = 0x0091;
    private const LINE_STAT = 0x0092;
    private const BUTTON_TEMPLATE = 0x0097;
    private const OPEN_RECEIVE_CHANNEL = 0x0105;
    private const CLOSE_RECEIVE_CHANNEL = 0x0106;
    private const CONNECTION_STATISTICS_REQ = 0x0107;
    private const CALL_STATE = 0x0111;
    private const UNREGISTER_ACK = 0x0118;
    private const DIALED_NUMBER = 0x011d;

    // States of a call.
    private const STATE_OFF_HOOK = 1;
    private const STATE_ON_HOOK = 2;
    private const STATE_RING_OUT = 3;
    private const STATE_RING_IN = 4;
    private const STATE_CONNECTED = 5;
    private const STATE_PROCEED = 12;

    private const INBOUND = 1;
    private const OUTBOUND = 2;

    /** @var array<string, Connection> by the phone's address */
    private array $connections = [];

    /** References of calls, one for each side of a call. */
    private int $references = 0x1000000;

    /** @param array<string, Phone> $phones by their addresses */
    public function __construct(
        private readonly Line $line,
        private readonly string $manager,
        private readonly array $phones,
        private readonly bool $telling,
    ) {
    }

    private static function message(int $kind, string $body = ''): string
    {
        return pack('VVV', 4 + strlen($body), 0, $kind) . $body;
    }

    private static function text(string $text, int $octets): string
    {
        return str_pad(substr($text, 0, $octets - 1), $octets, "\0");
    }

    private function ask(int $time, Phone $phone, string ...$messages): void
    {
        $this->connections[$phone->address]->say($time, 'client', implode('', $messages));
    }

    private function tell(int $time, Phone $phone, string ...$messages): void
    {
        $this->connections[$phone->address]->say($time, 'server', implode('', $messages));
    }

    public function register(int $time): void
    {
        $number = 0;
        foreach ($this->phones as $phone) {
            $port = 49_152 + $number % 16_000;
            $this->connections[$phone->address] =
                new Connection($this->line, [$phone->address, $port], [$this->manager, self::PORT], $time);
            $device = sprintf('SEP0200%08X', ip2long($phone->address));
            // The device's type is a desk phone with six buttons.
            $this->ask($time += 400, $phone, self::message(
                self::REGISTER,
                self::text($device, 16) . pack('VV', 0, 1) . inet_pton($phone->address)
                    . pack('VVVCCCC', 7, 0, 0, 5, 0, 0, 0),
            ), self::message(self::IP_PORT, pack('V', 16_384)));
            $this->tell($time += 900, $phone, self::message(
                self::REGISTER_ACK,
                pack('V', 30) . self::text('D/M/Y', 6) . "\0\0" . pack('VCCCC', 60, 5, 0, 0, 0),
            ));
            $this->ask($time += 500, $phone, self::message(self::BUTTON_TEMPLATE_REQ));
            // One line and one speed dial.
            $this->tell($time += 500, $phone, self::message(
                self::BUTTON_TEMPLATE,
                pack('VVV', 0, 2, 2) . pack('CC', 1, 9) . pack('CC', 1, 2) . str_repeat("\0\xff", 40),
            ));
            $this->ask($time += 500, $phone, self::message(self::LINE_STAT_REQ, pack('V', 1)));
            $this->tell($time += 500, $phone, self::message(
                self::LINE_STAT,
                pack('V', 1) . self::text($phone->number, 24) . self::text($phone->name, 40)
                    . self::text($phone->number, 40) . pack('V', 15),
            ));
            $this->ask($time += 500, $phone, self::message(self::SPEED_DIAL_STAT_REQ, pack('V', 1)));
            $this->tell($time += 500, $phone, self::message(
                self::SPEED_DIAL_STAT,
                pack('V', 1) . self::text('0', 24) . self::text('Operator', 40),
            ));
            $number++;
            $time += 200;
        }
    }

    public function write(Call $call): void
    {
        [$caller, $callee] = [$call->caller, $call->callee];
        [$own, $other] = [++$this->references, ++$this->references];
        $at = $call->begin;
        $state = fn(int $state, int $reference) =>
            self::message(self::CALL_STATE, pack('V6', $state, 1, $reference, 0, 0, 0));
        $tone = fn(int $tone) => self::message(self::START_TONE, pack('V4', $tone, 0, 1, $own));
        $silence = self::message(self::STOP_TONE, pack('VV', 1, $own));
        $ringer = fn(int $mode) => self::message(self::SET_RINGER, pack('V4', $mode, 1, 1, $other));

        $this->ask($at, $caller, self::message(self::OFF_HOOK, pack('VV', 1, $own)));
        $this->tell($at += 2_000, $caller, $state(self::STATE_OFF_HOOK, $own), $tone(0x21));
        foreach (str_split($callee->number) as $i => $digit) {
            $this->ask($at += 150_000, $caller, self::message(self::KEYPAD_BUTTON, pack('V3', (int) $digit, 1, $own)));
            if ($i === 0) {
                $this->tell($at + 1_500, $caller, $silence);
            }
        }
        $this->tell(
            $at += 3_000,
            $caller,
            self::message(self::DIALED_NUMBER, self::text($callee->number, 24) . pack('VV', 1, $own)),
            $state(self::STATE_PROCEED, $own),
            $this->callInfo($call, self::OUTBOUND, $own),
        );
        $this->tell(
            $at += 1_000,
            $callee,
            $state(self::STATE_RING_IN, $other),
            $this->callInfo($call, self::INBOUND, $other),
            $ringer(2),
        );
        $this->tell($at += 1_000, $caller, $state(self::STATE_RING_OUT, $own), $tone(0x24));

        $at = $call->answer - 60_000;
        $this->ask($at, $callee, self::message(self::OFF_HOOK, pack('VV', 1, $other)));
        $this->tell($at += 2_000, $callee, $ringer(1), $state(self::STATE_CONNECTED, $other));
        $this->tell($at += 1_000, $caller, $silence, $state(self::STATE_CONNECTED, $own));
        $sides = [[$caller, $own, $call->forward, $call->reverse], [$callee, $other, $call->reverse, $call->forward]];
        $codec = $call->forward->codec;
        foreach ($sides as $side => [$phone, $reference]) {
            // Conference, party, milliseconds in a packet, codec, no echo cancelling, bit rate, the call.
            $this->tell($at += 1_000, $phone, self::message(
                self::OPEN_RECEIVE_CHANNEL,
                pack('V7', $reference, $reference + 16, $codec->period(), $codec->sccp(), 0, 0, $reference)
                    . str_repeat("\0", 64),
            ));
        }
        foreach ($sides as [$phone, $reference, $sent, $received]) {
            $this->ask($at += 5_000, $phone, self::message(
                self::OPEN_RECEIVE_CHANNEL_ACK,
                pack('V', 0) . inet_pton($phone->address) . pack('VVV', $received->toPort, $reference + 16, $reference),
            ));
        }
        foreach ($sides as [$phone, $reference, $sent]) {
            $this->tell($at += 1_000, $phone, self::message(
                self::START_MEDIA_TRANSMISSION,
                pack('VV', $reference, $reference + 16) . inet_pton($sent->to)
                    . pack('V3', $sent->toPort, $codec->period(), $codec->sccp())
                    . pack('VVvvVV', Line::MEDIA << 2, 0, 1, 0, 0, $reference) . str_repeat("\0", 72),
            ));
        }

        $at = $call->hangUp;
        // One call in three is ended by the callee.
        $ends = $call->number % 3 === 2 ? [$callee, $other] : [$caller, $own];
        $this->ask($at, $ends[0], self::message(self::ON_HOOK, pack('VV', 1, $ends[1])));
        foreach ($sides as [$phone, $reference]) {
            $body = pack('V4', $reference, $reference + 16, $reference, 0);
            $this->tell(
                $at += 1_500,
                $phone,
                self::message(self::CLOSE_RECEIVE_CHANNEL, $body),
                self::message(self::STOP_MEDIA_TRANSMISSION, $body),
            );
        }
        if ($this->telling) {
            $call->tell();
            foreach ($sides as $side => [$phone, $reference]) {
                $this->tell($at += 1_000, $phone, self::message(
                    self::CONNECTION_STATISTICS_REQ,
                    self::text($phone->number, 24) . pack('VV', $reference, 0),
                ));
            }
            foreach ($sides as $side => [$phone, $reference]) {
                $this->ask($at += 8_000, $phone, self::message(
                    self::CONNECTION_STATISTICS_RES,
                    self::text($phone->number, 24) . pack('VV', $reference, 0)
                        . pack('V7', ...array_values($call->told[$side === 0 ? 'caller' : 'callee'])),
                ));
            }
        }
        foreach ($sides as [$phone, $reference]) {
            $this->tell($at += 1_000, $phone, $state(self::STATE_ON_HOOK, $reference));
        }
    }

    private function callInfo(Call $call, int $type, int $reference): string
    {
        [$caller, $callee] = [$call->caller, $call->callee];
        return self::message(
            self::CALL_INFO,
            self::text($caller->name, 40) . self::text($caller->number, 24) . self::text($callee->name, 40)
                . self::text($callee->number, 24) . pack('V3', 1, $reference, $type) . self::text($callee->name, 40)
                . self::text($callee->number, 24) . str_repeat("\0", 212),
        );
    }

    public function end(int $time): void
    {
        foreach ($this->phones as $phone) {
            $this->ask($time, $phone, self::message(self::UNREGISTER));
            $this->tell($time + 2_000, $phone, self::message(self::UNREGISTER_ACK, pack('V', 0)));
            $this->connections[$phone->address]->close($time + 4_000);
            $time += 500;
        }
    }
}
