<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use Rmon\Command\Application;
use Rmon\Command\Output\Screen;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Output\BufferedOutput;

/** Rows in all forms. */
final class RowsTest extends CommandTestCase
{
    /** @return array{int, string, string} */
    private function inside(\BundledAgent $agent, string ...$arguments): array
    {
        $out = fopen('php://memory', 'w+');
        $error = fopen('php://memory', 'w+');
        $application = new Application(new Screen($out, $error, false, false));
        $code = $application->run(
            Application::input(['rmon', '-H', "127.0.0.1:$agent->port", ...array_values($arguments)]),
            new BufferedOutput(),
        );
        return [$code, stream_get_contents($out, offset: 0), stream_get_contents($error, offset: 0)];
    }

    private function everyTable(\BundledAgent $agent): void
    {
        foreach (Catalog::all() as $name => $schema) {
            [$code, $text, $error] = $this->inside($agent, $name);
            self::assertSame([0, ''], [$code, $error], $name);
            [$code, $json] = $this->inside($agent, $name, '--json');
            self::assertSame(0, $code, $name);
            $lines = array_filter(explode("\n", $json));
            foreach ($lines as $line) {
                $row = json_decode($line, true, 64, JSON_THROW_ON_ERROR);
                self::assertSame(array_keys($schema->columns), array_keys($row), $name);
            }
            [$code, $csv] = $this->inside($agent, $name, '--csv');
            $lineOf = fn(string $line) => str_getcsv($line, escape: '');
            $rows = array_map($lineOf, explode("\r\n", rtrim($csv, "\r\n")));
            self::assertSame(array_keys($schema->columns), $rows[0], $name);
            self::assertSame([0, 1 + count($lines)], [$code, count($rows)], $name);
            $shown = $schema->hasRows() ? count($lines) + ($lines === [] ? 0 : 1) : count($schema->columns);
            self::assertSame($shown, substr_count($text, "\n"), $name);
        }
    }

    public function testEveryTableOfAnAgentThatPlaysACapture(): void
    {
        $agent = $this->playing(self::frames(), '--voice', \dirname(__DIR__, 2) . '/agent/voice.ini');
        $probe = $this->probe($agent);
        $name = $probe->interfaces()->name(1);
        $probe->withRows('test', function (\Rmon\ControlRows $rows) use ($agent, $name): void {
            $rows->hosts($name);
            $rows->conversations($name);
            $rows->protocols($name);
            $rows->macHosts($name);
            $rows->macConversations($name);
            $rows->addresses($name);
            $rows->responseTimes($name);
            $rows->groupHosts($name, $rows->profile());
            $rows->capture($name);
            $this->read($agent);
            $this->everyTable($agent);
            self::assertStringContainsString('10.0.0.2', $this->inside($agent, 'nlHost')[1]);
            self::assertStringContainsString('ip.tcp.https', $this->inside($agent, 'protocolDistStats')[1]);
            self::assertStringContainsString('02:00:00:00:00:03', $this->inside($agent, 'host')[1]);
        });
    }

    public function testEveryTableOfAnAgentThatMeasuresThisMachine(): void
    {
        $this->everyTable($this->bundled());
    }

