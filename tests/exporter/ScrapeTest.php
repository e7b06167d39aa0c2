<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Exporter\Request;
use Step;

/** Targets that answer, that don't, and that may not be asked. */
final class ScrapeTest extends ExporterTestCase
{
    private const LOCAL = "[exporter]\nnetworks = 127.0.0.0/8\nports = 1-65535\n";

    /** A frame of 100 octets from each host, which is 104 with its check sum. */
    private static function frames(int ...$hosts): array
    {
        $frames = [];
        foreach ($hosts as $host) {
            $packet = \ip4("10.0.0.$host", '10.0.9.9', 17, \udp(40000, 53, str_repeat('x', 58)));
            $frames[] = [1.0, \ethernet(\mac(9), \mac($host), 0x0800, $packet)];
        }
        return $frames;
    }

    /** What an agent says of itself, a second after its start. */
    private static function system(string $name): Step
    {
        return \reply(\record(
            sysDescr: \text($name),
            sysUpTime: \u32(100),
            sysContact: \text($name),
            sysName: \text($name),
            sysLocation: \text(''),
            sysObjectID: \text('1.3'),
            sysServices: \i32(72),
        ));
    }

    /** Counters that begin anew are told from others by when they began. */
    public function testAnAgentThatWasRestarted(): void
    {
        $agent = $this->playing(self::frames(1, 2, 3));
        $this->read($agent);
        $before = $this->scraped($agent, 'ethernet');
        $labels = (string) array_key_first($before->of('rmon_ether_stats_bytes_total'));
        self::assertSame(312.0, $before->value('rmon_ether_stats_bytes_total', $labels));
        // Another second of the clock than the one in which it began.
        $began = $before->value('rmon_ether_stats_bytes_created', $labels);
        self::assertEqualsWithDelta(microtime(true), $began, 60);
        $this->kill($agent);
        self::assertTrue(\wait_until(static fn() => microtime(true) > $began + 2));
        $again = $this->playing(self::frames(1), '--port', (string) $agent->port);
        $this->read($again);
        $after = $this->scraped($again, 'ethernet');
        $labels = (string) array_key_first($after->of('rmon_ether_stats_bytes_total'));
        self::assertSame(104.0, $after->value('rmon_ether_stats_bytes_total', $labels));
        self::assertGreaterThan($began, $after->value('rmon_ether_stats_bytes_created', $labels));
        self::assertSame(1.0, $after->value('rmon_scrape_success'));
    }

    public function testATargetThatIsNotThere(): void
    {
        $begun = hrtime(true);
        $answer = $this->ask($this->exporter(), '127.0.0.1:' . \dead_port());
        self::assertLessThan(10, (hrtime(true) - $begun) / 1e9);
        self::assertSame(200, $answer->status);
        $scrape = new OpenText($answer->body);
        self::assertSame(0.0, $scrape->value('rmon_scrape_success'));
        self::assertSame(['reason="absent"' => 1.0], $scrape->of('rmon_scrape_failure_info'));
        self::assertSame([], array_filter(
            array_keys($scrape->samples),
            static fn(string $name) => !str_starts_with($name, 'rmon_scrape_'),
        ));
        self::assertCount(1, $this->log);
    }

    /** The module itself would wait for 25 seconds. */
    public function testATargetThatTakesCallsAndDoesNotAnswer(): void
    {
        $server = stream_socket_server('tcp://127.0.0.1:0');
        $place = stream_socket_get_name($server, false);
        $begun = hrtime(true);
        $scrape = new OpenText($this->ask($this->exporter(), $place)->body);
        self::assertSame(0.0, $scrape->value('rmon_scrape_success'));
        self::assertGreaterThan(0.9, $scrape->value('rmon_scrape_duration_seconds'));
        self::assertLessThan(15, (hrtime(true) - $begun) / 1e9);
        fclose($server);
    }

    /** It answers each call, slowly: the scrape ends when its time is up, between two tables. */
    public function testATargetThatIsSlow(): void
    {
        $agent = $this->scripted(\reply(''), \late(2.1, self::system('slow')), \always(\hang_up()));
        $exporter = $this->exporter();
        $server = self::OPEN + ['HTTP_X_PROMETHEUS_SCRAPE_TIMEOUT_SECONDS' => '2.5'];
        $scrape = new OpenText($this->ask($exporter, $agent, 'default', $server)->body);
        self::assertSame(0.0, $scrape->value('rmon_scrape_success'));
        self::assertSame(['reason="time"' => 1.0], $scrape->of('rmon_scrape_failure_info'));
        self::assertCount(2, $agent->calls(2), 'nothing is asked behind the end');
    }

