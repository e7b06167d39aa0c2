<?php

declare(strict_types=1);

namespace Rmon\Command\Capture;

use Rmon\Command\ClosedPipe;
use Rmon\Command\UsageError;

/** A capture file in the format of libpcap, with nanoseconds, written frame by frame. */
final class PcapFile
{
    private const MAGIC = 0xa1b23c4d;
    private const LONGEST = 65535;
    private const ETHERNET = 1;

    /** @param resource $stream */
    private function __construct(private readonly mixed $stream)
    {
        $this->write(pack('VvvVVVV', self::MAGIC, 2, 4, 0, 0, self::LONGEST, self::ETHERNET));
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

    /**
     * @param int $seconds     since 1970
     * @param int $nanoseconds below the second
     * @param string $octets   what was captured of the frame
     * @param int $length      the frame's own length
     */
    public function packet(int $seconds, int $nanoseconds, string $octets, int $length): void
    {
        $captured = strlen($octets);
        $this->write(pack('VVVV', $seconds, $nanoseconds, $captured, max($length, $captured)) . $octets);
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
