<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Capture\FilterExpression;
use Rmon\Capture\FilterRows;
use Rmon\ControlRows;
use Rmon\Exception\BadArgument;

/** Filters in usual words, held against what tcpdump makes of the same words, and capture files. */
final class CaptureTest extends CommandTestCase
{
    /** IPv4 with options in its header, so many words of four octets. */
    private static function withOptions(string $packet, int $words): string
    {
        $length = 20 + 4 * $words;
        return pack('CCn', 0x45 + $words, 0, $length + strlen($packet) - 20) . substr($packet, 4, 6) . "\0\0"
            . substr($packet, 12, 8) . str_repeat("\1", 4 * $words) . substr($packet, 20);
    }

    /** A later fragment: what stands where ports would be is data. */
    private static function later(string $packet): string
    {
        return substr($packet, 0, 6) . pack('n', 100) . substr($packet, 8);
    }

    /** @return list<array{float, string}> frames that differ in all that filters tell apart */
    private static function everything(): array
    {
        $frames = [];
        $at = 1.0;
        $add = static function (string $frame) use (&$frames, &$at): void {
            // Each its own length as well.
            $frames[] = [$at += 0.001, $frame . str_repeat("\0", count($frames))];
        };
        $hosts = ['10.0.0.1', '10.0.0.2', '10.0.1.3', '192.168.7.7'];
        $payloads = [
            [6, \tcp(40000, 443, 24, 'hello')], [6, \tcp(443, 40001, 24, 'hello')], [6, \tcp(22, 25, 24, 'hello')],
            [17, \udp(50000, 53, 'question')], [17, \udp(53, 443, 'answer')], [1, "\x08\0\0\0\0\1\0\1" . 'echo'],
            [132, pack('nnNN', 443, 9, 1, 1)],
        ];
        foreach ($hosts as $from => $source) {
            foreach ($hosts as $to => $destination) {
                [$protocol, $payload] = $payloads[($from * 4 + $to) % count($payloads)];
                $add(\ethernet(\mac($to), \mac($from), 0x0800, \ip4($source, $destination, $protocol, $payload)));
            }
        }
        foreach ($payloads as [$protocol, $payload]) {
            $packet = \ip4('10.0.0.1', '10.0.0.2', $protocol, $payload);
            $add(\ethernet(\mac(1), \mac(2), 0x0800, self::withOptions($packet, 1)));
            $add(\ethernet(\mac(1), \mac(2), 0x0800, self::withOptions($packet, 10)));
            $add(\ethernet(\mac(1), \mac(2), 0x0800, self::later($packet)));
            $add(\ethernet(\mac(1), \mac(2), 0x86dd, \ip6('2001:db8::1', '2001:db8::2', $protocol, $payload)));
        }
        $add(\ethernet(\mac(1), \mac(2), 0x86dd, \ip6('2001:db8::2', '2001:db8:1::1', 58, "\x80\0\0\0")));
        $add(\ethernet(
            str_repeat("\xff", 6),
            \mac(3),
            0x0806,
            \arp(1, \mac(3), '10.0.0.1', str_repeat("\0", 6), '10.0.0.2'),
        ));
        $add(\ethernet(\mac(3), \mac(4), 0x0806, \arp(2, \mac(4), '10.0.0.2', \mac(3), '10.0.0.1')));
        $add(\ethernet("\x01\0\x5e\0\0\1", \mac(3), 0x0800, \ip4('10.0.0.1', '224.0.0.1', 17, \udp(1, 2, 'x'))));
        $add(\ethernet(\mac(3), \mac(4), 0x88cc, 'neighbours'));
        return $frames;
    }

