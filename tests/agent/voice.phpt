--TEST--
The bundled agent's voice monitors build tables, rankings and totals from a scenario
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$directory = sys_get_temp_dir() . '/rmon-voice-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
mkdir($directory);

/** Starts an agent with a scenario; its link under a name of the host that was not used yet. */
function started(string $host, string $scenario): array
{
    global $directory;
    file_put_contents("$directory/scenario", $scenario);
    $agent = bundled_agent('--voice', "$directory/scenario", '--state', $directory, '--listen', $host);
    ini_set('rmon.default_port', (string) $agent->port);
    return [$agent, rmon_connect($host)];
}

// The scenario that comes with the agent.
$shipped = dirname(__DIR__, 2) . '/agent/voice.ini';
[$agent, $link] = started('127.0.0.1', file_get_contents($shipped));
$phones = sccp_phone_rec_getbulk($link, 0, 10)['phone_rec'];
expect_same(['2001', '2002', '2003'], array_column($phones, 'phone_num'), 'SCCP phones');
expect_same([1, 2, 3], array_column($phones, 'index'), 'their indexes');
expect_same([1, 1, 0], array_column($phones, 'num_call_mon'), 'their calls');
[$call] = sccp_call_rec_getbulk($link, 0, 10)['call_rec'];
$shown = fn(array $row, string ...$keys) => array_map(fn($key) => $row[$key], $keys);
expect_same(
    [1, '10.20.0.11', '10.20.0.12', 'Reception', 'Workshop', 2, 1, 18000, 18002, 4750, 9, 12, 41, 0, 7, 38],
    $shown($call, 'index', 'phone_ipAddr', 'callee_phone_ipAddr', 'phone_owner', 'callee_phone_owner', 'call_direction',
        'callee_direction', 'rtp_port', 'callee_rtp_port', 'pkt_sent', 'pkt_lost', 'jitter', 'latency', 'callee_pkt_lost', 'callee_jitter', 'callee_latency'),
    'an SCCP call',
);
expect_same(
    ['10.20.0.12', '2002', 'Workshop', 2, 12], $shown($phones[0]['history'][0], 'peer_ipAddr', 'peer_num', 'peer_owner', 'call_direction', 'jitter'), 'as the caller has it',
);
expect_same(
    ['10.20.0.11', '2001', 'Reception', 1, 7],
    $shown($phones[1]['history'][0], 'peer_ipAddr', 'peer_num', 'peer_owner', 'call_direction', 'jitter'),
    'as the callee has it',
);
[$call] = h323_call_rec_getbulk($link, 0, 10)['call_rec'];
expect_same(
    ['10.30.0.5', '3001', '10.30.0.5', '3001', '10.31.0.5', 'branch', '0a1b 2c3d 4e5f 6071 8293 a4b5 c6d7 e8f9', 'Room system', 3735928559.0, 0, 9, 0, 5],
    $shown($call, 'forward_q931_ipAddr', 'forward_num', 'f_q931_ipAddr', 'f_num', 'reverse_q931_ipAddr', 'reverse_alias', 'call_id', 'reverse_product_id', 'forward_ssrc',
        'forward_sr_fraction_lost', 'forward_sr_jitter', 'reverse_sr_fraction_lost', 'reverse_sr_jitter'),
    'an H.323 call',
);
expect_same(
    ['3001', '3101'],
    array_column(h323_phone_rec_getbulk($link, 0, 10)['phone_rec'], 'forward_num'),
    'H.323 phones',
);
[$call] = mgcp_call_rec_getbulk($link, 0, 10)['call_rec'];
expect_same(
    [1, '4001', '4101', 'aaln/1@gw1.example', 'aaln/1@gw2.example', '10.40.0.20', '10.41.0.20', 10, 14, '10.40.0.2', '10.41.0.20', 'PCMU', 7000],
    $shown($call, 'index', 'caller_phone_num', 'callee_phone_num', 'caller_endpoint_id', 'callee_endpoint_id', 'caller_ip_addr', 'callee_ip_addr', 'pkt_loss', 'jitter',
        'ca_address_2', 'gw_address_2', 'audio_codec', 'pkt_sent_1'),
    'an MGCP call',
);
expect_same(
    ['Store', 'Depot'],
    array_column(mgcp_phone_rec_getbulk($link, 0, 10)['phone_rec'], 'phone_owner'),
    'MGCP phones',
);

