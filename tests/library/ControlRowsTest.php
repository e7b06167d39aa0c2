<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\ControlRows;
use Rmon\ErrorStatus;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\RmonException;
use Rmon\Probe;
use Rmon\RowStatus;

/** Control rows: whose they are, how long they last, who removes them. */
final class ControlRowsTest extends AgentTestCase
{
    private Probe $probe;
    private \BundledAgent $agent;

    protected function setUp(): void
    {
        $frames = [];
        for ($host = 1; $host <= 5; $host++) {
            $ip = \ip4("10.0.0.$host", '10.0.1.1', 17, \udp(1000, 53, 'question'));
            $frames[] = [0.0, \ethernet(\mac(1), \mac(1 + $host), 0x0800, $ip)];
        }
        $this->agent = $this->playing($frames);
        $this->probe = $this->probe($this->agent);
    }

    /** @return array<int, string> owners by index */
    private function owners(string $table = 'hlHostControlTable'): array
    {
        $schema = $this->probe->table($table)->schema;
        return array_column(
            self::listOf($this->probe->table($table)),
            $schema->owner,
            array_key_first($schema->keys),
        );
    }

    public function testWhatIsMadeGoesWithItsUser(): void
    {
        $during = $this->probe->withRows('noc', function (ControlRows $rows): array {
            $row = $rows->hosts(1);
            self::assertTrue($row->made);
            self::assertSame('hlHostControlTable', $row->table);
            return $this->owners();
        });
        self::assertCount(1, $during);
        self::assertMatchesRegularExpression('/^rmon:noc:[0-9a-f]{12} until \d+$/D', $during[1]);
        self::assertSame([], $this->owners());
    }

    public function testItGoesWhenTheUserFails(): void
    {
        $thrown = $this->thrown(fn() => $this->probe->withRows('noc', static function (ControlRows $rows): never {
            $rows->hosts(1);
            throw new \LogicException('failed');
        }));
        self::assertSame('failed', $thrown->getMessage());
        self::assertSame([], $this->owners());
    }

    public function testARowOfSomebodyElseIsUsedAndLeftAlone(): void
    {
        $table = $this->probe->table('hlHostControlTable');
        $table->set(hlHostControlIndex: 9, hlHostControlDataSource: 1, hlHostControlOwner: 'monitor');
        $before = $table->get(hlHostControlIndex: 9);
        $rows = new ControlRows($this->probe, 'noc');
        $row = $rows->hosts(1);
        self::assertSame([9, false], [$row->index, $row->made]);
        $rows->renew();
        $rows->release();
        self::assertSame($before, $table->get(hlHostControlIndex: 9));
    }

    public function testARowThatDoesNotWorkIsNotUsed(): void
    {
        $table = $this->probe->table('hlHostControlTable');
        $table->set(
            hlHostControlIndex: 1,
            hlHostControlDataSource: 1,
            hlHostControlOwner: 'monitor',
            hlHostControlStatus: RowStatus::createRequest,
        );
        $rows = new ControlRows($this->probe, 'noc');
        self::assertSame(2, $rows->hosts(1)->index);
        $rows->release();
        self::assertSame([1 => 'monitor'], $this->owners());
    }

    public function testTwoPagesDoNotTakeEachOthersRowsAway(): void
    {
        $one = new ControlRows($this->probe, 'page');
        $other = new ControlRows($this->probe($this->agent), 'page');
        $rows = [$one->hosts(1), $other->hosts(1)];
        self::assertNotSame($rows[0]->index, $rows[1]->index);
        $one->release();
        self::assertSame([$rows[1]->index], array_keys($this->owners()));
        $this->read($this->agent);
        self::assertCount(6, self::listOf($this->probe->table('nlHostTable', control: $rows[1]->index)));
        $other->release();
        self::assertSame([], $this->owners());
    }

    public function testAUserAsksTwiceForTheSame(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        self::assertSame($rows->hosts(1)->index, $rows->hosts(1)->index);
        self::assertCount(1, $rows->made());
        $rows->release();
        self::assertSame([], $rows->made());
        $rows->release();
    }

