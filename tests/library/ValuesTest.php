<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use Rmon\Address;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\RowStatus;
use Rmon\Schema\Catalog;
use Rmon\Schema\Column;
use Rmon\Values;

/** Values for people and back. */
final class ValuesTest extends TestCase
{
    /** @return iterable<array{string, list<int>|int}> */
    public static function addresses(): iterable
    {
        yield ['10.0.4.255', [10, 0, 4, 255]];
        yield ['fe80::1', [0xfe, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1]];
        yield ['::ffff:10.1.2.3', [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 10, 1, 2, 3]];
    }

    /**
     * @param list<int> $octets
     * @dataProvider addresses
     */
    #[DataProvider('addresses')]
    public function testAddressesThereAndBack(string $text, array $octets): void
    {
        self::assertSame($text, Address::text($octets));
        self::assertSame($octets, Address::parse($text));
    }

    public function testMacAddressesThereAndBack(): void
    {
        $octets = [2, 0, 0x5e, 0, 0xab, 255];
        self::assertSame('02:00:5e:00:ab:ff', Address::text($octets));
        foreach (['02:00:5e:00:ab:ff', '02-00-5E-00-AB-FF', '0200.5e00.abff', '02005e00abff'] as $text) {
            self::assertSame($octets, Address::parseMac($text), $text);
        }
    }

    public function testOctetsOfAnyLength(): void
    {
        self::assertSame('', Address::text(0));
        self::assertSame('', Address::text([]));
        self::assertSame('01:02:03', Address::text([1, 2, 3]));
        self::assertSame('0a', Address::hexadecimal([10]));
        self::assertSame([1, 2, 0xab], Address::parseHexadecimal('01 02:AB'));
        self::assertSame([], Address::parseHexadecimal(''));
    }

    /** @return iterable<array{callable, string}> */
    public static function noAddresses(): iterable
    {
        foreach (['', '10.0.0', '10.0.0.256', '10.0.0.1 ', '010.0.0.1x', 'fe80::1%eth0', "10.0.0.1\0"] as $text) {
            yield [Address::parse(...), $text];
        }
        foreach (['', '02:00:00:00:00', '02:00:00:00:00:0g', "02:00:00:00:00:01\n"] as $text) {
            yield [Address::parseMac(...), $text];
        }
        foreach (['1', 'xy'] as $text) {
            yield [Address::parseHexadecimal(...), $text];
        }
    }

    /** @dataProvider noAddresses */
    #[DataProvider('noAddresses')]
    public function testWhatIsNoAddress(callable $parse, string $text): void
    {
        $this->expectException(BadArgument::class);
        $parse($text);
    }

    public function testNumbers(): void
    {
        self::assertSame('0 B', Format::octets(0));
        self::assertSame('999 B', Format::octets(999));
        self::assertSame('1.0 kB', Format::octets(999.5));
        self::assertSame('1.5 kB', Format::octets(1500));
        self::assertSame('100 MB', Format::octets(99_960_000));
        self::assertSame('18.4 EB', Format::octets(18446744073709551615));
        self::assertSame('-1.5 kB', Format::octets(-1500));
        self::assertSame('0.3 bit/s', Format::bitsPerSecond(0.25));
        self::assertSame('412 Mbit/s', Format::bitsPerSecond(412_300_000));
        self::assertSame('18446744073709551616', Format::whole(18446744073709551615.0));
        self::assertSame('9007199254740993', Format::whole(9007199254740993));
        self::assertSame('00:00:01', Format::ticks(199));
        self::assertSame('1 d 01:01:01', Format::ticks(9006100));
        self::assertSame('497 d 02:27:52', Format::ticks(4294967295));
        self::assertSame('12.34 %', Format::utilization(1234));
        self::assertSame('50.0 %', Format::part(0.5));
    }

    private static function column(string $table, string $name): Column
    {
        return Catalog::find($table)->column($name);
    }

    public function testCells(): void
    {
        $values = new Values();
        $interface = static fn(string $name, mixed $value) => $values->text(self::column('ifTable', $name), $value);
        self::assertSame('up', $interface('ifOperStatus', 1));
        self::assertSame('99', $interface('ifOperStatus', 99));
        self::assertSame('10.0 Gbit/s', $interface('ifSpeed', 10_000_000_000));
        self::assertSame('00:1a:2b:3c:4d:5e', $interface('ifPhysAddress', '00:1A:2B:3C:4D:5E'));
        self::assertSame('7', $interface('ifIndex', 7));
        self::assertSame('', $interface('dsrcSlot', null));
        self::assertSame('valid', $values->text(self::column('alarmTable', 'alarmStatus'), 1));
        self::assertSame('long damaged', $values->text(self::column('filterTable', 'filterPktStatus'), 5));
        self::assertSame('short 64', $values->text(self::column('filterTable', 'filterPktStatus'), 66));
        self::assertSame('12.34 %', $values->text(self::column('etherHistoryTable', 'etherHistoryUtilization'), 1234));
        self::assertSame('2', $values->text(self::column('sccpPhoneTable', 'history'), [[], []]));
    }

