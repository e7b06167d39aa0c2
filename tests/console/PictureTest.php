<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use Closure;
use DOMDocument;
use DOMElement;
use DOMXPath;
use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use Rmon\Console\Picture\Flow;
use Rmon\Console\Picture\FlowPicture;
use Rmon\Console\Picture\Flows;
use Rmon\Console\Picture\HeatMap;
use Rmon\Console\Picture\Svg;

/** Pictures of flows: their geometry, and texts that try to be more than text. */
final class PictureTest extends TestCase
{
    private const ATTRIBUTES = [
        'class', 'x', 'y', 'width', 'height', 'd', 'href', 'viewBox', 'role', 'aria-label', 'transform',
    ];

    /** @return list<Flow> */
    private static function flows(): array
    {
        return [
            new Flow('a', 'x', 600.0),
            new Flow('a', 'y', 200.0),
            new Flow('b', 'x', 100.0),
            new Flow('c', 'z', 60.0),
            new Flow('c', 'y', 40.0),
            new Flow('b', 'z', 0.0),
        ];
    }

    private static function drawn(string $class, Flows $flows, ?Closure $href = null): DOMXPath
    {
        $svg = $class::draw($flows, 'who sends', static fn(float $amount) => "$amount B", $href ?? static fn() => null);
        $document = new DOMDocument();
        self::assertTrue($document->loadXML($svg), 'well formed');
        return new DOMXPath($document);
    }

    private static function number(DOMElement $element, string $attribute): float
    {
        return (float) $element->getAttribute($attribute);
    }

    public function testTheLargestEndsAndTheOthers(): void
    {
        $flows = Flows::largest(self::flows(), 2);
        self::assertSame(['a', 'b', 'others'], $flows->sources);
        self::assertSame(['x', 'y', 'others'], $flows->destinations);
        self::assertSame([[600.0, 200.0], [100.0], [1 => 40.0, 2 => 60.0]], $flows->amounts);
        self::assertSame([1000.0, 600.0], [$flows->sum, $flows->most()]);
        self::assertSame([800.0, 100.0, 100.0], array_map($flows->sent(...), [0, 1, 2]));
        self::assertSame([700.0, 240.0, 60.0], array_map($flows->received(...), [0, 1, 2]));
    }

    public function testEndsThatAreNumbersOrNamedAsTheOthers(): void
    {
        $given = [new Flow('7', 'others', 5.0), new Flow('others', '7', 3.0), new Flow('8', '9', 1.0)];
        $flows = Flows::largest($given, 2);
        self::assertSame(['7', 'others', 'others'], $flows->sources);
        self::assertSame(['others', '7', 'others'], $flows->destinations);
        self::assertSame([[0 => 5.0], [1 => 3.0], [2 => 1.0]], $flows->amounts);
    }

    public function testTheSameEndsTwice(): void
    {
        $flows = Flows::largest([new Flow('a', 'b', 1.0), new Flow('a', 'b', 2.0)], 5);
        self::assertSame([[3.0]], $flows->amounts);
    }

    public function testSteps(): void
    {
        $steps = array_map(static fn(float $part) => HeatMap::step($part, 1.0), [1, 0.51, 0.5, 0.26, 0.25, 0.001, 0]);
        self::assertSame([8, 8, 7, 7, 6, 1, 0], $steps);
    }

    public function testAHeatMap(): void
    {
        $map = self::drawn(HeatMap::class, Flows::largest(self::flows(), 10));
        $svg = $map->document->documentElement;
        self::assertSame(['svg', 'who sends'], [$svg->tagName, $svg->getAttribute('aria-label')]);
        $cells = iterator_to_array($map->query('//rect'));
        self::assertCount(9, $cells);
        // a to x 600 of 600; a to y a third of it; b to x a sixth; c to y 1/15, c to z 1/10.
        $steps = array_map(static fn(DOMElement $cell) => $cell->getAttribute('class'), $cells);
        self::assertSame([
            'heat-8', 'heat-7', 'heat-0',
            'heat-6', 'heat-0', 'heat-0',
            'heat-0', 'heat-5', 'heat-5',
        ], $steps);
        $titles = array_map(static fn(DOMElement $cell) => $cell->textContent, $cells);
        self::assertSame("a \u{2192} x: 600 B", $titles[0]);
        self::assertSame('', $titles[2], 'nothing to say of nothing');
        [, , $width, $height] = array_map(floatval(...), explode(' ', $svg->getAttribute('viewBox')));
        $places = [];
        foreach ($cells as $cell) {
            $right = self::number($cell, 'x') + self::number($cell, 'width');
            $lower = self::number($cell, 'y') + self::number($cell, 'height');
            self::assertTrue($right <= $width && $lower <= $height, 'inside');
            $places[] = $cell->getAttribute('x') . '/' . $cell->getAttribute('y');
        }
        self::assertCount(9, array_unique($places), 'no two in one place');
        self::assertSame($cells[0]->getAttribute('y'), $cells[2]->getAttribute('y'), 'a line for each source');
        self::assertSame($cells[0]->getAttribute('x'), $cells[6]->getAttribute('x'), 'a column for each destination');
        $names = array_map(static fn(DOMElement $text) => $text->textContent, iterator_to_array($map->query('//text')));
        self::assertSame(['x: 700 B receivedx', 'y: 240 B receivedy', 'z: 60 B receivedz'], array_slice($names, 0, 3));
        self::assertSame(['a: 800 B senta', 'b: 100 B sentb', 'c: 100 B sentc'], array_slice($names, 3));
    }