    public function testWhoComesAgainFindsTheRows(): void
    {
        $first = new ControlRows($this->probe, 'console:abc', again: true);
        $index = $first->hosts(1)->index;
        $second = new ControlRows($this->probe, 'console:abc', again: true);
        self::assertSame($index, $second->hosts(1)->index);
        $stranger = new ControlRows($this->probe, 'console:abcd', again: true);
        self::assertNotSame($index, $stranger->hosts(1)->index);
        $second->release();
        self::assertCount(1, $this->owners());
        $first->release();
        self::assertCount(1, $this->owners());
    }

    public function testALeaseIsRenewed(): void
    {
        $rows = new ControlRows($this->probe, 'noc', lease: 100, again: true);
        $rows->hosts(1);
        $longer = new ControlRows($this->probe, 'noc', lease: 5000, again: true);
        $longer->hosts(1);
        $longer->renew();
        preg_match('/until (\d+)$/D', $this->owners()[1], $until);
        self::assertGreaterThanOrEqual(5000, (int) $until[1]);
        $this->assertSame(RowStatus::valid->value, $this->probe->table('hlHostControlTable')
            ->get(hlHostControlIndex: 1)['hlHostControlStatus']);
    }

    public function testWhatOthersLeftBehindIsSweptOnceItsLeaseIsOver(): void
    {
        $table = $this->probe->table('hlHostControlTable');
        $owners = [
            1 => 'monitor',
            2 => 'rmon:page:1 until 0',
            3 => 'rmon:page:2 until 3600',
            4 => 'rmon:page:3 until 999999',
            5 => 'until 0',
            6 => 'rmon:page',
        ];
        foreach ($owners as $index => $owner) {
            $table->set(hlHostControlIndex: $index, hlHostControlDataSource: 1, hlHostControlOwner: $owner);
        }
        // The second is to be over: the clock goes on in whole seconds.
        \wait_until(fn() => $this->probe->uptime() >= 100);
        self::assertSame(2, (new ControlRows($this->probe, 'noc'))->sweep());
        self::assertSame([1, 3, 5, 6], array_keys($this->owners()));
    }

    public function testATableThatIsFullOfWhatOthersLeftBehind(): void
    {
        $table = $this->probe->table('hlHostControlTable');
        // The agent has a hundred rows of tables that are learned, and no more.
        for ($index = 1; $index <= 100; $index++) {
            $table->set(
                hlHostControlIndex: $index,
                hlHostControlOwner: $index > 98 ? 'rmon:page until 999999' : 'monitor',
                hlHostControlStatus: RowStatus::createRequest,
                hlHostControlDataSource: 1,
            );
        }
        $rows = new ControlRows($this->probe, 'noc');
        self::assertTrue($rows->hosts(1)->made);
        self::assertCount(99, $this->owners());
        $table->set(
            hlHostControlIndex: 100,
            hlHostControlDataSource: 1,
            hlHostControlOwner: 'monitor',
            hlHostControlStatus: RowStatus::createRequest,
        );
        $full = $this->thrown(fn() => (new ControlRows($this->probe, 'other'))->hosts(1));
        self::assertSame(ErrorStatus::genErr, $full->error());
    }

    public function testAnIndexThatSomebodyElseTookMeanwhile(): void
    {
        $system = \reply(\text('') . \u32(100) . str_repeat(\text(''), 4) . \i32(72));
        $row = static fn(int $status, string $owner) => \reply(\record(
            status: \i32($status),
            hostControlIndex: \i32(1),
            hostControlDataSource: \u32(1),
            hostControlTableSize: \i32(0),
            hostControlLastDeleteTime: \u32(0),
            hostControlOwner: \text($owner),
            hostControlStatus: \i32(3),
        ));
        $agent = $this->scripted(
            $row(2, ''),               // no row that could be used,
            $row(2, ''),               // and none that takes an index,
            $system,
            \reply(\i32(3)),           // but row 1 can't be made:
            $row(0, 'somebody else'),  // somebody was faster.
            $system,
            \reply(\i32(0)),           // So it is row 2, which is made
            \reply(\i32(0)),           // and set to work.
        );
        $made = (new ControlRows($this->probe($agent), 'noc', again: true))->macHosts(1);
        self::assertSame([2, true], [$made->index, $made->made]);
        $sets = [];
        foreach ($agent->calls(8) as $call) {
            if ($call->procedure === 10) {
                // The index, and the last: the status.
                $sets[] = [unpack('N*', $call->arguments)[2], unpack('N', substr($call->arguments, -4))[1]];
            }
        }
        self::assertSame([[1, 2], [2, 2], [2, 1]], $sets, 'the row of somebody else is never touched');
    }

