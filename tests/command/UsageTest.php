<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Command\Application;
use Rmon\Schema\Catalog;

/** Names, mistakes, exit codes. */
final class UsageTest extends CommandTestCase
{
    public function testAloneItTellsItsCommands(): void
    {
        $run = $this->rmon(null);
        self::assertSame([0, ''], [$run->code(), $run->error]);
        self::assertStringContainsString('usage: rmon [-H HOST[:PORT]] COMMAND', $run->out);
        foreach (array_keys((new Application())->commands()) as $command) {
            self::assertMatchesRegularExpression("/^  $command  +[A-Z]/m", $run->out);
        }
        self::assertStringContainsString('rmon list', $this->rmon(null, '--help')->out . $run->out);
    }

    public function testVersionAndHelp(): void
    {
        self::assertSame('rmon ' . phpversion('rmon') . "\n", $this->rmon(null, '--version')->out);
        $help = $this->rmon(null, 'help', 'top');
        self::assertSame(0, $help->code());
        self::assertStringContainsString('--interval', $help->out);
        self::assertStringContainsString('--columns', $this->rmon(null, 'nlHost', '--help')->out);
    }

    /** @return iterable<string, array{list<string>, string}> */
    public static function mistakes(): iterable
    {
        yield 'a table' => [['ethrStats'], 'There is no command or table "ethrStats". Is it etherStats?'];
        yield 'a command' => [['describ', 'ifTable'], 'There is no command or table "describ". Is it describe?'];
        yield 'a table to describe' => [['describe', 'nlHots'], 'There is no table "nlHots". Is it nlHostTable'];
        yield 'an option' => [['list', '--jsno'], 'The "--jsno" option does not exist.'];
        yield 'an option without its value' => [['list', '--limit'], 'The "--limit" option requires a value.'];
        yield 'an argument that is missing' => [['describe'], 'Not enough arguments (missing: "table").'];
        yield 'a limit' => [['list', '--limit', 'x'], '--limit is a whole number from 0 on, not "x".'];
        yield 'two forms' => [['list', '--json', '--csv'], '--json and --csv exclude each other.'];
        yield 'columns' => [['list', '--columns', 'table,,x'], '"table,,x" is no list of columns'];
        yield 'a column' => [['list', '--columns', 'tabel'], 'There is no column "tabel". Is it table?'];
        yield 'a host' => [['-H', 'a b', 'ifTable'], '"a b" is no host name'];
        yield 'a time-out' => [['--timeout', '0', 'ifTable'], '--timeout is a number of seconds'];
        yield 'a list of top' => [['top', 'hots'], 'There is no list "hots". Is it hosts?'];
        yield 'an order of top' => [['top', 'talkers', '--by', 'love'], 'talkers can\'t be sorted by "love": octets'];
        yield 'a table without counters' => [['watch', 'system'], 'system has no counters'];
        yield 'a table that is not set' => [['set', 'nlHost', 'x=1'], 'nlHostTable can\'t be set.'];
        yield 'nothing to set' => [['set', 'alarm'], 'Nothing to set'];
        yield 'a shell' => [['completion', 'tcsh'], 'There is completion for bash, zsh, fish, not for "tcsh".'];
        yield 'a voice monitor' => [['voice', 'calls', '--monitor', 'sip'], 'There is no voice monitor "sip"'];
        yield 'a filter' => [['capture', '--on', 'x', 'hots 1.2.3.4', '-w', 'x'], '"hots" is no word of a filter.'];
    }

    /**
     * @dataProvider mistakes
     * @param list<string> $arguments
     */
    #[DataProvider('mistakes')]
    public function testAMistakeIsToldInALine(array $arguments, string $text): void
    {
        $run = $this->rmon(null, ...$arguments);
        self::assertSame(2, $run->code(), $run->error);
        self::assertSame('', $run->out);
        self::assertStringStartsWith("rmon: $text", $run->error);
        self::assertSame(1, substr_count($run->error, "\n"));
        self::assertStringNotContainsString('.php', $run->error);
    }

