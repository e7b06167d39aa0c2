--TEST--
SCCP: phones, calls, worst calls by jitter, by packet loss and by latency
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/voice.inc';

/** A phone's identity, in wire order; $n tells one from another. */
function common(int $n): array
{
    return [
        'vers' => i32(1000 + $n),
        'index' => u32(2000 + $n),
        'phone_ipAddr_length' => i32(3000 + $n),
        'phone_ipAddr' => units(phone_address(4, $n), 16),
        'phone_num' => signed_units("phone_num $n", 24),
        'phone_model' => signed_units("phone_model $n", 40),
        'phone_owner' => signed_units("Léa $n", 40),
        'if_name' => signed_units("if $n", 10),
    ];
}

/** The same as scripts see it. */
function shown_common(int $n): array
{
    return [
        'vers' => 1000 + $n,
        'index' => 2000 + $n,
        'phone_ipAddr_length' => 3000 + $n,
        'phone_ipAddr' => "10.4.200.$n",
        'phone_num' => "phone_num $n",
        'phone_model' => "phone_model $n",
        'phone_owner' => "Léa $n",
        'if_name' => "if $n",
    ];
}

/** A call as one party saw it, in wire order. */
function qual(int $n): array
{
    return [
        'call_state' => u32(11000 + $n),
        'call_status' => u32(12000 + $n),
        'call_direction' => u32(13000 + $n),
        'peer_ipAddr' => signed_units(phone_address(14, $n), 16),
        'peer_num' => signed_units("peer_num $n", 24),
        'peer_owner' => signed_units("Noé $n", 40),
        'call_reference' => u32(17000 + $n),
        'line_instance' => u32(18000 + $n),
        'conference_id' => u32(19000 + $n),
        'pass_thru_party_id' => u32(20000 + $n),
        'local_rtp_port' => u32(21000 + $n),
        'remote_rtp_port' => u32(22000 + $n),
        'rtp_sampling_period' => u32(23000 + $n),
        'payload_type' => u32(24000 + $n),
        'rtp_pre_value' => u32(25000 + $n),
        'silence_sup' => u32(26000 + $n),
        'max_frames_per_pkt' => u32(27000 + $n),
        'g723_bit_rate' => u32(28000 + $n),
        'start_time' => u32(29000 + $n),
        'end_time' => u32(30000 + $n),
        'pkt_sent' => u32(31000 + $n),
        'oct_sent' => u32(32000 + $n),
        'pkt_recv' => u32(33000 + $n),
        'oct_recv' => u32(34000 + $n),
        'pkt_lost' => u32(35000 + $n),
        'jitter' => u32(36000 + $n),
        'latency' => u32(37000 + $n),
        'spare' => u32(38000 + $n),
        'flag' => u32(39000 + $n),
    ];
}

/** The same as an entry of a phone's history. */
function shown_qual(int $n): array
{
    return [
        'call_state' => 11000 + $n,
        'call_status' => 12000 + $n,
        'call_direction' => 13000 + $n,
        'peer_ipAddr' => "10.14.200.$n",
        'peer_num' => "peer_num $n",
        'peer_owner' => "Noé $n",
        'call_reference' => 17000 + $n,
        'line_instance' => 18000 + $n,
        'conference_id' => 19000 + $n,
        'pass_thru_party_id' => 20000 + $n,
        'local_rtp_port' => 21000 + $n,
        'remote_rtp_port' => 22000 + $n,
        'rtp_sampling_period' => 23000 + $n,
        'payload_type' => 24000 + $n,
        'rtp_pre_value' => 25000 + $n,
        'silence_sup' => 26000 + $n,
        'max_frames_per_pkt' => 27000 + $n,
        'g723_bit_rate' => 28000 + $n,
        'start_time' => 29000 + $n,
        'end_time' => 30000 + $n,
        'pkt_sent' => 31000 + $n,
        'oct_sent' => 32000 + $n,
        'pkt_recv' => 33000 + $n,
        'oct_recv' => 34000 + $n,
        'pkt_lost' => 35000 + $n,
        'jitter' => 36000 + $n,
        'latency' => 37000 + $n,
        'flag' => 39000 + $n,
    ];
}

