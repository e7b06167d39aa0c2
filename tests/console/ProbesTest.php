<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use Rmon\Console\Leases;
use Rmon\ControlRows;

/** Probes that are there, that aren't, and that go; and the rows that the console makes on them. */
final class ProbesTest extends ConsoleTestCase
{
    /**
     * Something that takes calls and never answers.
     *
     * @return array{resource, int}
     */
    private static function silent(): array
    {
        $server = stream_socket_server('tcp://127.0.0.1:0');
        return [$server, (int) substr(strrchr(stream_socket_get_name($server, false), ':'), 1)];
    }

    /** @return list<string> owners of a table's rows */
    private function owners(\BundledAgent $agent, string $table): array
    {
        $rows = self::listOf($this->probe($agent)->table($table));
        return array_column($rows, $this->probe($agent)->table($table)->schema->owner);
    }

    public function testADeadProbeHoldsUpNobody(): void
    {
        $agent = $this->bundled();
        [$server, $silent] = self::silent();
        [$gone, $closed] = self::silent();
        fclose($gone);
        $console = $this->console(['core1' => $agent, 'hung' => $silent, 'closed' => $closed]);
        $begun = hrtime(true);
        $page = $console->get('/');
        // The module itself would wait 25 seconds for the one that hangs.
        self::assertLessThan(10, (hrtime(true) - $begun) / 1e9);
        self::assertSame(200, $page->status);
        $states = array_column($page->table('probes'), 3, 0);
        self::assertSame('up', $states['core1']);
        self::assertSame('down: It takes calls and does not answer', $states['hung']);
        self::assertStringStartsWith('down: ', $states['closed']);

        $begun = hrtime(true);
        foreach (['hung', 'closed'] as $name) {
            $page = $console->get("/probe/$name");
            self::assertSame(503, $page->status);
            self::assertSame(['The agent cannot be reached.'], $page->texts('//h1'));
            self::assertStringContainsString("127.0.0.1:", $page->texts('//div[@class="problem"]')[0]);
        }
        self::assertLessThan(10, (hrtime(true) - $begun) / 1e9);
        fclose($server);
    }

    public function testAnAgentThatDiesAndComesBack(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent]);
        self::assertSame(200, $console->get('/probe/core1')->status);
        $this->kill($agent);
        $page = $console->get('/probe/core1');
        self::assertSame(503, $page->status);
        self::assertSame(503, $console->get('/probe/core1?part=state')->status);
        $again = $this->bundled('--port', (string) $agent->port);
        self::assertSame($agent->port, $again->port);
        self::assertSame(200, $console->get('/probe/core1')->status, 'the link that is kept is made anew');
    }

    public function testAPageThatWaitsHoldsUpNoOtherOfTheSameBrowser(): void
    {
        // It is there when it is asked for, and then says nothing: the module waits 25 seconds.
        $hung = $this->scripted(\reply(''), \no_answer());
        $console = $this->console(['core1' => $this->bundled(), 'hung' => $hung], '', 'sign_in = off', 3);
        // The browser has a session, as there is a form on the page.
        $console->get('/probe/core1/settings');
        self::assertArrayHasKey('rmon_session', $console->cookies);
        $waiting = $console->begin('/probe/hung/settings');
        \expect_soon(2, fn() => count($hung->calls(2)), 'calls that reached the agent');
        $begun = hrtime(true);
        for ($page = 1; $page <= 4; $page++) {
            self::assertSame(200, $console->get('/probe/core1/settings')->status);
        }
        self::assertLessThan(15, (hrtime(true) - $begun) / 1e9);
        stream_set_blocking($waiting, false);
        self::assertSame('', fread($waiting, 100), 'the other one still waits');
        fclose($waiting);
    }

    public function testAnInterfaceThatIsNotThere(): void
    {
        $console = $this->console(['core1' => $this->bundled()]);
        $page = $console->get('/probe/core1/eth99/hosts');
        self::assertSame(404, $page->status);
        self::assertStringContainsString('eth99', $page->texts('//div[@class="problem"]')[0]);
        self::assertSame(404, $console->get('/probe/core1/table/noSuchTable')->status);
    }

    public function testRowsAreMadeOnceForAllAndGoWhenNobodyLooks(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent]);
        self::assertSame([], $this->owners($agent, 'hlHostControlTable'));
        $console->get('/probe/core1/lo/hosts');
        $console->cookies = [];
        $console->get('/probe/core1/lo/hosts');
        $owners = $this->owners($agent, 'hlHostControlTable');
        self::assertCount(1, $owners, 'one for all users');
        self::assertMatchesRegularExpression('/^rmon:console:[0-9a-f]{8} until \d+$/D', $owners[0]);

        $console->change('looks', static fn(array $looks): array => [
            'core1' => ['look' => $looks['core1']['look'] - Leases::LOOK - 1] + $looks['core1'],
        ]);
        // Any request, also of what has nothing to do with the probe.
        $console->get('/sign-in');
        \expect_soon([], fn() => $this->owners($agent, 'hlHostControlTable'), 'rows that nobody looks at');
    }

    public function testRowsOfOthersAreUsedAndLeftAlone(): void
    {
        $agent = $this->bundled();
        $this->probe($agent)->table('hlHostControlTable')->set(
            hlHostControlIndex: 9,
            hlHostControlDataSource: 'lo',
            hlHostControlOwner: 'noc',
        );
        $console = $this->console(['core1' => $agent]);
        $console->get('/probe/core1/lo/hosts');
        self::assertSame(['noc'], $this->owners($agent, 'hlHostControlTable'));
    }

    public function testRowsAreTakenInByTheirName(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        (new ControlRows($probe, 'console:1', 300, again: true))->hosts('lo');
        (new ControlRows($probe, 'console:2', 300, again: true))->protocols('lo');
        $rows = new ControlRows($probe, 'console:1', 300, again: true);
        $rows->adopt();
        self::assertSame(['hlHostControlTable'], array_column($rows->made(), 'table'));
        $rows->release();
        self::assertSame([], $this->owners($agent, 'hlHostControlTable'));
        self::assertCount(1, $this->owners($agent, 'protocolDistControlTable'));
    }
}
