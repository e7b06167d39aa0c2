--TEST--
MGCP: phones, calls, worst calls by jitter, by packet loss and by latency
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/voice.inc';

/** The media of a call, in wire order; $n tells one from another. */
function media(int $n): array
{
    return [
        'conns_id_1' => signed_units("conns_id_1 $n", 33),
        'conns_id_2' => signed_units("conns_id_2 $n", 33),
        'media_reserved_1' => i32(33000 + $n),
        'caller_ip_addr' => signed_units("caller_ip_addr $n", 32),
        'callee_ip_addr' => signed_units("callee_ip_addr $n", 32),
        'media_reserved_2' => i32(36000 + $n),
        'media_reserved_3' => i32(37000 + $n),
        'rtp_port_1' => i32(38000 + $n),
        'rtp_port_2' => i32(39000 + $n),
        'audio_codec' => signed_units("codec $n", 10),
        'sampling_period' => i32(41000 + $n),
        'silence_sup' => i32(42000 + $n),
        'media_reserved_4' => i32(43000 + $n),
        'media_reserved_5' => i32(44000 + $n),
        'pkt_sent_1' => i32(45000 + $n),
        'pkt_sent_2' => i32(46000 + $n),
        'oct_sent_1' => i32(47000 + $n),
        'oct_sent_2' => i32(48000 + $n),
        'pkt_recv_1' => i32(49000 + $n),
        'pkt_recv_2' => i32(50000 + $n),
        'oct_recv_1' => i32(51000 + $n),
        'oct_recv_2' => i32(52000 + $n),
        'pkt_loss_1' => i32(53000 + $n),
        'pkt_loss_2' => i32(54000 + $n),
        'jitter_1' => i32(55000 + $n),
        'jitter_2' => i32(56000 + $n),
        'latency_1' => i32(57000 + $n),
        'latency_2' => i32(58000 + $n),
        'media_flag' => i32(0x10000 + $n),
    ];
}

/** A call, in wire order. */
function call(int $n): array
{
    return [
        'index' => i32(1000 + $n),
        'ca_address_1_length' => u32(2000 + $n),
        'ca_address_2_length' => u32(3000 + $n),
        'ca_address_1' => units(phone_address(4, $n), 16),
        'ca_address_2' => units(phone_address(5, $n), 16),
        'gw_address_1_length' => u32(6000 + $n),
        'gw_address_2_length' => u32(7000 + $n),
        'gw_address_1' => units(phone_address(8, $n), 16),
        'gw_address_2' => units(phone_address(9, $n), 16),
        'call_id_1' => signed_units("call_id_1 $n", 33),
        'call_id_2' => signed_units("call_id_2 $n", 33),
        'caller_endpoint_id' => signed_units("caller_endpoint_id $n", 256),
        'callee_endpoint_id' => signed_units("callee_endpoint_id $n", 256),
        'caller_alias' => signed_units("Maë $n", 256),
        'callee_alias' => signed_units("Loïs $n", 256),
        'caller_phone_num' => signed_units("caller_phone_num $n", 24),
        'callee_phone_num' => signed_units("callee_phone_num $n", 24),
        'start_time' => u32(18000 + $n),
        'end_time' => u32(19000 + $n),
        'call_state' => i32(20000 + $n),
        'media' => record(...media($n)),
        'call_flag' => u32(0x20000 + $n),
    ];
}