// Settings at the start.
$params = fn(string $protocol) => array_values(("{$protocol}_config_params_get")($link));
expect_same([1, 100, 200, 20, 20, 20, 30, 5, 150, 0, 0, 0], $params('sccp'), 'SCCP settings');
expect_same([1, 100, 200, 20, 20, 30, 5, 0, 0], $params('h323'), 'H.323 settings');
expect_same([1, 100, 200, 20, 20, 30, 5, 0, 0], $params('mgcp'), 'MGCP settings');

// Sets: what is beyond a table's bounds is refused, whole.
foreach (['sccp', 'h323'] as $protocol) {
    $set = "{$protocol}_voice_coll_table_sizes_set";
    foreach ([[1001, 1, 1, 1], [1, 1001, 1, 1], [1, 1, -1, 1], [1, 1, 1, 1001]] as $sizes) {
        expect_same(BAD_VALUE, $set($link, ...$sizes), "$protocol sizes");
    }
    expect_same(0, $set($link, 2, 3, 4, 5), "$protocol sizes");
}
expect_same(
    [0, 0, 0],
    [
        mgcp_voice_coll_table_sizes_set($link, 2, 3, 4, 5),
        sccp_voice_coll_thresholds_set($link, 10, 20),
        h323_voice_coll_thresholds_set($link, 10, 0),
    ],
    'sets',
);
expect_same(
    [0, 0],
    [mgcp_voice_coll_thresholds_set($link, 13, 4000000000), mgcp_voice_coll_table_sizes_set($link, 5000, 1, 1, 1)],
    'sets',
);
$switches = ['voice_jitter_alarm', 'voice_pkt_lost_alarm'];
foreach (['sccp', 'h323', 'mgcp'] as $protocol) {
    foreach ($switches as $switch) {
        expect_same(0, ("{$protocol}_{$switch}_enable")($link), "$protocol $switch");
    }
}
expect_same([0, 0], [sccp_voice_latency_alarm_enable($link), h323_voice_pkt_lost_alarm_disable($link)], 'switches');
expect_same(0, h323_voice_pkt_lost_alarm_enable($link), 'a switch');
$all = fn() => array_map($params, ['sccp', 'h323', 'mgcp']);
$settings = [
    [1, 2, 3, 4, 5, 5, 10, 20, 1000, 1, 1, 1],
    [1, 2, 3, 4, 5, 10, 0, 1, 1],
    [1, 2, 3, 4, 5, 13, -294967296, 1, 1],
];
expect_same($settings, $all(), 'settings');
expect_same(
    ['2001', '2002'],
    array_column(sccp_phone_rec_getbulk($link, 0, 10)['phone_rec'], 'phone_num'),
    'who was not quiet',
);

