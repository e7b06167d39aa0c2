<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Writer;

/** Filters, channels, capture buffers and their packets (RFC 2819). */
final class Capture
{
    private const RFC_2819 = 'RFC 2819';

    private const PACKET_STATES = [1 => 'long', 2 => 'short', 4 => 'damaged'];

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [self::filter(), self::channel(), self::bufferControl(), self::captureBuffer()];
    }

    private static function filter(): TableSchema
    {
        return new TableSchema(
            name: 'filterTable',
            title: 'which frames a channel takes',
            group: 'filter',
            rfc: self::RFC_2819,
            keys: [Key::index('filterIndex')],
            columns: [
                Column::index('filterIndex'),
                Column::index('filterChannelIndex'),
                ...Column::integers('octets', 'filterPktDataOffset'),
                Column::flags('filterPktStatus', self::PACKET_STATES),
                Column::flags('filterPktStatusMask', self::PACKET_STATES),
                Column::flags('filterPktStatusNotMask', self::PACKET_STATES),
                Column::text('filterOwner'),
                Column::status('filterStatus'),
                Column::protocol('filterProtocolDirDataLocalIndex'),
                Column::protocol('filterProtocolDirLocalIndex'),
                Column::octets('filterPktData'),
                Column::octets('filterPktDataMask'),
                Column::octets('filterPktDataNotMask'),
            ],
            reader: Reader::rows('rmon_filter'),
            writer: Writer::set(
                'rmon_filter_set',
                'filterIndex',
                'filterChannelIndex',
                'filterPktDataOffset',
                'filterPktData',
                'filterPktDataMask',
                'filterPktDataNotMask',
                'filterPktStatus',
                'filterPktStatusMask',
                'filterPktStatusNotMask',
                'filterOwner',
                'filterStatus',
                'filterProtocolDirDataLocalIndex',
                'filterProtocolDirLocalIndex',
            ),
            defaults: [
                'filterPktDataOffset' => 0,
                'filterPktData' => [],
                'filterPktDataMask' => [],
                'filterPktDataNotMask' => [],
                'filterPktStatus' => 0,
                'filterPktStatusMask' => 0,
                'filterPktStatusNotMask' => 0,
                'filterProtocolDirDataLocalIndex' => 0,
                'filterProtocolDirLocalIndex' => 0,
            ],
        );
    }

    private static function channel(): TableSchema
    {
        return new TableSchema(
            name: 'channelTable',
            title: 'streams of frames that filters let through',
            group: 'filter',
            rfc: self::RFC_2819,
            keys: [Key::index('channelIndex')],
            columns: [
                Column::index('channelIndex'),
                Column::netInterface('channelIfIndex'),
                Column::named('channelAcceptType', [1 => 'acceptMatched', 2 => 'acceptFailed']),
                Column::named('channelDataControl', [1 => 'on', 2 => 'off']),
                Column::index('channelTurnOnEventIndex'),
                Column::index('channelTurnOffEventIndex'),
                Column::index('channelEventIndex'),
                Column::named(
                    'channelEventStatus',
                    [1 => 'eventReady', 2 => 'eventFired', 3 => 'eventAlwaysReady'],
                ),
                ...Column::counters32('packets', 'channelMatches'),
                ...Column::texts('channelDescription', 'channelOwner'),
                Column::status('channelStatus'),
                Column::ticks('channelCreateTime'),
                ...Column::counters32('packets', 'channelDroppedFrames'),
            ],
            reader: Reader::rows('rmon_channel'),
            writer: Writer::set(
                'rmon_channel_set',
                'channelIndex',
                'channelIfIndex',
                'channelAcceptType',
                'channelDataControl',
                'channelTurnOnEventIndex',
                'channelTurnOffEventIndex',
                'channelEventIndex',
                'channelEventStatus',
                'channelDescription',
                'channelOwner',
                'channelStatus',
            ),
            defaults: [
                'channelAcceptType' => 1,
                'channelDataControl' => 1,
                'channelTurnOnEventIndex' => 0,
                'channelTurnOffEventIndex' => 0,
                'channelEventIndex' => 0,
                'channelEventStatus' => 1,
                'channelDescription' => '',
            ],
        );
    }

    private static function bufferControl(): TableSchema
    {
        return new TableSchema(
            name: 'bufferControlTable',
            title: 'buffers that keep a channel\'s packets',
            group: 'capture',
            rfc: self::RFC_2819,
            keys: [Key::index('bufferControlIndex')],
            columns: [
                Column::index('bufferControlIndex'),
                Column::index('bufferControlChannelIndex'),
                Column::named('bufferControlFullStatus', [1 => 'spaceAvailable', 2 => 'full']),
                Column::named('bufferControlFullAction', [1 => 'lockWhenFull', 2 => 'wrapWhenFull']),
                ...Column::integers('octets', 'bufferControlCaptureSliceSize', 'bufferControlDownloadSliceSize'),
                ...Column::integers('octets', 'bufferControlDownloadOffset'),
                Column::integer('bufferControlMaxOctetsRequested', 'octets')->signed(),
                Column::integer('bufferControlMaxOctetsGranted', 'octets')->signed(),
                ...Column::gauges('packets', 'bufferControlCapturedPackets'),
                Column::ticks('bufferControlTurnOnTime'),
                Column::text('bufferControlOwner'),
                Column::status('bufferControlStatus'),
            ],
            reader: Reader::rows('rmon_buffer_ctl'),
            writer: Writer::set(
                'rmon_buffer_ctl_set',
                'bufferControlIndex',
                'bufferControlChannelIndex',
                'bufferControlFullAction',
                'bufferControlCaptureSliceSize',
                'bufferControlDownloadSliceSize',
                'bufferControlDownloadOffset',
                'bufferControlMaxOctetsRequested',
                'bufferControlOwner',
                'bufferControlStatus',
            ),
            defaults: [
                'bufferControlFullAction' => 1,
                'bufferControlCaptureSliceSize' => 100,
                'bufferControlDownloadSliceSize' => 100,
                'bufferControlDownloadOffset' => 0,
                'bufferControlMaxOctetsRequested' => -1,
            ],
        );
    }

    private static function captureBuffer(): TableSchema
    {
        return new TableSchema(
            name: 'captureBufferTable',
            title: 'captured packets',
            group: 'capture',
            rfc: self::RFC_2819,
            keys: [Key::control('captureBufferControlIndex', 'bufferControlTable'), Key::index('captureBufferIndex')],
            columns: [
                Column::index('captureBufferControlIndex'),
                Column::index('captureBufferIndex'),
                Column::index('captureBufferPacketID'),
                ...Column::gauges('ms', 'captureBufferPacketTime'),
                ...Column::gauges('octets', 'captureBufferPacketLength'),
                Column::flags('captureBufferPacketStatus', self::PACKET_STATES + [8 => 'afterLost', 16 => 'unordered']),
                Column::gauge('captureBufferPacketHighCapacityTime', 'ns')->own(),
                Column::octets('captureBufferPacketData'),
            ],
            reader: Reader::rows('rmon_capture_buf'),
        );
    }
}
