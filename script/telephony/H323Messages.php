<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * The messages of H.225 (registration, admission, status; call signalling) and H.245 of which calls are made here.
 * Fields stand in the order of the recommendations' syntax; flags in a row say which optional ones are there.
 */
final class H323Messages
{
    /** Versions 4 of H.225.0 and 7 of H.245, as object identifiers. */
    private const H225 = "\x00\x08\x91\x4a\x00\x04";
    private const H245 = "\x00\x08\x81\x75\x00\x07";

    private const PRODUCT = 'Made phone';
    private const VERSION = '1.0';

    /** Of messages of Q.931. */
    public const SETUP = 0x05;
    public const PROCEEDING = 0x02;
    public const ALERTING = 0x01;
    public const CONNECT = 0x07;
    public const FACILITY = 0x62;
    public const RELEASE_COMPLETE = 0x5a;

    /** Speech has one session, and in it a channel for each direction. */
    private const SESSION = 1;
    public const FORWARD = 1;
    public const REVERSE = 2;

    // ---- Parts that several messages have -------------------------------------

    /** A transport address of H.225. */
    private static function address(Per $per, string $ip, int $port): Per
    {
        // What an address of IPv6 has may be extended.
        str_contains($ip, ':') ? $per->choice(3, 7)->flags(0) : $per->choice(0, 7);
        return $per->octets((string) inet_pton($ip))->whole($port, 0, 65_535);
    }

    /** Both names of a phone, or the number alone. */
    private static function aliases(Per $per, Phone $phone, bool $named = true): Per
    {
        $alphabet = '#*,0123456789';
        $per->length($named ? 2 : 1)->choice(0, 2)->whole(strlen($phone->number), 1, 128);
        // Digits take four bits each, the first one at an octet.
        $per->octets('');
        foreach (str_split($phone->number) as $digit) {
            $per->bits((int) strpos($alphabet, $digit), 4);
        }
        if ($named) {
            $per->choice(1, 2)->whole(strlen($phone->name), 1, 256)->octets(self::wide($phone->name));
        }
        return $per;
    }

    private static function wide(string $text): string
    {
        return "\0" . implode("\0", str_split($text));
    }

    private static function endpointIdentifier(Per $per, Phone $phone): Per
    {
        $name = "phone$phone->number";
        return $per->whole(strlen($name), 1, 128)->octets(self::wide($name));
    }

    private static function vendor(Per $per): Per
    {
        // Country and maker are of no one; then the product and its version.
        $per->flags(0, 1, 1)->flags(0)->whole(0, 0, 255)->whole(0, 0, 255)->whole(0, 0, 65_535);
        $per->whole(strlen(self::PRODUCT), 1, 256)->octets(self::PRODUCT);
        return $per->whole(strlen(self::VERSION), 1, 256)->octets(self::VERSION);
    }

    /** A terminal with its maker. */
    private static function endpointType(Per $per): Per
    {
        self::vendor($per->flags(0, 0, 1, 0, 0, 0, 1));
        return $per->flags(0, 0)->flags(0, 0);
    }

    private static function callIdentifier(string $id): Per
    {
        return (new Per())->flags(0)->octets($id);
    }

    // ---- Registration, admission, status ---------------------------------------

    private static function ras(int $index): Per
    {
        return (new Per())->choice($index, 25);
    }

    public static function gatekeeperRequest(int $sequence, Phone $phone): string
    {
        $per = self::ras(0)->flags(0, 0, 0, 0, 1)->whole($sequence, 1, 65_535)->text(self::H225);
        self::address($per, $phone->address, 1719);
        return self::aliases(self::endpointType($per), $phone)->encoding();
    }

    public static function gatekeeperConfirm(int $sequence, string $gatekeeper): string
    {
        $per = self::ras(1)->flags(0, 0, 0)->whole($sequence, 1, 65_535)->text(self::H225);
        return self::address($per, $gatekeeper, 1719)->encoding();
    }

