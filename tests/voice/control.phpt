--TEST--
Control of the voice monitors: settings, figures, table sizes, thresholds, switches
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/voice.inc';

/** A function that reads one record of integers: all of them are shown, in the signed view. */
function expect_reader(string $function, int $procedure, array $fields, array $shown): void
{
    check_refusals(function: $function, sent: []);
    $record = record(...$fields);
    expect_exchange(
        function: $function,
        arguments: [],
        procedure: $procedure,
        request: '',
        step: reply($record),
        value: $shown,
    );
    expect_exchange(
        function: $function,
        arguments: [],
        procedure: $procedure,
        request: '',
        step: proc_unavail(),
        value: false,
    );
    expect_exchange(
        function: $function,
        arguments: [],
        procedure: $procedure,
        request: '',
        step: truncated($record, -4),
        value: false,
    );
    expect_exchange(
        function: $function,
        arguments: [],
        procedure: $procedure,
        request: '',
        step: reply($record),
        value: $shown,
    );
}

// ---- Settings ------------------------------------------------------------------

$fields = [
    'enable' => i32(1),
    'num_phone_tbl_row' => u32(102),
    'num_call_tbl_row' => u32(103),
    'num_top_jitter_row' => u32(104),
    'num_top_pkt_lost_row' => u32(105),
    'num_top_latency_row' => u32(106),
    'jitter_threshold' => u32(4294967295),
    'pkt_lost_threshold' => u32(2147483648),
    'latency_threshold' => u32(2147483647),
    'jitter_alarm_enable' => i32(-110),
    'pkt_lost_alarm_enable' => i32(111),
    'latency_alarm_enable' => i32(112),
];
$shown = [
    'enable' => 1,
    'num_phone_tbl_row' => 102,
    'num_call_tbl_row' => 103,
    'num_top_jitter_row' => 104,
    'num_top_pkt_lost_row' => 105,
    'num_top_latency_row' => 106,
    'jitter_threshold' => -1,
    'pkt_lost_threshold' => -2147483648,
    'latency_threshold' => 2147483647,
    'jitter_alarm_enable' => -110,
    'pkt_lost_alarm_enable' => 111,
    'latency_alarm_enable' => 112,
];
expect_reader('sccp_config_params_get', 87, $fields, $shown);
expect_exchange(
    function: 'sccp_config_params_get',
    arguments: [],
    procedure: 87,
    request: '',
    step: reply(record(...with_all_ones($fields))),
    value: with_minus_ones($shown),
);

$fields = [
    'enable' => i32(2),
    'num_phone_tbl_row' => u32(202),
    'num_call_tbl_row' => u32(203),
    'num_top_jitter_row' => u32(204),
    'num_top_pkt_lost_row' => u32(205),
    'jitter_threshold' => u32(4294967294),
    'pkt_lost_threshold' => u32(207),
    'jitter_alarm_enable' => i32(208),
    'pkt_lost_alarm_enable' => i32(-209),
];
$shown = [
    'enable' => 2,
    'num_phone_tbl_row' => 202,
    'num_call_tbl_row' => 203,
    'num_top_jitter_row' => 204,
    'num_top_pkt_lost_row' => 205,
    'jitter_threshold' => -2,
    'pkt_lost_threshold' => 207,
    'jitter_alarm_enable' => 208,
    'pkt_lost_alarm_enable' => -209,
];
foreach (['h323' => 119, 'mgcp' => 189] as $protocol => $procedure) {
    expect_reader("{$protocol}_config_params_get", $procedure, $fields, $shown);
    expect_exchange(
        function: "{$protocol}_config_params_get",
        arguments: [],
        procedure: $procedure,
        request: '',
        step: reply(record(...with_all_ones($fields))),
        value: with_minus_ones($shown),
    );
}

// ---- Figures -------------------------------------------------------------------

$fields = [
    'flag' => u32(301),
    'num_call_mon' => u32(302),
    'avg_pkt_lost' => u32(303),
    'avg_jitter' => u32(304),
    'worst_pkt_lost' => u32(305),
    'worst_jitter' => u32(4294967290),
];
$shown = [
    'flag' => 301,
    'num_call_mon' => 302,
    'avg_pkt_lost' => 303,
    'avg_jitter' => 304,
    'worst_pkt_lost' => 305,
    'worst_jitter' => -6,
];
foreach (['sccp' => 91, 'mgcp' => 193] as $protocol => $procedure) {
    expect_reader("{$protocol}_aggregate_data_get", $procedure, $fields, $shown);
    expect_exchange(
        function: "{$protocol}_aggregate_data_get",
        arguments: [],
        procedure: $procedure,
        request: '',
        step: reply(record(...with_all_ones($fields))),
        value: with_minus_ones($shown),
    );
}

