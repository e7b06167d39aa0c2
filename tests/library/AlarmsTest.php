<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Alarm\Alarm;
use Rmon\Alarm\Alarms;
use Rmon\Alarm\LogEntry;
use Rmon\Alarm\Variable;
use Rmon\Format;
use Rmon\Probe;

/** Alarms with what they watch and what was logged of them. */
final class AlarmsTest extends AgentTestCase
{
    /** @return list<array{float, string}> */
    private static function frames(int $count): array
    {
        $packet = \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1, 2, 'x'));
        return array_fill(0, $count, [1.0, \ethernet(\mac(2), \mac(1), 0x0800, $packet)]);
    }

    private static function entry(string $text, int $event = 1, int $time = 1000, int $now = 2200): LogEntry
    {
        $row = ['logEventIndex' => $event, 'logIndex' => 1, 'logTime' => $time, 'logDescription' => $text];
        return LogEntry::of($row, $now);
    }

    public function testWhatWasLogged(): void
    {
        $entry = self::entry('too many: etherStatsPkts.2 rose to 170, threshold 150');
        self::assertSame(['etherStatsPkts.2', true, 170, 150, 12.0], [
            $entry->variable, $entry->rose, $entry->value, $entry->threshold, $entry->ago,
        ]);
        $entry = self::entry('ifInOctets.1 fell to 0, threshold 5');
        self::assertSame(['ifInOctets.1', false, 0, 5], [
            $entry->variable, $entry->rose, $entry->value, $entry->threshold,
        ]);
        foreach (['a channel matched', '', 'a rose to x, threshold 5', 'rose to 3, threshold 1'] as $text) {
            self::assertNull(self::entry($text)->variable, $text);
        }
        self::assertSame(12.0, self::entry('', 1, 4294967196, 1100)->ago, 'the clock wrapped');
    }

    public function testTimesThatAreOver(): void
    {
        $times = array_map(Format::ago(...), [-1, 0.4, 59.9, 60, 3599, 3600, 86399, 86400, 200000]);
        self::assertSame([
            '0 s ago', '0 s ago', '59 s ago', '1 min ago', '59 min ago', '1 h ago', '23 h ago', '1 d ago', '2 d ago',
        ], $times);
    }

    public function testStates(): void
    {
        $probe = $this->probe($this->bundled());
        $states = [];
        foreach ([[1, 150], [1, 151], [1, 50], [1, 100], [3, 200], [9, 0]] as [$status, $value]) {
            $alarm = Alarm::of([
                'alarmIndex' => 1, 'alarmInterval' => 10, 'alarmVariable' => 'ifInErrors.1', 'alarmSampleType' => 2,
                'alarmValue' => $value, 'alarmRisingThreshold' => 150, 'alarmFallingThreshold' => 50,
                'alarmRisingEventIndex' => 1, 'alarmFallingEventIndex' => 2, 'alarmOwner' => '',
                'alarmStatus' => $status,
            ], Variable::of($probe, 'ifInErrors.1'), [
                self::entry('ifInErrors.1 rose to 9, threshold 5'), // of another alarm on the same variable
                self::entry('ifInErrors.1 rose to 170, threshold 150', event: 7),
                self::entry('ifInErrors.1 fell to 20, threshold 50', event: 2),
                self::entry('ifInErrors.1 rose to 170, threshold 150'),
            ]);
            $states[] = $alarm->state();
            self::assertSame('fell to 20 packets under 50, 12 s ago', $alarm->happened());
        }
        self::assertSame(['high', 'high', 'low', 'between', 'underCreation', 'unknown'], $states);
    }

    public function testNamesOfVariables(): void
    {
        $agent = $this->playing(self::frames(1));
        $probe = $this->probe($agent);
        $interface = $probe->interfaces()->name(1);
        $probe->table('hostControlTable')->set(hostControlIndex: 4, hostControlDataSource: 1);
        $names = [
            'etherStatsPkts.1' => "etherStatsPkts of $interface",
            'ifInOctets.1' => "ifInOctets of $interface",
            'hostInPkts.4.6.2.0.0.0.0.1' => "hostInPkts.4.6.2.0.0.0.0.1 of $interface",
            'hostInPkts.9.6.2.0.0.0.0.1' => 'hostInPkts.9.6.2.0.0.0.0.1',
            'etherStatsPkts.99' => 'etherStatsPkts.99',
            'etherStatsPkts' => 'etherStatsPkts',
            'sysUpTime.0' => 'sysUpTime.0',
            '1.3.6.1.2.1.16.1.1.1.5.1' => '1.3.6.1.2.1.16.1.1.1.5.1',
            '' => '',
        ];
        foreach ($names as $variable => $name) {
            self::assertSame($name, Variable::of($probe, $variable)->name());
        }
        self::assertSame('3 octets', Variable::of($probe, 'etherStatsOctets.1')->amount(3));
        self::assertSame('1 octet', Variable::of($probe, 'etherStatsOctets.1')->amount(1));
        self::assertSame('1,234,567 packets', Variable::of($probe, 'etherStatsPkts.1')->amount(1234567));
        self::assertSame('3', Variable::of($probe, 'nothing.1')->amount(3));
    }

    public function testAnAlarmThatWentOff(): void
    {
        $agent = $this->playing(self::frames(4));
        $probe = $this->probe($agent);
        $probe->table('eventTable')->set(eventIndex: 3, eventDescription: 'busy');
        $probe->table('alarmTable')->set(
            alarmIndex: 7,
            alarmVariable: 'etherStatsPkts.1',
            alarmInterval: 1,
            alarmSampleType: 'absoluteValue',
            alarmRisingThreshold: 3,
            alarmFallingThreshold: 1,
            alarmRisingEventIndex: 3,
        );
        $this->read($agent);
        $read = static fn() => Alarms::read($probe)->log;
        \expect_soon(1, static fn() => count($read()), 'an entry of the log');
        $read = Alarms::read($probe);
        [$alarm] = $read->alarms;
        self::assertSame(['high', 4, 7], [$alarm->state(), $alarm->value, $alarm->index]);
        self::assertMatchesRegularExpression('/^rose to 4 packets over 3, \d+ (s|min) ago$/D', $alarm->happened());
        self::assertSame('busy: etherStatsPkts.1 rose to 4, threshold 3', $read->log[0]->text);
        self::assertSame([3], array_keys($read->events));
    }

    public function testTheLatestOfALongLog(): void
    {
        $probe = $this->probe($this->bundled());
        $probe->table('eventTable')->set(eventIndex: 1, eventDescription: 'later');
        $probe->table('eventTable')->set(eventIndex: 2);
        $probe->table('eventTable')->set(eventIndex: 5);
        foreach (range(1, 37) as $alarm) {
            $probe->table('alarmTable')->set(
                alarmIndex: $alarm,
                alarmVariable: 'sysUpTime.0',
                alarmInterval: 1,
                alarmSampleType: 'absoluteValue',
                alarmRisingThreshold: 1,
                alarmRisingEventIndex: $alarm === 37 ? 5 : 2,
            );
        }
        $logged = static fn(int $most, int $event = 2) =>
            array_column(Alarms::latest($probe, $event, $most), 'logIndex');
        \expect_soon(37, static fn() => count($logged(100)) + count($logged(100, 5)), 'all alarms went off');
        self::assertSame([34, 35, 36], $logged(3));
        self::assertSame([36], $logged(1));
        self::assertSame(range(1, 36), $logged(36));
        self::assertSame([], $logged(5, 1), 'nothing was logged');
        self::assertSame([1], $logged(5, 5));
        self::assertCount(9, Alarms::read($probe, 8)->log);
        $log = Alarms::read($probe, 3)->log;
        self::assertCount(4, $log);
        $times = array_map(static fn(LogEntry $entry) => $entry->ago, $log);
        $sorted = $times;
        sort($sorted);
        self::assertSame($sorted, $times, 'the latest one first');
    }

    public function testFewerEntriesOfManyEvents(): void
    {
        $probe = $this->probe($this->bundled());
        foreach (range(1, 12) as $event) {
            $probe->table('eventTable')->set(eventIndex: $event);
            foreach ([0, 1, 2] as $more) {
                $probe->table('alarmTable')->set(
                    alarmIndex: 3 * $event + $more,
                    alarmVariable: 'sysUpTime.0',
                    alarmInterval: 1,
                    alarmSampleType: 'absoluteValue',
                    alarmRisingThreshold: 1,
                    alarmRisingEventIndex: $event,
                );
            }
        }
        $all = static fn() => count(self::listOf($probe->table('logTable')));
        \expect_soon(36, $all, 'all alarms went off');
        // Twice as many events as are read in full: half of each.
        self::assertCount(12, Alarms::read($probe, 2)->log);
        self::assertCount(24, Alarms::read($probe, 4)->log);
    }
}
