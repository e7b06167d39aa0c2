<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use Rmon\Exporter\Clock;
use Rmon\Exporter\Configuration;
use Rmon\Exporter\ConfigurationError;
use Rmon\Exporter\Modules;
use Rmon\Exporter\Names;
use Rmon\Exporter\Networks;
use Rmon\Schema\Catalog;

/** What the configuration says, what it can't say, and how metrics are called. */
final class ConfigurationTest extends TestCase
{
    private const HEAD = "[exporter]\nnetworks = 10.0.0.0/8\n";

    private static function read(string $text): Configuration
    {
        $configuration = Configuration::read(\file_of($text));
        $configuration->modules->check();
        return $configuration;
    }

    public function testWithoutAFile(): void
    {
        $configuration = Configuration::read(null);
        self::assertSame([true, false], array_map($configuration->permitsPort(...), [9911, 9912]));
    }

    public function testSettings(): void
    {
        $read = self::read("[exporter]\nnetworks = \"10.0.0.0/8, 192.0.2.7\"\nports = 9911-9920 700\nnames = on\n"
            . "seconds = 2.5\npatience = 0.5\nkeep_links = off\n[module mine]\ntitle = a; b\ninclude = system\n");
        self::assertSame(
            [true, 2.5, 0.5, false],
            [$read->names, $read->seconds, $read->patience, $read->keepLinks],
        );
        self::assertSame([false, true, true, false, true], array_map(
            $read->permitsPort(...),
            [9910, 9911, 9920, 9921, 700],
        ));
        self::assertSame(9911, $read->usualPort());
        self::assertSame(['system'], array_keys($read->modules->find('mine')->tables));
        self::assertNull($read->modules->find('none'));
        self::assertSame(700, self::read("[exporter]\nnetworks = 10.0.0.0/8\nports = 700\n")->usualPort());
    }

    public function testNetworks(): void
    {
        $networks = Networks::of('10.0.0.0/8 192.0.2.128/25, 198.51.100.7 ');
        $held = [
            '10.255.0.1' => true, '11.0.0.1' => false, '192.0.2.128' => true, '192.0.2.127' => false,
            '198.51.100.7' => true, '198.51.100.8' => false, '010.0.0.1' => false, '10.1' => false, '' => false,
            '::ffff:10.0.0.1' => false, "10.0.0.1\n" => false,
        ];
        foreach ($held as $address => $expected) {
            self::assertSame($expected, $networks->hold((string) $address), (string) $address);
        }
        self::assertTrue(Networks::of('0.0.0.0/0')->hold('255.255.255.255'));
        self::assertFalse(Networks::of('')->hold('127.0.0.1'));
    }

    /** @return iterable<string, array{string, string}> */
    public static function mistakes(): iterable
    {
        yield 'no networks' => ["[exporter]\nports = 9911\n", 'needs networks'];
        yield 'no such setting' => [self::HEAD . 'port = 1', 'knows no port'];
        yield 'no network' => ["[exporter]\nnetworks = 10.0.0.0/33", 'no IPv4 network'];
        yield 'bits behind' => ["[exporter]\nnetworks = 10.0.0.1/8", 'is 10.0.0.0/8 meant'];
        yield 'no port' => [self::HEAD . 'ports = 0', 'no TCP port'];
        yield 'a range turned round' => [self::HEAD . 'ports = 20-10', 'no TCP port'];
        yield 'no flag' => [self::HEAD . 'names = maybe', 'neither on nor off'];
        yield 'no time' => [self::HEAD . 'seconds = 0', 'number of seconds'];
        yield 'a list' => [self::HEAD . 'ports[] = 1', 'is no text'];
        yield 'no section' => ["a = b\n" . self::HEAD, 'stands in no section'];
        yield 'another section' => [self::HEAD . "[probe x]\nhost = y", 'no section that is known'];
        yield 'no name' => [self::HEAD . "[module]\ntitle = y", 'no section that is known'];
        yield 'no module' => [self::HEAD . "[table mine ifTable]\ncolumns = ifSpeed", 'belongs to no module'];
        yield 'includes itself' => [self::HEAD . "[module a]\ninclude = b\n[module b]\ninclude = a", 'includes itself'];
        yield 'includes none' => [self::HEAD . "[module a]\ninclude = b", 'no module b'];
        yield 'no number of series' => [self::HEAD . "[module a]\nseries = many", 'whole number'];
        $table = self::HEAD . "[module a]\n[table a ";
        yield 'no table' => ["{$table}ifTabel]\ncolumns = ifSpeed", 'ifTabel'];
        yield 'no column' => ["{$table}ifTable]\ncolumns = ifSped", 'ifSped'];
        yield 'a text' => ["{$table}ifTable]\ncolumns = ifDescr", 'no number'];
        yield 'no label' => ["{$table}ifTable]\nlabels = ifDescr:a-b", "can't be a label"];
        yield 'a label of the form' => ["{$table}ifTable]\nlabels = ifDescr:le", "can't be a label"];
        yield 'a label twice' => ["{$table}ifTable]\nlabels = ifDescr:a ifType:a", "can't be a label"];
        yield 'a label and a text' => ["{$table}ifTable]\nlabels = ifDescr:a\ninfo = ifType:a", 'a label twice'];
        yield 'a label that is there' => ["{$table}ifTable]\nlabels = ifDescr:interface", "can't be a label"];
        yield 'a label of a family' => [
            "{$table}ifTable]\nlabels = ifType:a\nfamily.x = a in=ifInOctets out=ifOutOctets",
            'a label twice',
        ];
        yield 'a name of the form' => ["{$table}ifTable]\nfamily.x_created = a b=ifInErrors", 'no name of a family'];
        yield 'a secret' => ["{$table}ndeDeviceTable]\nlabels = address\ninfo = commString", 'is a secret'];
        yield 'no limit' => ["{$table}ifTable]\nlimit = -1", 'whole number'];
        yield 'no option' => ["{$table}ifTable]\ncolumn = ifSpeed", 'knows no column'];
        yield 'no control row' => ["{$table}ifTable]\nof = ifIndex:a", 'no control table'];
        yield 'a family of two units' => ["{$table}ifTable]\nfamily.x = a b=ifInOctets c=ifInErrors", 'one kind'];
        yield 'a family of none' => ["{$table}ifTable]\nfamily.x = a", 'VALUE=COLUMN'];
        yield 'the same name twice' => [
            self::HEAD . "[module a]\n[table a protocolDirTable]\ncolumns = protocolDirHostConfig\n"
                . "[table a protocolDirByIndex]\ncolumns = protocolDirHostConfig\n",
            'Two tables',
        ];
        yield 'no histogram' => ["{$table}artSummaryTable]\nhistogram = x artSummaryRsps artSummaryRsps", 'bounds'];
    }

