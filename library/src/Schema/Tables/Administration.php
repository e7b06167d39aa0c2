<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Shape;
use Rmon\Schema\Writer;

/** Settings of the appliance: its network, its resolvers, its SNMP communities. */
final class Administration
{
    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [self::ipConfig(), self::resolvers(), self::community()];
    }

    private static function ipConfig(): TableSchema
    {
        $addresses = ['ipAddress', 'ipNetmask', 'ipBroadcast', 'ipGateway'];
        return new TableSchema(
            name: 'ipConfig',
            title: 'the appliance\'s IPv4 settings',
            group: 'administration',
            rfc: null,
            keys: [],
            columns: [...array_map(Column::addressText(...), $addresses), Column::netInterface('ipInterface')],
            reader: Reader::one('rmon_get_ipconfig'),
            writer: Writer::set('rmon_set_ipconfig', ...[...$addresses, 'ipInterface']),
        );
    }

    private static function resolvers(): TableSchema
    {
        return new TableSchema(
            name: 'resolvers',
            title: 'the appliance\'s name servers',
            group: 'administration',
            rfc: null,
            keys: [],
            columns: [Column::addressText('resolver')],
            reader: Reader::one('rmon_get_resolvers', Shape::Texts),
        );
    }

    private static function community(): TableSchema
    {
        return new TableSchema(
            name: 'communityTable',
            title: 'communities of the appliance\'s SNMP agent',
            group: 'administration',
            rfc: null,
            keys: [Key::text('communityString')],
            columns: [
                Column::community('communityString'),
                Column::named('privs', [1 => 'readOnly', 2 => 'readWrite']),
            ],
            reader: Reader::pages('rmon_community'),
            writer: Writer::set('rmon_community_set', 'communityString', 'privs')
                ->remove('rmon_community_delete', 'communityString'),
        );
    }
}