/** The same as scripts see it. */
function shown_call(int $n): array
{
    return [
        'index' => 1000 + $n,
        'caller_phone_num' => "caller_phone_num $n",
        'callee_phone_num' => "callee_phone_num $n",
        'caller_endpoint_id' => "caller_endpoint_id $n",
        'callee_endpoint_id' => "callee_endpoint_id $n",
        'caller_alias' => "Maë $n",
        'callee_alias' => "Loïs $n",
        'caller_ip_addr' => "caller_ip_addr $n",
        'callee_ip_addr' => "callee_ip_addr $n",
        'pkt_loss' => 54000 + $n,
        'jitter' => 56000 + $n,
        'start_time' => 18000 + $n,
        'end_time' => 19000 + $n,
        'ca_address_1' => "10.4.200.$n",
        'ca_address_2' => "10.5.200.$n",
        'gw_address_1' => "10.8.200.$n",
        'gw_address_2' => "10.9.200.$n",
        'call_state' => 20000 + $n,
        'call_id_1' => "call_id_1 $n",
        'call_id_2' => "call_id_2 $n",
        'conns_id_1' => "conns_id_1 $n",
        'conns_id_2' => "conns_id_2 $n",
        'rtp_port_1' => 38000 + $n,
        'rtp_port_2' => 39000 + $n,
        'audio_codec' => "codec $n",
        'sampling_period' => 41000 + $n,
        'silence_sup' => 42000 + $n,
        'pkt_sent_1' => 45000 + $n,
        'pkt_sent_2' => 46000 + $n,
        'oct_sent_1' => 47000 + $n,
        'oct_sent_2' => 48000 + $n,
        'pkt_recv_1' => 49000 + $n,
        'pkt_recv_2' => 50000 + $n,
        'oct_recv_1' => 51000 + $n,
        'oct_recv_2' => 52000 + $n,
        'pkt_loss_1' => 53000 + $n,
        'pkt_loss_2' => 54000 + $n,
        'jitter_1' => 55000 + $n,
        'jitter_2' => 56000 + $n,
        'latency_1' => 57000 + $n,
        'latency_2' => 58000 + $n,
        'flag' => 0x30000 + $n,
    ];
}

/** A phone, in wire order: its flag is the last field. */
function phone(int $n): array
{
    return [
        'index' => i32(81000 + $n),
        'phone_ipAddr' => signed_units("192.0.2.$n", 32),
        'phone_owner' => signed_units("Léa $n", 256),
        'phone_alias' => signed_units("phone_alias $n", 256),
        'phone_num' => signed_units("phone_num $n", 24),
        'num_call_mon' => u32(86000 + $n),
        'avg_pkt_lost' => u32(87000 + $n),
        'avg_jitter' => u32(88000 + $n),
        'worst_pkt_lost' => u32(89000 + $n),
        'worst_jitter' => u32(90000 + $n),
        'num_hist_row' => i32(history_claimed($n)),
        'history' => history($n, call(...)),
        'flag' => u32(93000 + $n),
    ];
}

function shown_phone(int $n): array
{
    return [
        'index' => 81000 + $n,
        'phone_ipAddr' => "192.0.2.$n",
        'phone_num' => "phone_num $n",
        'phone_owner' => "Léa $n",
        'phone_alias' => "phone_alias $n",
        'flag' => 93000 + $n,
        'num_call_mon' => 86000 + $n,
        'avg_pkt_lost' => 87000 + $n,
        'avg_jitter' => 88000 + $n,
        'worst_pkt_lost' => 89000 + $n,
        'worst_jitter' => 90000 + $n,
        'num_hist_row' => history_claimed($n),
        ...shown_history($n, shown_call(...)),
    ];
}

$phone = fn(int $n) => record(...phone($n));
$call = fn(int $n) => record(...call($n));
expect_same(
    [656, 5500, 29804],
    [strlen(record(...media(1))), strlen($call(1)), strlen($phone(1))],
    'sizes on the wire',
);

check_listed_readers(
    table: 'mgcp_phone_rec',
    procedure: 186,
    list: 'phone_rec',
    record: $phone,
    shown: shown_phone(...),
);
check_listed_readers(table: 'mgcp_call_rec', procedure: 185, list: 'call_rec', record: $call, shown: shown_call(...));
check_listed_readers(
    table: 'mgcp_top_jitter_rec',
    procedure: 187,
    list: 'call_rec',
    record: $call,
    shown: shown_call(...),
);
check_listed_readers(
    table: 'mgcp_top_pkt_lost_rec',
    procedure: 188,
    list: 'call_rec',
    record: $call,
    shown: shown_call(...),
);

