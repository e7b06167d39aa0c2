--TEST--
H.323: phones, calls, worst calls by jitter and by packet loss
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/voice.inc';

/** The calling endpoint, in wire order; $n tells one from another. */
function common(int $n): array
{
    return [
        'vers' => i32(1000 + $n),
        'index' => u32(2000 + $n),
        'forward_q931_ipAddr' => units(phone_address(3, $n), 16),
        'forward_q931_ipAddr_length' => u32(4000 + $n),
        'forward_q931_port' => u32(5000 + $n),
        'forward_num' => signed_units("forward_num $n", 132),
        'forward_alias' => signed_units("Zoé $n", 81),
    ];
}

/** The same as scripts see it. */
function shown_common(int $n): array
{
    return [
        'vers' => 1000 + $n,
        'index' => 2000 + $n,
        'forward_q931_ipAddr_length' => 4000 + $n,
        'forward_q931_port' => 5000 + $n,
        'forward_q931_ipAddr' => "10.3.200.$n",
        'forward_num' => "forward_num $n",
        'forward_alias' => "Zoé $n",
    ];
}

/** A call, in wire order. */
function qual(int $n): array
{
    return [
        'f_q931_ipAddr' => units(phone_address(11, $n), 16),
        'f_q931_ipAddr_length' => u32(12000 + $n),
        'f_q931_port' => u32(13000 + $n),
        'f_num' => signed_units("f_num $n", 132),
        'f_alias' => signed_units("José $n", 81),
        'reverse_q931_ipAddr' => units(phone_address(16, $n), 16),
        'reverse_q931_ipAddr_length' => u32(17000 + $n),
        'reverse_q931_port' => u32(18000 + $n),
        'reverse_num' => signed_units("reverse_num $n", 132),
        'reverse_alias' => signed_units("Chloé $n", 81),
        'call_state' => u32(21000 + $n),
        'call_status' => u32(22000 + $n),
        'call_reference' => u32(23000 + $n),
        'call_id' => units(hex2bin('0a1b2c3d4e5f60718293a4b5c6d7e8') . chr($n)),
        'conference_id' => units(chr($n) . hex2bin('00ff10ef20df30cf40bf50af609f70')),
        'conference_goal' => u32(26000 + $n),
        'faststart' => i32(27000 + $n),
        'tunneling' => i32(28000 + $n),
        'call_type' => u32(29000 + $n),
        'forward_product_id' => units("forward_product_id $n", 257),
        'forward_version_id' => units("forward_version_id $n", 257),
        'reverse_product_id' => units("reverse_product_id $n", 257),
        'reverse_version_id' => units("reverse_version_id $n", 257),
        'forward_session_id' => u32(34000 + $n),
        'forward_logical_channel_num' => u32(35000 + $n),
        'reverse_session_id' => u32(36000 + $n),
        'reverse_logical_channel_num' => u32(37000 + $n),
        'forward_h245_ipAddr' => units(phone_address(38, $n), 16),
        'forward_h245_ipAddr_length' => u32(39000 + $n),
        'forward_h245_port' => u32(40000 + $n),
        'forward_rtp_ipAddr' => units(phone_address(41, $n), 16),
        'forward_rtp_ipAddr_length' => u32(42000 + $n),
        'forward_rtp_port' => u32(43000 + $n),
        'forward_codec' => u32(44000 + $n),
        'forward_rtcp_sr_ipAddr' => units(phone_address(45, $n), 16),
        'forward_rtcp_sr_ipAddr_length' => u32(46000 + $n),
        'forward_rtcp_sr_port' => u32(47000 + $n),
        'forward_rtcp_rr_ipAddr' => units(phone_address(48, $n), 16),
        'forward_rtcp_rr_ipAddr_length' => u32(49000 + $n),
        'forward_rtcp_rr_port' => u32(50000 + $n),
        'reverse_h245_ipAddr' => units(phone_address(51, $n), 16),
        'reverse_h245_ipAddr_length' => u32(52000 + $n),
        'reverse_h245_port' => u32(53000 + $n),
        'reverse_rtp_ipAddr' => units(phone_address(54, $n), 16),
        'reverse_rtp_ipAddr_length' => u32(55000 + $n),
        'reverse_rtp_port' => u32(56000 + $n),
        'reverse_codec' => u32(57000 + $n),
        'reverse_rtcp_sr_ipAddr' => units(phone_address(58, $n), 16),
        'reverse_rtcp_sr_ipAddr_length' => u32(59000 + $n),
        'reverse_rtcp_sr_port' => u32(60000 + $n),
        'reverse_rtcp_rr_ipAddr' => units(phone_address(61, $n), 16),
        'reverse_rtcp_rr_ipAddr_length' => u32(62000 + $n),
        'reverse_rtcp_rr_port' => u32(63000 + $n),
        'start_time' => u32(64000 + $n),
        'end_time' => u32(65000 + $n),
        'forward_ssrc' => u32(4000000000 + $n),
        'forward_sr_pkt_sent' => u32(67000 + $n),
        'forward_sr_oct_sent' => u32(68000 + $n),
        'forward_sr_pkt_lost' => u32(69000 + $n),
        'forward_sr_fraction_lost' => u32(5 * (70000 + $n) + 4),
        'forward_sr_jitter' => u32(500 * (71000 + $n) + 499),
        'forward_reserved_1' => u32(72000 + $n),
        'forward_reserved_2' => u32(73000 + $n),
        'forward_reserved_3' => u32(74000 + $n),
        'reverse_ssrc' => u32(3000000000 + $n),
        'reverse_sr_pkt_sent' => u32(76000 + $n),
        'reverse_sr_oct_sent' => u32(77000 + $n),
        'reverse_sr_pkt_lost' => u32(78000 + $n),
        'reverse_sr_fraction_lost' => u32(7 * (79000 + $n) + 6),
        'reverse_sr_jitter' => u32(700 * (80000 + $n) + 699),
        'reverse_reserved_1' => u32(81000 + $n),
        'reverse_reserved_2' => u32(82000 + $n),
        'reverse_reserved_3' => u32(83000 + $n),
        'flag' => u32(84000 + $n),
        'forward_num_samples' => u32(5),
        'reverse_num_samples' => u32(7),
    ];
}