    public static function registrationRequest(int $sequence, Phone $phone): string
    {
        $per = self::ras(3)->flags(0, 0, 1, 0)->whole($sequence, 1, 65_535)->text(self::H225)->flags(1);
        self::address($per->length(1), $phone->address, 1720);
        self::address($per->length(1), $phone->address, 1719);
        self::aliases(self::endpointType($per), $phone);
        return self::vendor($per)->encoding();
    }

    public static function registrationConfirm(int $sequence, Phone $phone, string $gatekeeper): string
    {
        $per = self::ras(4)->flags(0, 0, 1, 0)->whole($sequence, 1, 65_535)->text(self::H225);
        self::aliases(self::address($per->length(1), $gatekeeper, 1720), $phone);
        return self::endpointIdentifier($per, $phone)->encoding();
    }

    public static function admissionRequest(int $sequence, Call $call, string $id, bool $answering): string
    {
        $phone = $answering ? $call->callee : $call->caller;
        $per = self::ras(9)->flags(1, 0, 1, 0, 0, 0, 0, 0)->whole($sequence, 1, 65_535);
        self::endpointIdentifier($per->choice(0, 4), $phone);
        self::aliases(self::aliases($per, $call->callee, false), $call->caller);
        $per->whole(1280, 0, 0xffff_ffff)->whole(self::reference($call), 0, 65_535);
        $per->octets($id)->flags(0, $answering);
        $false = (new Per())->flags(0);
        return $per->extensions($false, self::callIdentifier($id))->encoding();
    }

    public static function admissionConfirm(int $sequence, Call $call): string
    {
        $per = self::ras(10)->flags(0, 0, 0)->whole($sequence, 1, 65_535)->whole(1280, 0, 0xffff_ffff)->choice(0, 2);
        return self::address($per, $call->callee->address, 1720)->encoding();
    }

    public static function disengageRequest(int $sequence, Call $call, string $id, Phone $phone): string
    {
        $per = self::ras(15)->flags(1, 0)->whole($sequence, 1, 65_535);
        self::endpointIdentifier($per, $phone)->octets($id)->whole(self::reference($call), 0, 65_535)->choice(1, 3);
        return $per->extensions(self::callIdentifier($id))->encoding();
    }

    public static function disengageConfirm(int $sequence): string
    {
        return self::ras(16)->flags(0, 0)->whole($sequence, 1, 65_535)->encoding();
    }

    public static function unregistrationRequest(int $sequence, Phone $phone): string
    {
        $per = self::ras(6)->flags(0, 0, 0, 0)->whole($sequence, 1, 65_535);
        return self::address($per->length(1), $phone->address, 1720)->encoding();
    }

    public static function unregistrationConfirm(int $sequence): string
    {
        return self::ras(7)->flags(0, 0)->whole($sequence, 1, 65_535)->encoding();
    }

    // ---- Call signalling ---------------------------------------------------------

    /** Of a call, as both ends know it. */
    public static function reference(Call $call): int
    {
        return 1 + $call->number % 32_766;
    }

    /**
     * A message between caller and callee, with its length before it.
     *
     * @param list<string>|null $tunnelled messages of H.245 in it; null where these have a connection of their own
     */
    private static function signal(int $type, Call $call, string $elements, Per $body, ?array $tunnelled): string
    {
        $control = null;
        if ($tunnelled !== null && $tunnelled !== []) {
            $control = (new Per())->length(count($tunnelled));
            array_map($control->text(...), $tunnelled);
        }
        $tunnelling = (new Per())->flags($tunnelled !== null);
        $user = $body->extensions(null, $tunnelling, $control, null)->encoding();
        $reference = self::reference($call) | ($type === self::SETUP ? 0 : 0x8000);
        return self::framed(pack('CCnC', 8, 2, $reference, $type) . $elements
            . pack('Cn', 0x7e, 1 + strlen($user)) . "\5$user");
    }

    /** Behind the header of RFC 1006. */
    public static function framed(string $message): string
    {
        return pack('CCn', 3, 0, 4 + strlen($message)) . $message;
    }

    /** What stands before the body of a message: no user data, one of the bodies. */
    private static function body(int $index): Per
    {
        return (new Per())->flags(0, 0)->flags(1, 0)->choice($index, 7);
    }

