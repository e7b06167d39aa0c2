<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

/** The format of libpcap, with nanoseconds: a header, and a record for each frame. */
final class Pcap
{
    /** What such a file is called where its kind is asked for. */
    public const MEDIA_TYPE = 'application/vnd.tcpdump.pcap';

    private const MAGIC = 0xa1b23c4d;
    private const LONGEST = 65535;
    private const ETHERNET = 1;

    public static function header(): string
    {
        return pack('VvvVVVV', self::MAGIC, 2, 4, 0, 0, self::LONGEST, self::ETHERNET);
    }

    public static function record(Packet $packet): string
    {
        $captured = strlen($packet->octets);
        return pack(
            'VVVV',
            intdiv($packet->time, 1000000000),
            $packet->time % 1000000000,
            $captured,
            max($packet->length, $captured),
        ) . $packet->octets;
    }
}
