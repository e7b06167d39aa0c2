<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use Rmon\Console\Table\Csv;
use Rmon\Console\Text;

/** Texts from agents, in every place where one can stand. */
final class TextsTest extends ConsoleTestCase
{
    /** @return array<string, string> such as the bundled agent takes */
    private static function hostile(): array
    {
        return [
            'markup' => '<script>alert(1)</script>',
            'attribute' => '" onmouseover="alert(1)" x=\'',
            'template' => '{{ "ran" ~ "away" }}{% include "/etc/passwd" %}',
            'entity' => '&lt;b&gt; &amp;',
            'formula' => '=HYPERLINK("http://evil.example";"x")',
        ];
    }

    public function testTextsAreEscapedAndReadable(): void
    {
        $agent = $this->bundled();
        $probe = $this->probe($agent);
        $index = 0;
        foreach (self::hostile() as $text) {
            $probe->table('eventTable')->set(
                eventIndex: ++$index,
                eventDescription: $text,
                eventType: 2,
                eventCommunity: $text,
                eventOwner: $text,
            );
        }
        $probe->table('system')->set(
            sysName: self::hostile()['markup'],
            sysContact: self::hostile()['attribute'],
            sysLocation: self::hostile()['template'],
        );
        $console = $this->console(['core1' => $agent]);
        $paths = [
            '/', '/probe/core1', '/probe/core1/settings', '/probe/core1/alarms', '/probe/core1/table/eventTable',
            '/probe/core1/table/eventTable?filter=%3Cscript%3E&sort=eventOwner',
            '/probe/core1/table/system',
        ];
        foreach ($paths as $path) {
            $answer = $console->get($path);
            self::assertSame(200, $answer->status, $path);
            self::assertStringNotContainsString('<script>alert', $answer->body, $path);
            self::assertSame([], $answer->texts('//main//bdi[contains(., "ranaway")]'), "$path: a template ran");
            self::assertSame(0, $answer->page()->query('//*[@onmouseover]')->length, $path);
        }
        $cells = array_merge(...$console->get('/probe/core1/table/eventTable')->table('rows'));
        self::assertContains('<script>alert(1)</script>', $cells);
        self::assertContains('" onmouseover="alert(1)" x=\'', $cells);
        self::assertContains('&lt;b&gt; &amp;', $cells);
        self::assertSame('', $console->log());
    }

    public function testWhatPeopleAskForIsEscapedToo(): void
    {
        $console = $this->console(['core1' => $this->bundled()]);
        $mean = rawurlencode('"><script>alert(1)</script>');
        $paths = [
            "/probe/core1/table/ifTable?filter=$mean&sort=$mean&columns=$mean&rows=$mean&page=$mean&x$mean=$mean",
            "/probe/core1/table/$mean", "/probe/core1/$mean/hosts", "/probe/$mean", "/$mean", "/sign-in?to=$mean",
            "/probe/core1/lo/host/$mean", "/probe/core1/table/ifTable?behind=$mean", '/?part=%3Cx%3E',
        ];
        foreach ($paths as $path) {
            $answer = $console->get($path);
            self::assertContains($answer->status, [200, 404], $path);
            self::assertStringNotContainsString('<script>alert', $answer->body, $path);
        }
        self::assertSame('', $console->log());
    }

    /** The agent answers that it is there, with its system group, and that it has no interfaces. */
    private function sayingOf(string $description, string $name): Served
    {
        $system = \record(
            sysDescr: \text($description),
            sysUpTime: \u32(100),
            sysContact: \text(''),
            sysName: \text($name),
            sysLocation: \text(''),
            sysObjectID: \text('1.3.6.1'),
            sysServices: \i32(72),
        );
        return $this->console(['core1' => $this->scripted(\reply(''), \reply($system), \always(\reply(\i32(2))))]);
    }

    public function testOctetsThatAreNoText(): void
    {
        $page = $this->sayingOf("caf\xe9 \xff\xfe", "user\u{202e}gpj.exe\n\x1b[1m")->get('/probe/core1/table/system');
        self::assertSame(200, $page->status, $page->body);
        self::assertTrue(mb_check_encoding($page->body, 'UTF-8'));
        self::assertDoesNotMatchRegularExpression('/\x{202e}|\x1b/u', $page->body);
        self::assertContains("user\u{fffd}gpj.exe\u{240a}\u{241b}[1m", $page->table('rows')[0]);
        $json = $this->sayingOf("caf\xe9", 'n')->get('/probe/core1/table/system?format=json&part=rows');
        self::assertSame("caf\u{fffd}", json_decode($json->body, true, 512, JSON_THROW_ON_ERROR)[0]['sysDescr']);
    }

    public function testALongTextIsCutWhereItIsShownAndWholeWhereItIsTaken(): void
    {
        $long = str_repeat('x', 65536);
        $channel = \record(
            status: \i32(0),
            numbers: str_repeat(\u32(1), 9),
            channelDescription: \text($long),
            channelOwner: \text(''),
            channelStatus: \i32(1),
            channelCreateTime: \u32(0),
            channelDroppedFrames: \u32(0),
        );
        $none = \record(status: \i32(2), zeros: str_repeat(\u32(0), 14));
        $steps = [\reply(''), \reply($channel), \reply($none)];
        $path = '/probe/core1/table/channelTable?columns=channelDescription';
        $page = $this->console(['core1' => $this->scripted(...$steps, ...[\always(\reply(\i32(2)))])])->get($path);
        self::assertSame(200, $page->status, $page->body);
        self::assertSame(str_repeat('x', 200) . "\u{2026}", $page->table('rows')[0][0]);
        self::assertLessThan(30000, strlen($page->body));
        $csv = $this->console(['core1' => $this->scripted(...$steps)])->get("$path&format=csv&part=rows");
        self::assertSame("channelDescription\r\n$long\r\n", $csv->body);
    }

    public function testWhatIsShown(): void
    {
        self::assertSame('plain', Text::shown('plain'));
        self::assertSame("a\u{2400}b\u{241b}[1m", Text::shown("a\0b\x1b[1m"));
        self::assertSame("\u{240a}", Text::shown("\n"));
        self::assertSame("caf? ??", strtr(Text::shown("caf\xe9 \xff\xfe"), ["\u{fffd}" => '?']));
        self::assertSame("\u{fffd}\u{fffd}", Text::shown("\u{202e}\u{200f}"));
        // Cut between characters, not within one.
        self::assertSame("\u{20ac}\u{20ac}\u{2026}", Text::shown("\u{20ac}\u{20ac}\u{20ac}", 2));
        self::assertTrue(mb_check_encoding(Text::shown(str_repeat("a\u{1f600}", 500)), 'UTF-8'));
    }

    public function testCellsThatAProgramForTablesWouldRun(): void
    {
        $cells = [
            '=1+1' => "\"'=1+1\"", '+1' => '+1', '-1' => '-1', '-1+1' => "\"'-1+1\"", '@SUM(A1)' => "\"'@SUM(A1)\"",
            "\t=1" => "\"'\t=1\"", ' =1' => "\"' =1\"", '10.0.0.1' => '10.0.0.1', 'a,b' => '"a,b"',
            'say "x"' => '"say ""x"""', "two\r\nlines" => "\"two\r\nlines\"", '' => '',
        ];
        foreach ($cells as $cell => $expected) {
            self::assertSame("$expected\r\n", Csv::line([(string) $cell]));
        }
        self::assertSame("-1,18446744073709551616,,0.1\r\n", Csv::line([-1, 18446744073709551616.0, null, 0.1]));
    }
}