function shown_qual(int $n): array
{
    return [
        'f_q931_ipAddr_length' => 12000 + $n,
        'f_q931_port' => 13000 + $n,
        'f_q931_ipAddr' => "10.11.200.$n",
        'f_num' => "f_num $n",
        'f_alias' => "José $n",
        'reverse_q931_ipAddr_length' => 17000 + $n,
        'reverse_q931_port' => 18000 + $n,
        'reverse_q931_ipAddr' => "10.16.200.$n",
        'reverse_num' => "reverse_num $n",
        'reverse_alias' => "Chloé $n",
        'call_state' => 21000 + $n,
        'call_status' => 22000 + $n,
        'call_reference' => 23000 + $n,
        'call_id' => sprintf('0a1b 2c3d 4e5f 6071 8293 a4b5 c6d7 e8%02x', $n),
        'conference_id' => sprintf('%02x00 ff10 ef20 df30 cf40 bf50 af60 9f70', $n),
        'conference_goal' => 26000 + $n,
        'faststart' => 27000 + $n,
        'tunneling' => 28000 + $n,
        'call_type' => 29000 + $n,
        'forward_product_id' => "forward_product_id $n",
        'reverse_product_id' => "reverse_product_id $n",
        'forward_version_id' => "forward_version_id $n",
        'reverse_version_id' => "reverse_version_id $n",
        'forward_session_id' => 34000 + $n,
        'forward_logical_channel_num' => 35000 + $n,
        'reverse_session_id' => 36000 + $n,
        'reverse_logical_channel_num' => 37000 + $n,
        'forward_h245_ipAddr_length' => 39000 + $n,
        'forward_h245_port' => 40000 + $n,
        'forward_h245_ipAddr' => "10.38.200.$n",
        'forward_rtp_ipAddr_length' => 42000 + $n,
        'forward_rtp_port' => 43000 + $n,
        'forward_rtp_ipAddr' => "10.41.200.$n",
        'forward_codec' => 44000 + $n,
        'forward_rtcp_sr_ipAddr_length' => 46000 + $n,
        'forward_rtcp_sr_port' => 47000 + $n,
        'forward_rtcp_sr_ipAddr' => "10.45.200.$n",
        'forward_rtcp_rr_ipAddr_length' => 49000 + $n,
        'forward_rtcp_rr_port' => 50000 + $n,
        'forward_rtcp_rr_ipAddr' => "10.48.200.$n",
        'reverse_h245_ipAddr_length' => 52000 + $n,
        'reverse_h245_port' => 53000 + $n,
        'reverse_h245_ipAddr' => "10.51.200.$n",
        'reverse_rtp_ipAddr_length' => 55000 + $n,
        'reverse_rtp_port' => 56000 + $n,
        'reverse_rtp_ipAddr' => "10.54.200.$n",
        'reverse_codec' => 57000 + $n,
        'reverse_rtcp_sr_ipAddr_length' => 59000 + $n,
        'reverse_rtcp_sr_port' => 60000 + $n,
        'reverse_rtcp_sr_ipAddr' => "10.58.200.$n",
        'reverse_rtcp_rr_ipAddr_length' => 62000 + $n,
        'reverse_rtcp_rr_port' => 63000 + $n,
        'reverse_rtcp_rr_ipAddr' => "10.61.200.$n",
        'start_time' => 64000 + $n,
        'end_time' => 65000 + $n,
        'forward_ssrc' => 4000000000.0 + $n,
        'forward_sr_pkt_sent' => 67000 + $n,
        'forward_sr_oct_sent' => 68000 + $n,
        'forward_sr_pkt_lost' => 69000 + $n,
        'forward_sr_fraction_lost' => 70000 + $n,
        'forward_sr_jitter' => 71000 + $n,
        'reverse_ssrc' => 3000000000.0 + $n,
        'reverse_sr_pkt_sent' => 76000 + $n,
        'reverse_sr_oct_sent' => 77000 + $n,
        'reverse_sr_pkt_lost' => 78000 + $n,
        'reverse_sr_fraction_lost' => 79000 + $n,
        'reverse_sr_jitter' => 80000 + $n,
        'flag' => 84000 + $n,
    ];
}