/** A row of the top tables. */
function shown_top(int $n): array
{
    return [
        'vers' => 1000 + $n,
        'index' => 2000 + $n,
        'phone_ipAddr_length' => 3000 + $n,
        'phone_ipAddr' => "10.4.200.$n",
        'peer_ipAddr' => "10.14.200.$n",
        'phone_num' => "phone_num $n",
        'phone_model' => "phone_model $n",
        'phone_owner' => "Léa $n",
        'if_name' => "if $n",
        'call_state' => 11000 + $n,
        'call_status' => 12000 + $n,
        'call_direction' => 13000 + $n,
        'peer_num' => "peer_num $n",
        'peer_owner' => "Noé $n",
        'call_reference' => 17000 + $n,
        'line_instance' => 18000 + $n,
        'conference_id' => 19000 + $n,
        'pass_thru_party_id' => 20000 + $n,
        'local_rtp_port' => 21000 + $n,
        'remote_rtp_port' => 22000 + $n,
        'rtp_sampling_period' => 23000 + $n,
        'payload_type' => 24000 + $n,
        'rtp_pre_value' => 25000 + $n,
        'silence_sup' => 26000 + $n,
        'max_frames_per_pkt' => 27000 + $n,
        'g723_bit_rate' => 28000 + $n,
        'start_time' => 29000 + $n,
        'end_time' => 30000 + $n,
        'pkt_sent' => 31000 + $n,
        'oct_sent' => 32000 + $n,
        'pkt_recv' => 33000 + $n,
        'oct_recv' => 34000 + $n,
        'pkt_lost' => 35000 + $n,
        'jitter' => 36000 + $n,
        'latency' => 37000 + $n,
        'flag' => 39000 + $n,
    ];
}

/** A row of the call table, $c being the called party's number. */
function shown_call(int $n, int $c): array
{
    return [
        'vers' => 1000 + $n,
        'index' => 2000 + $n,
        'phone_ipAddr_length' => 3000 + $n,
        'phone_ipAddr' => "10.4.200.$n",
        'phone_num' => "phone_num $n",
        'callee_phone_ipAddr_length' => 3000 + $c,
        'callee_phone_ipAddr' => "10.4.200.$c",
        'callee_phone_num' => "phone_num $c",
        'phone_model' => "phone_model $n",
        'callee_phone_model' => "phone_model $c",
        'phone_owner' => "Léa $n",
        'callee_phone_owner' => "Léa $c",
        'if_name' => "if $n",
        'callee_if_name' => "if $c",
        'call_state' => 11000 + $n,
        'callee_call_state' => 11000 + $c,
        'call_status' => 12000 + $n,
        'callee_call_status' => 12000 + $c,
        'call_direction' => 13000 + $n,
        'callee_direction' => 13000 + $c,
        'call_reference' => 17000 + $n,
        'callee_reference' => 17000 + $c,
        'line_instance' => 18000 + $n,
        'callee_line_instance' => 18000 + $c,
        'conference_id' => 19000 + $n,
        'callee_conference_id' => 19000 + $c,
        'pass_thru_party_id' => 20000 + $n,
        'callee_pass_thru_party_id' => 20000 + $c,
        'rtp_port' => 21000 + $n,
        'callee_rtp_port' => 22000 + $n,
        'rtp_sampling_period' => 23000 + $n,
        'callee_rtp_sampling_period' => 23000 + $c,
        'payload_type' => 24000 + $n,
        'callee_payload_type' => 24000 + $c,
        'rtp_pre_value' => 25000 + $n,
        'callee_rtp_pre_value' => 25000 + $c,
        'silence_sup' => 26000 + $n,
        'callee_silence_sup' => 26000 + $c,
        'max_frames_per_pkt' => 27000 + $n,
        'callee_max_frames_per_pkt' => 27000 + $c,
        'g723_bit_rate' => 28000 + $n,
        'callee_g723_bit_rate' => 28000 + $c,
        'start_time' => 29000 + $n,
        'callee_start_time' => 29000 + $c,
        'end_time' => 30000 + $n,
        'callee_end_time' => 30000 + $c,
        'pkt_sent' => 31000 + $n,
        'oct_sent' => 32000 + $n,
        'pkt_recv' => 33000 + $n,
        'oct_recv' => 34000 + $n,
        'pkt_lost' => 35000 + $n,
        'jitter' => 36000 + $n,
        'latency' => 37000 + $n,
        'flag' => 39000 + $n,
        'callee_pkt_sent' => 31000 + $c,
        'callee_oct_sent' => 32000 + $c,
        'callee_pkt_recv' => 33000 + $c,
        'callee_oct_recv' => 34000 + $c,
        'callee_pkt_lost' => 35000 + $c,
        'callee_jitter' => 36000 + $c,
        'callee_latency' => 37000 + $c,
        'callee_flag' => 39000 + $c,
    ];
}

/** A phone's figures, in wire order and in that of their keys. */
function aggregate(int $n): array
{
    return [
        'flag' => 90000 + $n,
        'num_call_mon' => 91000 + $n,
        'avg_pkt_lost' => 92000 + $n,
        'avg_jitter' => 93000 + $n,
        'worst_pkt_lost' => 94000 + $n,
        'worst_jitter' => 95000 + $n,
    ];
}

function phone(int $n): array
{
    return [
        'common' => record(...common($n)),
        'aggregate' => record(...array_map(u32(...), aggregate($n))),
        'num_hist_row' => i32(history_claimed($n)),
        'history' => history($n, qual(...)),
    ];
}

function shown_phone(int $n): array
{
    return [
        ...shown_common($n),
        ...aggregate($n),
        'num_hist_row' => history_claimed($n),
        ...shown_history($n, shown_qual(...)),
    ];
}