// Settings are there after a kill. Ten calls among four phones; each table keeps what it has room for.
$scenario = '';
foreach (['a', 'b', 'c', 'd'] as $i => $name) {
    $scenario .= "[sccp phone $name]\naddress=10.0.0.$i\nnumber = 10$i\n[h323 phone $name]\nnumber=20$i\n[mgcp phone $name]\nnumber=30$i\n";
}
for ($i = 1; $i <= 10; $i++) {
    [$from, $to] = $i <= 8 ? ['a', 'b'] : ['c', 'd'];
    $jitter = [3, 15, 9, 30, 1, 27, 15, 6, 12, 21][$i - 1];
    $lost = [3, 50, 9, 30, 1, 27, 15, 6, 12, 21][$i - 1];
    $parties = "caller=$from\r\ncallee=$to\n; a note\n\nduration=0\n";
    $scenario .= "[sccp call]\n{$parties}jitter=$jitter\npkt_lost=$lost\nlatency=" . (100 * $i) . "\ncallee_jitter=2\ncallee_pkt_lost=1\ncall_reference=$i\n";
    $scenario .= "[h323 call]\n{$parties}forward_sr_jitter=" . (200 * $jitter + 199) . "\nforward_sr_fraction_lost=" . (2 * $lost + 1)
        . "\nforward_num_samples=2\nreverse_sr_jitter=900\nreverse_sr_fraction_lost=3\nreverse_num_samples=3\ncall_reference=$i\n";
    $scenario .= "[mgcp call]\n{$parties}jitter_1=$jitter\npkt_loss_1=$lost\njitter_2=2\npkt_loss_2=1\nrtp_port_1=$i\n";
}
end_agent($agent, 9);
[$agent, $link] = started('127.0.1', $scenario);
$all = fn() => array_map(
    fn($protocol) => array_values(("{$protocol}_config_params_get")($link)),
    ['sccp', 'h323', 'mgcp'],
);
expect_same($settings, $all(), 'settings after a kill');
$calls = fn(string $function, string $list, string $key) => array_column(
    (("{$function}_getbulk")($link, 0, 100) ?: [$list => []])[$list],
    $key,
);
expect_same([8, 9, 10], $calls('sccp_call_rec', 'call_rec', 'index'), 'the last calls of SCCP');
expect_same([8, 9, 10], $calls('h323_call_rec', 'call_rec', 'call_reference'), 'of H.323');
expect_same([8, 9, 10], $calls('mgcp_call_rec', 'call_rec', 'rtp_port_1'), 'of MGCP');
expect_same(['102', '103'], $calls('sccp_phone_rec', 'phone_rec', 'phone_num'), 'the phones that were not quiet');
expect_same([4, 6, 10, 2], $calls('sccp_top_jitter_rec', 'top_rec', 'call_reference'), 'SCCP by jitter');
expect_same([1, 2, 3, 4], $calls('sccp_top_jitter_rec', 'top_rec', 'index'), 'ranks');
expect_same([2, 4, 6, 10, 7], $calls('sccp_top_pkt_lost_rec', 'top_rec', 'call_reference'), 'SCCP by loss');
expect_same([10, 9, 8, 7, 6], $calls('sccp_top_latency_rec', 'top_rec', 'call_reference'), 'SCCP by latency');
expect_same([4, 6, 10, 2], $calls('h323_top_jitter_rec', 'call_rec', 'call_reference'), 'H.323 by jitter');
expect_same([2, 4, 6, 10, 7], $calls('h323_top_pkt_lost_rec', 'call_rec', 'call_reference'), 'H.323 by loss');
expect_same([4, 6, 10, 2], $calls('mgcp_top_jitter_rec', 'call_rec', 'rtp_port_1'), 'MGCP by jitter');
expect_same([2, 4, 6, 10, 7], $calls('mgcp_top_pkt_lost_rec', 'call_rec', 'rtp_port_1'), 'MGCP by loss');

// Reads of ranks.
$rank = fn(string $form, int $index) => (("sccp_top_jitter_rec_$form")($link, $index) ?: ['top_rec' => [['call_reference' => 0]]])['top_rec'][0]['call_reference'];
expect_same([0, 4, 2, 0], array_map(fn($i) => $rank('get', $i), [0, 1, 4, 5]), 'get');
expect_same([4, 4, 6, 0], array_map(fn($i) => $rank('getnext', $i), [-5, 0, 1, 4]), 'getnext');
expect_same([6, 10], array_column(sccp_top_jitter_rec_getbulk($link, 1, 2)['top_rec'], 'call_reference'), 'getbulk');
expect_same(
    [false, false],
    [sccp_top_jitter_rec_getbulk($link, 0, 0), sccp_top_jitter_rec_getbulk($link, 0, -1)],
    'getbulk of none',
);
expect_same(4, count(sccp_top_jitter_rec_getbulk($link, 0, 0x7fffffff)['top_rec']), 'getbulk of all');
expect_same(9, sccp_call_rec_getnext($link, 8)['call_rec'][0]['index'], 'the next call');
expect_same([false, false], [sccp_call_rec_get($link, 7), sccp_call_rec_getnext($link, 10)], 'no call');

