<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * H.323: phones register with a gatekeeper and ask it whether they may call; they signal to each other. The control of
 * media has a connection of its own, is tunnelled in the signalling, or is part of it from the first message on (fast
 * start).
 */
final class H323Protocol implements Protocol
{
    public const FORMS = ['slow', 'fast', 'tunnel'];

    private const RAS = 1719;
    private const SIGNALLING = 1720;

    private int $sequence = 0;

    /**
     * @param array<string, Phone> $phones by their addresses
     * @param list<string> $forms of which calls have one after the other
     */
    public function __construct(
        private readonly Line $line,
        private readonly string $gatekeeper,
        private readonly array $phones,
        private readonly array $forms,
    ) {
    }

    private function ask(int $time, Phone $phone, string $request, string $answer): void
    {
        $ports = [self::RAS, self::RAS];
        $ends = [$phone->address, $this->gatekeeper];
        $this->line->packet($time, ...$ends, ...[UDP, udp(...$ports, ...[$request]), Line::SIGNALLING]);
        $ends = array_reverse($ends);
        $this->line->packet($time + 900, ...$ends, ...[UDP, udp(...$ports, ...[$answer]), Line::SIGNALLING]);
    }

    private function next(): int
    {
        return $this->sequence = $this->sequence % 65_535 + 1;
    }

    public function register(int $time): void
    {
        foreach ($this->phones as $phone) {
            $number = $this->next();
            $this->ask(
                $time,
                $phone,
                H323Messages::gatekeeperRequest($number, $phone),
                H323Messages::gatekeeperConfirm($number, $this->gatekeeper),
            );
            $number = $this->next();
            $this->ask(
                $time + 2_000,
                $phone,
                H323Messages::registrationRequest($number, $phone),
                H323Messages::registrationConfirm($number, $phone, $this->gatekeeper),
            );
            $time += 4_000;
        }
    }

    private function admit(int $time, Call $call, string $id, bool $answering): void
    {
        $number = $this->next();
        $this->ask(
            $time,
            $answering ? $call->callee : $call->caller,
            H323Messages::admissionRequest($number, $call, $id, $answering),
            H323Messages::admissionConfirm($number, $call),
        );
    }

    public function write(Call $call): void
    {
        $id = noise(16);
        $call->id = bin2hex($id);
        $call->form = $this->forms[$call->number % count($this->forms)];
        [$fast, $tunnel] = [$call->form === 'fast', $call->form === 'tunnel'];
        [$forward, $reverse, $codec] = [$call->forward, $call->reverse, $call->forward->codec];
        // Where each end receives speech, and reports about what it sends and receives.
        $media = ['caller' => [$reverse->to, $reverse->toPort], 'callee' => [$forward->to, $forward->toPort]];
        $reports = array_map(fn(array $end) => [$end[0], $end[1] + 1], $media);
        $carried = $tunnel ? [] : null;

        $this->admit($call->begin, $call, $id, false);
        $at = $call->begin + 4_000;
        $own = 30_000 + 2 * $call->number % 30_000;
        $signalling = new Connection(
            $this->line,
            [$call->caller->address, $own],
            [$call->callee->address, self::SIGNALLING],
            $at,
        );
        $channels = fn(?array $forward, ?array $reverse, string $side) => $fast ? [
            H323Messages::fastForward($codec, $forward, $reports[$side]),
            H323Messages::fastReverse($codec, $reverse, $reports[$side]),
        ] : [];
        $proposed = $channels(null, $media['caller'], 'caller');
        $signalling->say($at += 1_000, 'client', H323Messages::setup($call, $id, $proposed, $carried));
        $proceeding = H323Messages::progress(H323Messages::PROCEEDING, $call, $id, $carried);
        $signalling->say($at += 8_000, 'server', $proceeding);
        $this->admit($at += 2_000, $call, $id, true);
        $alerting = H323Messages::progress(H323Messages::ALERTING, $call, $id, $carried);
        $signalling->say($at += 20_000, 'server', $alerting);

        $at = $call->answer - 120_000;
        $port = $call->form === 'slow' ? 20_000 + $call->number % 10_000 : null;
        $taken = $channels($media['callee'], null, 'callee');
        $signalling->say($at, 'server', H323Messages::connect($call, $id, $port, $taken, $carried));
        $ends = [[$call->caller->address, $own + 1], [$call->callee->address, $port]];
        $control = $port === null ? null : new Connection($this->line, ...$ends, ...[$at + 2_000]);
        $say = function (int $time, string $side, string ...$messages) use ($control, $signalling, $call): void {
            if ($control !== null) {
                $control->say($time, $side, implode('', array_map(H323Messages::framed(...), $messages)));
            } else {
                $byCaller = $side === 'client';
                $signalling->say($time, $side, H323Messages::facility($call, $byCaller, array_values($messages)));
            }
        };
        if (!$fast) {
            $at += 4_000;
            $say($at += 1_000, 'client', H323Messages::capabilities($codec), H323Messages::masterSlave(0x123456));
            $say($at += 2_000, 'server', H323Messages::capabilities($codec), H323Messages::masterSlave(0x654321));
            $say($at += 2_000, 'client', H323Messages::capabilitiesAck(), H323Messages::masterSlaveAck(true));
            $say($at += 2_000, 'server', H323Messages::capabilitiesAck(), H323Messages::masterSlaveAck(false));
            $open = H323Messages::openChannel(H323Messages::FORWARD, $codec, $reports['caller']);
            $say($at += 2_000, 'client', $open);
            // Two messages in one piece: the answer and its own channel.
            $say(
                $at += 2_000,
                'server',
                H323Messages::openChannelAck(H323Messages::FORWARD, $media['callee'], $reports['callee']),
                H323Messages::openChannel(H323Messages::REVERSE, $codec, $reports['callee']),
            );
            $ack = H323Messages::openChannelAck(H323Messages::REVERSE, $media['caller'], $reports['caller']);
            $say($at += 2_000, 'client', $ack);
        }

        $at = $call->hangUp;
        // One call in three is ended by the callee.
        $byCaller = $call->number % 3 !== 2;
        [$ends, $other] = $byCaller ? ['client', 'server'] : ['server', 'client'];
        if (!$fast) {
            [$own, $others] = $byCaller ? [H323Messages::FORWARD, H323Messages::REVERSE]
                : [H323Messages::REVERSE, H323Messages::FORWARD];
            $say($at, $ends, H323Messages::closeChannel($own));
            $say($at += 2_000, $other, H323Messages::closeChannelAck($own), H323Messages::closeChannel($others));
            $say($at += 2_000, $ends, H323Messages::closeChannelAck($others), H323Messages::endSession());
            $say($at += 2_000, $other, H323Messages::endSession());
        }
        $signalling->say($at += 2_000, $ends, H323Messages::releaseComplete($call, $id, $byCaller, $carried));
        $control?->close($at += 1_000);
        $signalling->close($at += 1_000);
        foreach ([$call->caller, $call->callee] as $phone) {
            $number = $this->next();
            $this->ask(
                $at += 2_000,
                $phone,
                H323Messages::disengageRequest($number, $call, $id, $phone),
                H323Messages::disengageConfirm($number),
            );
        }
    }

    public function end(int $time): void
    {
        foreach ($this->phones as $phone) {
            $number = $this->next();
            $this->ask(
                $time,
                $phone,
                H323Messages::unregistrationRequest($number, $phone),
                H323Messages::unregistrationConfirm($number),
            );
            $time += 2_000;
        }
    }
}
