--TEST--
Every table of the bundled agent: a walk ends, is in order, and shows what getbulk and get show
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

/** What a read of no row gives. */
const DSMON_NONE = [0 => -1, 'status' => -1];

/**
 * The tables, by the name of their functions.
 *
 *   index    the row's keys that a read's arguments are
 *   order    those of them that make up the index, in its order; the arguments' order when it is not given
 *   none     a read of no row: what it gives, or NO_SUCH_NAME for a row with that status
 *   outer    the key under which the rows are
 *   changes  keys whose values change with time
 *   grows    rows come while it is read
 */
const TABLES = [
    'rmon_ifentry' => ['index' => ['ifIndex'], 'none' => NO_SUCH_NAME],
    'rmon_etherstats' => ['index' => ['etherStatsIndex'], 'none' => NO_SUCH_NAME],
    'rmon_history_ctl' => ['index' => ['historyControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_etherhistory' => ['index' => ['etherHistoryIndex', 'etherHistorySampleIndex'], 'none' => false, 'grows' => true],
    'rmon_host_ctl' => ['index' => ['hostControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_host' => ['index' => ['hostIndex', 'hostAddress'], 'none' => false],
    'rmon_hosttime' => ['index' => ['hostTimeIndex', 'hostTimeCreationOrder'], 'none' => false],
    'rmon_hosttopn_ctl' => ['index' => ['hostTopNControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_hosttopn' => ['index' => ['hostTopNReport', 'hostTopNIndex'], 'none' => false],
    'rmon_matrix_ctl' => ['index' => ['matrixControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_matrix_sd' => ['index' => ['matrixSDIndex', 'matrixSDSourceAddress', 'matrixSDDestAddress'], 'none' => false],
    'rmon_matrix_ds' => [
        'index' => ['matrixDSIndex', 'matrixDSSourceAddress', 'matrixDSDestAddress'],
        'order' => ['matrixDSIndex', 'matrixDSDestAddress', 'matrixDSSourceAddress'],
        'none' => false,
    ],
    'rmon_alarm' => ['index' => ['alarmIndex'], 'none' => NO_SUCH_NAME],
    'rmon_event' => ['index' => ['eventIndex'], 'none' => NO_SUCH_NAME],
    'rmon_log' => ['index' => ['logEventIndex', 'logIndex'], 'none' => NO_SUCH_NAME],
    'rmon_filter' => ['index' => ['filterIndex'], 'none' => NO_SUCH_NAME],
    'rmon_channel' => ['index' => ['channelIndex'], 'none' => NO_SUCH_NAME],
    'rmon_buffer_ctl' => ['index' => ['bufferControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_capture_buf' => ['index' => ['captureBufferControlIndex', 'captureBufferIndex'], 'none' => NO_SUCH_NAME],
    'rmon_pdir' => ['index' => ['protocolDirID', 'protocolDirParameters'], 'none' => false],
    'rmon_pdir_byidx' => ['index' => ['protocolDirLocalIndex'], 'none' => NO_SUCH_NAME],
    'rmon_pdist_ctl' => ['index' => ['protocolDistControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_pdist_stats' => ['index' => ['protocolDistControlIndex', 'protocolDirLocalIndex'], 'none' => false],
    'rmon_addrmap_ctl' => ['index' => ['addressMapControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_addrmap_entry' => ['index' => ['addressMapTimeMark', 'protocolDirLocalIndex', 'addressMapNetworkAddress', 'addressMapSource'], 'none' => false],
    'rmon_hlhost_ctl' => ['index' => ['hlHostControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_nlhost' => ['index' => ['hlHostControlIndex', 'nlHostTimeMark', 'protocolDirLocalIndex', 'nlHostAddress'], 'none' => false],
    'rmon_alhost' => [
        'index' => ['hlHostControlIndex', 'alHostTimeMark', 'protocolDirLocalIndex', 'nlHostAddress', 'protocolDirLocalIndex2'],
        'none' => false,
    ],
    'rmon_hlmatrix_ctl' => ['index' => ['hlMatrixControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_nlmatrix_sd' => [
        'index' => ['hlMatrixControlIndex', 'nlMatrixSDTimeMark', 'protocolDirLocalIndex', 'nlMatrixSDSourceAddress', 'nlMatrixSDDestAddress'],
        'none' => false,
    ],
    'rmon_nlmatrix_ds' => [
        'index' => ['hlMatrixControlIndex', 'nlMatrixDSTimeMark', 'protocolDirLocalIndex', 'nlMatrixDSSourceAddress', 'nlMatrixDSDestAddress'],
        'order' => ['hlMatrixControlIndex', 'nlMatrixDSTimeMark', 'protocolDirLocalIndex', 'nlMatrixDSDestAddress', 'nlMatrixDSSourceAddress'],
        'none' => false,
    ],
    'rmon_almatrix_sd' => [
        'index' => ['hlMatrixControlIndex', 'alMatrixSDTimeMark', 'protocolDirLocalIndex', 'nlMatrixSDSourceAddress', 'nlMatrixSDDestAddress', 'protocolDirLocalIndex2'],
        'none' => false,
    ],
    'rmon_almatrix_ds' => [
        'index' => ['hlMatrixControlIndex', 'alMatrixDSTimeMark', 'protocolDirLocalIndex', 'nlMatrixDSSourceAddress', 'nlMatrixDSDestAddress', 'protocolDirLocalIndex2'],
        'order' => ['hlMatrixControlIndex', 'alMatrixDSTimeMark', 'protocolDirLocalIndex', 'nlMatrixDSDestAddress', 'nlMatrixDSSourceAddress', 'protocolDirLocalIndex2'],
        'none' => false,
    ],
    'dsmon_aggctl' => ['index' => ['dsmonAggControlIndex'], 'none' => DSMON_NONE],
    'dsmon_aggrp' => ['index' => ['dsmonAggControlIndex', 'dsmonAggGroupIndex'], 'none' => DSMON_NONE],
    'dsmon_statsctl' => ['index' => ['dsmonStatsControlIndex'], 'none' => DSMON_NONE],
    'dsmon_stats' => ['index' => ['dsmonStatsControlIndex', 'dsmonAggGroupIndex'], 'none' => DSMON_NONE],
    'dsmon_pdistctl' => ['index' => ['dsmonPdistCtlIndex'], 'none' => DSMON_NONE],
    'dsmon_pdstats' => ['index' => ['dsmonPdistCtlIndex', 'dsmonPdistTimeMark', 'dsmonAggGroupIndex', 'protocolDirLocalIndex'], 'none' => DSMON_NONE],
    'dsmon_hostctl' => ['index' => ['dsmonHostCtlIndex'], 'none' => DSMON_NONE],
    'dsmon_hoststats' => [
        'index' => ['dsmonHostCtlIndex', 'dsmonHostTimeMark', 'dsmonAggGroupIndex', 'protocolDirLocalIndex', 'dsmonHostAddress'],
        'none' => DSMON_NONE,
    ],
    'dsmon_matrixctl' => ['index' => ['dsmonMatrixCtlIndex'], 'none' => DSMON_NONE],
    'dsmon_matrixsdstats' => [
        'index' => ['dsmonMatrixCtlIndex', 'dsmonMatrixTimeMark', 'dsmonAggGroupIndex', 'dsmonMatrixNLIndex', 'dsmonMatrixALIndex', 'dsmonMatrixSourceAddress', 'dsmonMatrixDestAddress'],
        'order' => ['dsmonMatrixCtlIndex', 'dsmonMatrixTimeMark', 'dsmonAggGroupIndex', 'dsmonMatrixNLIndex', 'dsmonMatrixSourceAddress', 'dsmonMatrixDestAddress', 'dsmonMatrixALIndex'],
        'none' => DSMON_NONE,
    ],
    'dsmon_matrixdsstats' => [
        'index' => ['dsmonMatrixCtlIndex', 'dsmonMatrixTimeMark', 'dsmonAggGroupIndex', 'dsmonMatrixNLIndex', 'dsmonMatrixALIndex', 'dsmonMatrixSourceAddress', 'dsmonMatrixDestAddress'],
        'order' => ['dsmonMatrixCtlIndex', 'dsmonMatrixTimeMark', 'dsmonAggGroupIndex', 'dsmonMatrixNLIndex', 'dsmonMatrixDestAddress', 'dsmonMatrixSourceAddress', 'dsmonMatrixALIndex'],
        'none' => DSMON_NONE,
    ],
    'rmon_vlan_ctl' => ['index' => ['smonVlanStatsControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_vlan' => ['index' => ['smonVlanStatsControlIndex', 'smonVlanIdStatsId'], 'none' => NO_SUCH_NAME],
    'rmon_prio_ctl' => ['index' => ['smonPrioStatsControlIndex'], 'none' => NO_SUCH_NAME],
    'rmon_prio' => ['index' => ['smonPrioStatsControlIndex', 'smonPrioStatsId'], 'none' => NO_SUCH_NAME],
    'rmon_art_ctl' => ['index' => ['artControlIndex'], 'none' => NO_SUCH_NAME, 'changes' => ['artControlDuration']],
    'rmon_art_rpt' => ['index' => ['artControlIndex', 'protocolDirLocalIndex', 'artServerAddress', 'artClientAddress'], 'none' => []],
    'rmon_art_sum' => ['index' => ['artControlIndex', 'protocolDirLocalIndex', 'artSummaryServerAddress'], 'none' => []],
    'rmon_trapdest' => ['index' => ['trapDestIndex'], 'none' => NO_SUCH_NAME],
    'rmon_community' => ['index' => ['communityString'], 'none' => false],
    'sccp_phone_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'phone_rec'],
    'sccp_call_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'sccp_top_jitter_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'top_rec'],
    'sccp_top_pkt_lost_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'top_rec'],
    'sccp_top_latency_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'top_rec'],
    'h323_phone_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'phone_rec'],
    'h323_call_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'h323_top_jitter_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'h323_top_pkt_lost_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'mgcp_phone_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'phone_rec'],
    'mgcp_call_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'mgcp_top_jitter_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'mgcp_top_pkt_lost_rec' => ['index' => ['index'], 'none' => false, 'outer' => 'call_rec'],
    'rmon_nde_device' => ['index' => ['address'], 'none' => ['devices' => []], 'outer' => 'devices'],
    'rmon_nde_datasrc' => ['index' => ['address', 'datasrcIndex'], 'none' => ['datasrcs' => []], 'outer' => 'datasrcs'],
    'rmon_nde_flow_path' => [
        'index' => ['address', 'datasrcIndex', 'inputIndex', 'outputIndex'],
        'none' => ['flowPaths' => []],
        'outer' => 'flowPaths',
    ],
    'rmon_nde_learned_dev' => ['index' => ['address'], 'none' => ['devices' => []], 'outer' => 'devices'],
];

/** The interfaces of one device: their rows don't show its address. And what the module asks no agent for. */
const OTHERS = ['rmon_nde_learned_dev_intf', 'mgcp_top_latency_rec'];

$functions = array_flip(preg_replace('/_getnext$/', '', preg_grep('/_getnext$/', get_extension_funcs('rmon'))));
expect_same([], array_keys(array_diff_key($functions, TABLES, array_flip(OTHERS))), 'tables that are not tested');

// ---- Traffic: all that the tables want, over two interfaces ------------------------------------------

/** A conversation by TCP: opening, request, answer. @return list<string> */
function conversation(int $client, string $from, int $server, string $to, int $port): array
{
    $ip = str_contains($from, ':') ? ip6(...) : ip4(...);
    $type = str_contains($from, ':') ? 0x86dd : 0x0800;
    $frame = fn(bool $asks, int $flags, string $data, int $sequence) => $asks
        ? ethernet(
            mac($server),
            mac($client),
            $type,
            $ip($from, $to, 6, tcp(4000, $port, $flags, $data, $sequence), 10),
        )
        : ethernet(
            mac($client),
            mac($server),
            $type,
            $ip($to, $from, 6, tcp($port, 4000, $flags, $data, $sequence), 46),
        );
    return [
        $frame(true, 2, '', 10),
        $frame(false, 0x12, '', 20),
        $frame(true, 0x18, 'ask', 11),
        $frame(false, 0x18, 'told', 21),
    ];
}

$hosts = [1 => '10.0.0.1', '10.0.0.200', '9.255.255.254', '10.0.1.0', '172.16.0.1'];
$frames = [];
foreach ($hosts as $number => $host) {
    $question = pack('nCCnnnn', $number, 1, 0, 1, 0, 0, 0) . "\1a\0\0\1\0\1";
    $told = pack('nCCnnnn', $number, 0x81, 0, 1, 0, 0, 0) . "\1a\0\0\1\0\1";
    array_push(
        $frames,
        ethernet(str_repeat("\xff", 6), mac($number), 0x0806, arp(1, mac($number), $host, mac(0), '10.0.0.53')),
        ethernet(
            mac(53),
            mac($number),
            0x0800,
            ip4($host, '10.0.0.53', 17, udp(5000, 53, $question), 4 * $number),
            100 * $number,
        ),
        ethernet(mac($number), mac(53), 0x0800, ip4('10.0.0.53', $host, 17, udp(53, 5000, $told)), $number << 13 | 7),
        ethernet(mac(90), mac($number), 0x0800, ip4($host, '10.0.0.53', 1, "\x08\0\0\0\0\1\0\1")),
        ...conversation($number, $host, 80, '10.0.0.80', 80),
        ...conversation($number, "fd00::$number", 80, 'fd00::80', 443),
        ...conversation($number, $host, 25, '10.0.0.25', 25),
    );
}
$timed = fn(array $frames) => array_map(fn($frame, $at) => [1 + $at / 1000, $frame], $frames, array_keys($frames));
$scenario = '';
foreach (['sccp', 'h323', 'mgcp'] as $protocol) {
    for ($i = 1; $i <= 4; $i++) {
        $scenario .= "[$protocol phone p$i]\nnumber=20$i\n";
    }
    foreach ([1, 2, 3] as $i) {
        $figures = match ($protocol) {
            'sccp' => "jitter=$i\npkt_lost=$i\nlatency=$i\n",
            'mgcp' => "jitter_1=$i\npkt_loss_1=$i\n",
            default => '',
        };
        $scenario .= "[$protocol call]\ncaller=p$i\ncallee=p4\n$figures";
    }
}

$agent = reading_agent(
    [capture_file($timed($frames)), capture_file($timed(array_reverse(array_slice($frames, 0, -7))))],
    ...['--voice', file_of($scenario), '--netflow', '0'],
);
$link = module_link($agent);

// ---- Rows: two of each control table at work, and one between them under creation ---------------------

$limits = [10, 20, 50, 100, 200, 500];
$sets = [
    'etherstats' => fn(int $i, int $source, int $status) => rmon_etherstats_set($link, $i, $source, 'me', $status),
    'history' => fn(int $i, int $source, int $status) => rmon_history_ctl_set($link, $i, $source, 3600, 1, 'me', $status),
    'hosts' => fn(int $i, int $source, int $status) => rmon_host_ctl_set($link, $i, $source, 'me', $status),
    'matrix' => fn(int $i, int $source, int $status) => rmon_matrix_ctl_set($link, $i, $source, 'me', $status),
    'hosttopn' => fn(int $i, int $source, int $status) => rmon_hosttopn_ctl_set($link, $i, $i, 2, 0, 10, 'me', $status),
    'event' => fn(int $i, int $source, int $status) => rmon_event_set($link, $i, 'rose', 2, '', 'me', $status),
    'channel' => fn(int $i, int $source, int $status) => rmon_channel_set($link, $i, $source, 2, 1, 0, 0, 0, 1, '', 'me', $status),
    'filter' => fn(int $i, int $source, int $status) => rmon_filter_set($link, $i, $i, 0, [255], [255], [0], 0, 0, 0, 'me', $status, 0, 0),
    'buffer' => fn(int $i, int $source, int $status) => rmon_buffer_ctl_set($link, $i, $i, 1, 64, 64, 0, 100000, 'me', $status),
    'pdist' => fn(int $i, int $source, int $status) => rmon_pdist_ctl_set($link, $i, $source, 'me', $status),
    'addrmap' => fn(int $i, int $source, int $status) => rmon_addrmap_ctl_set($link, $i, $source, 'me', $status),
    'hlhost' => fn(int $i, int $source, int $status) => rmon_hlhost_ctl_set($link, $i, $source, -1, -1, 'me', $status),
    'hlmatrix' => fn(int $i, int $source, int $status) => rmon_hlmatrix_ctl_set($link, $i, $source, -1, -1, 'me', $status),
    'aggregation' => fn(int $i, int $source, int $status) => dsmon_aggctl_set($link, $i, 'me', '', $status),
    'dsmon stats' => fn(int $i, int $source, int $status) => dsmon_statsctl_set($link, $i, $source, $i, 'me', $status),
    'dsmon pdist' => fn(int $i, int $source, int $status) => dsmon_pdistctl_set($link, $i, $source, $i, 'me', $status, -1),
    'dsmon hosts' => fn(int $i, int $source, int $status) => dsmon_hostctl_set($link, $i, $source, $i, 'me', $status, -1),
    'dsmon matrix' => fn(int $i, int $source, int $status) => dsmon_matrixctl_set($link, $i, $source, $i, 'me', $status, -1),
    'vlan' => fn(int $i, int $source, int $status) => rmon_vlan_ctl_set($link, $i, $source, 'me', $status),
    'priority' => fn(int $i, int $source, int $status) => rmon_prio_ctl_set($link, $i, $source, 'me', $status),
    'art' => fn(int $i, int $source, int $status) => rmon_art_ctl_set($link, $i, $source, 0, ...[...$limits, 1000, -1, 'me', $status]),
    'trap destinations' => fn(int $i, int $source, int $status) => rmon_trapdest_set($link, $i, 'public', 1, [10, 0, 0, $source], 'me', $status),
];
const FIRST = 300;
const WAITS = 1000;
const SECOND = 65000;
foreach ($sets as $table => $set) {
    foreach ([SECOND => 2, FIRST => 1] as $index => $source) {
        expect_same(NO_ERROR, $set($index, $source, CREATE_REQUEST), "$table, row $index");
        if ($table === 'aggregation') {
            foreach ([10, 46, 20] as $dscp) {
                expect_same(NO_ERROR, dsmon_aggprof_set($link, $index, $dscp, $dscp), "$table, DSCP $dscp");
            }
            expect_same(
                NO_ERROR,
                start_row(fn(int $status) => dsmon_aggrp_set($link, $index, 46, 'voice', $status)),
                'a group',
            );
            expect_same(
                NO_ERROR,
                start_row(fn(int $status) => dsmon_aggrp_set($link, $index, 10, 'data', $status)),
                'another group',
            );
        }
        expect_same(NO_ERROR, $set($index, $source, VALID), "$table, row $index at work");
    }
    expect_same(NO_ERROR, $set(WAITS, 1, CREATE_REQUEST), "$table, row that waits");
}
// Four alarms of which three have the same event.
foreach ([FIRST => FIRST, FIRST + 1 => SECOND, FIRST + 2 => FIRST, SECOND => FIRST] as $index => $event) {
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_alarm_set(
            $link,
            $index,
            1,
            'ifIndex.1',
            1,
            1,
            1,
            0,
            $event,
            0,
            'me',
            $status,
        )),
        "alarm $index",
    );
}
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'lock');
foreach (['public', 'b', 'ab', 'aa', 'private'] as $name) {
    expect_same(0, rmon_community_set($link, $name, 1), "community $name");
}
$devices = [[10, 0, 0, 5], [9, 255, 255, 255], [...array_fill(0, 15, 1), 2]];
foreach ($devices as $device) {
    expect_same(0, rmon_nde_device_set($link, $device, 'public', 'router'), 'device');
    foreach (['one', 'two'] as $number => $name) {
        expect_same(0, rmon_nde_datasrc_set($link, $device, $name), "data source $name");
        foreach ([[2, 3], [1, 300], [1, 4]] as [$input, $output]) {
            expect_same(
                0,
                rmon_nde_flow_path_set($link, $device, $number + 1, $input, $output),
                "flow path $input $output",
            );
        }
    }
}
preg_match('/NetFlow packets are taken on port (\d+)\n/', $agent->said(), $port);
foreach (['127.0.0.9' => [300, 2, 5], '127.0.0.200' => [1, 1, 1], '127.0.0.10' => [1, 2, 1]] as $from => $interfaces) {
    $context = stream_context_create(['socket' => ['bindto' => "$from:0"]]);
    $socket = stream_socket_client(
        "udp://127.0.0.1:$port[1]",
        $code,
        $reason,
        PATIENCE,
        STREAM_CLIENT_CONNECT,
        $context,
    );
    $flows = array_map(
        fn(int $interface) => str_repeat("\0", 12) . pack('nn', $interface, 7) . str_repeat("\0", 32),
        $interfaces,
    );
    fwrite($socket, pack('nnNNNNCCn', 5, 3, 1000, 1700000000, 0, 1, 0, 0, 0) . implode('', $flows));
}
read_files($agent, 2);
expect_soon(3, fn() => count(rmon_nde_learned_dev_getbulk($link, [], 10)['devices']), 'exporters');
expect_soon(
    [3, 1],
    fn() => array_map(
        fn(int $event) => count(array_filter(
            range(1, 9),
            fn(int $i) => rmon_log_get($link, $event, $i)['status'] === 0,
        )),
        [FIRST, SECOND],
    ),
    'the log',
);
expect_soon(true, fn() => count(rmon_etherhistory_getbulk($link, SECOND, 0, 10) ?: []) >= 2, 'samples');

// A report has the hosts that grew in its interval, so it is made where traffic goes on.
$going = reading_agent([capture_file($timed($frames)), capture_file($timed($frames))], '--loop', '--speed', 'recorded');
ini_set('rmon.default_port', (string) $going->port);
$other = rmon_connect('127.0.1');
proc_terminate($going->process, 10);
$links = array_fill_keys(array_keys(TABLES), $link);
$links['rmon_hosttopn'] = $links['rmon_hosttopn_ctl'] = $other;
foreach ([SECOND => 2, FIRST => 1] as $index => $source) {
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_host_ctl_set($other, $index, $source, 'me', $status)),
        'hosts',
    );
    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_hosttopn_ctl_set($other, $index, $index, 2, 1, 10, 'me', $status)),
        'report',
    );
}
expect_same(NO_ERROR, rmon_hosttopn_ctl_set($other, WAITS, FIRST, 2, 1, 10, 'me', CREATE_REQUEST), 'report that waits');
expect_soon(true, fn() => rmon_hosttopn_get($other, FIRST, 3) && rmon_hosttopn_get($other, SECOND, 3), 'reports');

// ---- The walks ---------------------------------------------------------------------------------------

/** The rows of a reply; none when it has the form of that. */
function rows_in(array $table, mixed $reply, bool $list): array
{
    $none = $table['none'] === NO_SUCH_NAME ? ($reply['status'] ?? null) === NO_SUCH_NAME : $reply === $table['none'];
    if ($none || !is_array($reply)) {
        expect_same(true, $none, 'the form of no row');
        return [];
    }
    $rows = isset($table['outer']) ? $reply[$table['outer']] : ($list ? $reply : [$reply]);
    return array_map(fn(array $row) => array_diff_key($row, array_flip($table['changes'] ?? [])), $rows);
}

/** The arguments that ask for a row. */
function index_of(array $table, array $row): array
{
    return array_map(
        fn(string $key) => str_contains($key, 'ddress') && $row[$key] === 0 ? [] : $row[$key],
        $table['index'],
    );
}

/** What orders a row among others: numbers, and bytes, of which the shorter ones stand first. */
function place_of(array $table, array $row): array
{
    $parts = array_map(fn(string $key) => $row[$key], $table['order'] ?? $table['index']);
    return array_map(fn(mixed $part) => is_string($part) ? array_values(unpack('C*', $part)) : $part, $parts);
}

foreach (TABLES as $name => $table) {
    $get = fn(array $index) => rows_in($table, ("{$name}_get")($links[$name], ...$index), false);
    $next = fn(array $index) => rows_in($table, ("{$name}_getnext")($links[$name], ...$index), false);
    $first = array_map(fn(string $key) => match (true) {
        $key === 'communityString' => '',
        (bool) preg_match('/ddress$|DirID$|Parameters$/', $key) => [],
        default => 0,
    }, $table['index']);
    $behind = array_map(fn(mixed $part) => match (true) {
        is_string($part) => str_repeat('~', 255),
        is_array($part) => array_fill(0, 16, 255),
        default => 0x7fffffff,
    }, $first);

    $walked = [];
    for ($index = $first; $rows = $next($index); $index = index_of($table, $rows[0])) {
        expect_same(1, count($rows), "$name: rows of a getnext");
        $ordered = $walked === [] || place_of($table, end($walked)) < place_of($table, $rows[0]);
        expect_same(true, $ordered, "$name: the order of row " . count($walked));
        if (!$ordered) {
            break;
        }
        $walked[] = $rows[0];
    }
    expect_same(true, count($walked) >= 2, "$name: rows");
    $controls = array_unique(array_column($walked, $table['index'][0]), SORT_REGULAR);
    expect_same(
        true,
        count($controls) > 1 || $name === 'rmon_addrmap_entry',
        "$name: rows of more than one control row",
    );
    foreach ($walked as $number => $row) {
        expect_same([$row], $get(index_of($table, $row)), "$name: get of row $number");
    }
    foreach ([$first, $behind] as $index) {
        expect_same([], $get($index), "$name: get of no row");
    }
    expect_same([], $next($behind), "$name: getnext behind all");

    if (!function_exists("{$name}_getbulk")) {
        continue;
    }
    $bulk = fn(array $index, int $count) => rows_in(
        $table,
        ("{$name}_getbulk")($links[$name], ...[...$index, $count]),
        true,
    );
    foreach ([10000, 0x7fffffff] as $count) {
        $rows = $bulk($first, $count);
        if ($table['grows'] ?? false) {
            $rows = array_values(array_uintersect(
                $rows,
                $walked,
                fn(array $a, array $b) => place_of($table, $a) <=> place_of($table, $b),
            ));
        }
        expect_same($walked, $rows, "$name: $count rows by getbulk");
    }
    expect_same(array_slice($walked, 1, 2), $bulk(index_of($table, $walked[0]), 2), "$name: two rows behind the first");
    foreach ([0, -1, -0x80000000] as $count) {
        expect_same([], $bulk($first, $count), "$name: $count rows");
    }
    expect_same([], $bulk($behind, 10), "$name: rows behind all");
}

// The interfaces of a learned device.
$device = [127, 0, 0, 9];
$walked = [];
for ($index = -1; $rows = rmon_nde_learned_dev_intf_getnext($link, $device, $index)['interfaces']; $index = $rows[0]['ifIndex']) {
    expect_same(
        $rows,
        rmon_nde_learned_dev_intf_get($link, $device, $rows[0]['ifIndex'])['interfaces'],
        'get of an interface',
    );
    $walked[] = $rows[0];
}
expect_same([[2, 1], [5, 1], [7, 2], [300, 1]], array_map(array_values(...), $walked), 'interfaces');
expect_same(
    $walked,
    rmon_nde_learned_dev_intf_getbulk($link, $device, -1, 0x7fffffff)['interfaces'],
    'interfaces by getbulk',
);
foreach ([[$device, 3], [[127, 0, 0, 8], 2]] as $none) {
    expect_same([], rmon_nde_learned_dev_intf_get($link, ...$none)['interfaces'], 'get of no interface');
}

// Control rows whose tables may grow are few, so that all tables together stay bounded.
foreach ([
    'hosts', 'matrix', 'hlhost', 'hlmatrix', 'dsmon pdist', 'dsmon hosts', 'dsmon matrix', 'vlan', 'art',
] as $table) {
    for ($index = 1; ($answer = $sets[$table]($index, 1, CREATE_REQUEST)) === NO_ERROR && $index < 200; $index++) {
    }
    expect_same([98, 5], [$index, $answer], "$table: 97 rows more");
}

end_agent($going);
agent_done($agent);
--EXPECT--
OK
