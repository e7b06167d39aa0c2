<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use Rmon\ControlRows;
use Rmon\History\Sample;
use Rmon\History\Series;
use Rmon\Voice\EModel;

/** History, alarms, response times, voice and NetFlow: what the pages say of what the agent measured. */
final class MeasuredPagesTest extends ConsoleTestCase
{
    /** A request and its answer, so many milliseconds later, over one connection. */
    private static function exchange(float $at, string $client, string $server, int $milliseconds): array
    {
        $frame = static fn(string $from, string $to, string $segment) =>
            \ethernet(\mac(2), \mac(1), 0x0800, \ip4($from, $to, 6, $segment));
        return [
            [$at, $frame($client, $server, \tcp(40000, 80, 2, '', 1000))],
            [$at, $frame($server, $client, \tcp(80, 40000, 18, '', 5000))],
            [$at, $frame($client, $server, \tcp(40000, 80, 24, 'GET /', 1001))],
            [$at + $milliseconds / 1000, $frame($server, $client, \tcp(80, 40000, 24, 'answer', 5001))],
        ];
    }

    private static function data(Answer $page, string $id): array
    {
        $text = $page->attribute("//*[@id='$id']//canvas", 'data-chart');
        self::assertNotNull($text, "$id is drawn");
        return json_decode($text, true, 64, JSON_THROW_ON_ERROR);
    }

    public function testResponseTimes(): void
    {
        $agent = $this->playing([
            ...self::exchange(1.0, '10.0.0.1', '10.0.0.9', 40),
            ...self::exchange(3.0, '10.0.0.2', '10.0.0.9', 60),
            ...self::exchange(5.0, '10.0.0.1', '10.0.0.8', 300),
        ]);
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/1/response-times';
        $empty = $console->get($path);
        self::assertStringContainsString('No response was seen', implode($empty->texts('//*[@id="answer"]')));
        $this->read($agent);
        $page = $console->get($path);
        self::assertSame(
            ['The slowest is 10.0.0.8 (www-http): it answers 1 client in 300 ms on average. '
                . 'All 3 responses took 133 ms on average.'],
            $page->texts('//*[@id="answer"]//p'),
        );
        self::assertSame([
            ['10.0.0.8', 'ip.tcp.www-http', '300 ms', '300 ms', '1', '100.0 %', '0', '0', '1'],
            ['10.0.0.9', 'ip.tcp.www-http', '50 ms', '60 ms', '2', '0.0 %', '0', '0', '2'],
        ], $page->table('servers'));
        self::assertSame([
            ['10.0.0.8', '10.0.0.1', 'ip.tcp.www-http', '300 ms', '300 ms', '300 ms', '1', '100.0 %', '0', '0'],
            ['10.0.0.9', '10.0.0.2', 'ip.tcp.www-http', '60 ms', '60 ms', '60 ms', '1', '0.0 %', '0', '0'],
            ['10.0.0.9', '10.0.0.1', 'ip.tcp.www-http', '40 ms', '40 ms', '40 ms', '1', '0.0 %', '0', '0'],
        ], $page->table('pairs'));
        $histogram = self::data($page, 'histogram');
        self::assertSame(
            ['to 10', '10 to 20', '20 to 50', '50 to 100', '100 to 200', '200 to 500', 'over 500'],
            $histogram['x'],
        );
        self::assertSame([
            ['name' => '10.0.0.9 (www-http)', 'values' => [0, 0, 1, 1, 0, 0, 0]],
            ['name' => '10.0.0.8 (www-http)', 'values' => [0, 0, 0, 0, 0, 1, 0]],
        ], $histogram['series']);
        self::assertSame('', $console->log());
    }

