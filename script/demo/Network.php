<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * The demo's network: an office whose switch is watched at its way to the router ("office", tagged by VLAN), and the
 * line from there to the rest of the world ("wan"). A packet that leaves the office is seen on both.
 */
final class Network
{
    public const OFFICE = 10;
    public const PHONES = 20;
    public const SERVERS = 30;
    public const WORLD = 0;

    private const ROUTER = '02:00:5e:00:00:01';
    private const ROUTER_OUTSIDE = '02:00:5e:00:00:02';
    private const PROVIDER = '02:00:5e:00:00:03';

    public readonly Capture $office;
    public readonly Capture $wan;

    /** @var array<string, array{vlan: int, mac: string, 4: string, 6: string|null}> by name */
    private array $hosts = [];

    private int $packets = 0;
    private int $ports = 0;

    public function __construct()
    {
        $this->office = new Capture(10_000_000);
        $this->wan = new Capture(2_000_000);
    }

    public function host(string $name, int $vlan, string $ip4, ?string $ip6 = null): void
    {
        $mac = sprintf('02:00:5e:%02x:00:%02x', $vlan, count($this->hosts));
        $this->hosts[$name] = ['vlan' => $vlan, 'mac' => $vlan === self::WORLD ? self::PROVIDER : $mac, 4 => $ip4, 6 => $ip6];
    }

    public function mac(string $name): string
    {
        return mac($name === 'router' ? self::ROUTER : $this->hosts[$name]['mac']);
    }

    public function address(string $name, int $version = 4): ?string
    {
        return $this->hosts[$name][$version];
    }

    public function port(): int
    {
        return 49152 + $this->ports++ % 16384;
    }

    /** A frame on the office's line that is no packet from host to host. */
    public function frame(int $time, string $to, string $from, string $behind, string $protocol, ?int $vlan, array $ends = [], bool $filled = true): void
    {
        $this->office->add($time, $to, $from, $behind, $protocol, $vlan, $ends, filled: $filled);
    }

    /** A packet between two hosts, wherever it passes. */
    public function packet(int $time, string $from, string $to, int $version, int $protocol, string $inner, string $path, int $dscp = 0, bool $cut = false): void
    {
        [$sender, $receiver] = [$this->hosts[$from], $this->hosts[$to]];
        $ends = [$sender[$version], $receiver[$version]];
        $at = [TCP => 16, UDP => 6, ICMP => 2, ICMP6 => 2][$protocol];
        $id = ++$this->packets & 0xffff;
        $make = fn(int $ttl) => ip($ends[0], $ends[1], $protocol, $inner, $at, $dscp, $ttl, $id);
        $type = pack('n', $version === 4 ? 0x0800 : 0x86dd);
        $path = ($version === 4 ? 'ip.' : 'ip6.') . $path;

        $outside = $sender['vlan'] === self::WORLD || $receiver['vlan'] === self::WORLD;
        $direct = $sender['vlan'] === $receiver['vlan'];
        $vlan = $outside ? max($sender['vlan'], $receiver['vlan']) : min($sender['vlan'], $receiver['vlan']);
        $this->office->add(
            $time,
            mac($receiver['vlan'] === $vlan ? $receiver['mac'] : self::ROUTER),
            mac($sender['vlan'] === $vlan ? $sender['mac'] : self::ROUTER),
            $type . $make($direct || $sender['vlan'] === $vlan ? 64 : ($outside ? 52 : 63)),
            $path,
            // The switch gives a frame the priority that its class has.
            $dscp >> 3 << 13 | $vlan,
            $ends,
            $dscp,
            $cut,
        );
        if ($outside) {
            $out = $receiver['vlan'] === self::WORLD;
            $this->wan->add(
                $time + ($out ? 90 : -90),
                mac($out ? self::PROVIDER : self::ROUTER_OUTSIDE),
                mac($out ? self::ROUTER_OUTSIDE : self::PROVIDER),
                $type . $make($out ? 63 : 53),
                $path,
                null,
                $ends,
                $dscp,
                $cut,
            );
        }
    }

    public function datagram(int $time, string $from, int $port, string $to, int $other, string $data, string $application = '', int $dscp = 0, int $version = 4, bool $cut = false): void
    {
        $path = 'udp' . ($application === '' ? '' : ".$application");
        $this->packet($time, $from, $to, $version, UDP, udp($port, $other, $data), $path, $dscp, $cut);
    }

