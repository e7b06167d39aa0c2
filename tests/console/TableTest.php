<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

/** The table that all pages use: order, filter, pages, columns, and what programs get of it. */
final class TableTest extends ConsoleTestCase
{
    /** Hosts 10.1.0.0 and on, of which each but the last sent one frame: the n-th of 100 + n octets of payload. */
    private static function frames(int $hosts): array
    {
        $frames = [];
        for ($number = 0; $number < $hosts; $number++) {
            $address = sprintf('10.1.%d.%d', intdiv($number, 256), $number % 256);
            $segment = \udp(1000, 5060, str_repeat('x', 100 + $number % 1000));
            $frames[] = [1.0, \ethernet(\mac(2), \mac(100), 0x0800, \ip4($address, '192.0.2.1', 17, $segment))];
        }
        return $frames;
    }

    private function hosts(int $hosts): Served
    {
        $agent = $this->playing(self::frames($hosts));
        $this->probe($agent)->table('hlHostControlTable')->set(
            hlHostControlIndex: 1,
            hlHostControlDataSource: 1,
            hlHostControlNlMaxDesiredEntries: 60000,
            hlHostControlOwner: 'noc',
        );
        $this->read($agent);
        return $this->console(['core1' => $agent]);
    }

    /** @return list<string> the first column of the page's table */
    private static function first(Answer $answer, string $id = 'hosts'): array
    {
        return array_column($answer->table($id), 0);
    }

    public function testOrderFilterAndPages(): void
    {
        // 192.0.2.1 received all frames and sent none.
        $console = $this->hosts(250);
        $path = '/probe/core1/1/hosts';

        $usual = $console->get($path);
        self::assertSame(['10.1.0.249', '10.1.0.248'], array_slice(self::first($usual), 0, 2), 'who sent most');
        self::assertCount(100, self::first($usual));
        self::assertStringContainsString('Rows 1 to 100 of 251', $usual->texts('//p[@class="paging"]')[0]);
        self::assertSame('descending', $usual->attribute('//th[@aria-sort]', 'aria-sort'));

        $last = $console->get($usual->attribute('//a[@rel="next"]', 'href'));
        $last = $console->get($last->attribute('//a[@rel="next"]', 'href'));
        self::assertCount(51, self::first($last));
        self::assertSame('192.0.2.1', self::first($last)[50]);
        self::assertNull($last->attribute('//a[@rel="next"]', 'href'));

        $turned = $console->get("$path?sort=nlHostOutOctets&rows=25");
        self::assertSame(['192.0.2.1', '10.1.0.0', '10.1.0.1'], array_slice(self::first($turned), 0, 3));
        self::assertCount(25, self::first($turned));

        // Addresses in their own order, not as texts.
        $byAddress = self::first($console->get("$path?sort=nlHostAddress"));
        self::assertSame(['10.1.0.0', '10.1.0.1', '10.1.0.2'], array_slice($byAddress, 0, 3));
        self::assertSame('10.1.0.99', $byAddress[99]);

        $found = $console->get("$path?filter=10.1.0.24");
        self::assertSame(
            ['10.1.0.249', '10.1.0.248', '10.1.0.247', '10.1.0.246', '10.1.0.245', '10.1.0.244', '10.1.0.243',
                '10.1.0.242', '10.1.0.241', '10.1.0.240', '10.1.0.24'],
            self::first($found),
        );
        self::assertStringContainsString('found among 251', $found->texts('//p[@class="paging"]')[0]);
        // 14 octets of Ethernet, 20 of IP, 8 of UDP and 4 of check sequence besides the payload.
        $found = $console->get("$path?filter=" . rawurlencode('nlHostOutOctets>=394 10.1'));
        self::assertSame(['10.1.0.249', '10.1.0.248'], self::first($found));
        $found = $console->get("$path?filter=" . rawurlencode('nlHostInPkts=250'));
        self::assertSame(['192.0.2.1'], self::first($found));
        $none = $console->get("$path?filter=nobody");
        self::assertSame(['No row has what the filter asks for.'], $none->texts('//p[@class="empty"]'));
    }

    public function testTheTablesOwnOrderIsReadFromThePlaceOn(): void
    {
        $console = $this->hosts(250);
        $seen = [];
        $path = '/probe/core1/table/nlHostTable?columns=nlHostAddress,hlHostControlIndex';
        while ($path !== null) {
            $page = $console->get($path);
            self::assertSame(200, $page->status);
            $seen = [...$seen, ...self::first($page, 'rows')];
            $path = $page->attribute('//a[@rel="next"]', 'href');
        }
        self::assertCount(251, $seen);
        self::assertCount(251, array_unique($seen));
        self::assertSame(['10.1.0.0', '192.0.2.1'], [$seen[0], $seen[250]]);
    }

    public function testColumnsAreChosenAndStayInTheAddress(): void
    {
        $console = $this->hosts(3);
        $page = $console->get('/probe/core1/1/hosts?columns=nlHostInPkts,nlHostAddress,nothing');
        self::assertSame(['Packets received', 'Host'], $page->texts('//main//thead/tr/th'));
        self::assertStringContainsString('columns=nlHostInPkts', $page->attribute('//main//thead//a', 'href'));
        // As a form without script says it.
        $page = $console->get('/probe/core1/1/hosts?column-nlHostAddress=on&column-nlHostInPkts=on');
        self::assertSame(['Host', 'Packets received'], $page->texts('//main//thead/tr/th'));
    }

