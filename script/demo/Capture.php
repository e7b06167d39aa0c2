<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * The frames that one interface of the demo sees, and what is known of them: the same counts that an agent has to
 * show, made while the frames are planned and not from their bytes.
 */
final class Capture
{
    /** Octets kept of a frame whose data nobody looks at. */
    private const CUT = 96;

    /** @var list<array{int, string, int}> microseconds, bytes kept, length */
    private array $frames = [];

    private array $known = [
        'frames' => 0, 'octets' => 0, 'broadcast' => 0, 'multicast' => 0, 'undersize' => 0, 'oversize' => 0,
        'sizes' => ['64' => 0, '65-127' => 0, '128-255' => 0, '256-511' => 0, '512-1023' => 0, '1024-1518' => 0],
        'protocols' => [], 'hosts' => [], 'conversations' => [], 'vlans' => [], 'priorities' => [], 'dscps' => [],
        'macs' => [], 'responses' => [],
    ];

    /** @param int $speed of the interface, in bits per second */
    public function __construct(private readonly int $speed)
    {
    }

    /**
     * @param int $time        microseconds from the start of the capture
     * @param string $protocol the highest one, with those below it: "ip.udp.domain"
     * @param int|null $tag    of 802.1Q: priority and VLAN
     * @param list<string> $ends network addresses of the sender and the receiver, if it is a packet of IP
     * @param bool $cut        whether only the first octets are kept
     * @param bool $filled     whether it is filled up to the least length, as adapters do
     */
    public function add(
        int $time,
        string $to,
        string $from,
        string $behind,
        string $protocol,
        ?int $tag = null,
        array $ends = [],
        int $dscp = 0,
        bool $cut = false,
        bool $filled = true,
    ): void {
        $frame = $to . $from . ($tag === null ? '' : pack('nn', 0x8100, $tag)) . $behind;
        if ($filled) {
            $frame = str_pad($frame, 60, "\0");
        }
        $this->frames[] = [$time, $cut ? substr($frame, 0, self::CUT) : $frame, strlen($frame)];
        $this->count(strlen($frame) + 4, $to, $from, $protocol, $tag, $ends, $dscp);
    }

    /** A request that was answered, or (null) wasn't. */
    public function response(string $client, string $server, string $protocol, ?int $microseconds): void
    {
        $response = &$this->known['responses']["$client $server $protocol"];
        $response ??= ['responses' => 0, 'microseconds' => 0, 'timeouts' => 0];
        $response[$microseconds === null ? 'timeouts' : 'responses']++;
        $response['microseconds'] += $microseconds ?? 0;
    }

    private function count(
        int $octets,
        string $to,
        string $from,
        string $protocol,
        ?int $tag,
        array $ends,
        int $dscp,
    ): void {
        $known = &$this->known;
        $known['frames']++;
        $known['octets'] += $octets;
        $good = $octets >= 64 && $octets <= 1518;
        if (!$good) {
            $known[$octets < 64 ? 'undersize' : 'oversize']++;
        } elseif ($to === "\xff\xff\xff\xff\xff\xff") {
            $known['broadcast']++;
        } elseif (ord($to[0]) & 1) {
            $known['multicast']++;
        }
        foreach ([64, 127, 255, 511, 1023, 1518] as $i => $most) {
            if ($octets >= 64 && $octets <= $most) {
                $known['sizes'][['64', '65-127', '128-255', '256-511', '512-1023', '1024-1518'][$i]]++;
                break;
            }
        }
        $path = '';
        foreach (explode('.', str_starts_with($protocol, 'llc') ? $protocol : "ether2.$protocol") as $layer) {
            $path .= ($path === '' ? '' : '.') . $layer;
            $this->more('protocols', str_replace('ether2.', '', $path), $octets);
        }
        if ($ends !== []) {
            $this->more('hosts', $ends[0], $octets, 'out');
            $this->more('hosts', $ends[1], $octets, 'in');
            $this->more('conversations', "$ends[0] $ends[1]", $octets);
            $this->more('dscps', (string) $dscp, $octets);
        }
        if ($good) {
            $this->more('macs', bin2hex($from), $octets, 'out');
            $this->more('macs', bin2hex($to), $octets, 'in');
        }
        if ($tag !== null) {
            $this->more('vlans', (string) ($tag & 0xfff), $octets);
            $this->more('priorities', (string) ($tag >> 13), $octets);
        }
    }

    private function more(string $table, string $key, int $octets, string $side = ''): void
    {
        $row = &$this->known[$table][$key];
        $row ??= $side === '' ? ['pkts' => 0, 'octets' => 0]
            : ['inpkts' => 0, 'inoctets' => 0, 'outpkts' => 0, 'outoctets' => 0];
        $row["{$side}pkts"]++;
        $row["{$side}octets"] += $octets;
    }

    /** Writes the file as pcapng, which tells the interface's speed, frames in the order of their times. */
    public function write(string $file): void
    {
        $order = range(0, count($this->frames) - 1);
        usort($order, fn(int $a, int $b) => [$this->frames[$a][0], $a] <=> [$this->frames[$b][0], $b]);
        // A section of this byte order, version 1.0; an interface of Ethernet, with if_speed and nothing else.
        $bytes = self::block(0x0a0d0d0a, pack('VvvP', 0x1a2b3c4d, 1, 0, -1));
        $bytes .= self::block(1, pack('vvV', 1, 0, 65535) . pack('vvP', 8, 8, $this->speed) . pack('vv', 0, 0));
        foreach ($order as $i) {
            [$time, $frame, $length] = $this->frames[$i];
            $stamp = SCENE_BEGINS * 1_000_000 + $time;
            $header = pack('VVVVV', 0, $stamp >> 32, $stamp & 0xffffffff, strlen($frame), $length);
            $bytes .= self::block(6, $header . $frame);
        }
        if (file_put_contents("$file.new", $bytes) !== strlen($bytes) || !rename("$file.new", $file)) {
            throw new RuntimeException("$file can't be written");
        }
    }

    private static function block(int $type, string $body): string
    {
        $body .= str_repeat("\0", -strlen($body) & 3);
        $length = pack('V', strlen($body) + 12);
        return pack('V', $type) . $length . $body . $length;
    }

    public function known(): array
    {
        return $this->known;
    }
}
