<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use BundledAgent;
use Rmon\Exporter\Request;
use Rmon\Tests\Demo;

/**
 * The modules over an agent that plays the capture of script/server --demo: what its generator knows of the capture is
 * what a scrape says. Where it knows nothing, the module's own functions are asked.
 */
final class DemoScrapeTest extends ExporterTestCase
{
    private static string $directory;

    /** @var array<string, mixed> */
    private static array $known;

    private static BundledAgent $agent;

    public static function setUpBeforeClass(): void
    {
        self::$directory = sys_get_temp_dir() . '/rmon-exporter-' . getmypid();
        mkdir(self::$directory);
        Demo::capture(self::$directory);
        $known = (string) file_get_contents(self::$directory . '/known.json');
        self::$known = json_decode($known, true, 512, JSON_THROW_ON_ERROR);
        $scenario = realpath(__DIR__ . '/../../agent/voice.ini');
        // Names of files are names of interfaces.
        $before = getcwd();
        chdir(self::$directory);
        self::$agent = \reading_agent(['office', 'wan'], '--voice', $scenario, '--netflow', '0');
        chdir($before);
        Demo::rows(self::$agent);
        \read_files(self::$agent, 2);
    }

    public static function tearDownAfterClass(): void
    {
        proc_terminate(self::$agent->process, 9);
        proc_close(self::$agent->process);
        array_map(unlink(...), glob(self::$directory . '/*') ?: []);
        rmdir(self::$directory);
    }

    public function testFrames(): void
    {
        $scrape = $this->scraped(self::$agent, 'ethernet');
        foreach (['office', 'wan'] as $name) {
            $known = self::$known[$name];
            $of = "interface=\"$name\"";
            self::assertEquals($known['octets'], $scrape->value('rmon_ether_stats_bytes_total', $of));
            self::assertEquals($known['frames'], $scrape->value('rmon_ether_stats_packets_total', $of));
            self::assertEquals($known['broadcast'], $scrape->value('rmon_ether_stats_broadcast_packets_total', $of));
            self::assertEquals($known['multicast'], $scrape->value('rmon_ether_stats_multicast_packets_total', $of));
            $sizes = ['64', '65-127', '128-255', '256-511', '512-1023', '1024-1518'];
            self::assertEquals(array_values($known['sizes']), array_map(
                static fn(string $size) => $scrape->value('rmon_ether_stats_size_packets_total', "$of,size=\"$size\""),
                $sizes,
            ));
            foreach (['undersize', 'oversize'] as $error) {
                self::assertEquals(
                    $known[$error],
                    $scrape->value('rmon_ether_stats_error_packets_total', "$of,error=\"$error\""),
                );
            }
        }
        self::assertSame(['counter', 'bytes'], [
            $scrape->families['rmon_ether_stats_bytes']['type'],
            $scrape->families['rmon_ether_stats_bytes']['unit'],
        ]);
    }

    public function testProtocols(): void
    {
        $expected = [];
        foreach (['office', 'wan'] as $name) {
            foreach (self::$known[$name]['protocols'] as $path => $row) {
                $expected["interface=\"$name\",protocol=\"$path\""] = $row['octets'];
            }
        }
        $shown = $this->scraped(self::$agent, 'protocols')->of('rmon_protocol_dist_stats_bytes_total');
        self::assertSameValues($expected, $shown);
    }

    /** Those that sent most of each interface, and how many more there are. */
    public function testHostsUpToTheLimit(): void
    {
        $scrape = $this->scraped(self::$agent, 'hosts', <<<'END'
            [exporter]
            networks = 127.0.0.0/8
            ports = 1-65535
            [module hosts]
            [table hosts nlHostTable]
            columns = nlHostOutOctets
            labels = nlHostAddress:address
            limit = 4
            by = nlHostOutOctets
            END);
        $expected = [];
        $more = 0;
        foreach (['office', 'wan'] as $name) {
            $octets = array_column(self::$known[$name]['hosts'], 'outoctets');
            $addresses = array_keys(self::$known[$name]['hosts']);
            array_multisort($octets, SORT_DESC, $addresses);
            for ($place = 0; $place < 4; $place++) {
                $expected["interface=\"$name\",address=\"$addresses[$place]\""] = $octets[$place];
            }
            $more += count($octets) - 4;
        }
        self::assertSameValues($expected, $scrape->of('rmon_nl_host_out_bytes_total'));
        self::assertEquals(
            $more,
            $scrape->value('rmon_scrape_left_out_rows', 'table="nlHostTable",reason="limit"'),
        );
        self::assertEquals($more + 8, $scrape->value('rmon_scrape_rows', 'table="nlHostTable"'));
        self::assertSame([], $scrape->of('rmon_nl_host_in_bytes_total'));
    }