// The agent has no table of the worst calls by latency.
check_reader_refusals('mgcp_top_latency_rec');
expect_no_call('mgcp_top_latency_rec_get', [the_link(), 1], false);
expect_no_call('mgcp_top_latency_rec_getnext', [the_link(), 1], false);
expect_no_call('mgcp_top_latency_rec_getbulk', [the_link(), 1, 10], false);

/** A call whose fields differ from call 1 shows these values instead. */
function expect_call_shown(array $changes, array $media, array $shown): void
{
    $fields = but(call(1), ['media' => record(...but(media(1), $media))]);
    $record = record(...but($fields, $changes));
    expect_listed_row(
        table: 'mgcp_call_rec',
        procedure: 185,
        list: 'call_rec',
        record: $record,
        shown: but(shown_call(1), $shown),
    );
}

// An address without length is a dash; any other length says nothing about how it is shown.
expect_call_shown(['ca_address_1_length' => u32(0)], [], ['ca_address_1' => '-']);
expect_call_shown(['ca_address_2_length' => u32(0)], [], ['ca_address_2' => '-']);
expect_call_shown(['gw_address_1_length' => u32(0)], [], ['gw_address_1' => '-']);
expect_call_shown(['gw_address_2_length' => u32(0)], [], ['gw_address_2' => '-']);
expect_call_shown(
    ['gw_address_2_length' => u32(4294967295), 'gw_address_2' => units("\xff\0\xc8\x07", 16)],
    [],
    ['gw_address_2' => '255.0.200.7'],
);

// The larger figure of the two legs, as signed numbers.
expect_call_shown(
    [],
    ['pkt_loss_1' => i32(3), 'pkt_loss_2' => i32(7), 'jitter_1' => u32(4294967295), 'jitter_2' => i32(0)],
    ['pkt_loss' => 7, 'jitter' => 0, 'pkt_loss_1' => 3, 'pkt_loss_2' => 7, 'jitter_1' => -1, 'jitter_2' => 0],
);
expect_call_shown(
    [],
    ['pkt_loss_1' => i32(8), 'pkt_loss_2' => i32(-9), 'jitter_1' => i32(-5), 'jitter_2' => i32(-6)],
    ['pkt_loss' => 8, 'jitter' => -5, 'pkt_loss_1' => 8, 'pkt_loss_2' => -9, 'jitter_1' => -5, 'jitter_2' => -6],
);

expect_call_shown(['call_flag' => u32(4)], ['media_flag' => i32(1)], ['flag' => 5]);
expect_call_shown(['call_flag' => u32(6)], ['media_flag' => i32(3)], ['flag' => 7]);
expect_call_shown(['call_flag' => u32(0x80000000)], ['media_flag' => i32(1)], ['flag' => -2147483647]);

// Integers are in the signed view.
expect_call_shown(
    but(with_all_ones(call(1)), ['media' => record(...with_all_ones(media(1)))]),
    [],
    with_minus_ones(shown_call(1)),
);

// A text ends at its first zero byte or at the vector's end.
expect_call_shown(
    [
        'call_id_1' => signed_units(str_repeat('a', 33)),
        'call_id_2' => signed_units("call\0id", 33),
        'caller_endpoint_id' => signed_units(str_repeat('b', 256)),
        'callee_endpoint_id' => signed_units(str_repeat("\xff", 256)),
        'caller_alias' => signed_units('', 256),
        'callee_alias' => signed_units(str_repeat('c', 256)),
        'caller_phone_num' => signed_units(str_repeat('1', 24)),
        'callee_phone_num' => signed_units(str_repeat('2', 24)),
    ],
    [
        'conns_id_1' => signed_units(str_repeat('d', 33)),
        'conns_id_2' => signed_units(str_repeat('e', 33)),
        'caller_ip_addr' => signed_units(str_repeat('3', 32)),
        'callee_ip_addr' => signed_units('2001:db8::1', 32),
        'audio_codec' => signed_units('PCMU/8000/'),
    ],
    [
        'call_id_1' => str_repeat('a', 33),
        'call_id_2' => 'call',
        'caller_endpoint_id' => str_repeat('b', 256),
        'callee_endpoint_id' => str_repeat("\xff", 256),
        'caller_alias' => '',
        'callee_alias' => str_repeat('c', 256),
        'caller_phone_num' => str_repeat('1', 24),
        'callee_phone_num' => str_repeat('2', 24),
        'conns_id_1' => str_repeat('d', 33),
        'conns_id_2' => str_repeat('e', 33),
        'caller_ip_addr' => str_repeat('3', 32),
        'callee_ip_addr' => '2001:db8::1',
        'audio_codec' => 'PCMU/8000/',
    ],
);

