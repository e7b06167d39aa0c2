<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use Rmon\ControlRows;

/** What the README shows is what the command prints. */
final class ReadmeTest extends CommandTestCase
{
    /** An office in the morning: so many frames of so many octets, from host and port to host and port. */
    private const TRAFFIC = [
        [900, 1400, '10.0.4.7', 443, '10.0.1.23', 50112], [450, 60, '10.0.1.23', 50112, '10.0.4.7', 443],
        [300, 1400, '10.0.4.7', 443, '10.0.2.11', 50740], [160, 60, '10.0.2.11', 50740, '10.0.4.7', 443],
        [250, 1100, '10.0.2.11', 49822, '10.0.4.12', 22], [125, 60, '10.0.4.12', 22, '10.0.2.11', 49822],
        [80, 60, '10.0.1.23', 51000, '10.0.4.9', 53], [80, 150, '10.0.4.9', 53, '10.0.1.23', 51000],
    ];

    /** @return list<array{float, string}> */
    private static function office(): array
    {
        $frames = [];
        $at = 1.0;
        foreach (self::TRAFFIC as [$count, $octets, $from, $port, $to, $peer]) {
            // Ethernet's header and IP's; the check sequence is not in a capture.
            $room = $octets - 4 - 14 - 20;
            [$protocol, $packet] = min($port, $peer) === 53
                ? [17, \udp($port, $peer, str_repeat('x', $room - 8))]
                : [6, \tcp($port, $peer, 24, str_repeat('x', max(0, $room - 20)))];
            $frame = \ethernet(\mac(ip2long($to)), \mac(ip2long($from)), 0x0800, \ip4($from, $to, $protocol, $packet));
            for ($i = 0; $i < $count; $i++) {
                $frames[] = [$at += 0.001, $frame];
            }
        }
        return $frames;
    }

    public function testTheFirstScreen(): void
    {
        $readme = file_get_contents(\dirname(__DIR__, 2) . '/README.md');
        self::assertSame(1, preg_match('/```console\n(\$ rmon .*?)```/s', $readme, $found), 'a block of commands');
        self::assertLessThan(40, substr_count(strstr($readme, $found[1], true), "\n"), 'on the first screen');
        preg_match_all('/^\$ (.*)\n((?:(?!\$ ).*\n)*)/m', $found[1], $commands, PREG_SET_ORDER);
        self::assertGreaterThanOrEqual(3, count($commands));
        $agent = $this->playing(self::office());
        $probe = $this->probe($agent);
        $probe->withRows('test', function (ControlRows $rows) use ($agent, $commands): void {
            $rows->hosts(1);
            $rows->conversations(1);
            $rows->protocols(1);
            $this->read($agent);
            foreach ($commands as [, $command, $output]) {
                $run = $this->rmon($agent, ...array_slice(explode(' ', $command), 1));
                self::assertSame([0, '', rtrim($output)], [$run->code(), $run->error, rtrim($run->out)], $command);
            }
        });
    }
}