    public function testMakingARowThatIsThereChangesNothing(): void
    {
        $table = $this->probe->table('hlHostControlTable', hlHostControlIndex: 4);
        $table->create(hlHostControlDataSource: 1, hlHostControlOwner: 'first');
        $refused = $this->thrown(fn() => $table->create(hlHostControlDataSource: 1, hlHostControlOwner: 'second'));
        self::assertInstanceOf(AgentRefused::class, $refused);
        self::assertSame([4 => 'first'], $this->owners());
        $bad = $this->thrown(fn() => $this->probe->table('communityTable')->create(communityString: 'x', privs: 1));
        self::assertInstanceOf(BadArgument::class, $bad);
    }

    public function testARowThatIsGoneOrSomebodyElsesIsLeftAlone(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        $index = $rows->hosts(1)->index;
        $table = $this->probe->table('hlHostControlTable');
        $table->delete(hlHostControlIndex: $index);
        $table->set(hlHostControlIndex: $index, hlHostControlDataSource: 1, hlHostControlOwner: 'other');
        $rows->release();
        self::assertSame([$index => 'other'], $this->owners());
    }

    public function testWhatTheAgentRefusesLeavesNothing(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        self::assertInstanceOf(AgentRefused::class, $this->thrown(fn() => $rows->hosts(99)));
        self::assertSame([], $rows->made());
        self::assertSame([], $this->owners());
    }

    public function testNamesAndLeasesThatAreNone(): void
    {
        foreach ([['', 300], ['a b', 300], [str_repeat('x', 101), 300], ['noc', 0], ['noc', 86401]] as $arguments) {
            $bad = $this->thrown(fn() => new ControlRows($this->probe, ...$arguments));
            self::assertInstanceOf(BadArgument::class, $bad);
        }
    }

    public function testEveryFamily(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        $families = [
            'hosts' => 'nlHostTable', 'conversations' => 'nlMatrixSDTable', 'macHosts' => 'hostTable',
            'macConversations' => 'matrixSDTable', 'protocols' => 'protocolDistStatsTable',
            'addresses' => 'addressMapTable', 'vlans' => null, 'priorities' => null,
            'responseTimes' => 'artReportTable',
        ];
        $used = [];
        foreach (array_keys($families) as $family) {
            $used[$family] = $rows->$family(1);
        }
        $profile = $rows->profile();
        self::assertSame($profile, $rows->profile(), 'the profile is found again');
        $groups = [
            'groups' => 'dsmonStatsTable', 'groupProtocols' => 'dsmonPdistStatsTable', 'groupHosts' => 'dsmonHostTable',
            'groupConversations' => 'dsmonMatrixSDTable',
        ];
        foreach (array_keys($groups) as $family) {
            $used[$family] = $rows->$family(1, $profile);
        }
        $history = $rows->history(1, 7, 3);
        self::assertSame(
            [3, 7],
            array_values(array_intersect_key(
                $this->probe->table($history->table)->get(historyControlIndex: $history->index),
                ['historyControlInterval' => 0, 'historyControlBucketsRequested' => 0],
            )),
        );
        $used['macTopHosts'] = $rows->macTopHosts(1, 'hostTopNOutOctets', 3600);
        $used['capture'] = $rows->capture(1, [['filterPktData' => [2], 'filterPktDataMask' => [255],
            'filterPktDataNotMask' => [0]]]);
        $keys = fn(string $family) => [array_key_first($this->probe->table($used[$family]->table)->schema->keys)
            => $used[$family]->index];
        $report = fn(string $family) => $this->probe->table($used[$family]->table)->get(...$keys($family));
        $before = $report('macTopHosts');
        $rows->renew();
        self::assertSame($before['hostTopNStartTime'], $report('macTopHosts')['hostTopNStartTime'], 'it goes on');
        foreach (array_keys($used) as $family) {
            $status = $this->probe->table($used[$family]->table)->schema->status;
            self::assertSame(RowStatus::valid->value, $report($family)[$status], "$family works on");
        }
        $this->read($this->agent);
        foreach (array_filter($families + $groups) as $family => $table) {
            $part = $this->probe->table($table);
            $part = $part->schema->control() === null || $family === 'addresses'
                ? $part
                : $part->where(control: $used[$family]->index);
            self::assertNotNull($part->first(), "$family has rows in $table");
        }
        $rows->release();
        foreach (['hlHostControlTable', 'artControlTable', 'dsmonHostCtlTable', 'historyControlTable'] as $table) {
            self::assertSame([], preg_grep('/^rmon:/', $this->owners($table)), $table);
        }
    }

