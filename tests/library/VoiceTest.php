<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Exception\BadArgument;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Catalog;
use Rmon\Voice\Call;
use Rmon\Voice\Codec;
use Rmon\Voice\EModel;
use Rmon\Voice\Phone;

/** Calls in the words of all three monitors, and what the E-model makes of them. */
final class VoiceTest extends AgentTestCase
{
    /** A row of a table in which all is 0 or empty but what is given. */
    private static function row(string $table, array $values): array
    {
        $row = [];
        foreach (Catalog::find($table)->columns as $name => $column) {
            $row[$name] = $column->type->isText() ? '' : 0;
        }
        return $values + $row;
    }

    public function testNothingLostAndNoDelay(): void
    {
        // What G.107 itself gives for its default values.
        self::assertSame('93.2', number_format(EModel::rating(0, 0), 1));
        self::assertSame('4.41', number_format(EModel::opinion(EModel::rating(0, 0)), 2));
    }

    /** @return iterable<string, array{float, float}> */
    public static function delays(): iterable
    {
        // From No = -61.1792, Ro = 94.7688, Is = 1.4136. Delay 0: no echo of the talker; Rle = 1228.5,
        // (94.7688 - 1228.5) / 2 = -566.8656, Idle = -566.8656 + sqrt(321336.6 + 169) = 0.1490.
        yield 'none' => [0.0, 94.7688 - 1.4136 - 0.1490];
        // 200 ms: TERV = 65 - 40 lg 9 = 26.8303, Re = 112.0758, Roe = 94.7688, Idte = -8.6535 + 13.2243 - 1 = 3.5708.
        // Rle = 1228.5 / 401^0.25 = 274.53, Idle = -89.8807 + 90.8160 = 0.9354. X = 1, and
        // Idd = 25 (2^(1/6) - 3 (1 + 1/729)^(1/6) + 2) = 3.0444.
        yield 'too long' => [200.0, 94.7688 - 1.4136 - 3.5708 - 0.9354 - 3.0444];
    }

    /** @dataProvider delays */
    #[DataProvider('delays')]
    public function testDelays(float $delay, float $rating): void
    {
        self::assertEqualsWithDelta($rating, EModel::rating($delay, 0), 0.002);
    }

    public function testLossesByCodec(): void
    {
        $clear = EModel::rating(50, 0);
        // Ie-eff = 95 * 2 / (2 + 4.3) = 30.159
        self::assertEqualsWithDelta($clear - 30.159, EModel::rating(50, 0.02), 0.001);
        // 11 + 84 * 2 / (2 + 19) = 19
        self::assertEqualsWithDelta($clear - 19, EModel::rating(50, 0.02, Codec::G729A), 0.001);
        // In bursts of twice the length: 11 + 84 * 2 / (2 / 2 + 19) = 19.4
        self::assertEqualsWithDelta($clear - 19.4, EModel::rating(50, 0.02, Codec::G729A, 2.0), 0.001);
        self::assertEqualsWithDelta($clear - 11, EModel::rating(50, 0, Codec::G729A), 0.001);
        self::assertEqualsWithDelta(0, EModel::rating(2000, 1.0), 0.0, 'never below 0');
    }

    public function testOpinions(): void
    {
        // 1 + 0.035 R + 7e-6 R (R - 60) (100 - R)
        self::assertEqualsWithDelta(1 + 1.75 - 0.175, EModel::opinion(50), 1e-9);
        self::assertEqualsWithDelta(1 + 2.1, EModel::opinion(60), 1e-9);
        self::assertEqualsWithDelta(1 + 3.15 + 0.189, EModel::opinion(90), 1e-9);
        self::assertSame([1.0, 1.0, 4.5], [EModel::opinion(-5), EModel::opinion(3), EModel::opinion(100)]);
        $words = array_map(EModel::word(...), [93.2, 90, 89.9, 79, 69, 59, 49]);
        self::assertSame(['best', 'best', 'high', 'medium', 'low', 'poor', 'bad'], $words);
    }

