<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use InvalidArgumentException;
use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use Rmon\Exporter\Text\Exposition;
use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\Labels;
use Rmon\Exporter\Text\MetricType;
use Rmon\Exporter\Text\Number;
use Rmon\Exporter\Text\TextFormat;

/** The two forms, letter by letter. */
final class TextTest extends TestCase
{
    /** One family of each kind, with everything that has to be escaped. */
    private static function families(): array
    {
        $counter = new Family('t_in_bytes', MetricType::Counter, "Octets, \"in\"\nC:\\net", 'bytes');
        $counter->add(Labels::text(['interface' => 'a "b" \\ c']), 10.0, 1700000000.25);
        $counter->add(Labels::text(['interface' => 'eth1', 'kind' => 'x']), 18446744073709551615.0, 1700000001.0);
        $gauge = new Family('t_load_ratio', MetricType::Gauge, 'Load.', 'ratio');
        $gauge->add('', 0.125);
        $info = new Family('t_agent', MetricType::Info, 'Who it is.');
        $info->add(Labels::text(['name' => 'probe']), 1);
        $histogram = new Family('t_wait_seconds', MetricType::Histogram, 'Waiting.', 'seconds');
        $histogram->add('server="s"', ['0.01' => 2, '1.0' => 3, '+Inf' => 3], 1700000000.0);
        return [$counter, $gauge, new Family('t_nothing', MetricType::Gauge, 'None.'), $info, $histogram];
    }

    public function testOpenMetrics(): void
    {
        $expected = <<<'END'
            # TYPE t_in_bytes counter
            # UNIT t_in_bytes bytes
            # HELP t_in_bytes Octets, \"in\"\nC:\\net
            t_in_bytes_total{interface="a \"b\" \\ c"} 10
            t_in_bytes_created{interface="a \"b\" \\ c"} 1700000000.25
            t_in_bytes_total{interface="eth1",kind="x"} 1.8446744073709552e+19
            t_in_bytes_created{interface="eth1",kind="x"} 1700000001
            # TYPE t_load_ratio gauge
            # UNIT t_load_ratio ratio
            # HELP t_load_ratio Load.
            t_load_ratio 0.125
            # TYPE t_agent info
            # HELP t_agent Who it is.
            t_agent_info{name="probe"} 1
            # TYPE t_wait_seconds histogram
            # UNIT t_wait_seconds seconds
            # HELP t_wait_seconds Waiting.
            t_wait_seconds_bucket{server="s",le="0.01"} 2
            t_wait_seconds_bucket{server="s",le="1.0"} 3
            t_wait_seconds_bucket{server="s",le="+Inf"} 3
            t_wait_seconds_created{server="s"} 1700000000
            # EOF

            END;
        self::assertSame($expected, Exposition::text(TextFormat::OpenMetrics, self::families()));
        self::assertSame("# EOF\n", Exposition::text(TextFormat::OpenMetrics, []));
    }

    public function testTheOlderForm(): void
    {
        $expected = <<<'END'
            # HELP t_in_bytes_total Octets, "in"\nC:\\net
            # TYPE t_in_bytes_total counter
            t_in_bytes_total{interface="a \"b\" \\ c"} 10
            t_in_bytes_total{interface="eth1",kind="x"} 1.8446744073709552e+19
            # HELP t_in_bytes_created When t_in_bytes_total began, in seconds since 1970.
            # TYPE t_in_bytes_created gauge
            t_in_bytes_created{interface="a \"b\" \\ c"} 1700000000.25
            t_in_bytes_created{interface="eth1",kind="x"} 1700000001
            # HELP t_load_ratio Load.
            # TYPE t_load_ratio gauge
            t_load_ratio 0.125
            # HELP t_agent_info Who it is.
            # TYPE t_agent_info gauge
            t_agent_info{name="probe"} 1
            # HELP t_wait_seconds Waiting.
            # TYPE t_wait_seconds histogram
            t_wait_seconds_bucket{server="s",le="0.01"} 2
            t_wait_seconds_bucket{server="s",le="1.0"} 3
            t_wait_seconds_bucket{server="s",le="+Inf"} 3
            # HELP t_wait_seconds_created When t_wait_seconds began, in seconds since 1970.
            # TYPE t_wait_seconds_created gauge
            t_wait_seconds_created{server="s"} 1700000000

            END;
        self::assertSame($expected, Exposition::text(TextFormat::Plain, self::families()));
        self::assertSame('', Exposition::text(TextFormat::Plain, []));
    }