    /** It hangs in a call: the scrape ends when its time is up, not the module's, and tells what it has. */
    public function testATargetThatHangsInACall(): void
    {
        $agent = $this->scripted(\reply(''), self::system('a'), self::system('a'), \always(\no_answer()));
        $server = self::OPEN + ['HTTP_X_PROMETHEUS_SCRAPE_TIMEOUT_SECONDS' => '4.5'];
        $scrape = new OpenText($this->ask($this->exporter(), $agent, 'default', $server)->body);
        self::assertSame(0.0, $scrape->value('rmon_scrape_success'));
        self::assertSame(['reason="time"' => 1.0], $scrape->of('rmon_scrape_failure_info'));
        self::assertGreaterThanOrEqual(3.9, $scrape->value('rmon_scrape_duration_seconds'));
        // On a busy machine too: less than the 25 seconds of the module.
        self::assertLessThan(20.0, $scrape->value('rmon_scrape_duration_seconds'));
        self::assertCount(1, $scrape->of('rmon_system_info'));
        self::assertFalse(getenv('RMONRPC_TIMEOUT'));
    }

    /** A table that an agent doesn't have: the others are there, and the scrape says that one is missing. */
    public function testATableThatIsRefused(): void
    {
        $agent = $this->scripted(
            \reply(''),
            self::system('new'),
            \always(\proc_unavail()),
        );
        $scrape = new OpenText($this->ask($this->exporter(self::LOCAL), $agent, 'ethernet')->body);
        self::assertSame([1.0, 1.0], [
            $scrape->value('rmon_scrape_success'), $scrape->value('rmon_scrape_refusals'),
        ]);
        self::assertStringContainsString('etherStatsTable', implode($this->log));
    }

    /** @return iterable<string, array{string, int}> */
    public static function refusedTargets(): iterable
    {
        yield 'another network' => ['10.0.0.1', 403];
        yield 'another port' => ['127.0.0.1:22', 403];
        yield 'port 0' => ['127.0.0.1:0', 403];
        yield 'a large port' => ['127.0.0.1:99999', 403];
        yield 'a name' => ['localhost', 403];
        yield 'an address in one number' => ['2130706433', 403];
        yield 'an address in octal' => ['0177.0.0.1', 403];
        yield 'a short address' => ['127.1', 403];
        yield 'in hexadecimal' => ['0x7f000001', 403];
        yield 'nothing' => ['', 400];
        yield 'a port alone' => [':9911', 400];
        yield 'two ports' => ['127.0.0.1:9911:22', 400];
        yield 'a path' => ['127.0.0.1:9911/x', 400];
        yield 'a URL' => ['http://127.0.0.1', 400];
        yield 'a user' => ['a@127.0.0.1', 400];
        yield 'IPv6' => ['[::1]:9911', 400];
        yield 'a line break' => ["127.0.0.1\n", 400];
        yield 'a zero octet' => ["127.0.0.1\0.example.net", 400];
        yield 'two' => ['127.0.0.1 127.0.0.2', 400];
        yield 'very long' => [str_repeat('1', 301), 400];
    }

    /** @dataProvider refusedTargets */
    #[DataProvider('refusedTargets')]
    public function testTargetsThatMayNotBeAsked(string $target, int $status): void
    {
        $exporter = $this->exporter("[exporter]\nnetworks = 127.0.0.0/8 192.168.7.0/24\n");
        $answer = $this->ask($exporter, $target);
        self::assertSame($status, $answer->status);
        self::assertStringNotContainsString('rmon_scrape', $answer->body);
        self::assertStringContainsString('text/plain', $answer->headers['Content-Type']);
    }

    public function testAPortThatIsNotPermittedIsNotKnockedAt(): void
    {
        $agent = $this->scripted(\always(\hang_up()));
        $other = $agent->port === 1024 ? 1025 : 1024;
        $exporter = $this->exporter("[exporter]\nnetworks = 127.0.0.0/8\nports = $other\n");
        self::assertSame(403, $this->ask($exporter, $agent)->status);
        self::assertSame(0, $agent->connections());
    }