// H.323 sends sums over its samples, and jitter in hundredths.
$fields = [
    'flag' => u32(401),
    'num_call_mon' => u32(402),
    'sum_pkt_lost' => u32(403),
    'sum_jitter' => u32(12345),
    'worst_pkt_lost' => u32(405),
    'worst_jitter' => u32(199),
    'num_samples' => u32(3),
];
$shown = [
    'flag' => 401,
    'num_call_mon' => 402,
    'avg_pkt_lost' => 134, // 403 / 3
    'avg_jitter' => 41,    // 12345 / 300
    'worst_pkt_lost' => 405,
    'worst_jitter' => 1,
];
expect_reader('h323_aggregate_data_get', 123, $fields, $shown);

$cases = [
    // Without samples both averages are 0, whatever the sums hold.
    [['num_samples' => u32(0)], ['avg_pkt_lost' => 0, 'avg_jitter' => 0]],
    // 2^30 samples times 100 are 0 in 32 bits.
    [['num_samples' => u32(1 << 30), 'sum_pkt_lost' => u32(3 << 30)], ['avg_pkt_lost' => 3, 'avg_jitter' => 0]],
    // 42949673 samples times 100 are 4 in 32 bits.
    [['num_samples' => u32(42949673)], ['avg_pkt_lost' => 0, 'avg_jitter' => 3086]],
    [
        ['num_samples' => u32(1), 'sum_pkt_lost' => u32(4294967295), 'sum_jitter' => u32(4294967295)],
        ['avg_pkt_lost' => -1, 'avg_jitter' => 42949672],
    ],
    [
        ['num_samples' => u32(4294967295), 'sum_pkt_lost' => u32(4294967294), 'sum_jitter' => u32(4294967295)],
        ['avg_pkt_lost' => 0, 'avg_jitter' => 1], // 4294967295 / 4294967196
    ],
    [
        ['flag' => u32(4294967295), 'num_call_mon' => u32(4294967294), 'worst_pkt_lost' => u32(2147483648)],
        ['flag' => -1, 'num_call_mon' => -2, 'worst_pkt_lost' => -2147483648],
    ],
    [['worst_jitter' => u32(4294967295)], ['worst_jitter' => 42949672]],
    [['worst_jitter' => u32(99)], ['worst_jitter' => 0]],
];
foreach ($cases as [$changes, $differences]) {
    $reply = reply(record(...but($fields, $changes)));
    expect_exchange(
        function: 'h323_aggregate_data_get',
        arguments: [],
        procedure: 123,
        request: '',
        step: $reply,
        value: but($shown, $differences),
    );
}

// ---- What changes a monitor ----------------------------------------------------

/** A function that changes something: SCCP and H.323 return the agent's answer, MGCP returns 0 always. */
function expect_change(string $function, int $procedure, array $arguments = [], string $request = ''): void
{
    $mgcp = str_starts_with($function, 'mgcp_');
    check_refusals(function: $function, sent: integers($arguments));
    foreach ([0, 1, -1, 2147483647, -2147483648] as $answer) {
        expect_exchange(
            function: $function,
            arguments: $arguments,
            procedure: $procedure,
            request: $request,
            step: reply(i32($answer)),
            value: $mgcp ? 0 : $answer,
        );
    }
    $failures = [
        'Procedure unavailable' => proc_unavail(),
        'Remote system error' => system_err(),
        'Can\'t decode result' => reply(''),
    ];
    foreach ($failures as $text => $step) {
        $value = $mgcp ? 0 : false;
        expect_exchange(
            function: $function,
            arguments: $arguments,
            procedure: $procedure,
            request: $request,
            step: $step,
            value: $value,
            messages: ["$function: RPC: $text"],
        );
    }
    expect_exchange(
        function: $function,
        arguments: $arguments,
        procedure: $procedure,
        request: $request,
        step: reply(i32(5)),
        value: $mgcp ? 0 : 5,
    );
}

