<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** The frames of one Ethernet that all phones share, and the file of them. */
final class CallCapture implements Line
{
    /** @var list<int> microseconds since 1970 */
    private array $times = [];

    /** @var list<string> */
    private array $frames = [];

    public function packet(int $time, string $from, string $to, int $protocol, string $segment, int $dscp): void
    {
        $checksumAt = $protocol === TCP ? 16 : 6;
        $packet = ip($from, $to, $protocol, $segment, $checksumAt, $dscp, 64, count($this->frames) & 0xffff);
        $this->times[] = $time;
        $type = str_contains($to, ':') ? "\x86\xdd" : "\x08\0";
        $this->frames[] = str_pad(self::adapter($to) . self::adapter($from) . $type . $packet, 60, "\0");
    }

    /** A locally administered address made of the network's. */
    private static function adapter(string $address): string
    {
        return "\2\0" . substr((string) inet_pton($address), -4);
    }

    public function count(): int
    {
        return count($this->frames);
    }

    /** Writes a file of libpcap's form, microseconds, frames in the order of their times. */
    public function write(string $name): void
    {
        $file = fopen("$name.new", 'wb') ?: throw new RuntimeException("$name can't be written");
        $bytes = pack('VvvVVVV', 0xa1b2c3d4, 2, 4, 0, 0, 65535, 1);
        asort($this->times);
        foreach ($this->times as $i => $time) {
            $length = strlen($this->frames[$i]);
            $bytes .= pack('VVVV', intdiv($time, 1_000_000), $time % 1_000_000, $length, $length) . $this->frames[$i];
            if (strlen($bytes) > 1 << 20) {
                self::append($file, $bytes, $name);
                $bytes = '';
            }
        }
        self::append($file, $bytes, $name);
        if (!fclose($file) || !rename("$name.new", $name)) {
            throw new RuntimeException("$name can't be written");
        }
    }

    /** @param resource $file */
    private static function append(mixed $file, string $bytes, string $name): void
    {
        if (fwrite($file, $bytes) !== strlen($bytes)) {
            throw new RuntimeException("$name can't be written");
        }
    }
}
