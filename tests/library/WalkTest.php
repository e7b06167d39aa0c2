<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Exception\BadArgument;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\TableBroken;
use Rmon\Exception\UnknownName;

/** Walks over tables of agents that behave oddly. */
final class WalkTest extends AgentTestCase
{
    /** A row of the hosts by MAC address, of control row 1. */
    private static function host(int $number): string
    {
        return \record(
            status: \i32(0),
            hostAddress: \byte_list(\mac($number)),
            hostCreationOrder: \i32($number),
            hostIndex: \i32(1),
            counters: str_repeat(\u64(0), 7),
        );
    }

    private static function hosts(int ...$numbers): \Step
    {
        return \reply(\rows(...array_map(self::host(...), $numbers)));
    }

    /** A row of the log. */
    private static function entry(int $event, int $index): \Step
    {
        return \reply(\record(
            status: \i32(0),
            logEventIndex: \i32($event),
            logIndex: \i32($index),
            logTime: \u32(0),
            logDescription: \text('entry'),
        ));
    }

    /** The numbers of the hosts that a walk meets; what it throws at the end, if anything. */
    private function met(\ScriptedAgent $agent): array
    {
        $met = [];
        try {
            foreach ($this->probe($agent)->table('hostTable') as $row) {
                $met[] = $row['hostCreationOrder'];
                if (count($met) > 100) {
                    break;
                }
            }
        } catch (\Throwable $thrown) {
            return [$met, $thrown];
        }
        return [$met, null];
    }

    public function testPagesFollowEachOther(): void
    {
        $agent = $this->scripted(self::hosts(1, 2), self::hosts(3), self::hosts());
        self::assertSame([[1, 2, 3], null], $this->met($agent));
        // A page shorter than what was asked for isn't the end; an empty one is.
        $arguments = \i32(1) . \byte_list(\mac(2)) . \i32(500) . \i32(3);
        self::assertSame($arguments, $agent->calls(3)[1]->arguments);
    }

    public function testAPageThatComesAgain(): void
    {
        $agent = $this->scripted(\always(self::hosts(1, 2, 3)));
        [$met, $thrown] = $this->met($agent);
        self::assertSame([1, 2, 3], $met);
        self::assertInstanceOf(TableBroken::class, $thrown);
        self::assertSame('rmon_host_getbulk', $thrown->function);
        self::assertStringContainsString("hostTable doesn't go on behind hostIndex 1, hostAddress", $thrown->text);
    }

    public function testARowThatComesTwiceInAPage(): void
    {
        [$met, $thrown] = $this->met($this->scripted(self::hosts(1, 2, 2, 3)));
        self::assertSame([1, 2], $met);
        self::assertInstanceOf(TableBroken::class, $thrown);
    }

    public function testRowsThatGoBack(): void
    {
        [$met, $thrown] = $this->met($this->scripted(self::hosts(5, 6), self::hosts(4, 5)));
        self::assertSame([5, 6], $met);
        self::assertInstanceOf(TableBroken::class, $thrown);
    }

    public function testARowOfGetnextThatComesAgain(): void
    {
        $agent = $this->scripted(\always(self::entry(1, 7)));
        $met = [];
        $broken = $this->thrown(function () use ($agent, &$met): void {
            foreach ($this->probe($agent)->table('logTable') as $row) {
                $met[] = $row['logIndex'];
            }
        });
        self::assertInstanceOf(TableBroken::class, $broken);
        self::assertSame([7], $met);
    }

    public function testAWalkGoesOnOverARestart(): void
    {
        $agent = $this->scripted(self::hosts(1, 2), self::hosts(3), self::hosts());
        $met = [];
        foreach ($this->probe($agent)->table('hostTable') as $row) {
            $met[] = $row['hostCreationOrder'];
            if ($met === [1, 2]) {
                $agent->restart(self::hosts(3, 4), self::hosts());
            }
        }
        self::assertSame([1, 2, 3, 4], $met);
    }

    public function testAWalkEndsWithAnAgentThatHangsUp(): void
    {
        [$met, $thrown] = $this->met($this->scripted(self::hosts(1), \hang_up(), \hang_up()));
        self::assertSame([1], $met);
        self::assertInstanceOf(ConnectionLost::class, $thrown);
    }

    public function testALoopThatIsLeftReadsNoFurther(): void
    {
        $agent = $this->scripted(self::hosts(1, 2), self::hosts(3));
        foreach ($this->probe($agent)->table('hostTable') as $row) {
            if ($row['hostCreationOrder'] === 2) {
                break;
            }
        }
        self::assertSame(1, $agent->steps_left());
    }