$sizes = record(
    num_phone_tbl_row: u32(10),
    num_call_tbl_row: u32(20),
    num_top_jitter_row: u32(30),
    num_top_pkt_lost_row: u32(40),
);
$latency = record(num_top_latency_row: u32(40)); // as long as the table by packet loss
expect_change('sccp_voice_coll_table_sizes_set', 88, [10, 20, 30, 40], $sizes . $latency);
expect_change('h323_voice_coll_table_sizes_set', 120, [10, 20, 30, 40], $sizes);
expect_change('mgcp_voice_coll_table_sizes_set', 190, [10, 20, 30, 40], $sizes);

$thresholds = record(jitter_threshold: u32(5), pkt_lost_threshold: u32(7));
$latency = record(latency_threshold: u32(1000));
expect_change('sccp_voice_coll_thresholds_set', 92, [5, 7], $thresholds . $latency);
expect_change('h323_voice_coll_thresholds_set', 124, [5, 7], $thresholds);
expect_change('mgcp_voice_coll_thresholds_set', 194, [5, 7], $thresholds);

// Any value goes to the agent, by its low 32 bits.
expect_exchange(
    function: 'sccp_voice_coll_table_sizes_set',
    arguments: [-1, '12', 4294967296 + 13, -2.9],
    procedure: 88,
    request: u32(4294967295) . u32(12) . u32(13) . u32(4294967294) . u32(4294967294),
    step: reply(i32(0)),
    value: 0,
);
expect_exchange(
    function: 'sccp_voice_coll_thresholds_set',
    arguments: [null, true],
    procedure: 92,
    request: u32(0) . u32(1) . u32(1000),
    step: reply(i32(0)),
    value: 0,
);
expect_exchange(
    function: 'h323_voice_coll_thresholds_set',
    arguments: [4294967295, -2147483648],
    procedure: 124,
    request: u32(4294967295) . u32(2147483648),
    step: reply(i32(0)),
    value: 0,
);

$switches = [
    'sccp_voice_coll_enable' => 89,
    'sccp_voice_coll_disable' => 90,
    'sccp_voice_jitter_alarm_enable' => 93,
    'sccp_voice_jitter_alarm_disable' => 94,
    'sccp_voice_pkt_lost_alarm_enable' => 95,
    'sccp_voice_pkt_lost_alarm_disable' => 96,
    'sccp_voice_latency_alarm_enable' => 97,
    'sccp_voice_latency_alarm_disable' => 98,
    'sccp_voice_phone_table_clear' => 110,
    'sccp_voice_call_table_clear' => 111,
    'sccp_voice_top_jitter_table_clear' => 112,
    'sccp_voice_top_pkt_lost_table_clear' => 113,
    'sccp_voice_top_latency_table_clear' => 114,
    'h323_voice_coll_enable' => 121,
    'h323_voice_coll_disable' => 122,
    'h323_voice_jitter_alarm_enable' => 125,
    'h323_voice_jitter_alarm_disable' => 126,
    'h323_voice_pkt_lost_alarm_enable' => 127,
    'h323_voice_pkt_lost_alarm_disable' => 128,
    'h323_voice_phone_table_clear' => 129,
    'h323_voice_call_table_clear' => 130,
    'h323_voice_top_jitter_table_clear' => 131,
    'h323_voice_top_pkt_lost_table_clear' => 132,
    'mgcp_voice_coll_enable' => 191,
    'mgcp_voice_coll_disable' => 192,
    'mgcp_voice_jitter_alarm_enable' => 195,
    'mgcp_voice_jitter_alarm_disable' => 196,
    'mgcp_voice_pkt_lost_alarm_enable' => 197,
    'mgcp_voice_pkt_lost_alarm_disable' => 198,
    'mgcp_voice_phone_table_clear' => 199,
    'mgcp_voice_call_table_clear' => 200,
    'mgcp_voice_top_jitter_table_clear' => 201,
    'mgcp_voice_top_pkt_lost_table_clear' => 202,
];
foreach ($switches as $function => $procedure) {
    expect_change($function, $procedure);
}

// For these the agent has no procedure.
$idle = [
    'mgcp_voice_latency_alarm_enable',
    'mgcp_voice_latency_alarm_disable',
    'mgcp_voice_top_latency_table_clear',
];
foreach ($idle as $function) {
    check_refusals(function: $function, sent: []);
    expect_no_call($function, [the_link()], 0);
}

// Of H.323 there are no functions of latency.
$latency = array_filter(get_extension_funcs('rmon'), fn(string $name) => preg_match('/^h323_.*latency/', $name));
expect_same([], $latency, 'H.323 functions of latency');

done();
?>
--EXPECT--
OK
