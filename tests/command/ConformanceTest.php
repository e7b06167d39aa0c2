<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use Rmon\ControlRows;

/** rmon conformance: the bundled agent passes, others are told what they lack and what they do wrong. */
final class ConformanceTest extends CommandTestCase
{
    public function testTheBundledAgentPasses(): void
    {
        $agent = $this->playing(self::frames());
        $this->probe($agent)->withRows('test', function (ControlRows $rows) use ($agent): void {
            $rows->hosts(1);
            $rows->conversations(1);
            $rows->protocols(1);
            $this->read($agent);
            $run = $this->rmon($agent, 'conformance', '--sets');
            self::assertSame([0, ''], [$run->code(), $run->error], $run->out);
            self::assertMatchesRegularExpression('/^\d\d+ ok, \d+ empty, 0 lacks, 0 fault$/m', $run->out);
            self::assertMatchesRegularExpression('/^ok +nlHostTable +\d+ rows in order$/m', $run->out);
            self::assertMatchesRegularExpression('/^ok +hlHostControlTable, sets +rows are made and re/m', $run->out);
        });
        self::assertSame([], $this->rowsOf($agent, 'hostControlTable'), 'rows that were made are gone');
    }

    public function testAnAgentWithoutTables(): void
    {
        $agent = $this->scripted(\always(\proc_unavail()));
        $run = $this->rmon($agent, 'conformance', '--json');
        self::assertSame(1, $run->code());
        $states = array_column($run->rows(), 'state', 'what');
        self::assertSame('fault', $states['clock']);
        self::assertSame('lacks', $states['ifTable']);
        self::assertSame('lacks', $states['sccpConfig'], 'its function says nothing, and what fails is no row');
        self::assertNotContains('ok', $states);
    }

    /** The same row again and again, with index 0 although it is asked for what is behind that. */
    public function testAnAgentWhoseTablesHaveNoEnd(): void
    {
        $agent = $this->scripted(\always(\reply(\u32(0) . str_repeat(\u32(0), 9000))));
        $run = $this->rmon($agent, 'conformance', '--json');
        self::assertSame(1, $run->code());
        $findings = array_column($run->rows(), null, 'what');
        self::assertSame('ok', $findings['clock']['state']);
        self::assertSame('fault', $findings['ifTable']['state']);
        self::assertStringContainsString('doesn\'t go on behind ifIndex 0', $findings['ifTable']['finding']);
    }

    public function testTheAgentIsNamed(): void
    {
        $agent = $this->bundled();
        $run = $this->rmon(null, 'conformance', "127.0.0.1:$agent->port", '--csv');
        self::assertSame([0, ''], [$run->code(), $run->error]);
        self::assertSame(3, $this->rmon(null, 'conformance', '127.0.0.1:1')->code());
    }
}
