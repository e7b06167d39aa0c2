<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Writer;

/** Alarms, events, the log and the receivers of traps (RFC 2819, RFC 2021). */
final class Alarms
{
    private const RFC_2819 = 'RFC 2819';

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [self::alarm(), self::event(), self::log(), self::trapDest()];
    }

    private static function alarm(): TableSchema
    {
        return new TableSchema(
            name: 'alarmTable',
            title: 'variables that are watched, and their thresholds',
            group: 'alarm',
            rfc: self::RFC_2819,
            keys: [Key::index('alarmIndex')],
            columns: [
                Column::index('alarmIndex'),
                ...Column::gauges('s', 'alarmInterval'),
                Column::text('alarmVariable'),
                Column::named('alarmSampleType', [1 => 'absoluteValue', 2 => 'deltaValue']),
                Column::gauge('alarmValue')->signed(),
                Column::named(
                    'alarmStartupAlarm',
                    [1 => 'risingAlarm', 2 => 'fallingAlarm', 3 => 'risingOrFallingAlarm'],
                ),
                Column::gauge('alarmRisingThreshold')->signed(),
                Column::gauge('alarmFallingThreshold')->signed(),
                Column::index('alarmRisingEventIndex'),
                Column::index('alarmFallingEventIndex'),
                Column::text('alarmOwner'),
                Column::status('alarmStatus'),
            ],
            reader: Reader::rows('rmon_alarm'),
            writer: Writer::set(
                'rmon_alarm_set',
                'alarmIndex',
                'alarmInterval',
                'alarmVariable',
                'alarmSampleType',
                'alarmStartupAlarm',
                'alarmRisingThreshold',
                'alarmFallingThreshold',
                'alarmRisingEventIndex',
                'alarmFallingEventIndex',
                'alarmOwner',
                'alarmStatus',
            ),
            defaults: [
                'alarmInterval' => 10,
                'alarmSampleType' => 2,
                'alarmStartupAlarm' => 3,
                'alarmFallingThreshold' => 0,
                'alarmRisingEventIndex' => 0,
                'alarmFallingEventIndex' => 0,
            ],
        );
    }

    private static function event(): TableSchema
    {
        return new TableSchema(
            name: 'eventTable',
            title: 'what is done when an alarm goes off',
            group: 'event',
            rfc: self::RFC_2819,
            keys: [Key::index('eventIndex')],
            columns: [
                Column::index('eventIndex'),
                Column::text('eventDescription'),
                Column::named('eventType', [1 => 'none', 2 => 'log', 3 => 'snmptrap', 4 => 'logandtrap']),
                Column::community('eventCommunity'),
                Column::ticks('eventLastTimeSent'),
                Column::text('eventOwner'),
                Column::status('eventStatus'),
            ],
            reader: Reader::rows('rmon_event'),
            writer: Writer::set(
                'rmon_event_set',
                'eventIndex',
                'eventDescription',
                'eventType',
                'eventCommunity',
                'eventOwner',
                'eventStatus',
            ),
            defaults: ['eventDescription' => '', 'eventType' => 2, 'eventCommunity' => ''],
        );
    }

    private static function log(): TableSchema
    {
        return new TableSchema(
            name: 'logTable',
            title: 'events that happened',
            group: 'event',
            rfc: self::RFC_2819,
            keys: [Key::control('logEventIndex', 'eventTable'), Key::index('logIndex')],
            columns: [
                Column::index('logEventIndex'),
                Column::index('logIndex'),
                Column::ticks('logTime'),
                Column::text('logDescription'),
            ],
            reader: Reader::rows('rmon_log'),
        );
    }

    private static function trapDest(): TableSchema
    {
        return new TableSchema(
            name: 'trapDestTable',
            title: 'where traps are sent',
            group: 'probeConfig',
            rfc: 'RFC 2021',
            keys: [Key::index('trapDestIndex')],
            columns: [
                Column::index('trapDestIndex'),
                Column::community('trapDestCommunity'),
                Column::protocol('trapDestProtocol'),
                Column::address('trapDestAddress'),
                Column::text('trapDestOwner'),
                Column::status('trapDestStatus'),
            ],
            reader: Reader::rows('rmon_trapdest'),
            writer: Writer::set(
                'rmon_trapdest_set',
                'trapDestIndex',
                'trapDestCommunity',
                'trapDestProtocol',
                'trapDestAddress',
                'trapDestOwner',
                'trapDestStatus',
            ),
        );
    }
}
