<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Address;
use Rmon\Probe;

/**
 * The capture of script/server --demo: an agent that plays it shows what its generator knows of it, by the rows that
 * the demo has.
 */
final class DemoTest extends AgentTestCase
{
    private static string $directory;

    /** @var array<string, mixed> */
    private static array $known;

    private Probe $demo;

    public static function setUpBeforeClass(): void
    {
        self::$directory = sys_get_temp_dir() . '/rmon-demo-' . getmypid();
        mkdir(self::$directory);
        Demo::capture(self::$directory);
        $known = (string) file_get_contents(self::$directory . '/known.json');
        self::$known = json_decode($known, true, 512, JSON_THROW_ON_ERROR);
    }

    public static function tearDownAfterClass(): void
    {
        array_map(unlink(...), glob(self::$directory . '/*') ?: []);
        rmdir(self::$directory);
    }

    protected function setUp(): void
    {
        $agent = $this->bundled(
            ...['--read', self::$directory . '/office', '--read', self::$directory . '/wan', '--hold'],
            ...['--voice', __DIR__ . '/../../agent/voice.ini', '--netflow', '0'],
        );
        Demo::rows($agent);
        $this->demo = $this->probe($agent);
        \read_files($agent, 2);
    }

    public function testTheSameEachTime(): void
    {
        $again = self::$directory . '/again';
        mkdir($again);
        Demo::capture($again);
        foreach (['office', 'wan', 'known.json'] as $file) {
            self::assertFileEquals(self::$directory . "/$file", "$again/$file");
        }
        array_map(unlink(...), glob("$again/*") ?: []);
        rmdir($again);
        self::assertLessThan(9_000_000, (int) filesize(self::$directory . '/office'));
        // Something of everything, in each interface's own amount.
        self::assertGreaterThan(40_000, self::$known['office']['frames']);
        self::assertGreaterThan(10_000, self::$known['wan']['frames']);
        self::assertCount(25, self::$known['office']['protocols']);
        self::assertGreaterThan(0, min(self::$known['office']['sizes']));
    }

    /** Another program finds nothing wrong with the frames. */
    public function testFramesAreWellMade(): void
    {
        foreach (['office' => 10_000, 'wan' => 2_000] as $file => $least) {
            [$code, $output] = \run('tcpdump', '-r', self::$directory . "/$file", '-nn', '-vv');
            self::assertSame(0, $code);
            self::assertDoesNotMatchRegularExpression('/incorrect|bad (udp )?cksum|wrong|invalid|malformed/i', $output);
            self::assertGreaterThan($least, preg_match_all('/\(correct\)|udp sum ok/', $output));
        }
    }

    public function testFramesBySizeAndKind(): void
    {
        foreach ([1 => 'office', 2 => 'wan'] as $interface => $name) {
            $row = $this->demo->table('etherStatsTable')->get(etherStatsIndex: $interface);
            $known = self::$known[$name];
            $expected = [$known['frames'], $known['octets'], $known['broadcast'], $known['multicast']];
            array_push($expected, $known['undersize'], $known['oversize'], ...array_values($known['sizes']));
            $columns = ['Pkts', 'Octets', 'BroadcastPkts', 'MulticastPkts', 'UndersizePkts', 'OversizePkts'];
            array_push($columns, 'Pkts64Octets', 'Pkts65to127Octets', 'Pkts128to255Octets', 'Pkts256to511Octets');
            array_push($columns, 'Pkts512to1023Octets', 'Pkts1024to1518Octets');
            self::assertEquals($expected, array_map(static fn($column) => $row["etherStats$column"], $columns), $name);
        }
    }

    public function testProtocols(): void
    {
        $paths = $this->demo->protocols()->paths();
        foreach ([1 => 'office', 2 => 'wan'] as $control => $name) {
            $shown = [];
            foreach ($this->demo->table('protocolDistStatsTable', control: $control) as $row) {
                $shown[$paths[$row['protocolDirLocalIndex']]] = [
                    'pkts' => $row['protocolDistStatsPkts'],
                    'octets' => $row['protocolDistStatsOctets'],
                ];
            }
            self::assertEqualsCanonicalizing(self::$known[$name]['protocols'], $shown, $name);
            self::assertEquals(self::$known[$name]['protocols']['ip.tcp.https'], $shown['ip.tcp.https']);
        }
    }