    /** @param list<string> $channels of the fast start */
    private static function fastStart(array $channels): ?Per
    {
        if ($channels === []) {
            return null;
        }
        $per = (new Per())->length(count($channels));
        array_map($per->text(...), $channels);
        return $per;
    }

    /**
     * @param list<string> $channels  of the fast start
     * @param list<string>|null $tunnelled
     */
    public static function setup(Call $call, string $id, array $channels, ?array $tunnelled): string
    {
        $per = self::body(0)->flags(1, 0, 1, 1, 1, 0, 0, 0)->text(self::H225);
        self::endpointType(self::aliases($per, $call->caller));
        self::address(self::aliases($per, $call->callee, false), $call->callee->address, 1720);
        $per->flags(0)->octets($id)->choice(0, 3)->choice(0, 4);
        $source = self::address(new Per(), $call->caller->address, 1720);
        $false = fn() => (new Per())->flags(0);
        $per->extensions(
            ...[$source, null, self::callIdentifier($id), null, null, null, self::fastStart($channels)],
            ...[$false(), $false(), null, $false(), $false()],
        );
        // Speech by G.711; who calls, of whom one may tell; whom.
        $elements = "\x04\x03\x80\x90\xa3" . self::element(0x28, $call->caller->name)
            . self::element(0x6c, "\x01\x80{$call->caller->number}")
            . self::element(0x70, "\x81{$call->callee->number}");
        return self::signal(self::SETUP, $call, $elements, $per, $tunnelled);
    }

    private static function element(int $kind, string $content): string
    {
        return pack('CC', $kind, strlen($content)) . $content;
    }

    /** The call goes on, or the callee rings: the same fields. */
    public static function progress(int $type, Call $call, string $id, ?array $tunnelled): string
    {
        $per = self::body($type === self::PROCEEDING ? 1 : 3)->flags(1, 0)->text(self::H225);
        self::endpointType($per)->extensions(self::callIdentifier($id));
        return self::signal($type, $call, '', $per, $tunnelled);
    }

    /** @param int|null $port where the callee waits for the connection of H.245 */
    public static function connect(Call $call, string $id, ?int $port, array $channels, ?array $tunnelled): string
    {
        $per = self::body(2)->flags(1, $port !== null)->text(self::H225);
        if ($port !== null) {
            self::address($per, $call->callee->address, $port);
        }
        self::endpointType($per)->octets($id);
        $per->extensions(self::callIdentifier($id), null, null, null, self::fastStart($channels));
        return self::signal(self::CONNECT, $call, self::element(0x28, $call->callee->name), $per, $tunnelled);
    }

    /** A message that only carries others. @param list<string> $tunnelled */
    public static function facility(Call $call, bool $byCaller, array $tunnelled): string
    {
        $per = (new Per())->flags(0, 0)->flags(1, 0)->extension(1, new Per());
        return self::turned(self::signal(self::FACILITY, $call, '', $per, $tunnelled), $byCaller);
    }

    public static function releaseComplete(Call $call, string $id, bool $byCaller, ?array $tunnelled): string
    {
        $per = self::body(5)->flags(1, 0)->text(self::H225)->extensions(self::callIdentifier($id));
        // The user hung up.
        $message = self::signal(self::RELEASE_COMPLETE, $call, "\x08\x02\x80\x90", $per, $tunnelled);
        return self::turned($message, $byCaller);
    }

    /** The caller made the reference: in its own messages the flag of it is clear. */
    private static function turned(string $message, bool $byCaller): string
    {
        return $byCaller ? substr_replace($message, chr(ord($message[6]) & 0x7f), 6, 1) : $message;
    }

    // ---- Control of media ----------------------------------------------------------

    private static function request(int $index): Per
    {
        return (new Per())->choice(0, 4)->choice($index, 11);
    }

    private static function response(int $index): Per
    {
        return (new Per())->choice(1, 4)->choice($index, 19);
    }

    private static function audio(Per $per, Codec $codec): Per
    {
        $per->choice((int) $codec->h245(), 14);
        return match ($codec) {
            Codec::G723 => $per->whole(1, 1, 256)->flags(0),
            Codec::G729 => $per->whole(2, 1, 256),
            default => $per->whole($codec->period(), 1, 256),
        };
    }

