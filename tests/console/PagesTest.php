<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use Rmon\Console\Pages;

/** Every page against the bundled agent, which has played a capture. */
final class PagesTest extends ConsoleTestCase
{
    public function testEveryPageIsGivenOut(): void
    {
        $agent = $this->playing([
            [0.0, \ethernet(\mac(2), \mac(1), 0x0800, \ip4('10.0.0.1', '10.0.0.2', 17, \udp(1000, 53, 'question')))],
        ]);
        $console = $this->console(['core1' => $agent]);
        $parameters = [
            '{probe}' => 'core1', '{interface}' => '1', '{table}' => 'ifTable', '{address}' => '10.0.0.1',
        ];
        foreach (Pages::ALL as $page) {
            if ($page === Pages\SignOutPage::class) {
                continue;
            }
            $path = strtr($page::PATH, $parameters);
            if (str_contains($path, '{')) {
                continue; // a page of something that this capture hasn't got
            }
            $answer = $console->get($path);
            self::assertSame(200, $answer->status, "$path: " . $console->log());
            self::assertStringContainsString("default-src 'none'", $answer->headers['content-security-policy'], $path);
            self::assertSame([], $answer->texts('//*[contains(@class, "problem")]'), $path);
        }
        self::assertSame('', $console->log());
    }
}