    /** @return iterable<string, array{string, int}> */
    public static function links(): iterable
    {
        yield 'kept' => ['on', 1];
        yield 'not kept' => ['off', 0];
    }

    /** @dataProvider links */
    #[DataProvider('links')]
    public function testLinksAreKeptOrNot(string $keep, int $open): void
    {
        $agent = $this->scripted(\always(self::system('x')));
        $exporter = $this->exporter(self::LOCAL . "keep_links = $keep\n[module none]\ntitle = nothing");
        for ($scrape = 0; $scrape < 3; $scrape++) {
            self::assertStringContainsString('rmon_scrape_success 1', $this->ask($exporter, $agent, 'none')->body);
        }
        $agent->wait_open_connections($open);
        self::assertSame($open, $agent->open_connections());
    }

    /** A name is looked up once, and what it stands for has to be permitted too. */
    public function testNamesWhereTheyArePermitted(): void
    {
        $agent = $this->bundled();
        $settings = "ports = 1-65535\nnames = on\n";
        $here = $this->exporter("[exporter]\nnetworks = 127.0.0.0/8\n$settings");
        $elsewhere = $this->exporter("[exporter]\nnetworks = 10.0.0.0/8\n$settings");
        $name = gethostbyname('localhost') === '127.0.0.1' ? 'localhost' : '127.0.0.1';
        $scrape = new OpenText($this->ask($here, "$name:$agent->port", 'system')->body);
        self::assertSame(1.0, $scrape->value('rmon_scrape_success'));
        self::assertSame(403, $this->ask($elsewhere, "$name:$agent->port")->status);
        self::assertSame(403, $this->ask($here, "no-such-host.invalid:$agent->port")->status);
    }

    public function testOtherRequests(): void
    {
        $exporter = $this->exporter();
        $ask = static fn(string $path, array $query = [], string $method = 'GET') => $exporter->answer(
            new Request($method, $path, $query, self::OPEN),
        );
        self::assertSame(404, $ask('/metric')->status);
        self::assertSame(404, $ask('/metrics/')->status);
        self::assertSame(404, $ask('/metrics', ['target' => '127.0.0.1', 'module' => '../modules'])->status);
        self::assertSame(404, $ask('/metrics', ['target' => '127.0.0.1', 'module' => ''])->status);
        self::assertSame(400, $ask('/metrics', ['target' => ['127.0.0.1']])->status);
        self::assertSame(400, $ask('/metrics', ['target' => '127.0.0.1', 'module' => ['x']])->status);
        $posted = $ask('/metrics', ['target' => '127.0.0.1'], 'POST');
        self::assertSame([405, 'GET, HEAD'], [$posted->status, $posted->headers['Allow']]);
        self::assertSame([200, 200], [$ask('/')->status, $ask('/', [], 'HEAD')->status]);
        $own = new OpenText($ask('/metrics')->body);
        self::assertSame(
            ['version="' . phpversion('rmon') . '",php="' . PHP_VERSION . '"' => 1.0],
            $own->of('rmon_exporter_info'),
        );
    }

    /** Whatever an agent calls itself, the form holds, and the text comes back as it was or as nothing that was said. */
    public function testHostileTexts(): void
    {
        mt_srand(21);
        $texts = [
            "\"} 1\nrmon_scrape_success 1\n# EOF\n", '\\', '\\"', "\\\n", '"', '{}', "# EOF", "\xff\xfe", "a\0b",
            "\u{2028}", "x\r\ny", str_repeat('"', 200), str_repeat("\xc3", 200), '',
        ];
        for ($round = 0; $round < 100; $round++) {
            $alphabet = ['"', '\\', "\n", "\r", '{', '}', '=', ',', '#', ' ', "\xc3", "\xbc", "\xe2", 'a', '1', "\t"];
            $text = '';
            for ($length = mt_rand(0, 60); $length > 0; $length--) {
                $text .= mt_rand(0, 3) > 0 ? $alphabet[mt_rand(0, 15)] : chr(mt_rand(1, 255));
            }
            $texts[] = $text;
        }
        $steps = [];
        foreach ($texts as $text) {
            // A link that is there already is asked whether it works.
            array_push($steps, \reply(''), ...($steps === [] ? [] : [\reply('')]));
            array_push($steps, self::system(''), self::system($text));
        }
        $agent = $this->scripted(...$steps);
        $exporter = $this->exporter();
        foreach ($texts as $text) {
            $answer = $this->ask($exporter, $agent, 'system');
            $scrape = new OpenText($answer->body);
            self::assertCount(1, $scrape->of('rmon_system_info'), bin2hex($text) . implode($this->log));
            self::assertSame(1.0, $scrape->value('rmon_scrape_success'));
            if (preg_match('/^[\x20-\x7e]{0,200}$/D', $text)) {
                $label = key($scrape->of('rmon_system_info'));
                preg_match('/^name="((?:[^"\\\\]|\\\\.)*)",/', $label, $name);
                self::assertSame($text, strtr($name[1], ['\\\\' => '\\', '\\"' => '"', '\\n' => "\n"]));
            }
        }
    }

