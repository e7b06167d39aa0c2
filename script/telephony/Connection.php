<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** A connection of TCP, whose two sides speak in the order in which they are asked to. */
final class Connection
{
    private const ADDRESS = 0;
    private const PORT = 1;

    /** When data without an answer are acknowledged, in microseconds. */
    private const PATIENCE = 40_000;

    /** Octets by which decoders tell what a segment begins with: they are never torn apart. */
    private const HEADER = 12;

    /** @var array<string, int> the next sequence number of each side */
    private array $next;

    /** Who waits for an acknowledgment, and since when. */
    private ?string $speaker = null;
    private int $spoken = 0;

    /** @var array<string, array{string, int}> */
    private readonly array $ends;

    /**
     * @param array{string, int} $client address and port
     * @param array{string, int} $server
     */
    public function __construct(private readonly Line $line, array $client, array $server, int $time)
    {
        $this->ends = ['client' => $client, 'server' => $server];
        $this->next = ['client' => mt_rand(1, 0x7fffffff), 'server' => mt_rand(1, 0x7fffffff)];
        $this->segment($time, 'client', SYN);
        $this->segment($time + 200, 'server', SYN | ACK);
        $this->segment($time + 260, 'client', ACK);
    }

    /** What one side says; a long text, and now and then a short one too, takes several segments. */
    public function say(int $time, string $side, string $bytes): void
    {
        $this->acknowledge($time, $side);
        $parts = str_split($bytes, SEGMENT);
        if (count($parts) === 1 && strlen($bytes) > self::HEADER && mt_rand(0, 11) === 0) {
            $at = mt_rand(self::HEADER, strlen($bytes) - 1);
            $parts = [substr($bytes, 0, $at), substr($bytes, $at)];
        }
        foreach ($parts as $i => $part) {
            $this->segment($time + 15 * $i, $side, ACK | PSH, $part);
        }
        $this->speaker = $side;
        $this->spoken = $time + 15 * count($parts);
    }

    /** The client ends it. */
    public function close(int $time): void
    {
        $this->acknowledge($time, null);
        $this->segment($time, 'client', ACK | FIN);
        $this->segment($time + 180, 'server', ACK | FIN);
        $this->segment($time + 240, 'client', ACK);
    }

    /** The acknowledgment of what was said last, where no answer brings it in time. */
    private function acknowledge(int $time, ?string $next): void
    {
        $due = $this->spoken + self::PATIENCE;
        if ($this->speaker !== null && ($time > $due || $next === null)) {
            $this->segment(min($due, $time - 1), $this->speaker === 'client' ? 'server' : 'client', ACK);
        }
        $this->speaker = null;
    }

    private function segment(int $time, string $side, int $flags, string $data = ''): void
    {
        $other = $side === 'client' ? 'server' : 'client';
        [$from, $to] = [$this->ends[$side], $this->ends[$other]];
        $acknowledged = $flags & ACK ? $this->next[$other] : 0;
        $segment = tcp($from[self::PORT], $to[self::PORT], $this->next[$side], $acknowledged, $flags, $data);
        $this->line->packet($time, $from[self::ADDRESS], $to[self::ADDRESS], TCP, $segment, Line::SIGNALLING);
        $this->next[$side] = $this->next[$side] + strlen($data) + ($flags & (SYN | FIN) ? 1 : 0) & 0xffffffff;
    }
}
