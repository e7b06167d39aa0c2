<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** The Media Gateway Control Protocol, RFC 3435: a call agent, and a gateway with one telephone for each phone. */
final class MgcpProtocol implements Protocol
{
    private const GATEWAY = 2427;
    private const AGENT = 2727;

    private int $transactions = 1000;
    private int $connections = 0xfde234c0;

    /** The last request for notifications of each phone, by its address. @var array<string, string> */
    private array $requests = [];

    /** @param array<string, Phone> $phones by their addresses */
    public function __construct(
        private readonly Line $line,
        private readonly string $agent,
        private readonly array $phones,
        private readonly bool $telling,
    ) {
    }

    public static function endpoint(Phone $phone): string
    {
        return "aaln/1@gw$phone->number.example";
    }

    /**
     * A command and its response.
     *
     * @param list<string> $lines of the command, behind its first one
     * @param list<string> $answer lines of the response
     */
    private function transact(
        int $time,
        bool $byGateway,
        Phone $phone,
        string $verb,
        array $lines,
        string $result = '200',
        array $answer = [],
        string $sdp = '',
        string $answeredSdp = '',
    ): void {
        $id = ++$this->transactions;
        $text = fn(array $lines, string $sdp) => implode("\r\n", $lines) . "\r\n" . ($sdp === '' ? '' : "\r\n$sdp");
        $command = $text(["$verb $id " . self::endpoint($phone) . ' MGCP 1.0', ...$lines], $sdp);
        $response = $text(["$result $id OK", ...$answer], $answeredSdp);
        $this->say($time, $byGateway, $phone, $command);
        $this->say($time + 6_000, !$byGateway, $phone, $response);
    }

    private function say(int $time, bool $byGateway, Phone $phone, string $text): void
    {
        [$from, $fromPort, $to, $toPort] = $byGateway
            ? [$phone->address, self::GATEWAY, $this->agent, self::AGENT]
            : [$this->agent, self::AGENT, $phone->address, self::GATEWAY];
        $this->line->packet($time, $from, $to, UDP, udp($fromPort, $toPort, $text), Line::SIGNALLING);
    }

    /** What the gateway shall tell of, and what it shall do at once. */
    private function request(int $time, Phone $phone, string $events, string $signals = ''): void
    {
        $this->transact($time, false, $phone, 'RQNT', array_filter([
            'N: ca@' . $this->agent . ':' . self::AGENT,
            $this->identifier($phone),
            "R: $events",
            $signals === '' ? '' : "S: $signals",
        ]));
    }

    /** The line that names a new request: what the phone tells of later bears its name. */
    private function identifier(Phone $phone): string
    {
        return 'X: ' . ($this->requests[$phone->address] = dechex($this->transactions + 1));
    }

    private function notify(int $time, Phone $phone, string $event): void
    {
        $this->transact($time, true, $phone, 'NTFY', [
            'N: ca@' . $this->agent . ':' . self::AGENT,
            'X: ' . $this->requests[$phone->address],
            "O: $event",
        ]);
    }

    private static function sdp(string $address, int $port, Codec $codec): string
    {
        $type = $codec->payloadType();
        $place = (str_contains($address, ':') ? 'IN IP6 ' : 'IN IP4 ') . $address;
        $lines = ['v=0', "o=- 25678 753849 $place", 's=-', "c=$place", 't=0 0',
            "m=audio $port RTP/AVP $type", "a=rtpmap:$type " . $codec->sdp(), 'a=ptime:' . $codec->period()];
        return implode("\r\n", $lines) . "\r\n";
    }

    public function register(int $time): void
    {
        foreach ($this->phones as $phone) {
            $this->transact($time, true, $phone, 'RSIP', ['RM: restart']);
            $this->request($time + 10_000, $phone, 'L/hd(N)');
            $time += 400;
        }
    }

    public function write(Call $call): void
    {
        [$caller, $callee] = [$call->caller, $call->callee];
        [$forward, $reverse, $codec] = [$call->forward, $call->reverse, $call->forward->codec];
        $id = sprintf('A3C47F21%08X', $call->number + 1);
        $connection = fn() => sprintf('%X', ++$this->connections);
        [$own, $other] = [$connection(), $connection()];
        $options = 'L: p:' . $codec->period() . ", a:$codec->value, s:off";

        $at = $call->begin;
        $this->notify($at, $caller, 'L/hd');
        $this->request($at += 20_000, $caller, 'L/hu(N), D/[0-9#*T](D)', 'L/dl');
        $digits = implode(', ', array_map(fn(string $digit) => "D/$digit", str_split($callee->number)));
        $this->notify($at += 600_000, $caller, $digits);
        $ends = [
            'caller' => self::sdp($reverse->to, $reverse->toPort, $codec),
            'callee' => self::sdp($forward->to, $forward->toPort, $codec),
        ];
        $lines = ["C: $id", $options, 'M: recvonly', $this->identifier($caller), 'R: L/hu(N)'];
        $this->transact($at += 20_000, false, $caller, 'CRCX', $lines, '200', ["I: $own"], '', $ends['caller']);
        $lines = ["C: $id", $options, 'M: sendrecv'];
        $this->transact(
            $at += 20_000,
            false,
            $callee,
            'CRCX',
            $lines,
            '200',
            ["I: $other"],
            $ends['caller'],
            $ends['callee'],
        );
        $lines = ["C: $id", "I: $own", 'M: recvonly'];
        $this->transact($at += 20_000, false, $caller, 'MDCX', $lines, '200', [], $ends['callee']);
        $when = gmdate('m/d/H/i', intdiv($at, 1_000_000));
        $this->request($at += 20_000, $callee, 'L/hd(N)', "L/rg, L/ci($when, $caller->number, \"$caller->name\")");
        $this->request($at += 20_000, $caller, 'L/hu(N)', 'G/rt');

        $at = $call->answer - 60_000;
        $this->notify($at, $callee, 'L/hd');
        $this->request($at += 10_000, $callee, 'L/hu(N)');
        $this->transact($at += 10_000, false, $caller, 'MDCX', ["C: $id", "I: $own", 'M: sendrecv']);

        $at = $call->hangUp;
        // One call in three is ended by the callee.
        $this->notify($at, $call->number % 3 === 2 ? $callee : $caller, 'L/hu');
        if ($this->telling) {
            $call->tell();
        }
        foreach (['caller' => [$caller, $own], 'callee' => [$callee, $other]] as $side => [$phone, $connection]) {
            $told = $this->told($call->told[$side] ?? []);
            $this->transact($at += 20_000, false, $phone, 'DLCX', ["C: $id", "I: $connection"], '250', $told);
        }
        foreach ([$caller, $callee] as $phone) {
            $this->request($at += 20_000, $phone, 'L/hd(N)');
        }
    }

    /** @return list<string> the line with a connection's parameters, where the gateways tell them */
    private function told(array $told): array
    {
        $names = ['PS', 'OS', 'PR', 'OR', 'PL', 'JI', 'LA'];
        $pairs = array_map(fn(string $name, int $value) => "$name=$value", $told === [] ? [] : $names, $told);
        return $pairs === [] ? [] : ['P: ' . implode(', ', $pairs)];
    }

    public function end(int $time): void
    {
        foreach ($this->phones as $phone) {
            $this->transact($time, true, $phone, 'RSIP', ['RM: graceful', 'RD: 0']);
            $time += 400;
        }
    }
}