    public function testManyServers(): void
    {
        $frames = [];
        foreach (range(1, 9) as $server) {
            for ($more = $server; $more < 10; $more++) {
                array_push($frames, ...self::exchange(10 * $server + $more, "10.0.1.$more", "10.0.2.$server", 5));
            }
        }
        $agent = $this->playing($frames);
        $console = $this->console(['core1' => $agent]);
        $console->get('/probe/core1/1/response-times');
        $this->read($agent);
        $page = $console->get('/probe/core1/1/response-times');
        $values = array_column(self::data($page, 'histogram')['series'], 'values', 'name');
        // The busiest answered 9 times, the next one 8 times; the last two together 3 times.
        self::assertSame([9, 8, 7, 6, 5, 4, 3, 3], array_column($values, 0));
        self::assertSame('others', array_key_last($values));
        self::assertStringContainsString('All 45 responses', implode($page->texts('//*[@id="answer"]')));
    }

    public function testAReportOfSomebodyElseIsShownAndNotTouched(): void
    {
        $agent = $this->playing(self::exchange(1.0, '10.0.0.1', '10.0.0.9', 40));
        $table = $this->probe($agent)->table('artControlTable');
        $table->set(artControlIndex: 5, artControlDataSource: 1, artControlRspTime5: 150, artControlOwner: 'noc');
        $this->read($agent);
        $before = $table->get(artControlIndex: 5);
        $page = $this->console(['core1' => $agent])->get('/probe/core1/1/response-times');
        self::assertStringContainsString('artControlTable 5, of noc', implode($page->texts('//*[@id="report"]')));
        self::assertContains('Over 150 ms', $page->texts('//*[@id="servers"]//th'));
        self::assertSame($before['artControlRptStartTime'], $table->get(artControlIndex: 5)['artControlRptStartTime']);
        self::assertCount(1, self::listOf($table));
    }