// Alarms: jitter above 10, loss above 20, latency above 1000; H.323 loss above 0, MGCP jitter above 13.
expect_same([1 | 2, 1 | 2, 1 | 2, 1 | 2], $calls('sccp_top_jitter_rec', 'top_rec', 'flag'), 'alarms of the SCCP ranks');
expect_same([0, 1, 3], $calls('sccp_call_rec', 'call_rec', 'flag'), 'alarms of the SCCP calls');
expect_same([2, 3, 3], $calls('h323_call_rec', 'call_rec', 'flag'), 'alarms of the H.323 calls');
expect_same([0, 0, 1], $calls('mgcp_call_rec', 'call_rec', 'flag'), 'alarms of the MGCP calls');

// Sums, by hand: jitter of the callers 139 in ten calls, loss 174; the callees' 2 and 1 each.
expect_same(
    [3, 10, intdiv(184, 20), intdiv(159, 20), 50, 30],
    array_values(sccp_aggregate_data_get($link)),
    'SCCP sums',
);
expect_same(
    [1, 10, intdiv(184, 20), intdiv(159, 20), 50, 30],
    array_values(mgcp_aggregate_data_get($link)),
    'MGCP sums',
);
$lost = 2 * 174 + 10 + 10 * 3;
$jitter = 200 * 139 + 1990 + 10 * 900;
expect_same(
    [3, 10, intdiv($lost, 50), intdiv($jitter, 5000), 50, 30],
    array_values(h323_aggregate_data_get($link)),
    'H.323 sums',
);
[$c, $d] = sccp_phone_rec_getbulk($link, 0, 10)['phone_rec'];
expect_same(
    [3, 2, 16, 16, 21, 21, 2, [10, 9]],
    [
        ...$shown(
            $c,
            'flag',
            'num_call_mon',
            'avg_pkt_lost',
            'avg_jitter',
            'worst_pkt_lost',
            'worst_jitter',
            'num_hist_row',
        ),
        array_column($c['history'], 'call_reference'),
    ],
    'a caller',
);
expect_same(
    [0, 2, 1, 2, 1, 2],
    $shown($d, 'flag', 'num_call_mon', 'avg_pkt_lost', 'avg_jitter', 'worst_pkt_lost', 'worst_jitter'),
    'a callee',
);
[$c] = mgcp_phone_rec_getbulk($link, 0, 1)['phone_rec'];
expect_same(
    ['302', 1, 2, 16, 16, 21, 21, 2],
    $shown(
        $c,
        'phone_num',
        'flag',
        'num_call_mon',
        'avg_pkt_lost',
        'avg_jitter',
        'worst_pkt_lost',
        'worst_jitter',
        'num_hist_row',
    ),
    'an MGCP caller',
);
[$c] = h323_phone_rec_getbulk($link, 0, 1)['phone_rec'];
expect_same(
    ['202', 3, 2, 21, 21, 2],
    $shown($c, 'forward_num', 'flag', 'num_call_mon', 'worst_pkt_lost', 'worst_jitter', 'num_hist_row'),
    'an H.323 caller',
);

// Clears: one table at a time, until none is left.
$tables = [
    'sccp' => ['phone_table' => 'phone', 'call_table' => 'call', 'top_jitter_table' => 'top_jitter', 'top_pkt_lost_table' => 'top_pkt_lost', 'top_latency_table' => 'top_latency'],
    'h323' => ['phone_table' => 'phone', 'call_table' => 'call', 'top_jitter_table' => 'top_jitter', 'top_pkt_lost_table' => 'top_pkt_lost'],
    'mgcp' => ['phone_table' => 'phone', 'call_table' => 'call', 'top_jitter_table' => 'top_jitter', 'top_pkt_lost_table' => 'top_pkt_lost'],
];
foreach ($tables as $protocol => $clears) {
    $left = array_map(fn($table) => "{$protocol}_{$table}_rec_getnext", array_values($clears));
    foreach ($clears as $clear => $table) {
        expect_same(0, ("{$protocol}_voice_{$clear}_clear")($link), "$protocol $clear");
        expect_same(false, ("{$protocol}_{$table}_rec_getnext")($link, 0), "$protocol $table");
        array_shift($left);
        foreach ($left as $read) {
            expect_same(true, is_array($read($link, 0)), $read);
        }
    }
}
end_agent($agent);