    public function testFilters(): void
    {
        $agent = $this->playing(self::frames());
        $probe = $this->probe($agent);
        $name = $probe->interfaces()->name(1);
        $probe->withRows('test', function (\Rmon\ControlRows $rows) use ($agent, $name): void {
            $control = $rows->hosts($name)->index;
            $this->read($agent);
            $hosts = fn(string ...$arguments) => array_column(
                $this->rowsOf($agent, 'nlHost', ...$arguments),
                'nlHostAddress',
            );
            $all = ['10.0.0.1', '10.0.0.2', '10.0.0.3', '10.0.8.8', '10.0.9.9'];
            self::assertSame($all, $hosts());
            self::assertSame($all, $hosts("control=$control", 'protocolDirLocalIndex=ip'));
            self::assertSame([], $hosts('control=999'));
            self::assertSame(['10.0.0.2'], $hosts('address=10.0.0.2'));
            // 14, 20, 20, the data and 4: 158, 358 and 258; of the first one 100 more.
            self::assertSame(['10.0.0.2'], $hosts('outOctets!=258', 'outOctets>0'));
            self::assertSame(['10.0.0.2'], $hosts('outOctets>=358'));
            self::assertSame(['10.0.0.1', '10.0.0.3'], $hosts('outOctets<=258', 'outOctets>0'));
            self::assertSame(['10.0.8.8', '10.0.9.9'], $hosts('outOctets<1'));
            self::assertSame(['10.0.8.8'], $hosts('address~8.8'));
            self::assertSame($all, $hosts('--on', $name));
            self::assertSame(['10.0.0.2', '10.0.0.1'], $hosts('--sort', '-outOctets,address', '--limit', '2'));
            self::assertSame(
                ['10.0.8.8', '10.0.9.9', '10.0.0.1'],
                $hosts('--sort', 'outOctets,address', '--limit', '3'),
            );
            self::assertSame([], $hosts('--limit', '0'));
        });
        self::assertSame(2, $this->rmon($agent, 'system', '--on', $name)->code());
        self::assertStringContainsString(
            'no interface "eth77"',
            $this->rmon($agent, 'ifTable', '--on', 'eth77')->error,
        );
        self::assertStringContainsString('only numbers', $this->rmon($agent, 'ifTable', 'inOctets<x')->error);
        self::assertStringContainsString('COLUMN=VALUE', $this->rmon($agent, 'ifTable', '=7')->error);
    }

    public function testGetSetDelete(): void
    {
        $agent = $this->playing(self::frames());
        self::assertSame(1, $this->rmon($agent, 'get', 'alarm', 'index=7')->code());
        $set = $this->rmon(
            $agent,
            'set',
            'alarmTable',
            'index=7',
            'variable=etherStatsPkts.1',
            'risingThreshold=100',
            'alarmOwner==x',
        );
        self::assertSame([0, '', ''], [$set->code(), $set->out, $set->error]);
        [$row] = $this->rowsOf($agent, 'get', 'alarm', 'index=7');
        self::assertSame(
            ['etherStatsPkts.1', 100, '=x', 'valid'],
            [$row['alarmVariable'], $row['alarmRisingThreshold'], $row['alarmOwner'], $row['alarmStatus']],
        );
        $text = $this->rmon($agent, 'get', 'alarm', 'index=7')->out;
        self::assertStringContainsString("Variable           etherStatsPkts.1\n", $text);
        self::assertSame([2, 2], [
            $this->rmon($agent, 'set', 'alarm', 'index=7', 'index=8')->code(),
            $this->rmon($agent, 'get', 'alarm')->code(),
        ]);
        $refused = $this->rmon($agent, 'set', 'alarm', 'index=7', 'risingThreshold=200');
        self::assertSame(4, $refused->code());
        self::assertStringContainsString('status=underCreation', $refused->error, 'what helps');
        foreach (['status=underCreation', 'risingThreshold=200', 'status=valid'] as $value) {
            self::assertSame(0, $this->rmon($agent, 'set', 'alarm', 'index=7', $value)->code(), $value);
        }
        [$alarm] = $this->rowsOf($agent, 'alarms');
        self::assertSame([7, 'etherStatsPkts.1', 200], [$alarm['alarm'], $alarm['variable'], $alarm['rising']]);
        self::assertSame(0, $this->rmon($agent, 'delete', 'alarm', 'index=7')->code());
        self::assertSame(1, $this->rmon($agent, 'get', 'alarm', 'index=7')->code());
        self::assertSame(4, $this->rmon($agent, 'delete', 'alarm', 'index=7')->code());
    }

    public function testHostileTexts(): void
    {
        $hostile = "=\e]0;pwned\x07\xc2\x9b2J\xffend\r\n";
        $record = \record(
            sysDescr: \text($hostile),
            sysUpTime: \u32(100),
            sysContact: \text($hostile),
            sysName: \text(''),
            sysLocation: \text(''),
            sysObjectID: \text('0.0'),
            sysServices: \i32(72),
        );
        $agent = $this->scripted(\always(\reply($record)));
        $visible = '=\x1b]0;pwned\x07\xc2\x9b2J\xffend\x0d\x0a';
        $text = $this->rmon($agent, 'system');
        self::assertSame([0, ''], [$text->code(), $text->error]);
        self::assertStringContainsString("sysDescr     $visible\n", $text->out);
        $wide = $this->onTerminal($agent, [], 'system')->end();
        self::assertDoesNotMatchRegularExpression('/\e(?!\[[0-9;]*[mK])|\x07|\x9b|\xff/', $wide->out);
        [$row] = $this->rowsOf($agent, 'system');
        self::assertSame("=\e]0;pwned\x07\u{9b}2J\u{fffd}end\r\n", $row['sysDescr']);
        self::assertStringContainsString("\"'$visible\"", $this->rmon($agent, 'system', '--csv')->out);
        self::assertStringContainsString($visible, $this->rmon($agent, 'doctor')->out);
    }