    public function testStreams(): void
    {
        $flows = Flows::largest(self::flows(), 10);
        $picture = self::drawn(FlowPicture::class, $flows);
        $streams = iterator_to_array($picture->query('//path'));
        self::assertCount(5, $streams);
        $begins = [];
        foreach ($streams as $stream) {
            self::assertSame(1, preg_match(
                '/^M214 (\S+) C440 \1 440 (\S+) 666 \2 L666 (\S+) C440 \3 440 (\S+) 214 \4 Z$/D',
                $stream->getAttribute('d'),
                $at,
            ), $stream->getAttribute('d'));
            [, $from, $to, $lowerTo, $lowerFrom] = array_map(floatval(...), $at);
            // 360 high for 1000 octets.
            $title = $stream->textContent;
            $high = 0.36 * (float) substr($title, strpos($title, ': ') + 2);
            self::assertEqualsWithDelta([$high, $high], [$lowerFrom - $from, $lowerTo - $to], 0.021, $title);
            $begins[] = [$from, $lowerFrom];
        }
        self::assertEqualsWithDelta($begins[0][1], $begins[1][0], 0.011, 'both of a, one below the other');
        $ends = iterator_to_array($picture->query('//rect'));
        self::assertCount(6, $ends);
        $sides = [];
        foreach ($ends as $end) {
            $sides[$end->getAttribute('x')][] = [self::number($end, 'y'), self::number($end, 'height')];
        }
        self::assertSame([200, 666], array_keys($sides));
        $height = self::number($picture->document->documentElement, 'height');
        foreach ($sides as $side) {
            self::assertEqualsWithDelta(360.0, array_sum(array_column($side, 1)), 0.05, 'all that was sent');
            $lower = 0.0;
            $middle = -20.0;
            foreach ($side as [$y, $high]) {
                self::assertGreaterThanOrEqual($lower + 5.98, $y + 0.0, 'free between two');
                self::assertGreaterThanOrEqual($middle + 19.98, $y + $high / 2, 'room for a name');
                $lower = $y + $high;
                $middle = $y + $high / 2;
            }
            self::assertLessThanOrEqual($height, $lower);
        }
        self::assertEqualsWithDelta($sides[200][0][0], $begins[0][0], 0.011, 'a stream begins at its source');
    }

    /** @dataProvider pictures */
    #[DataProvider('pictures')]
    public function testTheOthersLeadNowhere(string $class): void
    {
        $picture = self::drawn($class, Flows::largest(self::flows(), 2), static fn(string $name) => "/host/$name");
        $links = array_map(
            static fn(DOMElement $link) => $link->getAttribute('href'),
            iterator_to_array($picture->query('//a')),
        );
        self::assertEqualsCanonicalizing(['/host/a', '/host/b', '/host/x', '/host/y'], $links);
    }

    public function testNothing(): void
    {
        foreach ([HeatMap::class, FlowPicture::class] as $class) {
            $picture = self::drawn($class, Flows::largest([new Flow('a', 'b', 0.0)], 10));
            self::assertCount(0, $picture->query('//rect | //path | //text'));
        }
    }

    /** @return iterable<string, array{class-string}> */
    public static function pictures(): iterable
    {
        yield 'heat map' => [HeatMap::class];
        yield 'streams' => [FlowPicture::class];
    }

    /** @dataProvider pictures */
    #[DataProvider('pictures')]
    public function testTextsStayTexts(string $class): void
    {
        $hostile = [
            '<script>alert(1)</script>', '"/><a onload="x', "'><g onclick='x", ']]>', '&amp;', "\xff\xfe\0\x1b[2J",
            "\u{202e}txet", str_repeat('<b>', 20000), '', '<!--',
        ];
        $flows = [];
        foreach ($hostile as $place => $name) {
            $flows[] = new Flow($name, $hostile[count($hostile) - 1 - $place], 10.0 + $place);
        }
        $picture = self::drawn($class, Flows::largest($flows, 20), static fn(string $name) => "/host?a=$name&b=\"1\"");
        $names = [];
        foreach ($picture->query('//*') as $element) {
            $names[$element->tagName] = true;
            foreach ($element->attributes as $attribute) {
                self::assertContains($attribute->name, self::ATTRIBUTES);
            }
        }
        $shape = $class === HeatMap::class ? 'rect' : 'path';
        self::assertSame([], array_diff(array_keys($names), ['svg', 'a', 'text', 'title', 'rect', $shape]));
        self::assertStringContainsString("<script>alert(1)</script>: ", $picture->document->textContent);
        self::assertSame(
            '/host?a=<script>alert(1)</script>&b="1"',
            $picture->query('//a[contains(@href, "script")]')->item(0)->getAttribute('href'),
        );
    }

    public function testNoLongTextIsDrawn(): void
    {
        $picture = self::drawn(FlowPicture::class, Flows::largest([new Flow(str_repeat('w', 65536), 'b', 1.0)], 10));
        $text = $picture->query('//text/text()')->item(0);
        self::assertSame(str_repeat('w', 24) . "\u{2026}", $text->nodeValue);
        self::assertLessThan(4000, strlen($picture->document->saveXML()));
    }

    public function testNumbers(): void
    {
        $numbers = array_map(Svg::number(...), [1.0, 1.5, 1.239, -0.001, 1e6, 100.0]);
        self::assertSame(['1', '1.5', '1.24', '0', '1000000', '100'], $numbers);
    }
}