    /** @dataProvider mistakes */
    #[DataProvider('mistakes')]
    public function testMistakesAreTold(string $text, string $expected): void
    {
        try {
            self::read($text);
        } catch (ConfigurationError $error) {
            self::assertStringContainsString($expected, $error->getMessage());
            return;
        }
        self::fail('It was taken.');
    }

    public function testTheUsualModulesAreRight(): void
    {
        $modules = Modules::usual();
        $modules->check();
        self::assertContains('default', array_keys($modules->titles()));
        self::assertNotContains('', $modules->titles());
        $sample = __DIR__ . '/../../packaging/prometheus/exporter.ini';
        Configuration::read($sample)->modules->check();
    }

    /** A module of the configuration stands in the place of one of the same name, as a whole. */
    public function testAModuleThatIsReplaced(): void
    {
        $read = self::read(self::HEAD . "[module interfaces]\n[table interfaces ifTable]\ncolumns = ifSpeed\n");
        $choice = $read->modules->find('interfaces')->tables['ifTable'];
        self::assertSame(['ifSpeed'], array_column($choice->columns, 'name'));
        self::assertSame([], $choice->info);
        self::assertSame(
            ['ifSpeed'],
            array_column($read->modules->find('default')->tables['ifTable']->columns, 'name'),
        );
    }

    public function testTheAgentsClockAsTimeOfDay(): void
    {
        // An hour after its start, and half a second behind that.
        $clock = new Clock(360000, 1700000000.4);
        self::assertSame([1699996400.0, 1700000000.5], [$clock->start, $clock->at(360050)]);
    }

    public function testNames(): void
    {
        $names = [
            'ifTable' => [
                'ifInOctets' => 'counter rmon_if_in_bytes bytes',
                'ifInNUcastPkts' => 'counter rmon_if_in_nonunicast_packets ',
                'ifSpeed' => 'gauge rmon_if_speed_bytes_per_second bytes_per_second',
                'ifLastChange' => 'gauge rmon_if_last_change_timestamp_seconds seconds',
                'ifOperStatus' => 'gauge rmon_if_oper_status ',
            ],
            'system' => ['sysUpTime' => 'gauge rmon_sys_up_time_seconds seconds'],
            'etherStatsTable' => [
                'etherStatsPkts' => 'counter rmon_ether_stats_packets ',
                'etherStatsCRCAlignErrors' => 'counter rmon_ether_stats_crc_align_errors ',
            ],
            'etherHistoryTable' => ['etherHistoryUtilization' => 'gauge rmon_ether_history_utilization_ratio ratio'],
            'dsmonStatsTable' => ['dsmonStatsInHCOctets' => 'counter rmon_dsmon_stats_in_bytes bytes'],
            'dsmonMatrixDSTable' => ['dsmonMatrixSDHCPkts' => 'counter rmon_dsmon_matrix_ds_packets '],
            'smonVlanIdStatsTable' => ['smonVlanIdStatsTotalPkts' => 'counter rmon_smon_vlan_id_stats_packets '],
            'artSummaryTable' => ['artSummaryMaxRspTime' => 'gauge rmon_art_max_response_time_seconds seconds'],
            'protocolDistOthers' => ['octets' => 'counter rmon_protocol_dist_others_bytes bytes'],
            'ndeLearnedDeviceTable' => ['numNdePkts' => 'counter rmon_nde_learned_device_num_nde_packets '],
        ];
        foreach ($names as $table => $columns) {
            foreach ($columns as $column => $expected) {
                $schema = Catalog::find($table);
                $family = Names::family($schema, $schema->column($column));
                self::assertSame($expected, "{$family->type->value} $family->name $family->unit");
            }
        }
        $schema = Catalog::find('ifTable');
        self::assertSame(
            'ifInOctets (RFC 1213), in bytes. The table: interfaces, their states and counters.',
            Names::family($schema, $schema->column('ifInOctets'))->help,
        );
        self::assertSame(0.25, Names::scaled($schema->column('ifSpeed'), 2));
        $schema = Catalog::find('artSummaryTable');
        self::assertSame(0.123, Names::scaled($schema->column('artSummaryMaxRspTime'), 123));
    }

    /** Every number of every table has a name, which two of them have only where they are the same object. */
    public function testEveryColumnHasAName(): void
    {
        $names = [];
        foreach (Catalog::all() as $schema) {
            foreach ($schema->columns as $column) {
                if (Names::isMeasured($column)) {
                    $name = Names::family($schema, $column)->name;
                    $names[$name][$column->object ?? "$schema->name $column->name"] = true;
                }
            }
        }
        self::assertGreaterThan(300, count($names));
        self::assertSame([], array_filter($names, static fn(array $of) => count($of) > 1));
    }
}
