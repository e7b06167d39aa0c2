<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Exception\UnknownName;
use Rmon\Probe;

/** Names of interfaces and protocols, which are read once and kept in step. */
final class NamesTest extends AgentTestCase
{
    /** Makes a protocol above UDP, by its port. */
    private static function addProtocol(Probe $probe, int $port, string $name): void
    {
        $udp = $probe->protocols()->row($probe->protocols()->index('ip.udp'));
        $probe->table('protocolDirTable')->set(
            protocolDirID: [...$udp['protocolDirID'], 0, 0, $port >> 8, $port & 255],
            protocolDirParameters: [...$udp['protocolDirParameters'], 0],
            protocolDirDescr: $name,
        );
    }

    public function testAProtocolThatIsMadeHasAPath(): void
    {
        $probe = $this->probe($this->bundled());
        $unknown = $this->thrown(fn() => $probe->protocols()->index('ip.udp.backup'));
        self::assertInstanceOf(UnknownName::class, $unknown);
        self::addProtocol($probe, 7777, 'backup');
        $index = $probe->protocols()->index('ip.udp.backup');
        self::assertSame('ip.udp.backup', $probe->protocols()->path($index));
        self::assertSame('ip.udp', $probe->protocols()->path($probe->protocols()->parent($index)));
    }

    public function testNamesWithoutALayerBeforeThem(): void
    {
        $probe = $this->probe($this->bundled());
        // Agents describe a protocol by its name or by all of its layers.
        self::addProtocol($probe, 7778, 'ether2.ip.udp.archive');
        self::assertIsInt($probe->protocols()->index('ip.udp.archive'));
        self::assertSame('ether2', $probe->protocols()->path($probe->protocols()->index('ether2')));
        self::assertSame('IP.UDP', strtoupper($probe->protocols()->path($probe->protocols()->index('Ip.uDp'))));
    }

    public function testAnAgentThatBeganAnewHasAnotherDirectory(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        self::addProtocol($probe, 7777, 'backup');
        $index = $probe->protocols()->index('ip.udp.backup');
        $this->kill($agent);
        $this->bundled('--port', (string) $agent->port);
        $probe->uptime();
        self::assertNull($probe->protocols()->path($index));
        $this->thrown(fn() => $probe->protocols()->index('ip.udp.backup'));
    }

    /**
     * What is called to learn a directory of one protocol, which changed last at the agent's start.
     *
     * @return list<\Step>
     */
    private static function directoryOf(string $name): array
    {
        $row = \record(
            status: \i32(0),
            protocolDirID: \byte_list("\0\0\0\1"),
            protocolDirParameters: \byte_list("\0"),
            protocolDirLocalIndex: \i32(4),
            protocolDirDescr: \text($name),
            configs: str_repeat(\i32(1), 4),
            protocolDirOwner: \text(''),
            marks: str_repeat(\i32(1), 5),
        );
        return [\reply(\u32(0)), \reply(\rows($row)), \reply(\rows())];
    }

    public function testTheSameTimeOfAnotherAgentIsAnotherDirectory(): void
    {
        $agent = $this->scripted(...self::directoryOf('one'));
        $probe = $this->probe($agent);
        self::assertSame('one', $probe->protocols()->path(4));
        self::assertSame('one', $probe->protocols()->path(4), 'asked once');
        $agent->restart(\reply(\i32(0) . str_repeat("\0", 200)), ...self::directoryOf('two'));
        $probe->uptime();
        self::assertSame('two', $probe->protocols()->path(4));
        self::assertSame(0, $agent->steps_left());
    }

    public function testInterfacesOfAnAgentThatBeganAnew(): void
    {
        $frame = \ethernet(\mac(1), \mac(2), 0x0800, \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1000, 53)));
        $files = [\capture_file([[1.0, $frame]]), \capture_file([[1.0, $frame]])];
        $agent = $this->bundled('--read', $files[0]);
        $probe = $this->probe($agent);
        self::assertSame($files[0], $probe->interfaces()->name(1));
        self::assertNull($probe->interfaces()->name(9));
        self::assertNull($probe->interfaces()->name(0));
        $this->kill($agent);
        $this->bundled('--port', (string) $agent->port, '--read', $files[1]);
        $probe->uptime();
        self::assertSame($files[1], $probe->interfaces()->name(1));
        self::assertSame(1, $probe->interfaces()->index($files[1]));
        self::assertInstanceOf(UnknownName::class, $this->thrown(fn() => $probe->interfaces()->index($files[0])));
    }
}
