<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** Where packets pass by that calls are made of. */
interface Line
{
    /** Classes of service, by their code points. */
    public const SIGNALLING = 24;
    public const MEDIA = 46;

    /**
     * @param int $time       microseconds since 1970
     * @param int $protocol   TCP or UDP
     * @param string $segment with the transport's header, whose checksum is still 0
     */
    public function packet(int $time, string $from, string $to, int $protocol, string $segment, int $dscp): void;
}
