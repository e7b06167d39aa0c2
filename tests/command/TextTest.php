<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use Rmon\Command\Output\JsonWriter;
use Rmon\Command\Output\Text;

/** What becomes of texts that come from the network. */
final class TextTest extends TestCase
{
    /** @return iterable<string, array{string, string}> */
    public static function texts(): iterable
    {
        yield 'plain' => ['eth0', 'eth0'];
        yield 'nothing' => ['', ''];
        yield 'an escape sequence' => ["\e[2Jx", '\x1b[2Jx'];
        yield 'lines' => ["a\r\nb\tc", 'a\x0d\x0ab\x09c'];
        yield 'delete' => ["\x7f", '\x7f'];
        yield 'the control sequence introducer of Latin-1' => ["\xc2\x9b31m", '\xc2\x9b31m'];
        yield 'the same as an invalid octet' => ["\x9b31m", '\x9b31m'];
        yield 'letters' => ['Größe ☎ 電話 😀', 'Größe ☎ 電話 😀'];
        yield 'Latin-1' => ["Gr\xf6\xdfe", 'Gr\xf6\xdfe'];
        yield 'a letter that is cut' => ["a\xe2\x82", 'a\xe2\x82'];
        yield 'an overlong slash' => ["\xc0\xaf", '\xc0\xaf'];
        yield 'half of a surrogate' => ["\xed\xa0\x80", '\xed\xa0\x80'];
        yield 'beyond the last character' => ["\xf4\x90\x80\x80", '\xf4\x90\x80\x80'];
        yield 'letters among invalid octets' => ["ö\xff\e", 'ö\xff\x1b'];
        yield 'the other direction' => ["\u{202e}txt", '\xe2\x80\xaetxt'];
        yield 'an isolate' => ["\u{2066}x", '\xe2\x81\xa6x'];
        yield 'a line separator' => ["\u{2028}", '\xe2\x80\xa8'];
        yield 'nothing of a width' => ["\u{feff}\u{200b}", '\xef\xbb\xbf\xe2\x80\x8b'];
    }

    /** @dataProvider texts */
    #[DataProvider('texts')]
    public function testVisible(string $text, string $visible): void
    {
        self::assertSame($visible, Text::visible($text));
    }

    public function testNoOctetGetsThrough(): void
    {
        for ($octet = 0; $octet < 256; $octet++) {
            $shown = Text::visible(chr($octet));
            self::assertMatchesRegularExpression('/^[\x20-\x7e]+$/D', $shown);
            foreach ([$shown, JsonWriter::encode(chr($octet))] as $form) {
                self::assertDoesNotMatchRegularExpression('/[\x00-\x1f\x7f-\xff]/', $form);
            }
        }
    }

    public function testWidths(): void
    {
        self::assertSame([4, 4, 4], array_map(Text::width(...), ['eth0', 'Größ', '電話']));
        self::assertSame(['  電', 'ö   '], [Text::padLeft('電', 4), Text::padRight('ö', 4)]);
    }

    public function testCutTexts(): void
    {
        self::assertSame(['eth0', 'et…', '電…'], [Text::cut('eth0', 4), Text::cut('eth0', 3), Text::cut('電話', 3)]);
    }

    /** @return iterable<string, array{string, string}> */
    public static function cells(): iterable
    {
        yield 'plain' => ['eth0', 'eth0'];
        yield 'a comma' => ['a,b', '"a,b"'];
        yield 'quotes' => ['say "x"', '"say ""x"""'];
        yield 'a space at an end' => ['x ', '"x "'];
        yield 'a formula' => ['=1+1', '"\'=1+1"'];
        yield 'a sum' => ['+1', '"\'+1"'];
        yield 'a difference' => ['-1', '"\'-1"'];
        yield 'a function' => ['@SUM(A1)', '"\'@SUM(A1)"'];
        yield 'behind a tab' => ["\t=1", '\x09=1'];
        yield 'a line' => ["a\n=1", 'a\x0a=1'];
    }

    /** @dataProvider cells */
    #[DataProvider('cells')]
    public function testCells(string $text, string $cell): void
    {
        self::assertSame($cell, Text::csv($text));
    }

    public function testJson(): void
    {
        self::assertSame('{"a":"\u001b[0m\u009b\u007f","b":"\ufffd","c":1.0}', JsonWriter::encode(
            ['a' => "\e[0m\u{9b}\x7f", 'b' => "\xff", 'c' => 1.0],
        ));
    }
}