    /**
     * A whole connection: opened, talked over, closed.
     *
     * @param list<array{string, int, list<string>|string, 3?: bool}> $talk who speaks ("client" or "server"), so many
     *                                   microseconds after what came before, in which segments, and whether only the
     *                                   first octets are kept of them
     * @return int when it ended
     */
    public function connection(int $time, string $client, string $server, int $port, string $application, array $talk, int $dscp = 0, int $version = 4, int $pause = 150): int
    {
        $hosts = ['client' => $client, 'server' => $server];
        $ports = ['client' => $this->port(), 'server' => $port];
        $next = ['client' => mt_rand(1, 0x7fffffff), 'server' => mt_rand(1, 0x7fffffff)];
        $far = $this->hosts[$server]['vlan'] === self::WORLD ? mt_rand(9000, 24000) : mt_rand(150, 600);
        $path = 'tcp' . ($application === '' ? '' : ".$application");
        $send = function (int $time, string $side, int $flags, string $data = '', bool $cut = false) use (&$next, $hosts, $ports, $path, $dscp, $version) {
            $other = $side === 'client' ? 'server' : 'client';
            $segment = tcp($ports[$side], $ports[$other], $next[$side], $flags === SYN ? 0 : $next[$other], $flags, $data);
            $this->packet($time, $hosts[$side], $hosts[$other], $version, TCP, $segment, $path, $dscp, $cut);
            $next[$side] = ($next[$side] + strlen($data) + ($flags & (SYN | FIN) ? 1 : 0)) & 0xffffffff;
        };
        $send($time, 'client', SYN);
        $send($time += $far, 'server', SYN | ACK);
        $send($time += 60, 'client', ACK);
        $before = '';
        foreach ($talk as $step) {
            [$side, $after, $segments] = $step;
            $other = $side === 'client' ? 'server' : 'client';
            $quick = $before === $other && $after > 40_000;
            if ($before !== '' && ($quick || $before === $side)) {
                // Nothing to send by then: a bare acknowledgment.
                $send($time + min(40_000, intdiv($after, 2)), $before === 'client' ? 'server' : 'client', ACK);
            }
            $time += $after;
            if ($side === 'server' && $before === 'client') {
                $prefix = $version === 4 ? 'ip' : 'ip6';
                $this->responseOn($client, $server, $version, "$prefix.$path", $after);
            }
            $segments = (array) $segments;
            foreach ($segments as $i => $data) {
                if ($i > 0) {
                    $time += $pause + mt_rand(0, 40);
                    if ($i % 2 === 0) {
                        $send($time - 30, $other, ACK);
                    }
                }
                $send($time, $side, ACK | ($i === count($segments) - 1 ? PSH : 0), $data, $step[3] ?? false);
            }
            $before = $side;
        }
        $send($time += 45_000, $before === 'client' ? 'server' : 'client', ACK);
        $send($time += 5_000, 'client', ACK | FIN);
        $send($time += $far, 'server', ACK | FIN);
        $send($time += 60, 'client', ACK);
        return $time;
    }

    /** A question in one datagram, and its answer where there is one. */
    public function question(int $time, string $client, string $server, int $port, string $application, string $asked, ?string $answer, int $after = 0, int $dscp = 0, int $version = 4, bool $timed = true): void
    {
        $own = $application === 'ntp' ? 123 : $this->port();
        $this->datagram($time, $client, $own, $server, $port, $asked, $application, $dscp, $version);
        if ($answer !== null) {
            $this->datagram($time + $after, $server, $port, $client, $own, $answer, $application, $dscp, $version);
        }
        if ($timed) {
            $prefix = $version === 4 ? 'ip' : 'ip6';
            $this->responseOn($client, $server, $version, "$prefix.udp.$application", $answer === null ? null : $after);
        }
    }

    private function responseOn(string $client, string $server, int $version, string $protocol, ?int $after): void
    {
        $ends = [$this->hosts[$client][$version], $this->hosts[$server][$version]];
        $this->office->response($ends[0], $ends[1], $protocol, $after);
        if ($this->hosts[$server]['vlan'] === self::WORLD) {
            // Seen further on the way, on both ways: a little less.
            $this->wan->response($ends[0], $ends[1], $protocol, $after === null ? null : $after - 180);
        }
    }
}