    public function testHostsAndConversations(): void
    {
        foreach ([1 => 'office', 2 => 'wan'] as $control => $name) {
            $hosts = $conversations = [];
            foreach ($this->demo->table('nlHostTable', control: $control) as $row) {
                $hosts[Address::text($row['nlHostAddress'])] = [
                    'inpkts' => $row['nlHostInPkts'],
                    'inoctets' => $row['nlHostInOctets'],
                    'outpkts' => $row['nlHostOutPkts'],
                    'outoctets' => $row['nlHostOutOctets'],
                ];
            }
            foreach ($this->demo->table('nlMatrixSDTable', control: $control) as $row) {
                $ends = [$row['nlMatrixSDSourceAddress'], $row['nlMatrixSDDestAddress']];
                $conversations[implode(' ', array_map(Address::text(...), $ends))] = [
                    'pkts' => $row['nlMatrixSDPkts'],
                    'octets' => $row['nlMatrixSDOctets'],
                ];
            }
            self::assertSameRows(self::$known[$name]['hosts'], $hosts);
            self::assertSameRows(self::$known[$name]['conversations'], $conversations);
        }
    }

    public function testHostsByMacAddress(): void
    {
        $shown = [];
        foreach ($this->demo->table('hostTable', control: 1) as $row) {
            $shown[bin2hex(pack('C*', ...$row['hostAddress']))] = [
                'inpkts' => $row['hostInPkts'],
                'inoctets' => $row['hostInOctets'],
                'outpkts' => $row['hostOutPkts'],
                'outoctets' => $row['hostOutOctets'],
            ];
        }
        self::assertSameRows(self::$known['office']['macs'], $shown);
    }

    public function testVlansAndPriorities(): void
    {
        $vlans = $priorities = [];
        foreach ($this->demo->table('smonVlanIdStatsTable', control: 1) as $row) {
            $vlans[$row['smonVlanIdStatsId']] = [
                'pkts' => $row['smonVlanIdStatsTotalPkts'],
                'octets' => $row['smonVlanIdStatsTotalOctets'],
            ];
        }
        foreach ($this->demo->table('smonPrioStatsTable', control: 1) as $row) {
            $priorities[$row['smonPrioStatsId']] = [
                'pkts' => $row['smonPrioStatsPkts'],
                'octets' => $row['smonPrioStatsOctets'],
            ];
        }
        self::assertSameRows(self::$known['office']['vlans'], $vlans);
        self::assertSameRows(self::$known['office']['priorities'], self::used($priorities));
    }

    public function testDifferentiatedServices(): void
    {
        $shown = [];
        $each = self::listOf($this->demo->table('dsmonStatsControlTable'))[0];
        foreach ($this->demo->table('dsmonStatsTable', control: $each['dsmonStatsControlIndex']) as $row) {
            $shown[$row['dsmonAggGroupIndex']] = [
                'pkts' => $row['dsmonStatsInHCPkts'],
                'octets' => $row['dsmonStatsInHCOctets'],
            ];
        }
        self::assertSameRows(self::$known['office']['dscps'], self::used($shown));
    }

    public function testResponseTimes(): void
    {
        $paths = $this->demo->protocols()->paths();
        foreach ([1 => 'office', 2 => 'wan'] as $control => $name) {
            $shown = [];
            foreach ($this->demo->table('artReportTable', control: $control) as $row) {
                $ends = Address::text($row['artClientAddress']) . ' ' . Address::text($row['artServerAddress']);
                $key = $ends . ' ' . $paths[$row['protocolDirLocalIndex']];
                $shown[$key] = [$row['artTotalResponses'], $row['artTimeouts'], $row['artAvgRspTime']];
            }
            $expected = [];
            foreach (self::$known[$name]['responses'] as $key => $row) {
                $average = $row['responses'] === 0 ? 0 : $row['microseconds'] / $row['responses'] / 1000;
                $expected[$key] = [$row['responses'], $row['timeouts'], (int) round($average)];
            }
            self::assertSameRows($expected, $shown);
        }
    }

    /** The rows that only time fills are there too. */
    public function testStandingRows(): void
    {
        $variables = array_column(self::listOf($this->demo->table('alarmTable')), 'alarmVariable');
        self::assertContains('etherStatsOctets.1', $variables);
        $groups = array_column(self::listOf($this->demo->table('dsmonAggGroupTable')), 'dsmonAggGroupDescr');
        $classes = ['usual', 'bulk', 'business', 'video', 'voice', 'network control'];
        self::assertSame($classes, array_slice($groups, 0, 6));
        $histories = array_column(self::listOf($this->demo->table('historyControlTable')), 'historyControlInterval');
        self::assertSame(2, count(array_keys($histories, 5, true)));
        self::assertCount(2, self::listOf($this->demo->table('ndeDeviceTable')));
        $speeds = array_column(self::listOf($this->demo->table('ifTable')), 'ifSpeed');
        self::assertSame([10_000_000, 2_000_000], $speeds, 'without them nothing has a utilization');
        self::assertSame('demo', $this->demo->system()['sysName']);
    }

    /** The rows of what had traffic. */
    private static function used(array $rows): array
    {
        return array_filter($rows, static fn(array $row) => $row['pkts'] > 0);
    }

    /** @param array<int|string, mixed> $expected */
    private static function assertSameRows(array $expected, array $shown): void
    {
        ksort($expected);
        ksort($shown);
        self::assertEquals($expected, $shown);
    }
}