$phone = fn(int $n) => record(...phone($n));
$top = fn(int $n) => record(...common($n), ...qual($n));
$call = fn(int $n) => $top($n) . $top($n + 100);
expect_same([956, 1912, 2680], [strlen($top(1)), strlen($call(1)), strlen($phone(1))], 'sizes on the wire');

check_listed_readers(
    table: 'sccp_phone_rec',
    procedure: 83,
    list: 'phone_rec',
    record: $phone,
    shown: shown_phone(...),
);
check_listed_readers(
    table: 'sccp_call_rec',
    procedure: 82,
    list: 'call_rec',
    record: $call,
    shown: fn(int $n) => shown_call($n, $n + 100),
);
check_listed_readers(table: 'sccp_top_jitter_rec', procedure: 84, list: 'top_rec', record: $top, shown: shown_top(...));
check_listed_readers(
    table: 'sccp_top_pkt_lost_rec',
    procedure: 85,
    list: 'top_rec',
    record: $top,
    shown: shown_top(...),
);
check_listed_readers(
    table: 'sccp_top_latency_rec',
    procedure: 86,
    list: 'top_rec',
    record: $top,
    shown: shown_top(...),
);

// Integers are in the signed view.
$ones = record(...with_all_ones(common(1)), ...with_all_ones(qual(1)));
expect_listed_row(
    table: 'sccp_top_latency_rec',
    procedure: 86,
    list: 'top_rec',
    record: $ones,
    shown: with_minus_ones(shown_top(1)),
);
expect_listed_row(
    table: 'sccp_call_rec',
    procedure: 82,
    list: 'call_rec',
    record: $ones . $ones,
    shown: with_minus_ones(shown_call(1, 1)),
);

/** A phone whose fields differ from phone 4, which shows three calls, shows these values instead. */
function expect_phone_shown(array $changes, array $shown): void
{
    $record = record(...but(phone(4), $changes));
    expect_listed_row(
        table: 'sccp_phone_rec',
        procedure: 83,
        list: 'phone_rec',
        record: $record,
        shown: but(shown_phone(4), $shown),
    );
}

expect_phone_shown(
    ['aggregate' => str_repeat(u32(4294967295), 6)],
    with_minus_ones(aggregate(4)),
);
$five = array_map(shown_qual(...), history_numbers(4));
expect_phone_shown(
    ['num_hist_row' => i32(2147483647)],
    ['num_hist_row' => 2147483647, 'history' => $five],
);
expect_phone_shown(['num_hist_row' => i32(5)], ['num_hist_row' => 5, 'history' => $five]);

// A text ends at its first zero byte or at the vector's end; lengths beside addresses are only shown.
expect_phone_shown(
    [
        'common' => record(...but(common(4), [
            'phone_ipAddr_length' => i32(-1),
            'phone_ipAddr' => units("\x0a\x01\xc8\x07\x01", 16),
            'phone_num' => signed_units(str_repeat('1', 24)),
            'phone_model' => signed_units(str_repeat("\xff", 40)),
            'phone_owner' => signed_units("owner\0of the phone", 40),
            'if_name' => signed_units('', 10),
        ])),
        'history' => record(...but(qual(1), [
            'peer_ipAddr' => i32(0) . i32(-1) . i32(-56) . i32(127) . signed_units('', 12),
            'peer_num' => signed_units(str_repeat('2', 24)),
            'peer_owner' => signed_units(str_repeat('o', 40)),
        ])) . record(...qual(2)) . record(...qual(3)) . record(...qual(4)) . record(...qual(5)),
    ],
    [
        'phone_ipAddr_length' => -1,
        'phone_ipAddr' => '10.1.200.7',
        'phone_num' => str_repeat('1', 24),
        'phone_model' => str_repeat("\xff", 40),
        'phone_owner' => 'owner',
        'if_name' => '',
        'history' => [
            but(shown_qual(1), [
                'peer_ipAddr' => '0.255.200.127',
                'peer_num' => str_repeat('2', 24),
                'peer_owner' => str_repeat('o', 40),
            ]),
            shown_qual(2),
            shown_qual(3),
        ],
    ],
);
expect_listed_row(
    table: 'sccp_call_rec',
    procedure: 82,
    list: 'call_rec',
    record: $top(1) . record(...but(common(2), ['if_name' => signed_units('GigEth1/22')]), ...qual(2)),
    shown: but(shown_call(1, 2), ['callee_if_name' => 'GigEth1/22']),
);
// Both ports are the caller's.
expect_listed_row(
    table: 'sccp_call_rec',
    procedure: 82,
    list: 'call_rec',
    record: record(...common(1), ...but(qual(1), ['local_rtp_port' => u32(16384), 'remote_rtp_port' => u32(20000)]))
        . record(...common(2), ...but(qual(2), ['local_rtp_port' => u32(30000), 'remote_rtp_port' => u32(16386)])),
    shown: but(shown_call(1, 2), ['rtp_port' => 16384, 'callee_rtp_port' => 20000]),
);

done();
?>
--EXPECT--
OK