    public function testTheExactNumberIsBesideWhatPeopleRead(): void
    {
        $page = $this->hosts(3)->get('/probe/core1/1/hosts?columns=nlHostAddress,nlHostInOctets&sort=-nlHostInOctets');
        // 3 frames of 46 octets and their payloads of 100 to 102.
        self::assertSame(['192.0.2.1', '441 B'], $page->table('hosts')[0]);
        $big = $this->hosts(50)->get('/probe/core1/1/hosts?columns=nlHostInOctets&sort=-nlHostInOctets');
        self::assertSame([['8.5 kB']], array_slice($big->table('hosts'), 0, 1));
        self::assertSame('8525', $big->attribute('//main//tbody/tr[1]/td', 'title'));
    }

    public function testWhatProgramsGet(): void
    {
        $console = $this->hosts(150);
        $path = '/probe/core1/1/hosts?columns=nlHostAddress,nlHostOutOctets&sort=-nlHostOutOctets&rows=25';
        $csv = $console->get("$path&format=csv&part=hosts");
        self::assertSame('text/csv; charset=utf-8', $csv->headers['content-type']);
        self::assertStringContainsString('attachment', $csv->headers['content-disposition']);
        $lines = explode("\r\n", rtrim($csv->body));
        self::assertCount(26, $lines, 'the rows that are shown');
        self::assertSame(['nlHostAddress,nlHostOutOctets', '10.1.0.149,295'], array_slice($lines, 0, 2));

        $json = json_decode($console->get("$path&format=json&part=hosts")->body, true, 512, JSON_THROW_ON_ERROR);
        self::assertSame(['nlHostAddress' => '10.1.0.149', 'nlHostOutOctets' => 295], $json[0]);
        self::assertCount(25, $json);

        $all = $console->get("$path&format=csv&part=hosts&all=1&filter=10.1");
        self::assertCount(151, explode("\r\n", rtrim($all->body)), 'the head and 150 rows');
        $none = $console->get('/probe/core1/1/hosts?format=json&part=hosts&filter=nobody');
        self::assertSame("[]\n", $none->body);
        self::assertSame(404, $console->get('/probe/core1/1/hosts?format=csv&part=nothing')->status);
    }

    public function testRatesAreThereAtTheSecondLook(): void
    {
        $console = $this->hosts(3);
        $path = '/probe/core1/1/hosts?since=now';
        $early = $console->get("$path&format=json&part=hosts");
        self::assertSame([503, '2'], [$early->status, $early->headers['retry-after'] ?? '']);
        \expect_soon(200, fn() => $console->get("$path&format=json&part=hosts")->status, 'two looks');
        // The capture is at its end: nobody sends any more.
        self::assertSame("[]\n", $console->get("$path&format=json&part=hosts")->body);
        self::assertSame(
            ['No host sent anything in the last seconds.'],
            $console->get($path)->texts('//p[@class="empty"]'),
        );
        self::assertSame('', $console->log());
    }

    public function testOnePartAlone(): void
    {
        $console = $this->hosts(3);
        $part = $console->get('/probe/core1/1/hosts?part=hosts');
        self::assertStringStartsWith('<section', $part->body);
        self::assertCount(4, $part->table('hosts'));
        // Addresses in it are those of the page, not of the part.
        self::assertStringNotContainsString('part=hosts', (string) $part->attribute('//thead//a', 'href'));
        self::assertSame(404, $console->get('/probe/core1/1/hosts?part=nothing')->status);
    }

    public function testManyHostsTakeLittleMemory(): void
    {
        $console = $this->hosts(20000);
        $page = $console->get('/probe/core1/1/hosts?sort=-nlHostOutOctets&columns=nlHostAddress,nlHostOutOctets');
        self::assertStringContainsString('of 20,001', $page->texts('//p[@class="paging"]')[0]);
        // The largest payload is 1099 octets: every thousandth host.
        self::assertSame('1.1 kB', $page->table('hosts')[0][1]);
        self::assertSame(
            array_map(static fn(int $n) => sprintf('10.1.%d.%d', intdiv($n, 256), $n % 256), [999, 1999, 2999]),
            array_slice(self::first($page), 0, 3),
        );
        self::assertMatchesRegularExpression('/memory;desc="\d+ kB"$/D', $page->headers['server-timing']);
        preg_match('/"(\d+) kB"/', $page->headers['server-timing'], $memory);
        self::assertLessThan(8192, (int) $memory[1], 'kB of a request');

        // As deep as can be paged, and no deeper.
        $deep = $console->get('/probe/core1/1/hosts?rows=500&page=2');
        self::assertCount(500, self::first($deep));
        self::assertNull($deep->attribute('//a[@rel="next"]', 'href'));
        self::assertCount(1, $deep->texts('//p[@class="warning"]'));
        self::assertSame(self::first($deep), self::first($console->get('/probe/core1/1/hosts?rows=500&page=99999')));
        self::assertSame('', $console->log());
    }
}