    /** @return iterable<string, array{list<string>}> */
    public static function expressions(): iterable
    {
        yield 'layers' => [[
            'ip', 'ip6', 'arp', 'tcp', 'udp', 'icmp', 'icmp6', 'sctp', 'ip6 and tcp', 'not ip', 'not (tcp or udp)',
            'broadcast', 'multicast',
            'not arp and not ip6', '',
        ]];
        yield 'addresses' => [[
            'host 10.0.0.1', 'src host 10.0.0.1', 'dst 10.0.0.2', 'host 2001:db8::1', 'net 10.0.0.0/23',
            'src net 10.0.1.0/24',
            'net 2001:db8::/48', 'host 10.0.0.1 and host 10.0.0.2', 'host 10.0.0.1 or 192.168.7.7', 'ip host 10.0.0.1',
            'src host 10.0.0.1 and not dst host 10.0.0.2', 'net 10.0.0.0/9 and icmp', 'arp host 10.0.0.1',
            'ether host 02:00:00:00:00:03', 'ether src 02:00:00:00:00:01',
        ]];
        yield 'ports' => [[
            'port 443', 'tcp port 443', 'tcp dst port 443', 'udp src port 53', 'port 443 or 53', 'not port 443',
            'host 10.0.0.1 and port 443', 'host 10.0.0.1 and tcp port 443', 'host 2001:db8::1 and udp port 53',
            'tcp and not port 22', 'udp and not host 10.0.0.1', 'src host 10.0.0.1 and tcp and not dst port 443',
            'ether src 02:00:00:00:00:02 and tcp port 22',
        ]];
    }

    /**
     * @dataProvider expressions
     * @param list<string> $expressions
     */
    #[DataProvider('expressions')]
    public function testFiltersMeanWhatTcpdumpTakesThemFor(array $expressions): void
    {
        $file = \capture_file(self::everything());
        $agent = \reading_agent([$file]);
        $probe = $this->probe($agent);
        $filters = new FilterRows($probe);
        $compare = function (ControlRows $rows) use ($probe, $agent, $filters, $expressions, $file): void {
            $buffers = [];
            foreach ($expressions as $expression) {
                $filter = FilterExpression::parse($expression);
                $buffers[$expression] = $rows->capture(1, $filters->of($filter), failed: $filter->failed)->index;
            }
            $this->read($agent);
            foreach ($buffers as $expression => $buffer) {
                $captured = [];
                foreach ($probe->table('captureBufferTable', control: $buffer) as $row) {
                    $captured[] = bin2hex(pack('C*', ...$row['captureBufferPacketData']));
                }
                self::assertNotSame([], $captured, $expression);
                self::assertSame(self::tcpdump($file, $expression), $captured, $expression);
            }
        };
        $probe->withRows('test', $compare);
        \end_agent($agent);
    }

    /** @return list<string> frames that tcpdump takes, as hexadecimal digits */
    private static function tcpdump(string $file, string $expression): array
    {
        $words = preg_replace(
            ['/\bbroadcast\b/', '/\bmulticast\b/'],
            ['ether broadcast', 'ether multicast'],
            $expression,
        );
        [$code, $output, $error] = \run('tcpdump', '-r', $file, '-w', '-', $words);
        self::assertSame(0, $code, $error);
        return array_map(bin2hex(...), self::framesOf($output));
    }

    /** @return list<string> */
    private static function framesOf(string $capture): array
    {
        $frames = [];
        for ($at = 24; $at < strlen($capture); $at += 16 + $length) {
            $length = unpack('V', $capture, $at + 8)[1];
            $frames[] = substr($capture, $at + 16, $length);
        }
        return $frames;
    }

    public function testWhatRowsCantSayIsRefused(): void
    {
        $refused = [
            'host 10.0.0.1 or not ip' => 'beside an "or"',
            'tcp portrange 1' => '"portrange" is no word',
            'port 20-30' => 'no ranges of ports',
            'host 10.0.0.0/8' => 'net 10.0.0.0/8',
            'net 10.0.0.1/8' => 'has bits behind its first 8',
            'tcp and udp' => 'No frame can be all',
            'host' => 'where a value should be',
            '(tcp' => 'A ")" is missing',
            'tcp)' => 'ends before ")"',
            'tcp and' => 'ends too early',
            'src dst 10.0.0.1' => 'doesn\'t make sense',
            'port 65536' => 'is no port',
            'vlan 4096' => 'is no VLAN',
            'ether host 10.0.0.1' => '',
            'host www.example.org' => '',
            'icmp port 7' => 'has no ports',
        ];
        foreach ($refused as $expression => $reason) {
            $thrown = $this->thrown(static fn() => FilterExpression::parse($expression));
            self::assertInstanceOf(BadArgument::class, $thrown, $expression);
            self::assertStringContainsString($reason, $thrown->getMessage());
        }
        $many = implode(' or ', array_map(static fn(int $last) => "host 10.0.0.$last and port 443", range(1, 20)));
        $probe = $this->probe($this->playing(self::frames()));
        foreach ([$many, 'host 10.0.0.1 and not port 53'] as $expression) {
            $thrown = $this->thrown(static fn() => (new FilterRows($probe))->of(FilterExpression::parse($expression)));
            self::assertInstanceOf(BadArgument::class, $thrown);
            self::assertStringContainsString('rows of the filter table, and at most', $thrown->getMessage());
        }
    }