    /** @return iterable<string, array{float, float, float}> */
    public static function nonsense(): iterable
    {
        yield 'before it was said' => [-1, 0, 1];
        yield 'more lost than sent' => [0, 1.1, 1];
        yield 'less than nothing lost' => [0, -0.1, 1];
        yield 'bursts below chance' => [0, 0, 0.5];
        yield 'no number' => [NAN, 0, 1];
    }

    /** @dataProvider nonsense */
    #[DataProvider('nonsense')]
    public function testNonsenseIsRefused(float $delay, float $loss, float $burst): void
    {
        $this->expectException(BadArgument::class);
        EModel::rating($delay, $loss, Codec::G711, $burst);
    }

    public function testCodecsByName(): void
    {
        $names = ['PCMU' => Codec::G711, 'G.711' => Codec::G711, 'g729a' => Codec::G729A, 'G729/8000' => Codec::G729,
            'GSM' => Codec::GsmFullRate, 'G.726-32' => Codec::G726, 'speex' => null, '' => null, '/' => null];
        foreach ($names as $name => $codec) {
            self::assertSame($codec, Codec::named((string) $name), (string) $name);
        }
        self::assertSame([Codec::G711, Codec::G729A, null], array_map(Codec::ofSccp(...), [4, 12, 0]));
    }

    public function testACallOfSccp(): void
    {
        $call = Call::of('sccp', self::row('sccpCallTable', [
            'index' => 5, 'phone_num' => '2003', 'phone_ipAddr' => '10.20.0.13', 'phone_owner' => 'Office',
            'callee_phone_num' => '2001', 'callee_phone_ipAddr' => '10.20.0.11', 'callee_phone_owner' => 'Reception',
            'payload_type' => 4, 'callee_payload_type' => 12, 'start_time' => 1000, 'end_time' => 3500,
            'pkt_recv' => 1200, 'oct_recv' => 192000, 'pkt_lost' => 50, 'jitter' => 64, 'latency' => 180, 'flag' => 2,
            'callee_pkt_recv' => 1246, 'callee_pkt_lost' => 4, 'callee_jitter' => 21, 'callee_latency' => 176,
            'callee_flag' => 1,
        ]));
        self::assertSame(['2003', '10.20.0.13', 'Office'], array_values((array) $call->caller));
        self::assertSame(['2001', '10.20.0.11', 'Reception'], array_values((array) $call->callee));
        self::assertSame([false, 2500, 3], [$call->isRunning(), $call->duration(9999), $call->flags()]);
        self::assertSame([50, 64, 180], [$call->lost(), $call->jitter(), $call->latency()]);
        [$heard, $other] = $call->legs();
        self::assertSame([true, false], [$heard->toCaller, $other->toCaller]);
        self::assertSame([1200, 192000, 1250], [$heard->packets, $heard->octets, $heard->expected]);
        self::assertSame([Codec::G711, Codec::G729A], [$heard->codec, $other->codec]);
        // 50 of 1250, and 180 + 2 * 64 ms.
        self::assertSame([0.04, 308.0], [$heard->loss(), $heard->delay()]);
        self::assertSame(EModel::rating(308, 0.04), $heard->rating());
        self::assertSame(EModel::rating(218, 0.0032, Codec::G729A), $other->rating());
        self::assertSame($heard->rating(), $call->rating(), 'the worse of both');
    }