    public function testHistory(): void
    {
        $packet = \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1, 2, str_repeat('x', 100)));
        $agent = $this->playing([[1.0, \ethernet(\mac(2), \mac(1), 0x0800, $packet)]]);
        $probe = $this->probe($agent);
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/1/history';
        $probe->withRows('test', function (ControlRows $rows) use ($agent, $probe, $console, $path): void {
            $control = $rows->history(1, 1, 40)->index;
            $samples = static fn() => count(self::listOf($probe->table('etherHistoryTable', control: $control)));
            \expect_soon(true, static fn() => $samples() >= 1, 'a sample of nothing');
            $this->read($agent);
            // Once another sample follows, it is known how long the one with the frame took.
            $isOver = static function () use ($probe, $control): bool {
                $rows = self::listOf($probe->table('etherHistoryTable', control: $control));
                $packets = array_column($rows, 'etherHistoryPkts');
                return array_sum($packets) == 1 && end($packets) == 0;
            };
            \expect_soon(true, $isOver, 'the frame in a sample');
            $page = $console->get("$path?every=1");
            self::assertSame(200, $page->status, $page->body);
            self::assertContains('1 s for 40 s', $page->texts('//*[@id="views"]//a[@aria-current]'));
            $traffic = self::data($page, 'traffic');
            $values = array_filter($traffic['series'][0]['values']);
            self::assertCount(1, $values);
            self::assertFalse($traffic['legend'], 'its title says what it is');
            self::assertTrue(self::data($page, 'packets')['legend']);
            // 142 octets and a check sequence of 4, in the time that the sample took.
            $series = Series::read($probe->table('etherHistoryTable', control: $control), 1, ['etherHistoryOctets']);
            $samples = array_filter(
                $series->samples,
                static fn(Sample $sample) => $sample->row['etherHistoryOctets'] > 0,
            );
            self::assertEqualsWithDelta(8 * 146 / reset($samples)->seconds(), reset($values), 0.001);
            self::assertStringContainsString('tells no speed', implode($page->texts('//*[@id="utilization"]')));
            self::assertSame([''], array_unique(array_column($page->table('samples'), 3)), 'nor in the table');
            self::assertStringContainsString('No error', implode($page->texts('//*[@id="errors"]')));
            self::assertSame('146 B', implode($page->texts('//*[@id="about"]//dd[preceding-sibling::dt="Carried"]')));
            self::assertStringNotContainsString('<!DOCTYPE', $console->get("$path?every=1&part=packets")->body);
        });
        self::assertSame('', $console->log());
    }

    public function testAPartOfTheHistory(): void
    {
        $agent = $this->playing([]);
        $probe = $this->probe($agent);
        $console = $this->console(['core1' => $agent]);
        $path = '/probe/core1/1/history?every=1';
        $probe->withRows('test', function (ControlRows $rows) use ($probe, $console, $path): void {
            $control = $rows->history(1, 1, 40)->index;
            $count = static fn() => count(self::listOf($probe->table('etherHistoryTable', control: $control)));
            \expect_soon(true, static fn() => $count() >= 3, 'samples');
            $now = time();
            // Until the reading, whenever that is: there is nothing later.
            $page = $console->get("$path&from=" . $now - 100 . '&to=' . $now + 3600);
            $traffic = self::data($page, 'traffic');
            self::assertEqualsWithDelta($now - 100, $traffic['x'][0], 0.01, 'what was asked for is seen as a whole');
            self::assertNull($traffic['series'][0]['values'][0], 'nothing was sampled then');
            $links = array_map('trim', $page->texts('//*[@id="views"]//a'));
            self::assertContains('zoom out', $links);
            self::assertNotContains('later', $links);
            $none = $console->get("$path&from=" . $now - 5000 . '&to=' . $now - 4000);
            self::assertStringContainsString('No sample was taken', implode($none->texts('//*[@id="traffic"]')));
            foreach (['from=x&to=[]', 'last=-1', "from=$now&to=1", 'every=7'] as $odd) {
                self::assertSame(200, $console->get("/probe/core1/1/history?$odd")->status, $odd);
            }
        });
        self::assertSame('', $console->log());
    }

    public function testAlarms(): void
    {
        $frame = \ethernet(\mac(2), \mac(1), 0x0800, \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1, 2, 'x')));
        $agent = $this->playing(array_fill(0, 4, [1.0, $frame]));
        $probe = $this->probe($agent);
        $name = $probe->interfaces()->name(1);
        $console = $this->console(['core1' => $agent]);
        $none = $console->get('/probe/core1/alarms');
        self::assertSame(['No alarm is set on this probe.'], $none->texts('//*[@id="answer"]//p'));
        $probe->table('eventTable')->set(eventIndex: 3, eventDescription: 'busy');
        $probe->table('alarmTable')->set(
            alarmIndex: 7,
            alarmVariable: 'etherStatsPkts.1',
            alarmInterval: 1,
            alarmSampleType: 'absoluteValue',
            alarmRisingThreshold: 3,
            alarmRisingEventIndex: 3,
            alarmOwner: 'noc',
        );
        $this->read($agent);
        \expect_soon(1, static fn() => count(self::listOf($probe->table('logTable'))), 'an entry of the log');
        $page = $console->get('/probe/core1/alarms');
        $words = implode($page->texts('//*[@id="answer"]//p'));
        $start = "etherStatsPkts of $name is high: rose to 4 packets over 3, ";
        self::assertStringStartsWith($start, $words);
        self::assertMatchesRegularExpression('/^\d+ (s|min) ago\.$/D', substr($words, strlen($start)));
        [$row] = $page->table('alarms');
        self::assertSame(['7', "etherStatsPkts of $name", "\u{25b2} high"], array_slice($row, 0, 3));
        self::assertSame(['4', '0', '3', 'packets every 1 s'], array_slice($row, 3, 4));
        self::assertSame('noc', $row[8]);
        [$entry] = $page->table('log');
        self::assertSame(
            ["etherStatsPkts of $name rose to 4 packets, threshold 3", '3: busy', '1'],
            array_slice($entry, 1),
        );
        $overview = $console->get('/probe/core1');
        self::assertStringStartsWith($start, $overview->texts('//*[@id="answer"]//p[@class="warning"]')[0]);
        self::assertMatchesRegularExpression(
            '/^Logged last: ' . preg_quote("etherStatsPkts of $name rose", '/')
                . ' to 4 packets, threshold 3, \d+ (s|min) ago\.$/D',
            $overview->texts('//*[@id="answer"]//p')[2],
        );
        self::assertSame("etherStatsPkts of $name rose to 4 packets, threshold 3", $overview->table('lately')[0][1]);
        self::assertSame('', $console->log());
    }

    public function testVoice(): void
    {
        $scenario = \file_of(<<<'INI'
            [sccp phone one]
            address = 10.0.0.1
            number = 1001
            owner = <script>alert(1)</script>
            [sccp phone two]
            address = 10.0.0.2
            number = 1002
            owner = Two
            [sccp call]
            caller = one
            callee = two
            after = 1
            duration = 1
            payload_type = 4
            pkt_recv = 98
            pkt_lost = 2
            jitter = 10
            latency = 30
            callee_payload_type = 12
            callee_pkt_recv = 100
            callee_latency = 20
            INI);
        $agent = $this->bundled('--voice', $scenario);
        $probe = $this->probe($agent);
        \expect_soon(1, static fn() => count(self::listOf($probe->voice('sccp')->calls())), 'the call');
        $console = $this->console(['core1' => $agent]);
        $page = $console->get('/probe/core1/voice');
        [$call] = $page->table('calls');
        // 2 % of G.711 lost, 30 + 2 * 10 ms.
        $rating = EModel::rating(50, 0.02);
        self::assertSame([
            '1001 <script>alert(1)</script>', '1002 Two', 'over', number_format($rating, 1),
            number_format(EModel::opinion($rating), 2) . ', low',
        ], array_slice($call, 0, 5));
        self::assertSame(['2.00 %', '10 ms', '30 ms', '0.00 %', '0 ms', '20 ms', 'SCCP'], array_slice($call, 7));
        self::assertCount(0, $page->page()->query('//main//script'));
        self::assertStringContainsString('1 call, none of them running', implode($page->texts('//*[@id="answer"]')));
        self::assertStringContainsString('The worst: 1001', implode($page->texts('//*[@id="answer"]')));
        self::assertSame(['1001', '1002'], array_column($page->table('phones'), 0));
        $address = $page->attribute('//*[@id="calls"]//td/a', 'href');
        self::assertSame('/probe/core1/voice/sccp/1', $address);
        $one = $console->get($address);
        self::assertStringContainsString('2 packets, 2.00 %', implode($one->texts('//*[@id="caller"]')));
        self::assertStringContainsString('G.729A', implode($one->texts('//*[@id="callee"]')));
        foreach (['/probe/core1/voice/sccp/9', '/probe/core1/voice/sip/1', '/probe/core1/voice/sccp/x'] as $path) {
            self::assertSame(404, $console->get($path)->status, $path);
        }
        self::assertSame('', $console->log());
    }

    public function testNetFlow(): void
    {
        $agent = $this->bundled('--netflow', '0');
        $probe = $this->probe($agent);
        $console = $this->console(['core1' => $agent]);
        $page = $console->get('/probe/core1/netflow');
        self::assertSame(
            ['No device has sent NetFlow packets to this probe yet.'],
            $page->texts('//*[@id="answer"]//p'),
        );
        preg_match('/NetFlow packets are taken on port (\d+)\n/', $agent->said(), $parts);
        $flow = str_repeat("\0", 12) . pack('nnNNNNnnCCCCnnCCn', 1, 2, 1, 60, 0, 0, 1, 2, 0, 0, 6, 0, 0, 0, 0, 0, 0);
        $socket = stream_socket_client("udp://127.0.0.1:$parts[1]");
        fwrite($socket, pack('nnNNNNCCn', 5, 1, 1000, time(), 0, 1, 0, 0, 0) . $flow);
        \expect_soon(1, static fn() => count(self::listOf($probe->table('ndeLearnedDeviceTable'))), 'a device');
        $page = $console->get('/probe/core1/netflow');
        self::assertSame(['1 device has sent 1 NetFlow packets.'], $page->texts('//*[@id="answer"]//p'));
        [$row] = $page->table('learned');
        self::assertSame(['127.0.0.1', '1', '1 in, 2 out'], [$row[0], $row[1], $row[3]]);
        self::assertSame('', $console->log());
    }
}