/** A phone's figures, in wire order. */
function aggregate(int $n): array
{
    return [
        'flag' => u32(90000 + $n),
        'num_call_mon' => u32(91000 + $n),
        'sum_pkt_lost' => u32(3 * (92000 + $n) + 2),
        'sum_jitter' => u32(300 * (93000 + $n) + 299),
        'worst_pkt_lost' => u32(94000 + $n),
        'worst_jitter' => u32(100 * (95000 + $n) + 99),
        'num_samples' => u32(3),
    ];
}

function shown_aggregate(int $n): array
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
        'aggregate' => record(...aggregate($n)),
        'num_hist_row' => i32(history_claimed($n)),
        'history' => history($n, qual(...)),
    ];
}

function shown_phone(int $n): array
{
    return [
        ...shown_common($n),
        ...shown_aggregate($n),
        'num_hist_row' => history_claimed($n),
        ...shown_history($n, shown_qual(...)),
    ];
}

$phone = fn(int $n) => record(...phone($n));
$call = fn(int $n) => record(...common($n), ...qual($n));
$shown_call = fn(int $n) => [...shown_common($n), ...shown_qual($n)];
expect_same([7740, 35004], [strlen($call(1)), strlen($phone(1))], 'sizes on the wire');

check_listed_readers(
    table: 'h323_phone_rec',
    procedure: 116,
    list: 'phone_rec',
    record: $phone,
    shown: shown_phone(...),
);
check_listed_readers(table: 'h323_call_rec', procedure: 115, list: 'call_rec', record: $call, shown: $shown_call);
check_listed_readers(table: 'h323_top_jitter_rec', procedure: 117, list: 'call_rec', record: $call, shown: $shown_call);
check_listed_readers(
    table: 'h323_top_pkt_lost_rec',
    procedure: 118,
    list: 'call_rec',
    record: $call,
    shown: $shown_call,
);