    public function testColumnsByPartsOfTheirNames(): void
    {
        $agent = $this->playing(self::frames());
        [$row] = $this->rowsOf($agent, 'ETHERSTATS', '--columns', 'source,pkts,octets,crc');
        self::assertSame(
            ['etherStatsDataSource', 'etherStatsPkts', 'etherStatsOctets', 'etherStatsCRCAlignErrors'],
            array_keys($row),
        );
        $run = $this->rmon($agent, 'etherStats', '--columns', 'pkts64,bytes');
        self::assertSame([2, ''], [$run->code(), $run->out]);
        $unsure = $this->rmon($agent, 'ifTable', '--columns', 'octets');
        self::assertSame("rmon: \"octets\" may be ifInOctets, ifOutOctets of ifTable.\n", $unsure->error);
        $near = $this->rmon($agent, 'ifTable', 'ifInOktets>1');
        self::assertStringContainsString('Is it ifInOctets', $near->error);
        self::assertSame(2, $near->code());
    }

    public function testNoAgent(): void
    {
        $run = $this->rmon(null, 'ifTable');
        self::assertSame(3, $run->code());
        self::assertSame(
            "rmon: 127.0.0.1:1: No agent can be reached: Connection refused.\n"
            . "      Is rmon-agent running there, and does it listen on that address? Another one: -H HOST[:PORT].\n",
            $run->error,
        );
        self::assertSame(3, $this->rmon(null, '-H', 'no.such.host.invalid', 'ifTable')->code());
    }

    public function testAnAgentThatGoes(): void
    {
        $run = $this->rmon($this->scripted(\always(\hang_up())), 'ifTable');
        self::assertSame([3, ''], [$run->code(), $run->out]);
        self::assertStringContainsString('rmon doctor', $run->error);
    }

    public function testAnAgentThatRefuses(): void
    {
        $agent = $this->playing(self::frames());
        $run = $this->rmon($agent, 'set', 'etherStats', 'index=7', 'dataSource=99');
        self::assertSame([4, ''], [$run->code(), $run->out]);
        self::assertStringContainsString('badValue', $run->error);
        self::assertSame(4, $this->rmon($this->scripted(\always(\proc_unavail())), 'ifTable')->code());
    }

    public function testWithoutTheModule(): void
    {
        $run = (new Run(['ifTable'], [], module: false))->end();
        self::assertSame([1, ''], [$run->code(), $run->out]);
        self::assertStringContainsString('script/build release', $run->error);
        self::assertStringNotContainsString('.php', str_replace('php.ini', '', $run->error));
        self::assertSame(0, (new Run(['list'], [], module: false))->code(), 'what needs no agent needs no module');
        $doctor = (new Run(['doctor'], [], module: false))->end();
        self::assertSame(1, $doctor->code());
        self::assertStringStartsWith('fault module', $doctor->out);
    }

    public function testTheModuleOfTheTreeIsFound(): void
    {
        $modules = glob(\dirname(__DIR__, 2) . '/.build/{release,plain}/modules/rmon.so', GLOB_BRACE);
        self::assertNotSame([], $modules);
        $run = new Run(['system', '-c', 'sysServices'], ['RMON_STARTED_AGAIN' => null, 'LD_PRELOAD' => null]
            + ['RMON_HOST' => '127.0.0.1:' . $this->playing(self::frames())->port], module: false);
        self::assertSame([0, ''], [$run->code(), $run->error]);
    }

    public function testAClosedPipeEndsItQuietly(): void
    {
        $run = $this->begin($this->playing(self::frames()), 'ifTable');
        $run->closeOutput();
        self::assertSame([141, ''], [$run->code(), $run->error]);
    }

    public function testDescribe(): void
    {
        $run = $this->rmon(null, 'describe', 'channel');
        self::assertStringContainsString(
            "channelTable: streams of frames that filters let through\nGroup filter, RFC 2819\n",
            $run->out,
        );
        $rows = $this->rowsOf($this->playing(self::frames()), 'describe', 'channelTable');
        self::assertSame(array_keys(Catalog::find('channelTable')->columns), array_column($rows, 'column'));
        self::assertSame('1 acceptMatched, 2 acceptFailed', $rows[2]['values']);
    }

    public function testList(): void
    {
        $rows = $this->rowsOf($this->playing(self::frames()), 'list');
        self::assertSame(array_keys(Catalog::all()), array_column($rows, 'table'));
        self::assertSame(['artReportTable', 'artSummaryTable'], array_column(
            array_filter(
                $this->rowsOf($this->playing(self::frames()), 'list', 'response times of'),
                fn($row) => $row['table'] !== 'x',
            ),
            'table',
        ));
    }
}