    public static function masterSlave(int $number): string
    {
        return self::request(1)->flags(0)->whole(50, 0, 255)->whole($number, 0, 0xff_ffff)->encoding();
    }

    public static function masterSlaveAck(bool $slave): string
    {
        return self::response(1)->flags(0, $slave)->encoding();
    }

    public static function capabilities(Codec $codec): string
    {
        $per = self::request(2)->flags(0, 0, 1, 1)->whole(1, 0, 255)->text(self::H245);
        // One entry in the table: what it receives.
        self::audio($per->whole(1, 1, 256)->flags(1)->whole(1, 1, 65_535)->choice(4, 12), $codec);
        // One descriptor, with one set of alternatives, of one.
        $per->whole(1, 1, 256)->flags(1)->whole(0, 0, 255);
        return $per->whole(1, 1, 256)->whole(1, 1, 256)->whole(1, 1, 65_535)->encoding();
    }

    public static function capabilitiesAck(): string
    {
        return self::response(3)->flags(0)->whole(1, 0, 255)->encoding();
    }

    /** A transport address of H.245. */
    private static function unicast(Per $per, string $ip, int $port): Per
    {
        $version = str_contains($ip, ':') ? 2 : 0;
        return $per->choice(0, 2)->choice($version, 5)->flags(0)->octets((string) inet_pton($ip))
            ->whole($port, 0, 65_535);
    }

    /**
     * Where a channel's packets and the reports about them go.
     *
     * @param array{string, int}|null $media
     * @param array{string, int} $control
     */
    private static function channel(?array $media, array $control): Per
    {
        $per = (new Per())->flags(0)->flags(0, 0, $media !== null, 0, 1, 0, 0, 0, 0, 0)->whole(self::SESSION, 0, 255);
        if ($media !== null) {
            self::unicast($per, ...$media);
        }
        return self::unicast($per, ...$control);
    }

    public static function openChannel(int $number, Codec $codec, array $control): string
    {
        return self::opening(self::request(3), $number, $codec, null, $control)->encoding();
    }

    /** A channel from the one who opens it. */
    private static function opening(Per $per, int $number, Codec $codec, ?array $media, array $control): Per
    {
        $per->flags(0, 0)->whole($number, 1, 65_535)->flags(0, 0)->choice(3, 6);
        return self::audio($per, $codec)->extension(0, self::channel($media, $control));
    }

    public static function openChannelAck(int $number, array $media, array $control): string
    {
        $per = self::response(5)->flags(1, 0)->whole($number, 1, 65_535);
        $answer = (new Per())->flags(0)->flags(0)->flags(0, 1, 1, 1, 0)->whole(self::SESSION, 1, 255);
        self::unicast(self::unicast($answer, ...$media), ...$control);
        return $per->extensions(null, $answer)->encoding();
    }

    /** The caller's channel in a fast start: proposed without a place for the media, taken with one. */
    public static function fastForward(Codec $codec, ?array $media, array $control): string
    {
        return self::opening(new Per(), self::FORWARD, $codec, $media, $control)->encoding();
    }

    /** The callee's channel in a fast start, which the caller names by the reverse half of a channel. */
    public static function fastReverse(Codec $codec, ?array $media, array $control): string
    {
        $per = (new Per())->flags(0, 1)->whole(self::REVERSE, 1, 65_535)->flags(0, 0)->choice(1, 6);
        // Nothing goes forward in it, so that direction has no parameters.
        $per->extension(1, new Per())->flags(0, 1)->choice(3, 6);
        return self::audio($per, $codec)->extension(0, self::channel($media, $control))->encoding();
    }

    public static function closeChannel(int $number): string
    {
        return self::request(4)->flags(0)->whole($number, 1, 65_535)->flags(0)->encoding();
    }

    public static function closeChannelAck(int $number): string
    {
        return self::response(7)->flags(0)->whole($number, 1, 65_535)->encoding();
    }

    public static function endSession(): string
    {
        return (new Per())->choice(2, 4)->choice(5, 7)->choice(1, 3)->encoding();
    }
}