// Calls come when they are due; while collection is off they are missed.
$due = fn(int $after, string $caller) => "[sccp call]\nafter=$after\ncaller=$caller\ncallee=x\ncall_reference=$after\n";
$scenario = "[sccp phone x]\n[sccp phone y]\n" . $due(3, 'y') . $due(1, 'x') . $due(0, 'y');
[$agent, $link] = started('127.0.0.2', $scenario);
$calls = fn() => array_column(
    (@sccp_call_rec_getbulk($link, 0, 100) ?: ['call_rec' => []])['call_rec'],
    'call_reference',
);
expect_soon([0, 1], $calls, 'the first two calls');
expect_same(0, sccp_voice_coll_disable($link), 'disable');
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > 400, 'a second after the last call was due');
expect_same([0, 1], $calls(), 'a call that was missed');
expect_same(0, sccp_voice_coll_enable($link), 'enable');
end_agent($agent);

// A mistake in the scenario is reported with its line.
$wrong = [
    "x = 1" => 'line 1: a value before the first section',
    "\n\nnonsense" => 'line 3: neither a section nor KEY = VALUE',
    "[sccp phone a" => 'line 1: a section\'s header ends with ]',
    "[sip phone a]" => 'line 1: a section\'s protocol is sccp, h323 or mgcp',
    "[sccp phone]" => 'line 1: a section is [PROTOCOL phone NAME] or [PROTOCOL call]',
    "[sccp call me]" => 'line 1: a section is [PROTOCOL phone NAME] or [PROTOCOL call]',
    "[]" => 'line 1: a section\'s protocol is sccp, h323 or mgcp',
    "[sccp phone a]\n[sccp phone a]" => 'line 2: there is a phone a already',
    "[sccp phone a]\ncolour = red" => 'line 2: there is no field colour',
    "[sccp phone a]\naddress = 10.0.0" => 'line 2: address can\'t be 10.0.0',
    "[sccp phone a]\nnumber = " . str_repeat('1', 24) => 'line 2: number can\'t be ' . str_repeat('1', 24),
    "[sccp call]\njitter = -1" => 'line 2: jitter can\'t be -1',
    "[sccp call]\njitter = 4294967296" => 'line 2: jitter can\'t be 4294967296',
    "[sccp call]\njitter =" => 'line 2: jitter can\'t be ',
    "[sccp call]\nafter = 1h" => 'line 2: after can\'t be 1h',
    "[h323 call]\ncall_id = 0g" => 'line 2: call_id can\'t be 0g',
    "[sccp call]\ncaller = a" => 'line 2: there is no phone a before',
    "[sccp call]" => 'a call needs a caller and a callee',
    "[sccp phone a]\nowner = " . str_repeat('x', 1100) => 'line 2: the line is too long',
];
foreach ($wrong as $text => $message) {
    file_put_contents("$directory/scenario", $text);
    [$code, , $errors] = run(agent_program(), '--port', '0', '--voice', "$directory/scenario");
    $separator = str_starts_with($message, 'line') ? ' ' : ': ';
    expect_same([1, "rmon-agent: $directory/scenario$separator$message\n"], [$code, $errors], $message);
}
foreach (['/nonexistent' => 'No such file or directory', '/tmp' => 'Is a directory'] as $file => $message) {
    [$code, , $errors] = run(agent_program(), '--port', '0', '--voice', $file);
    expect_same([1, "rmon-agent: cannot read $file: $message\n"], [$code, $errors], $message);
}

agent_done(bundled_agent('--voice', $shipped));
--EXPECT--
OK