    public function testConversationsClassesAndVlans(): void
    {
        $scrape = $this->scraped(self::$agent, 'all');
        $known = self::$known['office'];
        $conversations = array_filter(
            $scrape->of('rmon_nl_matrix_sd_bytes_total'),
            static fn(string $labels) => str_contains($labels, '"office"'),
            ARRAY_FILTER_USE_KEY,
        );
        self::assertCount(50, $conversations);
        foreach ($conversations as $labels => $octets) {
            preg_match('/source="(.*)",destination="(.*)"/', $labels, $ends);
            self::assertEquals($known['conversations']["$ends[1] $ends[2]"]['octets'], $octets, $labels);
        }
        foreach ($known['vlans'] as $vlan => $row) {
            $labels = "interface=\"office\",vlan=\"$vlan\"";
            self::assertEquals($row['octets'], $scrape->value('rmon_smon_vlan_id_stats_bytes_total', $labels));
            self::assertEquals($row['pkts'], $scrape->value('rmon_smon_vlan_id_stats_packets_total', $labels));
        }
        foreach ($known['priorities'] as $priority => $row) {
            $labels = "interface=\"office\",priority=\"$priority\"";
            self::assertEquals($row['octets'], $scrape->value('rmon_smon_prio_stats_bytes_total', $labels));
        }
        // The profile with a group for each value; the other one has names for its groups.
        $profile = 2;
        foreach ($known['dscps'] as $group => $row) {
            $labels = "interface=\"office\",profile=\"$profile\",group=\"$group\"";
            self::assertEquals($row['octets'], $scrape->value('rmon_dsmon_stats_in_bytes_total', $labels), $labels);
        }
        $described = 'profile="1",group="4",description="voice"';
        self::assertSame(1.0, $scrape->value('rmon_dsmon_agg_group_info', $described));
    }

    /** The buckets of each server are those that the module's own functions give, summed up from below. */
    public function testResponseTimes(): void
    {
        $scrape = $this->scraped(self::$agent, 'response_times');
        $link = $this->probe(self::$agent)->link->resource();
        $rows = rmon_art_sum_getbulk($link, 0, 0, [], 1000);
        $paths = $this->probe(self::$agent)->protocols()->paths();
        $names = [1 => 'office', 2 => 'wan'];
        self::assertGreaterThan(5, count($rows));
        $responses = 0;
        foreach ($rows as $row) {
            $labels = sprintf(
                'interface="%s",server="%s",protocol="%s"',
                $names[$row['artControlIndex']],
                inet_ntop(pack('C*', ...$row['artSummaryServerAddress'])),
                $paths[$row['protocolDirLocalIndex']],
            );
            $sum = 0;
            foreach (['0.01', '0.02', '0.05', '0.1', '0.2', '0.5', '+Inf'] as $place => $bound) {
                $sum += $row['artSummaryRsps' . $place + 1];
                $sample = $scrape->value('rmon_art_response_time_seconds_bucket', "$labels,le=\"$bound\"");
                self::assertSame((float) $sum, $sample, "$labels $bound");
            }
            self::assertEquals($row['artSummaryTotalResponses'], $sum);
            self::assertEquals($row['artSummaryTimeouts'], $scrape->value('rmon_art_timeouts_total', $labels));
            $slowest = $scrape->value('rmon_art_max_response_time_seconds', $labels);
            self::assertEqualsWithDelta($row['artSummaryMaxRspTime'] / 1000, $slowest, 1e-12);
            $mean = $scrape->value('rmon_art_avg_response_time_seconds', $labels);
            self::assertEqualsWithDelta($row['artSummaryAvgRspTime'] / 1000, $mean, 1e-12);
            $responses += $sum;
        }
        $known = 0;
        foreach ($names as $name) {
            $known += array_sum(array_column(self::$known[$name]['responses'], 'responses'));
        }
        self::assertSame($known, $responses);
        self::assertSame('histogram', $scrape->families['rmon_art_response_time_seconds']['type']);
    }

