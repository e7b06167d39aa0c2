<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Setter;
use Rmon\Schema\Type;
use Rmon\Schema\Writer;

/** Devices that export NetFlow, and what they export. */
final class NetFlow
{
    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::device(),
            self::dataSource(),
            self::flowPath(),
            self::learning(),
            self::learnedDevice(),
            self::learnedInterface(),
        ];
    }

    private static function device(): TableSchema
    {
        return new TableSchema(
            name: 'ndeDeviceTable',
            title: 'devices that are to send NetFlow',
            group: 'netflow',
            rfc: null,
            keys: [Key::address('address')],
            columns: [
                ...self::named(),
                Column::community('commString')->atMost(80),
                Column::flags('flag', [1 => 'heard']),
            ],
            reader: Reader::wrapped('rmon_nde_device', 'devices')->quiet(answersNone: false),
            writer: Writer::set('rmon_nde_device_set', 'address', 'commString', 'deviceName')
                ->remove('rmon_nde_device_del', 'address'),
            defaults: ['commString' => '', 'deviceName' => ''],
        );
    }

    private static function dataSource(): TableSchema
    {
        return new TableSchema(
            name: 'ndeDataSourceTable',
            title: 'data sources of a NetFlow device',
            group: 'netflow',
            rfc: null,
            keys: [Key::address('address'), Key::index('datasrcIndex')],
            columns: [
                ...self::named(),
                Column::text('datasrcName')->atMost(80),
                Column::index('datasrcIndex'),
                Column::flags('flag', []),
            ],
            reader: Reader::wrapped('rmon_nde_datasrc', 'datasrcs')->quiet(answersNone: false),
            writer: new Writer(
                add: new Setter('rmon_nde_datasrc_set', 'address', 'datasrcName'),
                change: new Setter('rmon_nde_datasrc_mod', 'address', 'datasrcIndex', 'datasrcName'),
                remove: new Setter('rmon_nde_datasrc_del', 'address', 'datasrcIndex'),
            ),
        );
    }

    private static function flowPath(): TableSchema
    {
        $key = ['address', 'datasrcIndex', 'inputIndex', 'outputIndex'];
        return new TableSchema(
            name: 'ndeFlowPathTable',
            title: 'pairs of interfaces of a NetFlow device that make up a data source',
            group: 'netflow',
            rfc: null,
            keys: [
                Key::address('address'),
                Key::index('datasrcIndex'),
                Key::index('inputIndex'),
                Key::index('outputIndex'),
            ],
            columns: [
                ...self::named(),
                Column::index('datasrcIndex'),
                Column::index('inputIndex'),
                Column::index('outputIndex'),
            ],
            reader: Reader::wrapped('rmon_nde_flow_path', 'flowPaths')->quiet(answersNone: false),
            writer: new Writer(
                add: new Setter('rmon_nde_flow_path_set', ...$key),
                remove: new Setter('rmon_nde_flow_path_del', ...$key),
            ),
        );
    }

    private static function learning(): TableSchema
    {
        return new TableSchema(
            name: 'ndeLearning',
            title: 'whether devices that send NetFlow are learned',
            group: 'netflow',
            rfc: null,
            keys: [],
            columns: [Column::named('state', [0 => 'off', 1 => 'on']), Column::ticks('startTime')],
            reader: Reader::one('rmon_nde_learned_dev_status'),
        );
    }

    private static function learnedDevice(): TableSchema
    {
        return new TableSchema(
            name: 'ndeLearnedDeviceTable',
            title: 'devices that NetFlow was received from',
            group: 'netflow',
            rfc: null,
            keys: [Key::address('address')],
            columns: [
                Column::address('address'),
                Column::integer('addressLength', 'octets'),
                Column::ticks('timeLastNdePkt'),
                Column::counter32('numNdePkts', 'packets'),
            ],
            reader: Reader::wrapped('rmon_nde_learned_dev', 'devices')->quiet(answersNone: false),
        );
    }

    private static function learnedInterface(): TableSchema
    {
        return new TableSchema(
            name: 'ndeLearnedInterfaceTable',
            title: 'interfaces that the flows of a learned device name',
            group: 'netflow',
            rfc: null,
            keys: [Key::parent('address', 'ndeLearnedDeviceTable', Type::Address), Key::index('ifIndex')],
            columns: [
                Column::address('address'),
                Column::index('ifIndex'),
                Column::flags('dirFlag', [1 => 'in', 2 => 'out']),
            ],
            reader: Reader::wrapped('rmon_nde_learned_dev_intf', 'interfaces')->quiet(answersNone: false),
        );
    }

    /** @return list<Column> */
    private static function named(): array
    {
        return [
            Column::address('address'),
            Column::integer('addressLength', 'octets'),
            Column::text('deviceName')->atMost(80),
        ];
    }
}
