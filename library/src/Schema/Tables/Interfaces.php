<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use Rmon\Schema\Writer;

/** The system group, the interfaces and the Ethernet statistics (RFC 1213, RFC 2819). */
final class Interfaces
{
    private const RFC_1213 = 'RFC 1213';
    private const RFC_2819 = 'RFC 2819';

    private const STATES = [
        1 => 'up', 2 => 'down', 3 => 'testing', 4 => 'unknown', 5 => 'dormant', 6 => 'notPresent',
        7 => 'lowerLayerDown',
    ];

    private const KINDS = [
        1 => 'other', 6 => 'ethernetCsmacd', 23 => 'ppp', 24 => 'softwareLoopback', 53 => 'propVirtual',
        71 => 'ieee80211', 131 => 'tunnel', 135 => 'l2vlan', 161 => 'ieee8023adLag', 209 => 'bridge',
    ];

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::system(),
            self::interfaces(),
            self::etherStats(),
            self::historyControl(),
            self::etherHistory(),
        ];
    }

    private static function system(): TableSchema
    {
        return new TableSchema(
            name: 'system',
            title: 'the probe: what it is, since when it runs, where it stands',
            group: 'system',
            rfc: self::RFC_1213,
            keys: [],
            columns: [
                Column::text('sysDescr'),
                Column::ticks('sysUpTime'),
                ...Column::texts('sysContact', 'sysName', 'sysLocation', 'sysObjectID'),
                ...Column::integers('', 'sysServices'),
            ],
            reader: Reader::one('rmon_system_get'),
            writer: Writer::set('rmon_system_set', 'sysContact', 'sysName', 'sysLocation'),
        );
    }

    private static function interfaces(): TableSchema
    {
        return new TableSchema(
            name: 'ifTable',
            title: 'interfaces, their states and counters',
            group: 'interfaces',
            rfc: self::RFC_1213,
            keys: [Key::index('ifIndex', Type::NetInterface)],
            columns: [
                Column::netInterface('ifIndex'),
                Column::text('ifDescr'),
                Column::named('ifType', self::KINDS),
                ...Column::integers('octets', 'ifMtu'),
                ...Column::gauges('bit/s', 'ifSpeed'),
                Column::macText('ifPhysAddress'),
                Column::named('ifAdminStatus', self::STATES),
                Column::named('ifOperStatus', self::STATES),
                Column::ticks('ifLastChange'),
                ...Column::counters32('octets', 'ifInOctets'),
                ...Column::counters32('packets', 'ifInUcastPkts', 'ifInNUcastPkts', 'ifInDiscards', 'ifInErrors'),
                ...Column::counters32('packets', 'ifInUnknownProtos'),
                ...Column::counters32('octets', 'ifOutOctets'),
                ...Column::counters32('packets', 'ifOutUcastPkts', 'ifOutNUcastPkts', 'ifOutDiscards', 'ifOutErrors'),
                ...Column::gauges('packets', 'ifOutQLen'),
                Column::text('dsrcType')->own(),
                Column::index('dsrcSlot')->own()->optional(),
                Column::index('dsrcPort')->own()->optional(),
                Column::index('dsrcVlan')->own(),
                Column::index('dsrcChGrp')->own(),
                Column::text('dsrcSpanMode')->own(),
                Column::index('dsrcSpanDest')->own(),
            ],
            reader: Reader::rows('rmon_ifentry'),
        );
    }

    private static function etherStats(): TableSchema
    {
        return new TableSchema(
            name: 'etherStatsTable',
            title: 'frames of an interface by kind and size, and its errors',
            group: 'statistics',
            rfc: self::RFC_2819,
            keys: [Key::index('etherStatsIndex')],
            columns: [
                Column::index('etherStatsIndex'),
                Column::netInterface('etherStatsDataSource'),
                ...Column::counters64('events', 'etherStatsDropEvents'),
                ...Column::counters64('octets', 'etherStatsOctets'),
                ...Column::counters64('packets', 'etherStatsPkts', 'etherStatsBroadcastPkts'),
                ...Column::counters64('packets', 'etherStatsMulticastPkts'),
                ...Column::counters64('packets', 'etherStatsCRCAlignErrors', 'etherStatsUndersizePkts'),
                ...Column::counters64('packets', 'etherStatsOversizePkts', 'etherStatsFragments', 'etherStatsJabbers'),
                ...Column::counters64('collisions', 'etherStatsCollisions'),
                ...Column::counters64('packets', 'etherStatsPkts64Octets', 'etherStatsPkts65to127Octets'),
                ...Column::counters64('packets', 'etherStatsPkts128to255Octets', 'etherStatsPkts256to511Octets'),
                ...Column::counters64('packets', 'etherStatsPkts512to1023Octets', 'etherStatsPkts1024to1518Octets'),
                Column::text('etherStatsOwner'),
                Column::status('etherStatsStatus'),
                ...Column::counters64('packets', 'etherStatsDroppedFrames'),
                Column::ticks('etherStatsCreateTime'),
            ],
            reader: Reader::rows('rmon_etherstats'),
            writer: Writer::set(
                'rmon_etherstats_set',
                'etherStatsIndex',
                'etherStatsDataSource',
                'etherStatsOwner',
                'etherStatsStatus',
            ),
        );
    }

    private static function historyControl(): TableSchema
    {
        return new TableSchema(
            name: 'historyControlTable',
            title: 'which interfaces samples are taken of, how often and how many',
            group: 'history',
            rfc: self::RFC_2819,
            keys: [Key::index('historyControlIndex')],
            columns: [
                Column::index('historyControlIndex'),
                Column::netInterface('historyControlDataSource'),
                ...Column::integers('samples', 'historyControlBucketsRequested', 'historyControlBucketsGranted'),
                ...Column::gauges('s', 'historyControlInterval'),
                Column::text('historyControlOwner'),
                Column::status('historyControlStatus'),
            ],
            reader: Reader::rows('rmon_history_ctl'),
            writer: Writer::set(
                'rmon_history_ctl_set',
                'historyControlIndex',
                'historyControlDataSource',
                'historyControlBucketsRequested',
                'historyControlInterval',
                'historyControlOwner',
                'historyControlStatus',
            ),
            defaults: ['historyControlBucketsRequested' => 50, 'historyControlInterval' => 1800],
        );
    }

    private static function etherHistory(): TableSchema
    {
        return new TableSchema(
            name: 'etherHistoryTable',
            title: 'samples of an interface: what it carried in each interval',
            group: 'history',
            rfc: self::RFC_2819,
            keys: [Key::control('etherHistoryIndex', 'historyControlTable'), Key::index('etherHistorySampleIndex')],
            columns: [
                Column::index('etherHistoryIndex'),
                Column::index('etherHistorySampleIndex'),
                Column::ticks('etherHistoryIntervalStart'),
                ...Column::gauges('events', 'etherHistoryDropEvents'),
                ...Column::gauges('octets', 'etherHistoryOctets'),
                ...Column::gauges('packets', 'etherHistoryPkts', 'etherHistoryBroadcastPkts'),
                ...Column::gauges('packets', 'etherHistoryMulticastPkts', 'etherHistoryCRCAlignErrors'),
                ...Column::gauges('packets', 'etherHistoryUndersizePkts', 'etherHistoryOversizePkts'),
                ...Column::gauges('packets', 'etherHistoryJabbers', 'etherHistoryFragments'),
                ...Column::gauges('collisions', 'etherHistoryCollisions'),
                Column::of(Type::Utilization, 'etherHistoryUtilization', '%'),
            ],
            reader: Reader::pages('rmon_etherhistory'),
        );
    }
}