    public function testVoice(): void
    {
        $scrape = $this->scraped(self::$agent, 'voice');
        $link = $this->probe(self::$agent)->link->resource();
        foreach (['sccp', 'h323', 'mgcp'] as $monitor) {
            $page = "{$monitor}_call_rec_getbulk";
            $calls = $page($link, 0, 100)['call_rec'];
            $states = $scrape->of('rmon_voice_calls');
            $of = "monitor=\"$monitor\"";
            self::assertEquals(
                count($calls),
                $states["$of,state=\"running\""] + $states["$of,state=\"ended\""],
                $monitor,
            );
            $qualities = array_filter(
                $scrape->of('rmon_voice_calls_by_quality'),
                static fn(string $labels) => str_starts_with($labels, $of),
                ARRAY_FILTER_USE_KEY,
            );
            self::assertCount(7, $qualities);
            self::assertEquals(count($calls), array_sum($qualities));
        }
    }

    public function testTheAgentItself(): void
    {
        $scrape = $this->scraped(self::$agent, 'agent');
        $row = rmon_hlhost_ctl_get($this->probe(self::$agent)->link->resource(), 1);
        self::assertGreaterThan(20, $row['hlHostControlNlInserts']);
        $labels = 'interface="office",row="1"';
        self::assertEquals(
            $row['hlHostControlNlInserts'],
            $scrape->value('rmon_hl_host_control_nl_inserts_total', $labels),
        );
        self::assertNotNull($scrape->value('rmon_address_map_inserts_total'));
        $info = $this->scraped(self::$agent, 'system')->of('rmon_system_info');
        self::assertStringStartsWith('name="demo",', (string) array_key_first($info));
        $devices = $this->scraped(self::$agent, 'netflow')->of('rmon_nde_device_info');
        self::assertSame(1.0, $devices['address="127.0.0.2",name="router of the office"']);
    }

    /** Rows began when they say so, or their control row, or else with the agent. */
    public function testWhenCountersBegan(): void
    {
        $scrape = $this->scraped(self::$agent, 'all');
        $start = $scrape->value('rmon_if_in_bytes_created', 'interface="wan"');
        $link = $this->probe(self::$agent)->link->resource();
        $control = rmon_pdist_ctl_get($link, 2)['protocolDistControlCreateTime'];
        self::assertGreaterThan(0, $control);
        $labels = 'interface="wan",protocol="ip"';
        $began = $scrape->value('rmon_protocol_dist_stats_bytes_created', $labels);
        self::assertEqualsWithDelta($start + $control / 100, $began, 0.001);
        $report = rmon_art_ctl_get($link, 2)['artControlRptStartTime'];
        $times = array_filter(
            $scrape->of('rmon_art_response_time_seconds_created'),
            static fn(string $labels) => str_contains($labels, '"wan"'),
            ARRAY_FILTER_USE_KEY,
        );
        self::assertEqualsWithDelta($start + $report / 100, current($times), 0.001);
        $hosts = rmon_nlhost_getbulk($link, 2, 0, 0, [], 1);
        $labels = sprintf('interface="wan",address="%s"', implode('.', $hosts[0]['nlHostAddress']));
        $began = $scrape->value('rmon_nl_host_in_bytes_created', $labels);
        self::assertGreaterThan($control, $hosts[0]['nlHostCreateTime']);
        self::assertEqualsWithDelta($start + $hosts[0]['nlHostCreateTime'] / 100, $began, 0.001);
    }

    /** No row that a module reads is refused by this agent, and nothing is left out but by limits. */
    public function testAllModules(): void
    {
        $exporter = $this->exporter();
        $page = $exporter->answer(new Request('GET', '/'))->body;
        preg_match_all('/^  (\w+) /m', $page, $names);
        self::assertCount(15, $names[1]);
        foreach ($names[1] as $name) {
            $scrape = $this->scraped(self::$agent, $name);
            self::assertSame([1.0, 0.0], [
                $scrape->value('rmon_scrape_success'), $scrape->value('rmon_scrape_refusals'),
            ], $name);
            foreach (array_keys($scrape->of('rmon_scrape_left_out_rows')) as $labels) {
                self::assertStringEndsWith('reason="limit"', $labels, $name);
            }
            // The older form has the same samples, and the times of creation as families of their own.
            $plain = $this->ask($exporter, self::$agent, $name, [])->body;
            self::assertSame(
                count($scrape->samples),
                count(preg_grep('/^[a-z]/', explode("\n", $plain))),
                $name,
            );
        }
        self::assertSame([], $this->log);
    }

    /**
     * @param array<string, int|float> $expected
     * @param array<string, float> $shown
     */
    private static function assertSameValues(array $expected, array $shown): void
    {
        ksort($expected);
        ksort($shown);
        self::assertEquals($expected, $shown);
    }
}