    public function testRowsOfATerminal(): void
    {
        $agent = $this->playing(self::frames());
        $run = $this->onTerminal($agent, ['COLUMNS' => '60'], 'ifTable')->end();
        self::assertStringContainsString("\e[1mIndex", $run->out);
        self::assertStringContainsString('more columns: --columns all', $run->out);
        foreach (explode("\r\n", preg_replace('/\e\[[0-9;]*[mK]/', '', $run->out)) as $line) {
            self::assertLessThanOrEqual(60, strlen($line));
        }
        $list = $this->onTerminal($agent, ['COLUMNS' => '60', 'NO_COLOR' => '1'], 'list', 'hostTable')->end();
        self::assertStringContainsString("\nhostTable       hosts      what each host sent and", $list->out);
        self::assertStringContainsString("received…\r\n", $list->out);
        $plain = $this->onTerminal($agent, ['NO_COLOR' => '1'], 'ifTable', '--columns', 'all')->end();
        self::assertStringNotContainsString("\e", $plain->out);
        self::assertStringContainsString('OutOctets', $plain->out);
        self::assertStringContainsString(
            'hlHostControlTable, which says what is counted',
            $this->onTerminal($agent, [], 'nlHost')->end()->out,
        );
        self::assertSame('', $this->rmon($agent, 'nlHost')->error, 'remarks are for people');
    }

    public function testCtrlCEndsAWaitForTheAgent(): void
    {
        $agent = $this->scripted(\always(\no_answer()));
        $run = $this->onTerminal($agent, [], 'ifTable');
        self::assertCount(1, $agent->calls(1, 60.0));
        $run->signal(2);
        self::assertSame(130, $run->code());
    }

    public function testVoice(): void
    {
        $agent = $this->playing(self::frames(), '--voice', \dirname(__DIR__, 2) . '/agent/voice.ini');
        \expect_soon(true, fn() => count($this->rowsOf($agent, 'voice', 'calls')) >= 3, 'calls of the scenario');
        $calls = $this->rowsOf($agent, 'voice', 'calls');
        self::assertSame(['h323', '3001', '3101', 60, 9], array_map(
            static fn(string $key) => $calls[0][$key],
            ['monitor', 'from', 'to', 'lost', 'jitter'],
        ));
        $lost = array_column($calls, 'lost');
        rsort($lost);
        self::assertSame($lost, array_column($calls, 'lost'), 'the worst one first');
        self::assertSame(['mgcp'], array_values(array_unique(array_column(
            $this->rowsOf($agent, 'voice', 'phones', '--monitor', 'mgcp'),
            'monitor',
        ))));
    }

    public function testDoctor(): void
    {
        $agent = $this->playing(self::frames());
        $checks = $this->rowsOf($agent, 'doctor', '--seconds', '0.2');
        $states = array_column($checks, 'state', 'what');
        self::assertSame(['ok', 'ok', 'ok'], [$states['module'], $states['agent'], $states['clock']]);
        self::assertContains('nlHost, alHost: hlHostControlTable has no row', array_column($checks, 'finding'));
        self::assertSame([], $this->rowsOf($agent, 'channelTable'), 'it leaves nothing behind');
        $none = $this->rmon(null, 'doctor');
        self::assertSame(1, $none->code());
        self::assertStringContainsString('fault agent', $none->out);
    }

    public function testTheDoctorSeesThatFramesAreNotSeen(): void
    {
        $agent = $this->bundled('--no-capture');
        $faults = array_filter(
            $this->rmon($agent, 'doctor', '--json')->rows(),
            static fn(array $row) => $row['state'] === 'fault',
        );
        self::assertStringStartsWith('lo: ', reset($faults)['finding']);
        self::assertStringContainsString('the right to capture', reset($faults)['finding']);
    }
}
