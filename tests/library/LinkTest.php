<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\CallFailed;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\RmonException;
use Rmon\Probe;

/** Links: how they are made, lost and made anew, and what becomes of reports. */
final class LinkTest extends AgentTestCase
{
    /** A system group of zeros and empty texts, up 1 second. */
    private static function system(): \Step
    {
        return \reply(\text('') . \u32(100) . str_repeat(\text(''), 4) . \i32(72));
    }

    public function testNobodyListens(): void
    {
        $port = \dead_port();
        $failed = $this->thrown(fn() => Probe::connect('127.0.0.1', $port));
        self::assertInstanceOf(ConnectionFailed::class, $failed);
        self::assertSame(['127.0.0.1', $port], [$failed->host, $failed->port]);
        self::assertSame("127.0.0.1:$port: No agent can be reached: Connection refused.", $failed->getMessage());
    }

    public function testANameWithoutAnAddress(): void
    {
        $failed = $this->thrown(fn() => Probe::connect('no-such-host.invalid', 9911));
        self::assertInstanceOf(ConnectionFailed::class, $failed);
        self::assertStringContainsString('no-such-host.invalid', $failed->getMessage());
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => Probe::connect('::1', 9911)));
    }

    /** @return iterable<string, array{string, int}> */
    public static function nonsense(): iterable
    {
        yield 'no host' => ['', 9911];
        yield 'a blank' => ['127.0.0.1 1', 9911];
        yield 'a zero octet' => ["127.0.0.1\0", 9911];
        yield 'no port' => ['127.0.0.1', 0];
        yield 'a port too large' => ['127.0.0.1', 65536];
    }

    /** @dataProvider nonsense */
    #[DataProvider('nonsense')]
    public function testHostsAndPortsThatAreNone(string $host, int $port): void
    {
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => Probe::connect($host, $port)));
    }

    public function testTheTimeOutIsTheCallersOwn(): void
    {
        // A listener that takes no more connections: further ones wait for it.
        $full = stream_socket_server(
            'tcp://127.0.0.1:0',
            $code,
            $reason,
            STREAM_SERVER_BIND | STREAM_SERVER_LISTEN,
            stream_context_create(['socket' => ['backlog' => 1]]),
        );
        $port = \port_of($full);
        $waiting = [];
        for ($i = 0; $i < 8; $i++) {
            $waiting[] = @stream_socket_client("tcp://127.0.0.1:$port", $code, $reason, 0.2);
        }
        $began = microtime(true);
        $failed = $this->thrown(fn() => Probe::connect('127.0.0.1', $port, timeout: 0.3));
        self::assertInstanceOf(ConnectionFailed::class, $failed);
        // The module's own limit is 25 seconds.
        self::assertLessThan(10.0, microtime(true) - $began);
    }

    public function testCallsEndWithTheTimeThatIsLeft(): void
    {
        $agent = $this->scripted(self::system(), \no_answer(), self::system());
        $probe = Probe::connect('127.0.0.1', $agent->port, end: hrtime(true) / 1e9 + 4);
        self::assertSame(100, $probe->uptime());
        putenv('RMONRPC_TIMEOUT=60000');
        try {
            $lost = $this->thrown($probe->uptime(...));
            self::assertSame('60000', getenv('RMONRPC_TIMEOUT'));
        } finally {
            putenv('RMONRPC_TIMEOUT');
        }
        self::assertInstanceOf(ConnectionLost::class, $lost);
        self::assertStringContainsString('Timed out', $lost->text);
        self::assertCount(2, $agent->calls(2), 'it is not asked again');
        // Another probe of the same process has all its time.
        self::assertSame(100, $this->probe($agent)->uptime());
    }

    /** Whoever looks at the time behind a call that timed out sees that it is up. */
    public function testNoCallEndsBeforeItsTime(): void
    {
        $agent = $this->scripted(\always(\no_answer()));
        for ($i = 0; $i < 20; $i++) {
            $end = hrtime(true) / 1e9 + 0.03 + $i * 0.0001;
            $lost = $this->thrown(Probe::connect('127.0.0.1', $agent->port, end: $end)->uptime(...));
            self::assertInstanceOf(ConnectionLost::class, $lost);
            self::assertGreaterThanOrEqual($end, hrtime(true) / 1e9);
        }
    }

    public function testHostAndPortInOneText(): void
    {
        $agent = $this->scripted(self::system());
        $probe = Probe::connect("127.0.0.1:$agent->port");
        self::assertSame(['127.0.0.1', $agent->port], [$probe->link->host, $probe->link->port]);
        self::assertSame(100, $probe->uptime());
    }

    public function testThePortOfTheDirectiveIsTheDefault(): void
    {
        $agent = $this->scripted(self::system());
        ini_set('rmon.default_port', (string) $agent->port);
        self::assertSame(100, Probe::connect()->uptime());
        self::assertSame((string) $agent->port, ini_get('rmon.default_port'));
    }

    public function testThePortOfTheEnvironmentIsTheNext(): void
    {
        $agent = $this->scripted(self::system());
        ini_set('rmon.default_port', '');
        putenv("RMONRPC_PORT=$agent->port");
        try {
            self::assertSame(100, Probe::connect()->uptime());
            self::assertSame('', ini_get('rmon.default_port'));
        } finally {
            putenv('RMONRPC_PORT');
        }
    }

    public function testTheSameHostAtAnotherPortIsAnotherLink(): void
    {
        $one = $this->scripted(\reply(\text('one') . str_repeat("\0", 64)));
        $other = $this->scripted(\reply(\text('other') . str_repeat("\0", 64)));
        $probes = [$this->probe($one), $this->probe($other)];
        self::assertSame('other', $probes[1]->system()['sysDescr']);
        self::assertSame('one', $probes[0]->system()['sysDescr']);
    }

    public function testEveryPortHasATextOfItsOwn(): void
    {
        $spelled = new \ReflectionMethod(\Rmon\Link::class, 'spelled');
        $texts = [];
        for ($port = 1; $port <= 65535; $port++) {
            $texts[$spelled->invoke(null, '10.0.4.255', $port)] = true;
        }
        self::assertCount(65535, $texts);
        // 4660 is 0x1234: the octets are written in the fourth, third, second and first way but decimal.
        self::assertSame('0x000a.0x000.0x04.0xff', $spelled->invoke(null, '10.0.4.255', 4660));
    }

    public function testALinkWhoseAgentWasRestartedIsMadeAnew(): void
    {
        $agent = $this->scripted(self::system());
        $probe = $this->probe($agent);
        self::assertSame(100, $probe->uptime());
        $agent->restart(self::system(), self::system());
        self::assertSame(100, $probe->uptime());
        self::assertSame(100, $probe->uptime());
        // Once to knock and once to call, before and after.
        self::assertSame(4, $agent->connections());
    }

    public function testTwoProbesOfOneAgentOutliveItsRestart(): void
    {
        $agent = $this->scripted(\always(self::system()));
        $probes = [$this->probe($agent), $this->probe($agent)];
        foreach ($probes as $probe) {
            self::assertSame(100, $probe->uptime());
        }
        $agent->restart(\always(self::system()));
        foreach ($probes as $probe) {
            self::assertSame(100, $probe->uptime());
        }
    }

    public function testASetOverADeadLinkIsNotDoneTwice(): void
    {
        $agent = $this->scripted(\always(self::system()));
        $probe = $this->probe($agent);
        $probe->uptime();
        $agent->restart(self::system(), \reply(\i32(0)));
        $lost = $this->thrown(fn() => $probe->settings()->setHostName('probe'));
        self::assertInstanceOf(ConnectionLost::class, $lost);
        self::assertSame('rmon_set_hostname', $lost->function);
        self::assertSame(100, $probe->uptime(), 'the next call has a new link');
    }

    public function testAnAgentThatStaysAway(): void
    {
        $agent = $this->scripted(self::system());
        $probe = $this->probe($agent);
        $probe->uptime();
        $agent->stop();
        $failed = $this->thrown(fn() => $probe->uptime());
        self::assertInstanceOf(ConnectionFailed::class, $failed);
        self::assertSame($agent->port, $failed->port);
    }

    public function testAPersistentLink(): void
    {
        $limit = ini_get('rmon.max_persistent');
        $agent = $this->scripted(self::system(), \reply(\i32(0)), self::system());
        $probe = Probe::connect('127.0.0.1', $agent->port, persistent: true);
        self::assertSame(100, $probe->uptime());
        // Found again by the next one, tested with a call of procedure 0.
        $again = Probe::connect('127.0.0.1', $agent->port, persistent: true);
        self::assertSame(100, $again->uptime());
        self::assertSame([1, 0, 1], array_column($agent->calls(3), 'procedure'));
        self::assertSame('-1', $limit);
    }

    public function testALinkThatSomebodyElseClosed(): void
    {
        $agent = $this->scripted(\always(self::system()));
        $probe = $this->probe($agent);
        $link = $probe->link->resource();
        while (is_resource($link)) {
            rmon_close($link);
        }
        self::assertSame(100, $probe->uptime());
    }

    public function testACallThatTheAgentRefusesIsNoDeadLink(): void
    {
        $agent = $this->scripted(\proc_unavail(), self::system());
        $probe = $this->probe($agent);
        $failed = $this->thrown(fn() => $probe->table('alarmTable')->get(alarmIndex: 1));
        self::assertInstanceOf(CallFailed::class, $failed);
        self::assertSame('rmon_alarm_get', $failed->function);
        self::assertSame(
            "127.0.0.1:$agent->port: RPC: Procedure unavailable (rmon_alarm_get)",
            $failed->getMessage(),
        );
        self::assertSame(100, $probe->uptime());
        self::assertSame(2, $agent->connections());
    }

    public function testAnErrorStatusByName(): void
    {
        $agent = $this->scripted(\reply(\i32(5) . str_repeat("\0", 256)));
        $refused = $this->thrown(fn() => $this->probe($agent)->table('alarmTable')->get(alarmIndex: 1));
        self::assertInstanceOf(AgentRefused::class, $refused);
        self::assertSame([5, 'genErr'], [$refused->status, $refused->error()->name]);
        self::assertStringContainsString('The agent refused with genErr. (rmon_alarm_get)', $refused->getMessage());
    }

    public function testAnErrorStatusWithoutAName(): void
    {
        $agent = $this->scripted(\reply(\i32(77) . str_repeat("\0", 256)));
        $refused = $this->thrown(fn() => $this->probe($agent)->table('alarmTable')->get(alarmIndex: 1));
        self::assertSame([77, null], [$refused->status, $refused->error()]);
        self::assertStringContainsString('error-status 77', $refused->getMessage());
    }

    /** @return iterable<string, array{string, array<string, mixed>}> */
    public static function quietTables(): iterable
    {
        yield 'DSMON' => ['dsmonStatsTable', ['dsmonStatsControlIndex' => 1, 'dsmonAggGroupIndex' => 0]];
        yield 'voice' => ['sccpPhoneTable', ['index' => 1]];
        yield 'directory by index' => ['protocolDirByIndex', ['protocolDirLocalIndex' => 1]];
    }

    /**
     * @param array<string, mixed> $keys
     * @dataProvider quietTables
     */
    #[DataProvider('quietTables')]
    public function testSilenceOfADeadLinkIsNoMissingRow(string $table, array $keys): void
    {
        $agent = $this->scripted(\hang_up(), \hang_up(), \hang_up(), \hang_up());
        $probe = $this->probe($agent);
        $lost = $this->thrown(fn() => $probe->table($table)->get(...$keys));
        self::assertInstanceOf(ConnectionLost::class, $lost);
    }

    /**
     * @param array<string, mixed> $keys
     * @dataProvider quietTables
     */
    #[DataProvider('quietTables')]
    public function testSilenceOfALiveLinkIsAMissingRow(string $table, array $keys): void
    {
        // noSuchName in a row, or no row in a list.
        $nothing = str_starts_with($table, 'sccp') ? \u32(0) : \i32(2) . str_repeat("\0", 128);
        $agent = $this->scripted(\reply($nothing), \always(self::system()));
        self::assertNull($this->probe($agent)->table($table)->get(...$keys));
    }

    public function testSilenceWithoutARowIsAFailure(): void
    {
        $agent = $this->scripted(\proc_unavail(), self::system());
        $failed = $this->thrown(fn() => $this->probe($agent)->table('ndeDeviceTable')->first());
        self::assertInstanceOf(CallFailed::class, $failed);
        self::assertSame('rmon_nde_device_getbulk', $failed->function);
    }

    public function testAVariableThatIsNotThere(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        self::assertNull($probe->variable('noSuchVariable.0'));
        self::assertIsInt($probe->variable('sysUpTime.0'));
        proc_terminate($agent->process, 9);
        self::assertInstanceOf(ConnectionFailed::class, $this->thrown(fn() => $probe->variable('sysUpTime.0')));
    }

    public function testReportsReachNobodyElse(): void
    {
        $agent = $this->scripted(\proc_unavail());
        $probe = $this->probe($agent);
        $leaked = [];
        set_error_handler(static function (int $level, string $text) use (&$leaked): bool {
            $leaked[] = $text;
            return true;
        });
        try {
            $this->thrown(fn() => $probe->uptime());
            $this->thrown(fn() => Probe::connect('127.0.0.1', \dead_port()));
            $this->thrown(fn() => Probe::connect('no-such-host.invalid', 9911));
            trigger_error('mine', E_USER_WARNING);
        } finally {
            restore_error_handler();
        }
        self::assertSame(['mine'], $leaked, 'and the handler of before is in its place again');
    }

    public function testANoticeComesWithTheRow(): void
    {
        // Nothing that comes over the wire makes the module say this, so the report is made here.
        $agent = $this->scripted(self::system());
        $probe = $this->probe($agent);
        $consider = new \ReflectionMethod($probe->link, 'consider');
        $consider->invoke($probe->link, 'rmon_pdist_ctl_get', [[E_USER_NOTICE, 'owner ptr is NULL!']], true);
        self::assertSame(['owner ptr is NULL!'], $probe->link->notices);
        self::assertSame(100, $probe->uptime());
    }

    public function testAFailureThatTheFunctionMakesAZeroOf(): void
    {
        $agent = $this->scripted(\proc_unavail());
        $failed = $this->thrown(fn() => $this->probe($agent)->voice('mgcp')->enable());
        self::assertInstanceOf(CallFailed::class, $failed);
        self::assertSame('mgcp_voice_coll_enable', $failed->function);
    }

    public function testAllExceptionsHaveOneBase(): void
    {
        foreach (glob(__DIR__ . '/../../library/src/Exception/*.php') as $file) {
            $class = 'Rmon\\Exception\\' . basename($file, '.php');
            self::assertTrue(is_a($class, RmonException::class, true), $class);
        }
    }
}