/** A call whose fields differ from call 1 shows these values instead. */
function expect_call_shown(array $changes, array $shown, array $common = [], array $shown_common = []): void
{
    $record = record(...but(common(1), $common), ...but(qual(1), $changes));
    $row = [...but(shown_common(1), $shown_common), ...but(shown_qual(1), $shown)];
    expect_listed_row(table: 'h323_call_rec', procedure: 115, list: 'call_rec', record: $record, shown: $row);
}

/** A phone whose fields differ from phone 4, which shows three calls, shows these values instead. */
function expect_phone_shown(array $changes, array $shown): void
{
    $record = record(...but(phone(4), $changes));
    expect_listed_row(
        table: 'h323_phone_rec',
        procedure: 116,
        list: 'phone_rec',
        record: $record,
        shown: but(shown_phone(4), $shown),
    );
}

// Without samples there is nothing to divide by, whatever the sums hold.
expect_call_shown(
    ['forward_num_samples' => u32(0)],
    ['forward_sr_fraction_lost' => 0, 'forward_sr_jitter' => 0],
);
expect_call_shown(
    ['reverse_num_samples' => u32(0)],
    ['reverse_sr_fraction_lost' => 0, 'reverse_sr_jitter' => 0],
);
// Jitter is in hundredths: 2550 over 5 samples is 5.1.
expect_call_shown(
    ['forward_sr_jitter' => u32(2550), 'reverse_sr_jitter' => u32(699)],
    ['forward_sr_jitter' => 5, 'reverse_sr_jitter' => 0],
);
// The divisor of jitter is a 32-bit product: 2^30 samples times 100 is 0, 42949673 times 100 is 4.
expect_call_shown(
    [
        'forward_sr_fraction_lost' => u32(3 << 30),
        'forward_num_samples' => u32(1 << 30),
        'reverse_sr_fraction_lost' => u32(42949673 * 6),
        'reverse_sr_jitter' => u32(41),
        'reverse_num_samples' => u32(42949673),
    ],
    [
        'forward_sr_fraction_lost' => 3,
        'forward_sr_jitter' => 0,
        'reverse_sr_fraction_lost' => 6,
        'reverse_sr_jitter' => 10,
    ],
);
expect_call_shown(
    ['forward_sr_fraction_lost' => u32(4294967295), 'forward_num_samples' => u32(1)],
    ['forward_sr_fraction_lost' => -1, 'forward_sr_jitter' => 355009],
);

// Integers are in the signed view, the synchronisation sources are not.
expect_call_shown(
    with_all_ones(qual(1)),
    but(with_minus_ones(shown_qual(1)), [
        'forward_ssrc' => 4294967295.0,
        'forward_sr_fraction_lost' => 1, // 4294967295 / 4294967295
        'forward_sr_jitter' => 1,        // 4294967295 / 4294967196
        'reverse_ssrc' => 4294967295.0,
        'reverse_sr_fraction_lost' => 1,
        'reverse_sr_jitter' => 1,
    ]),
    with_all_ones(common(1)),
    with_minus_ones(shown_common(1)),
);
expect_call_shown(
    ['forward_ssrc' => u32(0), 'reverse_ssrc' => u32(2147483648)],
    ['forward_ssrc' => 0.0, 'reverse_ssrc' => 2147483648.0],
);

expect_call_shown(
    ['call_id' => units('', 16), 'conference_id' => units(str_repeat("\xff", 16))],
    [
        'call_id' => '0000 0000 0000 0000 0000 0000 0000 0000',
        'conference_id' => 'ffff ffff ffff ffff ffff ffff ffff ffff',
    ],
);

