<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Capture\BufferReader;
use Rmon\Capture\FilterExpression;
use Rmon\Capture\Packet;
use Rmon\Capture\Pcap;
use Rmon\ControlRows;
use Rmon\Exception\BadArgument;
use Rmon\Probe;

/** Frames that come out of a capture buffer. */
final class BufferReaderTest extends AgentTestCase
{
    /** @return list<array{float, string}> */
    private static function frames(int $count): array
    {
        $frames = [];
        for ($number = 0; $number < $count; $number++) {
            $packet = \ip4('10.0.0.1', '10.0.0.2', 17, \udp(50000, 53, str_repeat('q', 40 + $number)));
            $frames[] = [100.0 + $number / 8, \ethernet(\mac(2), \mac(1), 0x0800, $packet)];
        }
        return $frames;
    }

    /** @param callable(Probe, int): void $look gets the probe and a buffer that has these frames */
    private function captured(array $frames, callable $look): void
    {
        $agent = $this->playing($frames);
        $probe = $this->probe($agent);
        $probe->withRows('test', function (ControlRows $rows) use ($agent, $probe, $look): void {
            $buffer = $rows->capture(1)->index;
            $this->read($agent);
            $look($probe, $buffer);
        });
    }

    public function testAFileOfAllOfThem(): void
    {
        // More than one page.
        $frames = self::frames(450);
        $this->captured($frames, static function (Probe $probe, int $buffer) use ($frames): void {
            $pieces = iterator_to_array(BufferReader::on($probe, $buffer)->pcap(), false);
            self::assertGreaterThan(2, count($pieces), 'not all at once');
            $file = implode('', $pieces);
            self::assertSame('4d3cb2a1020004000000000000000000ffff000001000000', bin2hex(substr($file, 0, 24)));
            $at = 24;
            $first = null;
            foreach ($frames as $number => [, $octets]) {
                ['s' => $seconds, 'n' => $nanoseconds, 'c' => $captured, 'l' => $length]
                    = unpack('Vs/Vn/Vc/Vl', $file, $at);
                self::assertSame([strlen($octets), strlen($octets)], [$captured, $length]);
                self::assertSame($octets, substr($file, $at + 16, $captured));
                $first ??= $seconds * 1000000000 + $nanoseconds;
                self::assertSame($number * 125000000, $seconds * 1000000000 + $nanoseconds - $first);
                $at += 16 + $captured;
            }
            self::assertSame(strlen($file), $at);
        });
    }

    public function testEachFrameOnce(): void
    {
        $this->captured(self::frames(5), static function (Probe $probe, int $buffer): void {
            $reader = BufferReader::on($probe, $buffer);
            $indexes = static fn(array $packets) => array_map(static fn(Packet $packet) => $packet->index, $packets);
            self::assertSame([1, 2], $indexes($reader->next(2)));
            self::assertSame([3, 4, 5], $indexes($reader->next()));
            self::assertSame([], $reader->next());
            self::assertSame(0, $reader->lost);
        });
    }

    public function testWhatWasGoneIsCounted(): void
    {
        $buffer = \record(
            ...array_map(\i32(...), [0, 7, 1, 1, 2, 100, 100, 0, -1, 4096, 2, 900]),
            ...[\text('lab'), \i32(1)],
        );
        $system = \record(\text('probe'), \u32(1000), ...array_map(\text(...), ['', '', '', '']), ...[\i32(72)]);
        $packet = static fn(int $index, int $time) => \record(
            ...array_map(\u32(...), [0, 7, $index, $index]),
            ...[\byte_list('octets'), \u32(10), \u32($time), \u32(0), \u32(5)],
        );
        $none = \record(...array_map(\u32(...), [2, 0, 0, 0, 0, 0, 0, 0, 0]));
        $replies = [$buffer, $system, $packet(3, 20), $packet(7, 1020), $none];
        $before = (int) (microtime(true) * 1e9);
        $reader = BufferReader::on($this->probe($this->scripted(...array_map(\reply(...), $replies))), 7);
        $packets = $reader->next();
        self::assertSame([3, 7], array_column($packets, 'index'));
        self::assertSame(['octets', 6], [$packets[0]->octets, $packets[0]->length], 'without its check sequence');
        self::assertSame(1000000000, $packets[1]->time - $packets[0]->time);
        // The buffer was a second old: the first packet came 0.98 s ago.
        self::assertEqualsWithDelta($before - 980000000, $packets[0]->time, 60e9);
        self::assertSame(2 + 3, $reader->lost);
    }

    public function testNoSuchBuffer(): void
    {
        $probe = $this->probe($this->bundled());
        $thrown = $this->thrown(static fn() => BufferReader::on($probe, 9));
        self::assertInstanceOf(BadArgument::class, $thrown);
        self::assertSame('There is no capture buffer 9.', $thrown->text);
    }

    public function testARecordByHand(): void
    {
        $record = Pcap::record(new Packet(1, 1700000000123456789, "\x01\x02", 60));
        // 0x6553f100 s, 0x075bcd15 ns; 2 octets of 60.
        self::assertSame('00f1536515cd5b07020000003c0000000102', bin2hex($record));
    }

    public function testAFilterThatIsTooLong(): void
    {
        $thrown = $this->thrown(static fn() => FilterExpression::parse(str_repeat('(', 4097)));
        self::assertInstanceOf(BadArgument::class, $thrown);
        self::assertSame('A filter has at most 4096 octets.', $thrown->text);
        self::assertSame(
            'The filter ends too early.',
            $this->thrown(static fn() => FilterExpression::parse(str_repeat('(', 4096)))->text,
        );
    }
}