    public function testAPartBeginsAtItsFirstRowAndEndsBehindItsLast(): void
    {
        $agent = $this->scripted(self::entry(2, 5), self::entry(2, 6), self::entry(3, 1));
        $rows = self::listOf($this->probe($agent)->table('logTable', control: 2));
        self::assertSame([5, 6], array_column($rows, 'logIndex'));
        self::assertSame(\i32(2) . \i32(0) . \i32(2), $agent->calls(3)[0]->arguments);
    }

    public function testRowsBeforeAPartArePassedOver(): void
    {
        // An agent that begins elsewhere than it was asked to.
        $agent = $this->scripted(self::entry(1, 5), self::entry(2, 6), self::entry(3, 1));
        $rows = self::listOf($this->probe($agent)->table('logTable', logEventIndex: 2));
        self::assertSame([6], array_column($rows, 'logIndex'));
    }

    public function testOneRowBeginsJustBeforeIt(): void
    {
        $agent = $this->scripted(self::hosts(9), self::hosts(300));
        $table = $this->probe($agent)->table('hostTable', hostIndex: 1, hostAddress: '02:00:00:00:01:00');
        self::assertSame([], self::listOf($table->where()));
        // 02:00:00:00:01:00 less one.
        $address = \byte_list("\x02\0\0\0\0\xff");
        self::assertStringStartsWith(\i32(1) . $address, $agent->calls(1)[0]->arguments);
    }

    public function testAPageBehindARowDoesNotBeginWithIt(): void
    {
        $agent = $this->scripted(\always(self::hosts(5)));
        $behind = ['hostIndex' => 1, 'hostAddress' => [2, 0, 0, 0, 0, 5]];
        $broken = $this->thrown(fn() => $this->probe($agent)->table('hostTable')->page(10, $behind));
        self::assertInstanceOf(TableBroken::class, $broken);
    }

    public function testBehindARowTakesAllOfItsKeys(): void
    {
        $table = $this->probe($this->scripted())->table('hostTable');
        $bad = $this->thrown(fn() => $table->page(10, ['hostIndex' => 1]));
        self::assertInstanceOf(BadArgument::class, $bad);
        self::assertSame('hostTable needs hostAddress to go on behind a row.', $bad->text);
    }

    public function testConversationsWithOneEndBeginRightBeforeIt(): void
    {
        $agent = $this->scripted(\reply(\u32(0)));
        $table = $this->probe($agent)->table('nlMatrixDSTable', control: 1, protocolDirLocalIndex: 3);
        self::assertSame([], self::listOf($table->where(nlMatrixDSDestAddress: '10.0.1.0')));
        // The other end as large as it can be, so that no row of the destination before this one is met.
        $arguments = $agent->calls(1)[0]->arguments;
        self::assertStringContainsString(\byte_list("\xff\xff\xff\xff") . \byte_list("\x0a\0\0\xff"), $arguments);
    }

    public function testTimeMarksStayAsTheyAre(): void
    {
        $agent = $this->scripted(\always(\reply(\u32(0))));
        $probe = $this->probe($agent);
        self::assertSame([], self::listOf($probe->table('nlHostTable', nlHostTimeMark: 700)));
        // The last three: no address, so many rows, and that it is getbulk.
        self::assertSame(700, unpack('N*', $agent->calls(1)[0]->arguments)[2]);
    }

    public function testKeysThatAreNone(): void
    {
        $probe = $this->probe($this->scripted());
        $unknown = $this->thrown(fn() => $probe->table('hostTable', hostAdress: 'x'));
        self::assertInstanceOf(UnknownName::class, $unknown);
        self::assertSame('hostAddress', $unknown->nearest[0]);
        $half = $this->thrown(fn() => $probe->table('hostTable')->get(hostIndex: 1));
        self::assertInstanceOf(BadArgument::class, $half);
        self::assertInstanceOf(BadArgument::class, $this->thrown(fn() => $probe->table('ifTable', control: 1)));
    }

    public function testMemoryStaysFlat(): void
    {
        $pages = 40;
        $steps = [];
        for ($page = 0; $page < $pages; $page++) {
            $steps[] = self::hosts(...range($page * 500 + 1, $page * 500 + 500));
        }
        $agent = $this->scripted(...[...$steps, self::hosts()]);
        $table = $this->probe($agent)->table('hostTable');
        unset($steps);
        $rows = 0;
        $after = [];
        foreach ($table as $row) {
            if (++$rows % 5000 === 0) {
                $after[] = memory_get_usage();
            }
        }
        self::assertSame(20000, $rows);
        self::assertEqualsWithDelta($after[0], $after[3], 200000);
    }
}
