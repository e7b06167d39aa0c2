<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use BundledAgent;

/** What measures: top and watch. */
final class LiveTest extends CommandTestCase
{
    private function interfaceName(BundledAgent $agent): string
    {
        return $this->probe($agent)->interfaces()->name(1);
    }

    /**
     * Measures while the frames pass by again and again, about twenty times a second. The time measured may begin or
     * end between two of them: no two hosts send so much alike that it would change their order.
     */
    private function measured(string $control, string ...$arguments): array
    {
        $frames = array_map(static fn(array $frame) => [$frame[0] > 1.0 ? 0.05 : 0.0, $frame[1]], self::frames(150));
        $agent = $this->bundled('--read', \capture_file($frames), '--loop', '--speed', 'recorded');
        $on = $this->interfaceName($agent);
        $run = $this->rmon($agent, ...[...$arguments, '--on', $on, '--interval', '1', '--json']);
        self::assertSame([0, ''], [$run->code(), $run->error]);
        self::assertSame([], $this->rowsOf($agent, $control), 'nothing stays behind');
        return $run->rows();
    }

    public function testHosts(): void
    {
        $rows = $this->measured('hlHostControlTable', 'top', 'hosts', '--limit', '2');
        self::assertSame(['10.0.0.2', '10.0.0.1'], array_column($rows, 'address'));
        // 358 octets of 824, and 258 when all of them passed as often.
        self::assertEqualsWithDelta([358 / 824, 258 / 824], array_column($rows, 'part'), 0.1);
    }

    public function testTalkers(): void
    {
        $rows = $this->measured('hlMatrixControlTable', 'top', 'talkers', '--by', 'octets');
        $most = ['10.0.0.2', '10.0.9.9', 'ip.tcp.https'];
        self::assertContains(
            $most,
            array_map(static fn(array $row) => [$row['address'], $row['peer'], $row['protocol']], $rows),
        );
        self::assertSame('10.0.0.2', $rows[0]['address']);
    }

    public function testProtocols(): void
    {
        $rows = $this->measured('protocolDistControlTable', 'top', 'protocols');
        $parts = array_column($rows, 'part', 'protocol');
        self::assertEqualsWithDelta([724 / 824, 100 / 824], [$parts['ip.tcp.https'], $parts['ip.udp.domain']], 0.1);
    }

    public function testAWatchedTable(): void
    {
        $rows = $this->measured('hlHostControlTable', 'watch', 'nlHost', '--sort', '-outPkts');
        self::assertSame('10.0.0.1', $rows[0]['nlHostAddress']);
        self::assertGreaterThan(0, $rows[0]['nlHostOutOctets']);
    }

    public function testWatchingWithoutAControlRow(): void
    {
        $run = $this->begin(
            $agent = $this->bundled(),
            'watch',
            'ifTable',
            'ifIndex=1',
            '--interval',
            '0.2',
            '--json',
            '--count',
            '2',
        );
        self::assertSame([0, ''], [$run->code(), $run->error]);
        self::assertSame([1, 1], array_column($run->rows(), 'ifIndex'), 'our own calls make lo grow');
    }

    public function testAPictureThatAKeyEnds(): void
    {
        $agent = $this->bundled();
        $run = $this->onTerminal($agent, [], 'top', 'hosts', '--on', 'lo', '--interval', '0.3');
        $run->until(static fn(Run $run) => str_contains($run->out, '127.0.0.1 ') && str_contains($run->out, 'Share'));
        $run->type('q');
        self::assertSame(0, $run->code());
        self::assertStringStartsWith("\e[?1049h", $run->out, 'on a screen of its own');
        self::assertStringEndsWith("\e[?25h\e[?1049l", rtrim($run->out), 'which it leaves');
        self::assertSame([], $this->rowsOf($agent, 'hlHostControlTable'), 'nothing stays behind');
    }

    public function testAPictureThatASignalEnds(): void
    {
        $agent = $this->bundled();
        $run = $this->onTerminal($agent, ['NO_COLOR' => '1'], 'watch', 'ifTable', '--interval', '60');
        $run->until(static fn(Run $run) => str_contains($run->out, 'measuring for 60 s'));
        $run->signal(15);
        self::assertSame(0, $run->code());
        self::assertStringContainsString("\e[?1049l", $run->out);
    }

    public function testAPictureOutlivesItsAgent(): void
    {
        $agent = $this->bundled();
        $run = $this->onTerminal($agent, [], 'watch', 'ifTable', '--interval', '0.2');
        $run->until(static fn(Run $run) => str_contains($run->out, "InOctets"));
        foreach (explode("\n", preg_replace('/\e\[[0-9;?]*[a-zA-Z]|\r/', '', $run->out)) as $line) {
            self::assertLessThanOrEqual(100, strlen($line), 'no line is broken');
        }
        \end_agent($agent, 9);
        $run->until(static fn(Run $run) => str_contains($run->out, 'No agent can be reached'));
        $run->type('q');
        self::assertSame(0, $run->code());
    }
}