    public function testAStreamThatProgramsRead(): void
    {
        $agent = $this->playing(self::frames());
        $name = $this->probe($agent)->interfaces()->name(1);
        $run = $this->begin(
            $agent,
            'capture',
            '--on',
            $name,
            'host 10.0.0.1 and port 53 or host 10.0.0.2',
            '--write',
            '-',
            '--count',
            '2',
        );
        $this->awaitRow($agent, 'bufferControlTable', 'bufferControlStatus');
        $this->awaitRow($agent, 'channelTable', 'channelDataControl');
        $this->read($agent);
        self::assertSame([0, ''], [$run->code(), $run->error]);
        $frames = self::frames();
        self::assertSame([$frames[1][1], $frames[3][1]], self::framesOf($run->out));
        self::assertSame("\x4d\x3c\xb2\xa1", substr($run->out, 0, 4), 'nanoseconds');
        // The second frame came half a second after the first.
        $time = static fn(int $at) => unpack('V', $run->out, $at)[1] * 1000000000 + unpack('V', $run->out, $at + 4)[1];
        self::assertSame(500000000, $time(24 + 16 + strlen($frames[1][1])) - $time(24));
        [$code, $text, $error] = \run('tcpdump', '-n', '-r', \file_of($run->out));
        self::assertSame(0, $code, $error);
        self::assertMatchesRegularExpression("/10\.0\.0\.2\.40002 > 10\.0\.9\.9\.443.*\n.*10\.0\.8\.8\.53/", $text);
        foreach (['filterTable', 'channelTable', 'bufferControlTable'] as $table) {
            self::assertSame([], $this->rowsOf($agent, $table), 'nothing stays behind');
        }
    }

    public function testCtrlCEndsItWell(): void
    {
        $agent = $this->playing(self::frames());
        $name = $this->probe($agent)->interfaces()->name(1);
        $file = \file_of('');
        $run = $this->begin($agent, 'capture', '--on', $name, '--write', $file);
        $this->awaitRow($agent, 'channelTable', 'channelDataControl');
        $this->read($agent);
        $run->until(static fn() => filesize($file) >= 24 + array_sum(array_map(
            static fn(array $frame) => 16 + strlen($frame[1]),
            self::frames(),
        )) || clearstatcache());
        $run->signal(2);
        self::assertSame([0, '', ''], [$run->code(), $run->out, $run->error]);
        self::assertSame(array_column(self::frames(), 1), self::framesOf(file_get_contents($file)));
        self::assertSame([], $this->rowsOf($agent, 'channelTable'), 'nothing stays behind');
    }

    public function testAReaderThatGoesAway(): void
    {
        $agent = $this->playing(self::frames());
        $name = $this->probe($agent)->interfaces()->name(1);
        $run = $this->begin($agent, 'capture', '--on', $name, '--write', '-');
        $this->awaitRow($agent, 'channelTable', 'channelDataControl');
        $run->closeOutput();
        $this->read($agent);
        self::assertSame([141, ''], [$run->code(), $run->error]);
        self::assertSame([], $this->rowsOf($agent, 'channelTable'), 'nothing stays behind');
    }

    public function testMistakes(): void
    {
        $agent = $this->playing(self::frames());
        $name = $this->probe($agent)->interfaces()->name(1);
        $mistakes = [
            'Which interface?' => ['tcp', '-w', '-'],
            'Where to?' => ['tcp', '--on', $name],
            'no interface "eth99"' => ['--on', 'eth99', '-w', '-'],
            "\"/no/such/x\" can't be written" => ['--on', $name, '-w', '/no/such/x'],
        ];
        foreach ($mistakes as $text => $arguments) {
            $run = $this->rmon($agent, 'capture', ...$arguments);
            self::assertSame([2, ''], [$run->code(), $run->out], $text);
            self::assertStringContainsString($text, $run->error);
        }
        $terminal = $this->onTerminal($agent, [], 'capture', '--on', $name, '-w', '-')->end();
        self::assertSame(2, $terminal->code());
        self::assertStringContainsString('nothing for a terminal', $terminal->out);
    }
}