    public function testACallOfH323(): void
    {
        $call = Call::of('h323', self::row('h323CallTable', [
            'index' => 1, 'forward_num' => '3001', 'forward_alias' => 'meeting', 'reverse_num' => '3101',
            'start_time' => 500, 'forward_sr_pkt_sent' => 1000, 'forward_sr_pkt_lost' => 10, 'forward_sr_jitter' => 5,
            'forward_codec' => 8,
        ]));
        self::assertTrue($call->isRunning());
        self::assertSame(1500, $call->duration(2000));
        self::assertSame(['3001', 'meeting', '3101'], [
            $call->caller->number, $call->caller->name, $call->callee->number,
        ]);
        self::assertSame(0.01, $call->heardByCallee->loss(), 'what is sent forward is heard at the far end');
        self::assertNull($call->heardByCallee->codec);
        self::assertNull($call->latency());
        self::assertSame([null, null], [$call->heardByCaller->loss(), $call->heardByCaller->rating()]);
        self::assertSame(EModel::rating(10, 0.01), $call->rating());
        self::assertSame(10, $call->lost());
    }

    public function testACallOfMgcp(): void
    {
        $call = Call::of('mgcp', self::row('mgcpCallTable', [
            'index' => 2, 'caller_phone_num' => '4001', 'callee_phone_num' => '4002', 'audio_codec' => 'G729',
            'start_time' => -2, 'end_time' => -1, 'pkt_recv_1' => 90, 'pkt_loss_1' => 10, 'latency_1' => 30,
            'pkt_recv_2' => -1, 'pkt_loss_2' => 0,
        ]));
        self::assertSame([4294967294, 4294967295, 1], [$call->start, $call->end, $call->duration(0)]);
        self::assertSame([0.1, Codec::G729], [$call->heardByCaller->loss(), $call->heardByCaller->codec]);
        self::assertSame(4294967295, $call->heardByCallee->packets);
        self::assertSame(30, $call->latency());
    }

    public function testACallWithoutMedia(): void
    {
        $call = Call::of('sccp', self::row('sccpCallTable', ['start_time' => 5]));
        self::assertNull($call->rating());
        self::assertNull($call->heardByCaller->opinion());
    }

    public function testACallThatWasOverAtTheAgentsStart(): void
    {
        $call = Call::of('mgcp', self::row('mgcpCallTable', []));
        self::assertSame([false, 0], [$call->isRunning(), $call->duration(500)]);
    }

    public function testPhones(): void
    {
        $phone = Phone::of('h323', self::row('h323PhoneTable', [
            'index' => 3, 'forward_num' => '3001', 'forward_q931_ipAddr' => '10.30.0.5', 'forward_alias' => 'meeting',
            'num_call_mon' => 4, 'avg_pkt_lost' => 2, 'avg_jitter' => 7, 'worst_pkt_lost' => -1, 'worst_jitter' => 9,
        ]));
        self::assertSame([3, '3001', '10.30.0.5', 'meeting'], [
            $phone->index, $phone->party->number, $phone->party->address, $phone->party->name,
        ]);
        self::assertSame([4, 2, 7, 4294967295, 9], [
            $phone->calls, $phone->lost, $phone->jitter, $phone->worstLost, $phone->worstJitter,
        ]);
    }

    public function testMoreCallsThanAreReadAtATime(): void
    {
        $scenario = "[mgcp phone one]\nnumber = 1\n[mgcp phone two]\nnumber = 2\n"
            . str_repeat("[mgcp call]\ncaller = one\ncallee = two\n", 95);
        $agent = $this->bundled('--voice', \file_of($scenario));
        $voice = $this->probe($agent)->voice('mgcp');
        $indexes = static fn() => array_map(
            static fn(Call $call) => $call->index,
            self::listOf($voice->calls()),
        );
        \expect_soon(range(1, 95), $indexes, 'all calls, each once');
        self::assertSame(['1', '2'], array_map(
            static fn(Phone $phone) => $phone->party->number,
            self::listOf($voice->phones()),
        ));
    }

    public function testAMonitorThatThereIsNot(): void
    {
        foreach ([Call::of(...), Phone::of(...)] as $make) {
            try {
                $make('sip', []);
                self::fail('no exception');
            } catch (UnknownName $unknown) {
                self::assertSame('There is no voice monitor "sip".', substr($unknown->text, 0, 32));
            }
        }
    }
}
