<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Address;
use Rmon\ControlRows;
use Rmon\Probe;
use Rmon\Schema\Catalog;
use Rmon\Schema\Shape;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use Rmon\Table;

/** Every table on the bundled agent and on the scripted one. */
final class TablesTest extends AgentTestCase
{
    /** Tables that an agent of the tests has no row of: nothing sends NetFlow, and nobody keeps the last one. */
    private const WITHOUT_ROWS = ['ndeLearnedDeviceTable', 'ndeLearnedInterfaceTable', 'mgcpTopLatencyTable'];

    private static ?Probe $probe = null;

    private static mixed $agent = null;

    /** @return iterable<string, array{TableSchema}> */
    public static function tables(): iterable
    {
        foreach (Catalog::all() as $name => $schema) {
            yield $name => [$schema];
        }
    }

    public static function setUpBeforeClass(): void
    {
        $frames = [];
        for ($host = 1; $host <= 30; $host++) {
            $ip = "10.1.0.$host";
            $web = \ip4($ip, '10.1.1.1', 6, \tcp(40000 + $host, 443, 24, str_repeat('x', $host)), $host);
            $frames[] = [$host / 100, \ethernet(\mac(1), \mac(10 + $host), 0x0800, $web, 0x6000 | $host % 3)];
            $answer = \ip6("fd00::$host", 'fd00::ff', 17, \udp(53, 50000, 'answer'));
            $frames[] = [$host / 100, \ethernet(\mac(1), \mac(10 + $host), 0x86dd, $answer)];
            $question = \arp(1, \mac(10 + $host), $ip, \mac(0), '10.1.1.1');
            $frames[] = [$host / 100, \ethernet("\xff\xff\xff\xff\xff\xff", \mac(10 + $host), 0x0806, $question)];
        }
        $voice = __DIR__ . '/../../agent/voice.ini';
        self::$agent = \reading_agent([\capture_file($frames)], '--voice', $voice);
        $probe = self::$probe = Probe::connect('127.0.0.1', self::$agent->port);
        self::setUpRows($probe);
        \read_files(self::$agent);
        self::waitFor($probe);
    }

    public static function tearDownAfterClass(): void
    {
        self::$probe->close();
        proc_terminate(self::$agent->process, 9);
        self::$probe = null;
        self::$agent = null;
    }

    private static function setUpRows(Probe $probe): void
    {
        $rows = new ControlRows($probe, 'tables');
        $rows->hosts(1);
        $rows->conversations(1);
        // Long enough that the frames come before its end, on a busy machine too.
        $rows->macTopHosts(1, 'hostTopNOutOctets', 5);
        $rows->macConversations(1);
        $rows->protocols(1);
        $rows->addresses(1);
        $rows->etherStats(1);
        $rows->history(1, 1, 5);
        $rows->vlans(1);
        $rows->priorities(1);
        $rows->responseTimes(1);
        $profile = 7;
        $control = $probe->table('dsmonAggControlTable', dsmonAggControlIndex: $profile);
        $control->set(dsmonAggControlOwner: 'test', dsmonAggControlStatus: 'createRequest');
        for ($dscp = 0; $dscp < 64; $dscp++) {
            $map = $probe->table('dsmonAggProfileTable', control: $profile);
            $map->set(dsmonAggProfileDSCP: $dscp, dsmonAggGroupIndex: $dscp);
        }
        foreach ([0, 63] as $group) {
            $probe->table('dsmonAggGroupTable', control: $profile)
                ->set(dsmonAggGroupIndex: $group, dsmonAggGroupDescr: "group $group");
        }
        $control->set(dsmonAggControlOwner: 'test', dsmonAggControlStatus: 'valid');
        self::assertSame($profile, $rows->profile());
        $rows->groups(1, $profile);
        $rows->groupProtocols(1, $profile);
        $rows->groupHosts(1, $profile);
        $rows->groupConversations(1, $profile);
        $rows->capture(1, [['filterPktData' => [2], 'filterPktDataMask' => [255], 'filterPktDataNotMask' => [0]]]);
        $probe->table('eventTable')->set(eventIndex: 1, eventDescription: 'many', eventType: 'log');
        $probe->table('alarmTable')->set(
            alarmIndex: 1,
            alarmInterval: 1,
            alarmVariable: 'etherStatsPkts.1',
            alarmSampleType: 'absoluteValue',
            alarmRisingThreshold: 10,
            alarmRisingEventIndex: 1,
        );
        $probe->table('trapDestTable')
            ->set(trapDestIndex: 1, trapDestCommunity: 'public', trapDestProtocol: 1, trapDestAddress: '10.9.9.9');
        $probe->table('communityTable')->set(communityString: 'public', privs: 'readOnly');
        $probe->table('communityTable')->set(communityString: 'ab', privs: 'readWrite');
        $probe->table('ndeDeviceTable')->set(address: '10.8.0.1', deviceName: 'router');
        $probe->table('ndeDataSourceTable')->set(address: '10.8.0.1', datasrcName: 'one');
        $index = $probe->table('ndeDataSourceTable')->first()['datasrcIndex'];
        $paths = $probe->table('ndeFlowPathTable', address: '10.8.0.1', datasrcIndex: $index);
        $paths->set(inputIndex: 1, outputIndex: 2);
    }