    /** @return iterable<string, array{string, string}> */
    public static function accepted(): iterable
    {
        yield 'nothing said' => ['', 'Plain'];
        yield 'Prometheus' => [
            'application/openmetrics-text;version=1.0.0,application/openmetrics-text;version=0.0.1;q=0.75,'
                . 'text/plain;version=0.0.4;q=0.5,*/*;q=0.1',
            'OpenMetrics',
        ];
        yield 'a browser' => ['text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8', 'Plain'];
        yield 'the older form preferred' => ['application/openmetrics-text;q=0.2,text/plain;q=0.3', 'Plain'];
        yield 'both alike' => ['text/plain, application/openmetrics-text', 'OpenMetrics'];
        yield 'blanks and capitals' => ['Application/OpenMetrics-Text ; Version="1.0.0" ; Q=0.9', 'OpenMetrics'];
        yield 'a version that is not spoken' => ['application/openmetrics-text;version=2.0.0', 'Plain'];
        yield 'the draft' => ['application/openmetrics-text;version=0.0.1', 'Plain'];
        yield 'refused' => ['application/openmetrics-text;q=0', 'Plain'];
        yield 'a weight that is none' => ['application/openmetrics-text;q=2', 'Plain'];
        yield 'any text' => ['text/*', 'Plain'];
        yield 'any text less' => ['text/*;q=0.1,application/openmetrics-text;q=0.2', 'OpenMetrics'];
        // The range that names the type says more than the one that fits all, whichever has more weight.
        yield 'closer' => ['*/*;q=1,text/plain;q=0.1,application/openmetrics-text;q=0.5', 'OpenMetrics'];
        yield 'nonsense' => [str_repeat(';,=', 5000) . 'application/openmetrics-text', 'Plain'];
    }

    /** @dataProvider accepted */
    #[DataProvider('accepted')]
    public function testTheFormIsAskedFor(string $accept, string $expected): void
    {
        self::assertSame($expected, TextFormat::wanted($accept)->name);
    }

    public function testContentTypes(): void
    {
        self::assertSame(
            ['application/openmetrics-text; version=1.0.0; charset=utf-8', 'text/plain; version=0.0.4; charset=utf-8'],
            array_map(static fn(TextFormat $format) => $format->contentType(), TextFormat::cases()),
        );
    }

    public function testNumbers(): void
    {
        $texts = [
            '0' => 0, '-7' => -7, '4294967295' => 4294967295.0, '9007199254740992' => 2.0 ** 53,
            '1.8446744073709552e+19' => 2.0 ** 64, '0.1' => 0.1, '1.0e-7' => 1e-7, 'NaN' => NAN, '+Inf' => INF,
            '-Inf' => -INF,
        ];
        foreach ($texts as $text => $number) {
            self::assertSame((string) $text, Number::text($number));
        }
        self::assertSame(['1.0', '0.0', '0.25', '+Inf', '1000000.0'], array_map(
            Number::bound(...),
            [1.0, 0.0, 0.25, INF, 1e6],
        ));
    }

    /** @return iterable<string, array{string, string}> */
    public static function texts(): iterable
    {
        yield 'as it is' => ['eth0.100@"x"\\', 'eth0.100@"x"\\'];
        yield 'UTF-8' => ["Bü\u{6f22}\u{1f600}", "Bü\u{6f22}\u{1f600}"];
        yield 'no UTF-8' => ["caf\xe9 \xff\xfe!", "caf\u{fffd} \u{fffd}!"];
        yield 'lines, zeros, escapes' => ["a\nb\0c\x1b[2Jd\x7f", "a\u{fffd}b\u{fffd}c\u{fffd}[2Jd\u{fffd}"];
        yield 'what turns the text' => ["a\u{202e}b\u{feff}", "a\u{fffd}b\u{fffd}"];
        yield 'half a surrogate, too long a form' => ["\xed\xa0\x80\xc0\xaf", "\u{fffd}"];
        yield 'as long as it may be' => [str_repeat('x', 200), str_repeat('x', 200)];
        yield 'too long' => [str_repeat('x', 201), str_repeat('x', 200)];
        yield 'cut at a character' => [str_repeat('x', 198) . "\u{1f600}y", str_repeat('x', 198)];
        yield 'cut through a character' => [str_repeat('x', 199) . "üy", str_repeat('x', 199)];
        yield 'empty' => ['', ''];
    }

    /** @dataProvider texts */
    #[DataProvider('texts')]
    public function testWhatAgentsSayIsCleaned(string $text, string $expected): void
    {
        self::assertSame($expected, Labels::clean($text));
    }

    public function testEscapes(): void
    {
        self::assertSame('a="\\\\\\"",b="2"', Labels::text(['a' => '\\"', 'b' => 2]));
        self::assertSame('', Labels::text([]));
        self::assertSame([true, true, false, false, false, false, false], array_map(
            Labels::isName(...),
            ['a', '_B9', '', '9a', 'a-b', '__a', "a\n"],
        ));
    }

    /** @return iterable<string, array{string, string}> */
    public static function wrongNames(): iterable
    {
        $suffixed = ['a_total', 'a_created', 'a_bucket', 'a_count', 'a_sum', 'a_info'];
        foreach (['', '9a', 'a b', 'a{', "a\n", ...$suffixed] as $name) {
            yield var_export($name, true) => [$name, ''];
        }
        yield 'a unit at the wrong end' => ['a_bytes_in', 'bytes'];
        yield 'a unit without its own part' => ['abytes', 'bytes'];
    }

    /** @dataProvider wrongNames */
    #[DataProvider('wrongNames')]
    public function testNamesThatCanNotBe(string $name, string $unit): void
    {
        $this->expectException(InvalidArgumentException::class);
        new Family($name, MetricType::Gauge, '', $unit);
    }
}