    public function testACapture(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        $all = $rows->capture(1);
        // The address 10.0.0.3 at its place in the frame, 26 octets from its start.
        $some = $rows->capture(1, [
            ['filterPktDataOffset' => 26, 'filterPktData' => '0a 00 00 03', 'filterPktDataMask' => 'ff ff ff ff',
                'filterPktDataNotMask' => '00 00 00 00'],
        ]);
        $this->read($this->agent);
        self::assertCount(5, self::listOf($this->probe->table('captureBufferTable', control: $all->index)));
        $packets = self::listOf($this->probe->table('captureBufferTable', control: $some->index));
        self::assertCount(1, $packets);
        // The whole frame with its check sequence, which the file doesn't have.
        self::assertSame(64, $packets[0]['captureBufferPacketLength']);
        self::assertSame([10, 0, 0, 3], array_slice($packets[0]['captureBufferPacketData'], 26, 4));
        $rows->release();
        foreach (['channelTable', 'filterTable', 'bufferControlTable'] as $table) {
            self::assertSame([], $this->owners($table), $table);
        }
    }

    public function testACaptureThatTheAgentSaves(): void
    {
        $directory = sys_get_temp_dir() . '/rmon-captures-' . getmypid();
        $frame = \ethernet(\mac(1), \mac(2), 0x0800, \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1000, 53)));
        $agent = $this->playing([[1.0, $frame], [2.0, $frame]], '--captures', $directory);
        $probe = $this->probe($agent);
        $buffer = (new ControlRows($probe, 'noc'))->capture(1);
        $this->read($agent);
        try {
            self::assertSame(['packets' => 2, 'last' => 2], $probe->saveCapture('calls', $buffer->index));
            // What a file begins with, and 16 octets before each frame.
            self::assertSame(24 + 2 * (16 + 60), filesize("$directory/calls.pcap"));
            self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => $probe->saveCapture('', 1)));
        } finally {
            array_map(unlink(...), glob("$directory/*"));
            rmdir($directory);
        }
    }

    public function testATopNReport(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        // Long enough that the frames come before its end, on a busy machine too.
        $report = $rows->macTopHosts(1, 'hostTopNOutPkts', 3, 3);
        $this->read($this->agent);
        \wait_until(function () use ($report, &$places): bool {
            $places = self::listOf($this->probe->table('hostTopNTable', control: $report->index));
            return count($places) === 3;
        });
        self::assertSame([1, 2, 3], array_column($places, 'hostTopNIndex'));
        $rows->release();
    }

    public function testReleaseOverADeadLinkSaysSo(): void
    {
        $rows = new ControlRows($this->probe, 'noc');
        $rows->hosts(1);
        proc_terminate($this->agent->process, 9);
        self::assertInstanceOf(RmonException::class, $this->thrown(fn() => $rows->release()));
    }
}