/** A phone whose fields differ from phone 4, which shows three calls, shows these values instead. */
function expect_phone_shown(array $changes, array $shown): void
{
    $record = record(...but(phone(4), $changes));
    expect_listed_row(
        table: 'mgcp_phone_rec',
        procedure: 186,
        list: 'phone_rec',
        record: $record,
        shown: but(shown_phone(4), $shown),
    );
}

$five = array_map(shown_call(...), history_numbers(4));
expect_phone_shown(
    ['num_hist_row' => i32(2147483647)],
    ['num_hist_row' => 2147483647, 'history' => $five],
);
expect_phone_shown(['num_hist_row' => i32(5)], ['num_hist_row' => 5, 'history' => $five]);
expect_phone_shown(
    [...with_all_ones(phone(4)), 'num_hist_row' => i32(3)],
    [...with_minus_ones(shown_phone(4)), 'num_hist_row' => 3],
);
expect_phone_shown(
    [
        'phone_ipAddr' => signed_units(str_repeat('9', 32)),
        'phone_owner' => signed_units(str_repeat('o', 256)),
        'phone_alias' => signed_units("\0alias", 256),
        'phone_num' => signed_units(str_repeat('1', 24)),
    ],
    [
        'phone_ipAddr' => str_repeat('9', 32),
        'phone_owner' => str_repeat('o', 256),
        'phone_alias' => '',
        'phone_num' => str_repeat('1', 24),
    ],
);

// Texts below the same ones: each row has its own as far as a script can tell, whatever stands behind a text's end.
$texts = [
    ['call_id_1' => 'same', 'caller_alias' => str_repeat('a', 256), 'caller_phone_num' => ''],
    ['call_id_1' => 'same', 'caller_alias' => str_repeat('a', 256), 'caller_phone_num' => ''],
    ['call_id_1' => "same\0behind", 'caller_alias' => str_repeat('a', 255) . 'b', 'caller_phone_num' => 'x'],
    ['call_id_1' => "same\0Behind", 'caller_alias' => str_repeat('a', 255) . 'b', 'caller_phone_num' => 'x'],
    ['call_id_1' => 'Same', 'caller_alias' => str_repeat('a', 255), 'caller_phone_num' => 'x'],
];
$call_of = fn(array $texts) => record(...but(call(1), [
    'call_id_1' => signed_units($texts['call_id_1'], 33),
    'caller_alias' => signed_units($texts['caller_alias'], 256),
    'caller_phone_num' => signed_units($texts['caller_phone_num'], 24),
]));
$shown_of = fn(array $texts) => but(shown_call(1), ['call_id_1' => strtok($texts['call_id_1'], "\0")] + $texts);
$answer = reply(rows(...array_map($call_of, $texts)));
$expected = array_map($shown_of, $texts);
foreach (array_keys($texts) as $i) {
    foreach (['call_id_1', 'caller_alias', 'conns_id_1', 'audio_codec', 'callee_endpoint_id'] as $key) {
        the_agent()->add($answer);
        $calls = mgcp_call_rec_getbulk(the_link(), 0, 5)['call_rec'];
        expect_same($expected, $calls, 'the calls');
        $calls[$i][$key][0] = 'Z';
        $calls[$i][$key] .= 'written';
        expect_same('Z' . substr($expected[$i][$key], 1) . 'written', $calls[$i][$key], "$key of call $i");
        $calls[$i][$key] = $expected[$i][$key];
        expect_same($expected, $calls, "all but $key of call $i");
    }
}

done();
?>
--EXPECT--
OK