    /** The agent's clock has to have gone on for a sample, a report and an alarm. */
    private static function waitFor(Probe $probe): void
    {
        foreach (['etherHistoryTable', 'hostTopNTable', 'logTable', 'sccpCallTable', 'h323CallTable'] as $table) {
            self::assertTrue(\wait_until(static fn() => $probe->table($table)->first() !== null), $table);
        }
    }

    /**
     * What is read of a table while it has the rows that are told: samples and calls come and go by the clock.
     *
     * @template T
     * @param callable(list<array<string, mixed>>): T $read takes the rows
     * @return array{list<array<string, mixed>>, T}
     */
    private static function whileStill(Table $table, callable $read): array
    {
        $keys = static fn(array $rows) => array_map($table->keysOf(...), $rows);
        \wait_until(static function () use ($table, $read, $keys, &$rows, &$result): bool {
            $rows = self::listOf($table);
            $result = $read($rows);
            return $keys(self::listOf($table)) === $keys($rows);
        });
        return [$rows, $result];
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testRowsOfTheBundledAgentAreAsDescribed(TableSchema $schema): void
    {
        $table = self::$probe->table($schema->name);
        [$rows, $again] = self::whileStill($table, static fn(array $rows) => $schema->keys === []
            ? $rows
            : array_map(static fn(array $row) => $table->get(...$table->keysOf($row)), $rows));
        $seen = [];
        foreach ($rows as $i => $row) {
            self::assertColumns($schema, $row);
            $keys = json_encode($schema->keys === [] ? $i : $table->keysOf($row));
            self::assertArrayNotHasKey($keys, $seen, 'a row is seen once');
            $seen[$keys] = true;
            self::assertNotNull($again[$i], "the row of $keys is found again");
            self::assertSame(array_keys($row), array_keys($again[$i]));
            self::assertSame(array_keys($schema->columns), array_keys($table->readable($row)));
        }
        self::assertSame(in_array($schema->name, self::WITHOUT_ROWS, true), $rows === [], 'rows');
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testPagesAndPartsAreTheTable(TableSchema $schema): void
    {
        $table = self::$probe->table($schema->name);
        // What counts by the clock goes on meanwhile: only keys are compared.
        $keys = static fn(iterable $rows) => array_map($table->keysOf(...), self::listOf($rows));
        $shown = static fn(array $rows) => implode("\n", array_map(json_encode(...), $rows));
        $look = static function (array $rows) use ($schema, $table, $keys) {
            if ($schema->keys === []) {
                return [$keys($table->page(10)), []];
            }
            $pages = $parts = [];
            $behind = null;
            while (($page = $keys($table->page(7, $behind))) !== []) {
                array_push($pages, ...$page);
                $behind = end($page);
            }
            // Each value of each key, in the middle of the table, and all of them.
            $middle = $keys($rows)[intdiv(count($rows), 2)] ?? null;
            if ($middle !== null) {
                $marks = array_filter($schema->keys, static fn($key) => $key->mark);
                foreach (array_diff_key($middle, $marks) as $name => $value) {
                    $parts[$name] = [[$name => $value], $keys($table->where(...[$name => $value]))];
                }
                $named = array_intersect_key($middle, array_flip($schema->order));
                $parts['one row'] = [$middle, $keys($table->where(...$named))];
            }
            return [$pages, $parts];
        };
        [$rows, [$pages, $parts]] = self::whileStill($table, $look);
        $all = $keys($rows);
        self::assertSame($shown($all), $shown($pages), 'pages of seven');
        foreach ($parts as $name => [$values, $part]) {
            $expected = array_filter($all, static fn(array $row) => array_intersect_key($row, $values) === $values);
            self::assertSame($shown(array_values($expected)), $shown($part), "rows with this $name");
        }
    }

    /** @dataProvider tables */
    #[DataProvider('tables')]
    public function testRowsOfTheScriptedAgentAreAsDescribed(TableSchema $schema): void
    {
        $reader = $schema->reader;
        if ($schema->name === 'mgcpTopLatencyTable') {
            $agent = $this->scripted(\always(\reply(str_repeat("\0", 512))));
            self::assertSame([], self::listOf($this->probe($agent)->table($schema->name)));
            return;
        }
        // Zeros are a row of any table: numbers, empty texts and empty lists. Lists of rows have a count before it.
        $before = match (true) {
            $reader->shape === Shape::Texts => \i32(0) . \u32(1),
            $reader->getBulk !== null => \u32(1),
            default => '',
        };
        $agent = $this->scripted(\always(\reply($before . str_repeat("\0", 65536))));
        $table = $this->probe($agent)->table($schema->name);
        $keys = array_map(static fn($key) => is_int($key->start) ? 1 : $key->start, $schema->keys);
        $row = $reader->shape === Shape::Texts ? $table->first() : $table->get(...$keys);
        self::assertNotNull($row);
        self::assertColumns($schema, $row);
        foreach ($agent->calls() as $call) {
            self::assertNull($call->malformed);
        }
    }

    /** @param array<string, mixed> $row */
    private static function assertColumns(TableSchema $schema, array $row): void
    {
        $expected = array_filter(
            $schema->columns,
            static fn($column) => !$column->optional || array_key_exists($column->name, $row),
        );
        self::assertSame(array_keys($expected), array_values(array_diff(array_keys($row), [0, 1, 'status'])));
        foreach ($expected as $name => $column) {
            $value = $row[$name];
            match (true) {
                $column->type->isText() => self::assertIsString($value, $name),
                $column->type->isOctets() => self::assertTrue($value === 0 || array_is_list($value), $name),
                $column->type === Type::Rows => self::assertIsArray($value, $name),
                $column->type === Type::Counter64 => self::assertIsFloat($value, $name),
                default => self::assertIsNumeric($value, $name),
            };
        }
    }

    public function testAddressesOfTheCapture(): void
    {
        $addresses = [];
        foreach (self::$probe->table('nlHostTable', control: 1, protocolDirLocalIndex: 'ip') as $row) {
            $addresses[] = Address::text($row['nlHostAddress']);
        }
        $expected = array_map(static fn(int $host) => "10.1.0.$host", range(1, 30));
        self::assertSame([...$expected, '10.1.1.1'], $addresses);
    }

    public function testConversationsWithOneEnd(): void
    {
        $to = self::$probe->table(
            'nlMatrixDSTable',
            control: 1,
            protocolDirLocalIndex: 'ip',
            nlMatrixDSDestAddress: '10.1.1.1',
        );
        self::assertCount(30, self::listOf($to));
        $from = self::$probe->table(
            'nlMatrixSDTable',
            control: 1,
            protocolDirLocalIndex: 'ip6',
            nlMatrixSDSourceAddress: 'fd00::9',
        );
        $row = self::listOf($from)[0];
        self::assertSame('fd00::ff', Address::text($row['nlMatrixSDDestAddress']));
        // 14 of Ethernet, 40 of IPv6, 8 of UDP, 6 of data, and 4 of the check sequence.
        self::assertSame(72.0, $row['nlMatrixSDOctets']);
    }

    public function testNumbersFromZeroOnAreMet(): void
    {
        $vlans = self::listOf(self::$probe->table('smonVlanIdStatsTable', control: 1));
        self::assertSame([0, 1, 2], array_column($vlans, 'smonVlanIdStatsId'));
        $groups = self::listOf(self::$probe->table('dsmonAggGroupTable', control: 7));
        self::assertSame([0, 63], array_column($groups, 'dsmonAggGroupIndex'));
    }

    public function testPathsOfProtocols(): void
    {
        $protocols = self::$probe->protocols();
        $https = $protocols->index('ip.tcp.https');
        self::assertSame('ip.tcp.https', $protocols->path($https));
        self::assertSame('ip.tcp', $protocols->path($protocols->parent($https)));
        self::assertSame('ether2', $protocols->path($protocols->index('ether2')));
        self::assertNull($protocols->parent($protocols->index('ether2')));
        self::assertNull($protocols->path(60000));
    }

    public function testReadableCells(): void
    {
        $table = self::$probe->table('alHostTable', control: 1, protocolDirLocalIndex2: 'ip.tcp.https');
        $cells = $table->readable($table->first());
        self::assertSame('10.1.0.1', $cells['nlHostAddress']);
        self::assertSame('ip', $cells['protocolDirLocalIndex']);
        self::assertSame('ip.tcp.https', $cells['protocolDirLocalIndex2']);
        // Ethernet, its tag, IP, TCP and one octet of data: filled up to 60, and 4 of the check sequence.
        self::assertSame('64 B', $cells['alHostOutOctets']);
    }
}