// A text ends at its first zero byte or at the vector's end.
expect_call_shown(
    [
        'f_num' => signed_units(str_repeat('n', 132)),
        'f_alias' => signed_units("a\0b", 81),
        'reverse_num' => signed_units('', 132),
        'reverse_alias' => signed_units(str_repeat("\xe9", 81)),
        'forward_product_id' => units(str_repeat('p', 257)),
        'forward_version_id' => units(str_repeat("\xff", 256), 257),
        'reverse_product_id' => units("\0product", 257),
        'reverse_version_id' => units(str_repeat("\x80", 257)),
    ],
    [
        'f_num' => str_repeat('n', 132),
        'f_alias' => 'a',
        'reverse_num' => '',
        'reverse_alias' => str_repeat("\xe9", 81),
        'forward_product_id' => str_repeat('p', 257),
        'forward_version_id' => str_repeat("\xff", 256),
        'reverse_product_id' => '',
        'reverse_version_id' => str_repeat("\x80", 257),
    ],
    ['forward_num' => signed_units(str_repeat('f', 132)), 'forward_alias' => signed_units(str_repeat('z', 81))],
    ['forward_num' => str_repeat('f', 132), 'forward_alias' => str_repeat('z', 81)],
);
// The length beside an address says nothing about how it is shown.
expect_call_shown(
    ['reverse_h245_ipAddr' => units("\0\x09\x63\xff", 16), 'reverse_h245_ipAddr_length' => u32(0)],
    ['reverse_h245_ipAddr' => '0.9.99.255', 'reverse_h245_ipAddr_length' => 0],
);

expect_phone_shown(
    ['aggregate' => record(...but(aggregate(4), ['num_samples' => u32(0)]))],
    ['avg_pkt_lost' => 0, 'avg_jitter' => 0],
);
expect_phone_shown(
    ['aggregate' => record(...with_all_ones(aggregate(4)))],
    [
        'flag' => -1,
        'num_call_mon' => -1,
        'avg_pkt_lost' => 1,
        'avg_jitter' => 1,
        'worst_pkt_lost' => -1,
        'worst_jitter' => 42949672,
    ],
);
$five = array_map(shown_qual(...), history_numbers(4));
expect_phone_shown(
    ['num_hist_row' => i32(2147483647)],
    ['num_hist_row' => 2147483647, 'history' => $five],
);
expect_phone_shown(['num_hist_row' => i32(5)], ['num_hist_row' => 5, 'history' => $five]);

// Addresses and identifiers below the same ones, which are compared as a whole: of an address four bytes are shown.
$identifiers = array_map(hex2bin(...), [
    str_repeat('00', 16),
    str_repeat('00', 15) . '01',
    str_repeat('00', 15) . '01',
    '01' . str_repeat('00', 15),
    '0a0000010000000000000000000000ff',
    '0a000001000000000000000000000000',
    '0a000001000000000000000000000000',
    '0a000002000000000000000000000000',
]);
$calls = array_map(fn(string $bytes) => record(
    ...common(1),
    ...but(qual(1), ['call_id' => units($bytes), 'f_q931_ipAddr' => units($bytes)]),
), $identifiers);
$shown = array_map(fn(string $bytes) => [
    ...shown_common(1),
    ...but(shown_qual(1), [
        'call_id' => implode(' ', str_split(bin2hex($bytes), 4)),
        'f_q931_ipAddr' => implode('.', unpack('C4', $bytes)),
    ]),
], $identifiers);
the_agent()->add(reply(rows(...$calls)));
$rows = h323_call_rec_getbulk(the_link(), 0, 8)['call_rec'];
expect_same($shown, $rows, 'the calls');
foreach (array_keys($rows) as $i) {
    $rows[$i]['call_id'][0] = 'Z';
    $rows[$i]['f_q931_ipAddr'] .= '!';
    expect_same('Z' . substr($shown[$i]['call_id'], 1), $rows[$i]['call_id'], "the identifier of call $i");
    expect_same(array_slice($shown, $i + 1), array_slice($rows, $i + 1), "the calls behind call $i");
}

done();
?>
--EXPECT--
OK