    public function testExactValues(): void
    {
        $values = new Values();
        $octets = self::column('etherStatsTable', 'etherStatsOctets');
        self::assertSame(5, $values->exact($octets, 5.0));
        self::assertSame('18446744073709551616', $values->exact($octets, 18446744073709551615.0));
        self::assertSame('10.0.0.1', $values->exact(self::column('nlHostTable', 'nlHostAddress'), [10, 0, 0, 1]));
        self::assertSame('', $values->exact(self::column('nlHostTable', 'nlHostAddress'), 0));
        self::assertSame(199, $values->exact(self::column('system', 'sysUpTime'), 199));
        self::assertSame(3, $values->exact(self::column('nlHostTable', 'protocolDirLocalIndex'), 3));
        self::assertNull($values->exact($octets, null));
    }

    /** @return iterable<array{string, string, mixed, mixed}> */
    public static function given(): iterable
    {
        yield ['alarmTable', 'alarmIndex', '7', 7];
        yield ['alarmTable', 'alarmIndex', 7.0, 7];
        yield ['alarmTable', 'alarmRisingThreshold', -5, -5];
        yield ['alarmTable', 'alarmSampleType', 'deltaValue', 2];
        yield ['alarmTable', 'alarmSampleType', 'DELTAVALUE', 2];
        yield ['alarmTable', 'alarmStatus', 'invalid', 4];
        yield ['alarmTable', 'alarmStatus', RowStatus::valid, 1];
        yield ['alarmTable', 'alarmOwner', 'me', 'me'];
        yield ['filterTable', 'filterPktStatus', 'long short', 3];
        yield ['filterTable', 'filterPktStatus', ['long', 4], 5];
        yield ['filterTable', 'filterPktData', '08 00', [8, 0]];
        yield ['filterTable', 'filterPktData', range(0, 255), range(0, 255)];
        yield ['nlHostTable', 'nlHostAddress', '10.0.0.1', [10, 0, 0, 1]];
        yield ['nlHostTable', 'nlHostAddress', [1, 2], [1, 2]];
        yield ['nlHostTable', 'nlHostAddress', 0, []];
        yield ['hostTable', 'hostAddress', '02:00:00:00:00:01', [2, 0, 0, 0, 0, 1]];
        yield ['historyControlTable', 'historyControlInterval', 4294967295, 4294967295];
    }

    /** @dataProvider given */
    #[DataProvider('given')]
    public function testWhatIsGiven(string $table, string $column, mixed $given, mixed $expected): void
    {
        self::assertSame($expected, (new Values())->parse(self::column($table, $column), $given));
    }

    /** @return iterable<array{string, string, mixed}> */
    public static function refused(): iterable
    {
        yield ['alarmTable', 'alarmIndex', -1];
        yield ['alarmTable', 'alarmIndex', 4294967296];
        yield ['alarmTable', 'alarmIndex', 1.5];
        yield ['alarmTable', 'alarmIndex', true];
        yield ['alarmTable', 'alarmIndex', 'seven'];
        yield ['alarmTable', 'alarmIndex', [7]];
        yield ['alarmTable', 'alarmRisingThreshold', 2147483648];
        yield ['alarmTable', 'alarmSampleType', 'often'];
        yield ['alarmTable', 'alarmOwner', str_repeat('x', 256)];
        yield ['alarmTable', 'alarmOwner', "a\0b"];
        yield ['alarmTable', 'alarmOwner', null];
        yield ['dsmonAggControlTable', 'dsmonAggControlDescr', str_repeat('x', 65)];
        yield ['nlHostTable', 'nlHostAddress', [256]];
        yield ['nlHostTable', 'nlHostAddress', ['a' => 1]];
        yield ['nlHostTable', 'nlHostAddress', array_fill(0, 256, 1)];
        yield ['nlHostTable', 'nlHostAddress', 'host'];
        yield ['sccpPhoneTable', 'history', []];
    }

    /** @dataProvider refused */
    #[DataProvider('refused')]
    public function testWhatIsRefused(string $table, string $column, mixed $given): void
    {
        $this->expectException(BadArgument::class);
        (new Values())->parse(self::column($table, $column), $given);
    }
}
