<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Exception\BadArgument;
use Rmon\Exception\UnknownName;
use Rmon\NetInterface;
use Rmon\Rates;
use Rmon\Change;

/** The questions that people ask about an interface, on a capture with known content. */
final class NetInterfaceTest extends AgentTestCase
{
    private \BundledAgent $agent;

    /** Three hosts that ask a web server, one of them a name server too; waiting means that the file is read. */
    private function interface(): NetInterface
    {
        $frames = [];
        foreach ([1 => 100, 2 => 300, 3 => 200] as $host => $size) {
            // 14 of Ethernet, 20 of IP, 20 of TCP, the data, 4 of the check sequence: 58 and the data.
            $segment = \tcp(40000, 443, 24, str_repeat('x', $size));
            $frames[] = [1.0, \ethernet(\mac(9), \mac($host), 0x0800, \ip4("10.0.0.$host", '10.0.9.9', 6, $segment))];
        }
        // 14, 20, 8 and 54 of data, and 4: 100.
        $question = \udp(50000, 53, str_repeat('q', 54));
        $frames[] = [1.0, \ethernet(\mac(9), \mac(1), 0x0800, \ip4('10.0.0.1', '10.0.8.8', 17, $question))];
        $this->agent = $this->playing($frames);
        $name = $this->probe($this->agent)->interfaces()->name(1);
        return $this->probe($this->agent)->interface($name, fn(float $seconds) => $this->read($this->agent));
    }

    public function testItsRow(): void
    {
        $interface = $this->interface();
        self::assertSame([1, $interface->name], [$interface->row()['ifIndex'], $interface->row()['ifDescr']]);
        $unknown = $this->thrown(fn() => $interface->probe->interface('eth99'));
        self::assertInstanceOf(UnknownName::class, $unknown);
        self::assertInstanceOf(UnknownName::class, $this->thrown(fn() => $interface->probe->interface(99)));
    }

    public function testTopHosts(): void
    {
        $interface = $this->interface();
        $talkers = $interface->top('nlHostOutOctets', seconds: 10, limit: 2);
        self::assertSame(['10.0.0.2', '10.0.0.1'], array_column($talkers, 'address'));
        // 358, 158 and 100, and 258 of the one that is left out.
        self::assertSame([358.0, 258.0], array_column($talkers, 'grown'));
        self::assertEqualsWithDelta([358 / 874, 258 / 874], array_column($talkers, 'part'), 1e-9);
        self::assertGreaterThan(0, $talkers[0]->rate);
        self::assertSame([], self::listOf($interface->probe->table('hlHostControlTable')), 'nothing stays behind');
    }

    public function testTopConversations(): void
    {
        $talkers = $this->interface()->top('nlMatrixSDPkts', seconds: 10);
        $pairs = array_map(static fn($talker) => "$talker->address $talker->peer", $talkers);
        sort($pairs);
        self::assertSame(
            ['10.0.0.1 10.0.8.8', '10.0.0.1 10.0.9.9', '10.0.0.2 10.0.9.9', '10.0.0.3 10.0.9.9'],
            $pairs,
        );
        self::assertSame([0.25, 0.25, 0.25, 0.25], array_column($talkers, 'part'));
    }

    public function testTopHostsByProtocolCountOnce(): void
    {
        $talkers = $this->interface()->top('alHostOutOctets', seconds: 10);
        $seen = array_map(static fn($talker) => "$talker->address $talker->protocol $talker->grown", $talkers);
        self::assertSame([
            '10.0.0.2 ip.tcp.https 358',
            '10.0.0.3 ip.tcp.https 258',
            '10.0.0.1 ip.tcp.https 158',
            '10.0.0.1 ip.udp.domain 100',
        ], $seen);
    }

    public function testSharesOfProtocols(): void
    {
        $shares = [];
        foreach ($this->interface()->protocols(seconds: 10) as $share) {
            $shares[$share->path] = [round($share->part, 6), round($share->own, 6)];
        }
        $web = round(774 / 874, 6);
        $names = round(100 / 874, 6);
        self::assertEquals([
            'ether2' => [1.0, 0.0],
            'ip' => [1.0, 0.0],
            'ip.tcp' => [$web, 0.0],
            'ip.tcp.https' => [$web, $web],
            'ip.udp' => [$names, 0.0],
            'ip.udp.domain' => [$names, $names],
        ], $shares);
    }

    public function testCountersThatAreNone(): void
    {
        $interface = $this->interface();
        $unknown = $this->thrown(fn() => $interface->top('nlHostOutOctet'));
        self::assertInstanceOf(UnknownName::class, $unknown);
        self::assertSame('nlHostOutOctets', $unknown->nearest[0]);
        self::assertInstanceOf(UnknownName::class, $this->thrown(fn() => $interface->top('etherStatsPkts')));
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => $interface->top('nlHostOutOctets', 0)));
    }

    public function testSamplingUntilTheCallerStops(): void
    {
        $interface = $this->interface();
        $table = $interface->probe->table('etherStatsTable');
        $waited = 0;
        $wait = function (float $seconds) use (&$waited): void {
            if ($waited++ === 0) {
                $this->read($this->agent);
            }
        };
        $grown = [];
        foreach (Rates::sample($table, 5.0, $wait) as $rates) {
            $rate = array_values($rates)[0];
            self::assertSame(Change::Counted, $rate->change);
            $grown[] = [$rate->grown['etherStatsPkts'], $rate->grown['etherStatsOctets']];
            if (count($grown) === 2) {
                break;
            }
        }
        self::assertSame([[4.0, 874.0], [0.0, 0.0]], $grown);
    }

    public function testTheExample(): void
    {
        $frames = [];
        for ($frame = 0; $frame < 100; $frame++) {
            $segment = \tcp(40000, 443, 24, str_repeat('x', 100));
            $packet = \ip4('10.0.0.1', '10.0.9.9', 6, $segment);
            $frames[] = [1 + $frame / 1000, \ethernet(\mac(9), \mac(1), 0x0800, $packet)];
        }
        $agent = $this->bundled('--read', \capture_file($frames), '--speed', 'recorded', '--loop');
        $probe = $this->probe($agent);
        // As php.ini would have it: PHP with the module.
        $words = explode("\0", file_get_contents('/proc/self/cmdline'));
        $load = array_values(preg_grep('/^extension=/', $words))[0];
        $example = realpath(__DIR__ . '/../../library/examples/overview.php');
        $name = $probe->interfaces()->name(1);
        $command = [PHP_BINARY, '-n', '-d', $load, $example, "127.0.0.1:$agent->port", $name, '0.3'];
        $process = proc_open($command, [1 => ['pipe', 'w'], 2 => ['pipe', 'w']], $pipes);
        $output = stream_get_contents($pipes[1]);
        self::assertSame('', stream_get_contents($pipes[2]));
        self::assertSame(0, proc_close($process), $output);
        self::assertMatchesRegularExpression('~^10\.0\.0\.1 +[\d.]+ [kM]?bit/s\n~', $output);
        self::assertMatchesRegularExpression('~^ip\.tcp\.https +100\.0 %$~m', $output);
        $alarm = $probe->table('alarmTable')->get(alarmIndex: 7);
        self::assertSame('etherStatsCRCAlignErrors.1', $alarm['alarmVariable']);
        $lines = preg_grep('/\S/', file($example));
        self::assertLessThanOrEqual(15, count($lines), 'a page author reads it at a glance');
    }
}
