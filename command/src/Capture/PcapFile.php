<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Capture;

use Rmon\Capture\Packet;
use Rmon\Capture\Pcap;
use Rmon\Command\ClosedPipe;
use Rmon\Command\UsageError;

/** A capture file that is written frame by frame. */
final class PcapFile
{
    /** @param resource $stream */
    private function __construct(private readonly mixed $stream)
    {
        $this->write(Pcap::header());
        $this->flush();
    }

    /** @param string $name a file, or "-" for standard output */
    public static function create(string $name): self
    {
        if ($name === '-') {
            if (stream_isatty(STDOUT)) {
                throw new UsageError('Packets are nothing for a terminal: --write FILE, or pipe them: | tshark -r -');
            }
            return new self(STDOUT);
        }
        $stream = @fopen($name, 'wb');
        if ($stream === false) {
            throw new UsageError("\"$name\" can't be written: " . (error_get_last()['message'] ?? 'no reason given'));
        }
        return new self($stream);
    }

    public function packet(Packet $packet): void
    {
        $this->write(Pcap::record($packet));
    }

    public function flush(): void
    {
        if (@fflush($this->stream) === false) {
            throw new ClosedPipe();
        }
    }

    private function write(string $octets): void
    {
        for ($done = 0; $done < strlen($octets); $done += $count) {
            $count = @fwrite($this->stream, substr($octets, $done));
            if ($count === false || $count === 0) {
                throw new ClosedPipe();
            }
        }
    }
}
