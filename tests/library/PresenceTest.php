<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use Rmon\Presence;

/** Which agents answer. */
final class PresenceTest extends AgentTestCase
{
    /**
     * A port that takes calls, and says nothing or something else.
     *
     * @return array{resource, int}
     */
    private static function port(): array
    {
        $server = stream_socket_server('tcp://127.0.0.1:0');
        return [$server, (int) substr(strrchr(stream_socket_get_name($server, false), ':'), 1)];
    }

    public function testAllAreAskedAtOnce(): void
    {
        $agent = $this->bundled();
        [$silent, $hung] = self::port();
        [$gone, $closed] = self::port();
        fclose($gone);
        $begun = hrtime(true);
        $missing = Presence::missing([
            'agent' => ['127.0.0.1', $agent->port],
            'hung' => ['127.0.0.1', $hung],
            'also hung' => ['127.0.0.1', $hung],
            'closed' => ['127.0.0.1', $closed],
            'nobody' => ['no-such-host.invalid', 9911],
        ], 0.3);
        $seconds = (hrtime(true) - $begun) / 1e9;
        self::assertSame('It takes calls and does not answer', $missing['hung']);
        self::assertSame('It takes calls and does not answer', $missing['also hung']);
        self::assertStringContainsString('refused', strtolower($missing['closed']));
        self::assertSame('"no-such-host.invalid" has no IPv4 address', $missing['nobody']);
        self::assertArrayNotHasKey('agent', $missing);
        // The time of one, not of each; a machine under load may take some more.
        self::assertGreaterThan(0.29, $seconds);
        self::assertLessThan(5.0, $seconds);
        fclose($silent);
    }

    public function testNobodyWaitsWhenAllAnswer(): void
    {
        $agent = $this->bundled();
        $begun = hrtime(true);
        self::assertSame([], Presence::missing([['127.0.0.1', $agent->port], ['localhost', $agent->port]], 60));
        self::assertLessThan(30, (hrtime(true) - $begun) / 1e9);
    }

    public function testWhatIsNoAgent(): void
    {
        [$server, $port] = self::port();
        $child = pcntl_fork();
        if ($child === 0) {
            $taken = stream_socket_accept($server);
            fwrite($taken, "220 mail.example.net ESMTP\r\n");
            fread($taken, 100);
            posix_kill(getmypid(), SIGKILL);
        }
        self::assertSame(['What answers there is no agent'], Presence::missing([['127.0.0.1', $port]], 60));
        posix_kill($child, SIGKILL);
        pcntl_waitpid($child, $status);
    }
}