    /** More series than the module may have: the rows that found no room are counted. */
    public function testTheLimitOfSeries(): void
    {
        $agent = $this->playing(self::frames(1, 2, 3, 4, 5));
        $this->probe($agent)->table('hlHostControlTable')
            ->create(hlHostControlIndex: 1, hlHostControlDataSource: 1, hlHostControlOwner: 'test');
        $this->read($agent);
        $scrape = $this->scraped($agent, 'few', self::LOCAL . <<<'END'
            [module few]
            series = 7
            created = off
            [table few nlHostTable]
            columns = nlHostOutOctets nlHostInOctets
            labels = nlHostAddress:address
            END);
        // Six hosts of two series each.
        self::assertCount(3, $scrape->of('rmon_nl_host_out_bytes_total'));
        self::assertCount(3, $scrape->of('rmon_nl_host_in_bytes_total'));
        self::assertSame([], $scrape->of('rmon_nl_host_in_bytes_created'));
        self::assertSame(
            ['table="nlHostTable",reason="series"' => 3.0],
            $scrape->of('rmon_scrape_left_out_rows'),
        );
        self::assertSame(1.0, $scrape->value('rmon_scrape_success'));
    }

    /** Rows whose labels don't tell them apart would make the whole scrape worthless. */
    public function testRowsWithTheSameLabels(): void
    {
        $agent = $this->playing(self::frames(1, 2, 3, 4, 5));
        $this->probe($agent)->table('hlHostControlTable')
            ->create(hlHostControlIndex: 1, hlHostControlDataSource: 1, hlHostControlOwner: 'test');
        $this->read($agent);
        $scrape = $this->scraped($agent, 'blurred', self::LOCAL . <<<'END'
            [module blurred]
            [table blurred nlHostTable]
            columns = nlHostOutPkts
            by = nlHostOutPkts
            END);
        self::assertSame([1.0], array_values($scrape->of('rmon_nl_host_out_packets_total')));
        self::assertSame(
            ['table="nlHostTable",reason="duplicate"' => 5.0],
            $scrape->of('rmon_scrape_left_out_rows'),
        );
    }

    /** Two control rows of an interface count the same: handed out once, from the first, and without a second series. */
    public function testTwoRowsOfOneInterface(): void
    {
        $agent = $this->playing(self::frames(1, 2));
        $table = $this->probe($agent)->table('protocolDistControlTable');
        foreach ([4, 7] as $index) {
            $table->create(
                protocolDistControlIndex: $index,
                protocolDistControlDataSource: 1,
                protocolDistControlOwner: 'test',
            );
        }
        $this->read($agent);
        $scrape = $this->scraped($agent, 'protocols');
        $packets = $scrape->of('rmon_protocol_dist_stats_packets_total');
        self::assertCount(1, preg_grep('/protocol="ip"$/', array_keys($packets)));
        $labels = current(preg_grep('/protocol="ip"$/', array_keys($packets)));
        self::assertSame(2.0, $packets[$labels]);
        self::assertSame([], $scrape->of('rmon_scrape_left_out_rows'), 'that is no loss');
        // The other one takes its place, under the same labels.
        $table->delete(protocolDistControlIndex: 4);
        $after = $this->scraped($agent, 'protocols');
        self::assertSame(2.0, $after->value('rmon_protocol_dist_stats_packets_total', $labels));
    }
}
