<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Shape;
use Rmon\Schema\Type;
use Rmon\Schema\Writer;

/** The protocol directory, the protocol distribution and the address map (RFC 2021). */
final class Protocols
{
    private const RFC_2021 = 'RFC 2021';

    private const CONFIGS = [1 => 'notSupported', 2 => 'supportedOff', 3 => 'supportedOn'];

    private const FLAGS = [
        1 => 'network', 2 => 'ip', 4 => 'leaf', 8 => 'extension', 16 => 'ipDescendant', 32 => 'autoLearned',
        64 => 'base', 128 => 'other',
    ];

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::lastChange(),
            self::directory(),
            self::directoryByIndex(),
            self::distributionControl(),
            self::distribution(),
            self::others(),
            self::addressMapScalars(),
            self::addressMapControl(),
            self::addressMap(),
        ];
    }

    private static function lastChange(): TableSchema
    {
        return new TableSchema(
            name: 'protocolDirLastChange',
            title: 'when the protocol directory changed last',
            group: 'protocolDir',
            rfc: self::RFC_2021,
            keys: [],
            columns: [Column::ticks('protocolDirLastChange')],
            reader: Reader::one('rmon_pdir_lastchange_get', Shape::Number)->quiet(answersNone: false),
        );
    }

    private static function directory(): TableSchema
    {
        return new TableSchema(
            name: 'protocolDirTable',
            title: 'protocols that the agent knows',
            group: 'protocolDir',
            rfc: self::RFC_2021,
            keys: [Key::octets('protocolDirID'), Key::octets('protocolDirParameters')],
            columns: [
                ...self::identity(),
                Column::flags('protocolDirType', [1 => 'extensible', 2 => 'addressRecognitionCapable']),
                ...self::configs('AddressMap', 'Host', 'Matrix'),
                Column::text('protocolDirOwner'),
                Column::status('protocolDirStatus'),
                ...self::configs('Art'),
                ...self::marks(),
            ],
            reader: Reader::pages('rmon_pdir'),
            writer: Writer::set(
                'rmon_pdir_set',
                'protocolDirID',
                'protocolDirParameters',
                'protocolDirDescr',
                'protocolDirAddressMapConfig',
                'protocolDirHostConfig',
                'protocolDirMatrixConfig',
                'protocolDirArtConfig',
                'protocolDirOwner',
                'protocolDirStatus',
            ),
            defaults: [
                'protocolDirAddressMapConfig' => 1,
                'protocolDirHostConfig' => 3,
                'protocolDirMatrixConfig' => 3,
                'protocolDirArtConfig' => 1,
            ],
        );
    }

    private static function directoryByIndex(): TableSchema
    {
        return new TableSchema(
            name: 'protocolDirByIndex',
            title: 'protocols that the agent knows, by the number that other tables give them',
            group: 'protocolDir',
            rfc: self::RFC_2021,
            keys: [Key::protocol('protocolDirLocalIndex')],
            columns: [...self::identity(), ...self::configs('AddressMap', 'Host', 'Matrix', 'Art'), ...self::marks()],
            reader: Reader::rows('rmon_pdir_byidx')->quiet(),
        );
    }

    private static function distributionControl(): TableSchema
    {
        return new TableSchema(
            name: 'protocolDistControlTable',
            title: 'which interfaces traffic is counted on by protocol',
            group: 'protocolDist',
            rfc: self::RFC_2021,
            keys: [Key::index('protocolDistControlIndex')],
            columns: [
                Column::index('protocolDistControlIndex'),
                Column::netInterface('protocolDistControlDataSource'),
                ...Column::counters32('packets', 'protocolDistControlDroppedFrames'),
                Column::ticks('protocolDistControlCreateTime'),
                Column::text('protocolDistControlOwner'),
                Column::status('protocolDistControlStatus'),
            ],
            reader: Reader::rows('rmon_pdist_ctl'),
            writer: Writer::set(
                'rmon_pdist_ctl_set',
                'protocolDistControlIndex',
                'protocolDistControlDataSource',
                'protocolDistControlOwner',
                'protocolDistControlStatus',
            ),
        );
    }

    private static function distribution(): TableSchema
    {
        return new TableSchema(
            name: 'protocolDistStatsTable',
            title: 'traffic of each protocol',
            group: 'protocolDist',
            rfc: self::RFC_2021,
            keys: [
                Key::control('protocolDistControlIndex', 'protocolDistControlTable'),
                Key::protocol('protocolDirLocalIndex'),
            ],
            columns: [
                Column::flags('pd_flags', self::FLAGS)->own(),
                Column::index('protocolDistControlIndex'),
                Column::protocol('protocolDirLocalIndex'),
                ...Column::counters64('packets', 'protocolDistStatsPkts'),
                ...Column::counters64('octets', 'protocolDistStatsOctets'),
            ],
            reader: Reader::pages('rmon_pdist_stats'),
        );
    }

    private static function others(): TableSchema
    {
        return new TableSchema(
            name: 'protocolDistOthers',
            title: 'traffic that belongs to no protocol of the directory',
            group: 'protocolDist',
            rfc: null,
            keys: [Key::parent('protocolDistControlIndex', 'protocolDistControlTable')],
            columns: [
                Column::index('protocolDistControlIndex'),
                Column::counter64('packets', 'packets'),
                Column::counter64('octets', 'octets'),
            ],
            reader: Reader::one('rmon_pdist_stats_getothers'),
        );
    }

    private static function addressMapScalars(): TableSchema
    {
        return new TableSchema(
            name: 'addressMap',
            title: 'the size of the address map',
            group: 'addressMap',
            rfc: self::RFC_2021,
            keys: [],
            columns: [
                ...Column::counters32('rows', 'addressMapInserts', 'addressMapDeletes'),
                Column::integer('addressMapMaxDesiredEntries', 'rows')->signed(),
            ],
            reader: Reader::one('rmon_addrmap_scalars_get'),
            writer: Writer::set('rmon_addrmap_scalars_set', 'addressMapMaxDesiredEntries'),
        );
    }

    private static function addressMapControl(): TableSchema
    {
        return new TableSchema(
            name: 'addressMapControlTable',
            title: 'which interfaces addresses are learned on',
            group: 'addressMap',
            rfc: self::RFC_2021,
            keys: [Key::index('addressMapControlIndex')],
            columns: [
                Column::index('addressMapControlIndex'),
                Column::netInterface('addressMapControlDataSource'),
                ...Column::counters32('packets', 'addressMapControlDroppedFrames'),
                Column::text('addressMapControlOwner'),
                Column::status('addressMapControlStatus'),
            ],
            reader: Reader::rows('rmon_addrmap_ctl'),
            writer: Writer::set(
                'rmon_addrmap_ctl_set',
                'addressMapControlIndex',
                'addressMapControlDataSource',
                'addressMapControlOwner',
                'addressMapControlStatus',
            ),
        );
    }

    private static function addressMap(): TableSchema
    {
        return new TableSchema(
            name: 'addressMapTable',
            title: 'which MAC address each network address was last seen with',
            group: 'addressMap',
            rfc: self::RFC_2021,
            keys: [
                Key::mark('addressMapTimeMark'),
                Key::protocol('protocolDirLocalIndex'),
                Key::address('addressMapNetworkAddress'),
                Key::index('addressMapSource', Type::NetInterface),
            ],
            columns: [
                Column::ticks('addressMapTimeMark'),
                Column::address('addressMapNetworkAddress'),
                Column::netInterface('addressMapSource'),
                Column::mac('addressMapPhysicalAddress'),
                Column::ticks('addressMapLastChange'),
                Column::protocol('protocolDirLocalIndex'),
            ],
            reader: Reader::pages('rmon_addrmap_entry'),
        );
    }

    /** @return list<Column> */
    private static function identity(): array
    {
        return [
            Column::octets('protocolDirID'),
            Column::octets('protocolDirParameters'),
            Column::protocol('protocolDirLocalIndex'),
            Column::text('protocolDirDescr'),
        ];
    }

    /** @return list<Column> */
    private static function configs(string ...$of): array
    {
        return array_values(array_map(
            static fn(string $what) => Column::named("protocolDir{$what}Config", self::CONFIGS),
            $of,
        ));
    }

    /** @return list<Column> */
    private static function marks(): array
    {
        return [
            Column::named('is_leaf', [0 => 'no', 1 => 'yes'])->own(),
            Column::named('is_network', [0 => 'no', 1 => 'yes'])->own(),
            Column::flags('flags', self::FLAGS)->own(),
        ];
    }
}
