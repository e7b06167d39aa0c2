<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;

/** Phones, calls and the worst of them, as the monitors of SCCP, H.323 and MGCP saw them. */
final class Voice
{
    private const ALARMS = [1 => 'jitter', 2 => 'loss', 4 => 'latency'];

    private const SWITCH = [0 => 'off', 1 => 'on'];

    /** What a call's legs have, each once for the caller and once, with callee_ before it, for the callee. */
    private const SCCP_LEG = [
        'line_instance', 'conference_id', 'pass_thru_party_id', 'rtp_port', 'rtp_sampling_period', 'payload_type',
        'rtp_pre_value', 'silence_sup', 'max_frames_per_pkt', 'g723_bit_rate',
    ];

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::config('sccp', ['jitter', 'pkt_lost', 'latency']),
            self::aggregate('sccp'),
            self::table('sccp', 'Phone', 'phones', 'phone_rec', self::sccpPhone()),
            self::table('sccp', 'Call', 'calls', 'call_rec', self::sccpCall()),
            self::table('sccp', 'TopJitter', 'calls with most jitter', 'top_rec', self::sccpTop()),
            self::table('sccp', 'TopPktLost', 'calls that lost most', 'top_rec', self::sccpTop()),
            self::table('sccp', 'TopLatency', 'calls with most latency', 'top_rec', self::sccpTop()),
            self::config('h323', ['jitter', 'pkt_lost']),
            self::aggregate('h323'),
            self::table('h323', 'Phone', 'phones', 'phone_rec', self::h323Phone()),
            self::table('h323', 'Call', 'calls', 'call_rec', self::h323Call()),
            self::table('h323', 'TopJitter', 'calls with most jitter', 'call_rec', self::h323Call()),
            self::table('h323', 'TopPktLost', 'calls that lost most', 'call_rec', self::h323Call()),
            self::config('mgcp', ['jitter', 'pkt_lost']),
            self::aggregate('mgcp'),
            self::table('mgcp', 'Phone', 'phones', 'phone_rec', self::mgcpPhone()),
            self::table('mgcp', 'Call', 'calls', 'call_rec', self::mgcpCall()),
            self::table('mgcp', 'TopJitter', 'calls with most jitter', 'call_rec', self::mgcpCall()),
            self::table('mgcp', 'TopPktLost', 'calls that lost most', 'call_rec', self::mgcpCall()),
            // The agent keeps no such table, and the module's functions find nothing.
            self::table('mgcp', 'TopLatency', 'calls with most latency', 'call_rec', self::mgcpCall()),
        ];
    }

    /** @param list<string> $figures what there are tables of the worst calls by, and thresholds for */
    private static function config(string $monitor, array $figures): TableSchema
    {
        $units = ['jitter' => 'ms', 'pkt_lost' => 'packets', 'latency' => 'ms'];
        return new TableSchema(
            name: "{$monitor}Config",
            title: 'settings of the ' . self::word($monitor) . ' monitor',
            group: $monitor,
            rfc: null,
            keys: [],
            columns: [
                Column::named('enable', self::SWITCH),
                ...self::numbers('rows', 'num_phone_tbl_row', 'num_call_tbl_row'),
                ...self::numbers('rows', ...array_map(static fn(string $figure) => "num_top_{$figure}_row", $figures)),
                ...array_map(
                    static fn(string $figure) => Column::gauge("{$figure}_threshold", $units[$figure])->signed(),
                    $figures,
                ),
                ...array_map(
                    static fn(string $figure) => Column::named("{$figure}_alarm_enable", self::SWITCH),
                    $figures,
                ),
            ],
            reader: Reader::one("{$monitor}_config_params_get")->quiet(answersNone: false),
        );
    }

    private static function aggregate(string $monitor): TableSchema
    {
        return new TableSchema(
            name: "{$monitor}Aggregate",
            title: 'sums over all calls of the ' . self::word($monitor) . ' monitor',
            group: $monitor,
            rfc: null,
            keys: [],
            columns: self::sums(),
            reader: Reader::one("{$monitor}_aggregate_data_get")->quiet(answersNone: false),
        );
    }

    /** @param list<Column> $columns */
    private static function table(
        string $monitor,
        string $name,
        string $title,
        string $envelope,
        array $columns,
    ): TableSchema {
        $family = strtolower(preg_replace('/(?<=[a-z])(?=[A-Z])/', '_', $name));
        return new TableSchema(
            name: "$monitor{$name}Table",
            title: self::word($monitor) . " $title",
            group: $monitor,
            rfc: null,
            keys: [Key::index('index')],
            columns: $columns,
            reader: Reader::wrapped("{$monitor}_{$family}_rec", $envelope)->quiet(),
        );
    }

    private static function word(string $monitor): string
    {
        return ['sccp' => 'SCCP', 'h323' => 'H.323', 'mgcp' => 'MGCP'][$monitor];
    }

    /** @return list<Column> */
    private static function numbers(string $unit, string ...$names): array
    {
        return array_map(static fn(Column $column) => $column->signed(), Column::gauges($unit, ...$names));
    }

    /** @return list<Column> */
    private static function indexes(string ...$names): array
    {
        return array_values(array_map(static fn(string $name) => Column::index($name)->signed(), $names));
    }

    /** @return list<Column> */
    private static function ticks(string ...$names): array
    {
        return array_values(array_map(Column::ticks(...), $names));
    }

    /** @return list<Column> */
    private static function addresses(string ...$names): array
    {
        return array_values(array_map(Column::addressText(...), $names));
    }

    /** @return list<Column> */
    private static function sums(): array
    {
        return [
            Column::flags('flag', self::ALARMS),
            ...self::numbers('calls', 'num_call_mon'),
            ...self::numbers('packets', 'avg_pkt_lost'),
            ...self::numbers('ms', 'avg_jitter'),
            ...self::numbers('packets', 'worst_pkt_lost'),
            ...self::numbers('ms', 'worst_jitter'),
        ];
    }

    /** @return list<Column> */
    private static function history(): array
    {
        return [...self::numbers('calls', 'num_hist_row'), Column::rows('history')->optional()];
    }

    /** @return list<Column> */
    private static function sccpPhone(): array
    {
        return [
            ...self::indexes('vers', 'index'),
            ...self::numbers('octets', 'phone_ipAddr_length'),
            ...self::addresses('phone_ipAddr'),
            ...Column::texts('phone_num', 'phone_model', 'phone_owner', 'if_name'),
            ...self::sums(),
            ...self::history(),
        ];
    }

    /** @return list<Column> */
    private static function sccpCall(): array
    {
        $leg = [];
        foreach (self::SCCP_LEG as $name) {
            $leg = [...$leg, $name, "callee_$name"];
        }
        return [
            ...self::indexes('vers', 'index'),
            ...self::numbers('octets', 'phone_ipAddr_length'),
            ...self::addresses('phone_ipAddr'),
            Column::text('phone_num'),
            ...self::numbers('octets', 'callee_phone_ipAddr_length'),
            ...self::addresses('callee_phone_ipAddr'),
            ...Column::texts('callee_phone_num', 'phone_model', 'callee_phone_model', 'phone_owner'),
            ...Column::texts('callee_phone_owner', 'if_name', 'callee_if_name'),
            ...self::indexes('call_state', 'callee_call_state', 'call_status', 'callee_call_status'),
            ...self::indexes('call_direction', 'callee_direction', 'call_reference', 'callee_reference'),
            ...self::indexes(...$leg),
            ...self::ticks('start_time', 'callee_start_time', 'end_time', 'callee_end_time'),
            ...self::sccpFigures(''),
            ...self::sccpFigures('callee_'),
        ];
    }

    /** @return list<Column> */
    private static function sccpFigures(string $of): array
    {
        return [
            ...self::numbers('packets', "{$of}pkt_sent"),
            ...self::numbers('octets', "{$of}oct_sent"),
            ...self::numbers('packets', "{$of}pkt_recv"),
            ...self::numbers('octets', "{$of}oct_recv"),
            ...self::numbers('packets', "{$of}pkt_lost"),
            ...self::numbers('ms', "{$of}jitter", "{$of}latency"),
            Column::flags("{$of}flag", self::ALARMS),
        ];
    }

    /** @return list<Column> */
    private static function sccpTop(): array
    {
        return [
            ...self::indexes('vers', 'index'),
            ...self::numbers('octets', 'phone_ipAddr_length'),
            ...self::addresses('phone_ipAddr', 'peer_ipAddr'),
            ...Column::texts('phone_num', 'phone_model', 'phone_owner', 'if_name'),
            ...self::indexes('call_state', 'call_status', 'call_direction'),
            ...Column::texts('peer_num', 'peer_owner'),
            ...self::indexes('call_reference', 'line_instance', 'conference_id', 'pass_thru_party_id'),
            ...self::indexes('local_rtp_port', 'remote_rtp_port', 'rtp_sampling_period', 'payload_type'),
            ...self::indexes('rtp_pre_value', 'silence_sup', 'max_frames_per_pkt', 'g723_bit_rate'),
            ...self::ticks('start_time', 'end_time'),
            ...self::sccpFigures(''),
        ];
    }

    /** @return list<Column> */
    private static function h323End(string $prefix): array
    {
        return [
            ...self::numbers('octets', "{$prefix}_ipAddr_length"),
            ...self::indexes("{$prefix}_port"),
            ...self::addresses("{$prefix}_ipAddr"),
        ];
    }

    /** @return list<Column> */
    private static function h323Party(string $prefix): array
    {
        return [...self::h323End("{$prefix}_q931"), ...Column::texts("{$prefix}_num", "{$prefix}_alias")];
    }

    /** @return list<Column> */
    private static function h323Phone(): array
    {
        return [
            ...self::indexes('vers', 'index'),
            ...self::h323Party('forward'),
            ...self::sums(),
            ...self::history(),
        ];
    }

    /** @return list<Column> */
    private static function h323Call(): array
    {
        return [
            ...self::indexes('vers', 'index'),
            ...self::h323Party('forward'),
            ...self::h323Party('f'),
            ...self::h323Party('reverse'),
            ...self::indexes('call_state', 'call_status', 'call_reference'),
            ...Column::texts('call_id', 'conference_id'),
            ...self::indexes('conference_goal', 'faststart', 'tunneling', 'call_type'),
            ...Column::texts('forward_product_id', 'reverse_product_id', 'forward_version_id', 'reverse_version_id'),
            ...self::indexes('forward_session_id', 'forward_logical_channel_num'),
            ...self::indexes('reverse_session_id', 'reverse_logical_channel_num'),
            ...self::h323Media('forward'),
            ...self::h323Media('reverse'),
            ...self::ticks('start_time', 'end_time'),
            ...self::h323Figures('forward'),
            ...self::h323Figures('reverse'),
            Column::flags('flag', self::ALARMS),
        ];
    }

    /** @return list<Column> */
    private static function h323Media(string $way): array
    {
        return [
            ...self::h323End("{$way}_h245"),
            ...self::h323End("{$way}_rtp"),
            ...self::indexes("{$way}_codec"),
            ...self::h323End("{$way}_rtcp_sr"),
            ...self::h323End("{$way}_rtcp_rr"),
        ];
    }

    /** @return list<Column> */
    private static function h323Figures(string $way): array
    {
        return [
            Column::index("{$way}_ssrc"),
            ...self::numbers('packets', "{$way}_sr_pkt_sent"),
            ...self::numbers('octets', "{$way}_sr_oct_sent"),
            ...self::numbers('packets', "{$way}_sr_pkt_lost"),
            ...self::numbers('', "{$way}_sr_fraction_lost"),
            ...self::numbers('ms', "{$way}_sr_jitter"),
        ];
    }

    /** @return list<Column> */
    private static function mgcpPhone(): array
    {
        return [
            ...self::indexes('index'),
            ...self::addresses('phone_ipAddr'),
            ...Column::texts('phone_num', 'phone_owner', 'phone_alias'),
            ...self::sums(),
            ...self::history(),
        ];
    }

    /** @return list<Column> */
    private static function mgcpCall(): array
    {
        return [
            ...self::indexes('index'),
            ...Column::texts('caller_phone_num', 'callee_phone_num', 'caller_endpoint_id', 'callee_endpoint_id'),
            ...Column::texts('caller_alias', 'callee_alias'),
            ...self::addresses('caller_ip_addr', 'callee_ip_addr'),
            ...self::numbers('packets', 'pkt_loss'),
            ...self::numbers('ms', 'jitter'),
            ...self::ticks('start_time', 'end_time'),
            ...self::addresses('ca_address_1', 'ca_address_2', 'gw_address_1', 'gw_address_2'),
            ...self::indexes('call_state'),
            ...Column::texts('call_id_1', 'call_id_2', 'conns_id_1', 'conns_id_2'),
            ...self::indexes('rtp_port_1', 'rtp_port_2'),
            Column::text('audio_codec'),
            ...self::indexes('sampling_period', 'silence_sup'),
            ...self::numbers('packets', 'pkt_sent_1', 'pkt_sent_2'),
            ...self::numbers('octets', 'oct_sent_1', 'oct_sent_2'),
            ...self::numbers('packets', 'pkt_recv_1', 'pkt_recv_2'),
            ...self::numbers('octets', 'oct_recv_1', 'oct_recv_2'),
            ...self::numbers('packets', 'pkt_loss_1', 'pkt_loss_2'),
            ...self::numbers('ms', 'jitter_1', 'jitter_2', 'latency_1', 'latency_2'),
            Column::flags('flag', self::ALARMS),
        ];
    }
}
