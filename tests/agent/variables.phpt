--TEST--
The bundled agent's MIB variables: each of the tables' counters, by name and by object identifier
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

$web = [
    ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 6, tcp(4000, 80, 2, '', 10), 46), 5 << 13 | 100),
    ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 6, tcp(4000, 80, 0x18, 'ask', 11), 46), 5 << 13 | 100),
    ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.1', 6, tcp(80, 4000, 0x18, 'told', 21))),
    ethernet(mac(2), mac(1), 0x86dd, ip6('fd00::1', 'fd00::2', 17, udp(1000, 1001))),
    ethernet(str_repeat("\xff", 6), mac(1), 0x0806, arp(1, mac(1), '10.0.0.1', mac(0), '10.0.0.2')),
];
$agent = reading_agent([capture_file(array_map(fn($frame, $at) => [1 + $at / 1000, $frame], $web, array_keys($web)))]);
$link = module_link($agent);
foreach ([
    fn(int $status) => rmon_history_ctl_set($link, 9, 1, 100, 1, '', $status),
    fn(int $status) => rmon_host_ctl_set($link, 3, 1, '', $status),
    fn(int $status) => rmon_matrix_ctl_set($link, 3, 1, '', $status),
    fn(int $status) => rmon_hosttopn_ctl_set($link, 3, 3, 2, 0, 10, '', $status),
    fn(int $status) => rmon_event_set($link, 3, '', 2, '', '', $status),
    fn(int $status) => rmon_channel_set($link, 3, 1, 2, 1, 0, 0, 3, 3, '', '', $status),
    fn(int $status) => rmon_buffer_ctl_set($link, 3, 3, 2, 64, 64, 0, 1000, '', $status),
    fn(int $status) => rmon_alarm_set($link, 3, 1, 'ifMtu.1', 1, 1, 100000, 1, 0, 0, '', $status),
    fn(int $status) => rmon_pdist_ctl_set($link, 3, 1, '', $status),
    fn(int $status) => rmon_addrmap_ctl_set($link, 3, 1, '', $status),
    fn(int $status) => rmon_hlhost_ctl_set($link, 3, 1, -1, 5, '', $status),
    fn(int $status) => rmon_hlmatrix_ctl_set($link, 3, 1, 5, -1, '', $status),
    fn(int $status) => dsmon_aggctl_set($link, 3, '', '', $status),
    fn(int $status) => dsmon_statsctl_set($link, 3, 1, 3, '', $status),
    fn(int $status) => dsmon_pdistctl_set($link, 3, 1, 3, '', $status, -1),
    fn(int $status) => dsmon_hostctl_set($link, 3, 1, 3, '', $status, -1),
    fn(int $status) => dsmon_matrixctl_set($link, 3, 1, 3, '', $status, -1),
    fn(int $status) => rmon_vlan_ctl_set($link, 3, 1, '', $status),
    fn(int $status) => rmon_prio_ctl_set($link, 3, 1, '', $status),
    fn(int $status) => rmon_art_ctl_set($link, 3, 1, 0, 10, 20, 50, 100, 200, 500, 1000, -1, '', $status),
] as $number => $set) {
    expect_same(NO_ERROR, start_row($set), "row $number");
}
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'lock');
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > 0, 'a time that is not 0');
read_files($agent);
expect_soon(true, fn() => rmon_etherhistory_get($link, 9, 1) !== false, 'a sample');

/** The index of the first row of a table, of the protocol's own numbers. */
$index = protocol_indexes($link);

/** Columns of a table: their names with the numbers from one on. */
function columns(string $names, int $from): array
{
    return array_flip(array_filter(array_merge(array_fill(0, $from, ''), explode(' ', $names))));
}

/** @var array<string, int|float> the numbers of all rows that were read */
$shown = [];

/** A table whose keys are a prefix and the column's name. */
function table(string $prefix, string $oid, string $instance, array $columns, array|false $row, ?string $keys = null): array
{
    global $shown;
    $shown += $keys === '' ? [] : array_filter($row, is_numeric(...));
    $values = [];
    foreach ($columns as $name => $number) {
        $key = ($keys ?? $prefix) . $name;
        expect_same(true, isset($row[$key]), "$prefix: $key is in the row");
        $values[$prefix . $name] = ["1.3.6.1.2.1.$oid.$number", $instance, (int) $row[$key]];
    }
    return $values;
}

$hostCounts = 'InPkts OutPkts InOctets OutOctets OutErrors OutBroadcastPkts OutMulticastPkts';
$etherCounts = implode(' ', ETHER_COUNTERS);
$controlCounts = 'NlDroppedFrames NlInserts NlDeletes NlMaxDesiredEntries AlDroppedFrames AlInserts AlDeletes AlMaxDesiredEntries';
$mac1 = [2, 0, 0, 0, 0, 1];
$mac2 = [2, 0, 0, 0, 0, 2];
[$a, $b] = [[10, 0, 0, 1], [10, 0, 0, 2]];
$six = '16.253.0.0.0.0.0.0.0.0.0.0.0.0.0.0';
$art = 'AvgRspTime MinRspTime MaxRspTime TotalResponses Rsps1 Rsps2 Rsps3 Rsps4 Rsps5 Rsps6 Rsps7 ClientOctets ServerOctets Retries Timeouts';
$matrix = fn(string $view, array $row) => [
    'Pkts' => $row["{$view}Pkts"],
    'Octets' => $row["{$view}Octets"],
    'CreateTime' => $row["{$view}CreateTime"],
];
$dsmonMatrix = fn(array $row) => ['HCPkts' => $row['dsmonMatrixSDHCPkts'], 'HCOctets' => $row['dsmonMatrixSDHCOctets']];
$known = [
    ...table('if', '2.2.1', '1', columns('Index', 1) + columns('Type Mtu Speed', 3) + columns('AdminStatus OperStatus LastChange InOctets InUcastPkts InNUcastPkts InDiscards InErrors InUnknownProtos OutOctets OutUcastPkts OutNUcastPkts OutDiscards OutErrors OutQLen', 7), rmon_ifentry_get($link, 1)),
    ...table(
        'etherStats',
        '16.1.1.1',
        '1',
        columns('Index', 1) + columns($etherCounts, 3),
        rmon_etherstats_get($link, 1),
    ),
    ...table('etherStats', '16.1.4.1', '1', columns('DroppedFrames CreateTime', 1), rmon_etherstats_get($link, 1)),
    ...table('historyControl', '16.2.1.1', '9', columns('BucketsGranted', 4), rmon_history_ctl_get($link, 9)),
    ...table('etherHistory', '16.2.2.1', '9.1', columns('IntervalStart DropEvents Octets Pkts BroadcastPkts MulticastPkts CRCAlignErrors UndersizePkts OversizePkts Fragments Jabbers Collisions Utilization', 3), rmon_etherhistory_get($link, 9, 1)),
    ...table('alarm', '16.3.1.1', '3', columns('Value', 5), rmon_alarm_get($link, 3)),
    ...table('event', '16.9.1.1', '3', columns('LastTimeSent', 5), rmon_event_get($link, 3)),
    ...table('log', '16.9.2.1', '3.2', columns('Time', 3), rmon_log_get($link, 3, 2)),
    ...table('hostControl', '16.4.1.1', '3', columns('TableSize LastDeleteTime', 3), rmon_host_ctl_get($link, 3)),
    ...table(
        'host',
        '16.4.2.1',
        '3.6.2.0.0.0.0.1',
        columns('CreationOrder', 2) + columns($hostCounts, 4),
        rmon_host_get($link, 3, $mac1),
    ),
    ...table('hostTime', '16.4.3.1', '3.2', columns($hostCounts, 4), rmon_hosttime_get($link, 3, 2)),
    ...table(
        'hostTopN',
        '16.5.1.1',
        '3',
        columns('TimeRemaining Duration', 4) + columns('GrantedSize StartTime', 7),
        rmon_hosttopn_ctl_get($link, 3),
    ),
    ...table('matrixControl', '16.6.1.1', '3', columns('TableSize LastDeleteTime', 3), rmon_matrix_ctl_get($link, 3)),
    ...table(
        'matrixSD',
        '16.6.2.1',
        '3.6.2.0.0.0.0.1.6.2.0.0.0.0.2',
        columns('Pkts Octets Errors', 4),
        rmon_matrix_sd_get($link, 3, $mac1, $mac2),
    ),
    ...table(
        'matrixDS',
        '16.6.3.1',
        '3.6.2.0.0.0.0.2.6.2.0.0.0.0.1',
        columns('Pkts Octets Errors', 4),
        rmon_matrix_ds_get($link, 3, $mac1, $mac2),
    ),
    ...table('channel', '16.7.2.1', '3', columns('Matches', 9), rmon_channel_get($link, 3)),
    ...table('channel', '16.7.3.1', '3', columns('DroppedFrames CreateTime', 1), rmon_channel_get($link, 3)),
    ...table(
        'captureBufferPacket',
        '16.8.2.1',
        '3.2',
        ['ID' => 3, 'Length' => 5, 'Time' => 6, 'Status' => 7],
        rmon_capture_buf_get($link, 3, 2),
    ),
    ...table('captureBufferPacket', '16.8.3.1', '3.2', ['HighCapacityTime' => 1], rmon_capture_buf_get($link, 3, 2)),
    ...table(
        'bufferControl',
        '16.8.1.1',
        '3',
        columns('FullStatus', 3) + columns('MaxOctetsGranted CapturedPackets TurnOnTime', 9),
        rmon_buffer_ctl_get($link, 3),
    ),
    ...table(
        'protocolDistControl',
        '16.12.1.1',
        '3',
        columns('DroppedFrames CreateTime', 3),
        rmon_pdist_ctl_get($link, 3),
    ),
    ...table(
        'protocolDistStats',
        '16.12.2.1',
        "3.{$index['ip.tcp']}",
        columns('Pkts Octets', 1),
        rmon_pdist_stats_get($link, 3, $index['ip.tcp']),
    ),
    ...table('addressMap', '16.13', '0', columns('Inserts Deletes', 1), rmon_addrmap_scalars_get($link)),
    ...table(
        'addressMap',
        '16.13.5.1',
        "0.{$index['ip']}.4.10.0.0.1.11.1.3.6.1.2.1.2.2.1.1.1",
        columns('LastChange', 5),
        rmon_addrmap_entry_get($link, 0, $index['ip'], $a, 1),
    ),
    ...table('addressMapControl', '16.13.4.1', '3', columns('DroppedFrames', 3), rmon_addrmap_ctl_get($link, 3)),
    ...table(
        'hlHostControl',
        '16.14.1.1',
        '3',
        columns($controlCounts, 3),
        ['hlHostControlNlMaxDesiredEntries' => 0xffffffff] + rmon_hlhost_ctl_get($link, 3),
    ),
    ...table(
        'nlHost',
        '16.14.2.1',
        "3.0.{$index['ip']}.4.10.0.0.1",
        columns('InPkts OutPkts InOctets OutOctets OutMacNonUnicastPkts CreateTime', 3),
        rmon_nlhost_get($link, 3, 0, $index['ip'], $a),
    ),
    ...table(
        'alHost',
        '16.16.1.1',
        "3.1.{$index['ip']}.4.10.0.0.1.{$index['ip.tcp']}",
        columns('InPkts OutPkts InOctets OutOctets CreateTime', 2),
        rmon_alhost_get($link, 3, 0, $index['ip'], $a, $index['ip.tcp']),
    ),
    ...table(
        'hlMatrixControl',
        '16.15.1.1',
        '3',
        columns($controlCounts, 3),
        ['hlMatrixControlAlMaxDesiredEntries' => 0xffffffff] + rmon_hlmatrix_ctl_get($link, 3),
    ),
    ...table(
        'nlMatrixSD',
        '16.15.2.1',
        "3.0.{$index['ip']}.4.10.0.0.1.4.10.0.0.2",
        columns('Pkts Octets CreateTime', 4),
        $matrix('nlMatrixSD', rmon_nlmatrix_sd_get($link, 3, 0, $index['ip'], $a, $b)),
        '',
    ),
    ...table(
        'nlMatrixDS',
        '16.15.3.1',
        "3.0.{$index['ip']}.4.10.0.0.2.4.10.0.0.1",
        columns('Pkts Octets CreateTime', 4),
        $matrix('nlMatrixDS', rmon_nlmatrix_ds_get($link, 3, 0, $index['ip'], $a, $b)),
        '',
    ),
    ...table(
        'alMatrixSD',
        '16.17.1.1',
        "3.0.{$index['ip']}.4.10.0.0.1.4.10.0.0.2.{$index['ip.tcp.www-http']}",
        columns('Pkts Octets CreateTime', 2),
        $matrix('alMatrixSD', rmon_almatrix_sd_get($link, 3, 0, $index['ip'], $a, $b, $index['ip.tcp.www-http'])),
        '',
    ),
    ...table(
        'alMatrixDS',
        '16.17.2.1',
        "3.0.{$index['ip6']}.{$six}.2.{$six}.1.{$index['ip6.udp']}",
        columns('Pkts Octets CreateTime', 2),
        $matrix(
            'alMatrixDS',
            rmon_almatrix_ds_get($link, 3, 0, $index['ip6'], address('fd00::1'), address('fd00::2'), $index['ip6.udp']),
        ),
        '',
    ),
    ...table('smonVlanStatsControl', '16.22.1.2.1.1', '3', columns('CreateTime', 3), rmon_vlan_ctl_get($link, 3)),
    ...table(
        'smonVlanIdStats',
        '16.22.1.2.2.1',
        '3.100',
        ['TotalPkts' => 2, 'TotalOctets' => 5, 'NUcastPkts' => 8, 'NUcastOctets' => 11, 'CreateTime' => 14],
        rmon_vlan_get($link, 3, 100),
    ),
    ...table('smonPrioStatsControl', '16.22.1.2.3.1', '3', columns('CreateTime', 3), rmon_prio_ctl_get($link, 3)),
    ...table('smonPrioStats', '16.22.1.2.4.1', '3.5', ['Pkts' => 2, 'Octets' => 5], rmon_prio_get($link, 3, 5)),
    ...table('dsmonStatsControl', '16.26.1.2.1.1', '3', columns('DroppedFrames', 4), dsmon_statsctl_get($link, 3)),
    ...table(
        'dsmonStats',
        '16.26.1.2.2.1',
        '3.0',
        columns('InHCPkts InHCOctets', 5) + columns('OutHCPkts OutHCOctets', 11),
        dsmon_stats_get($link, 3, 0),
    ),
    ...table(
        'dsmonPdistCtl',
        '16.26.1.3.1.1',
        '3',
        columns('DroppedFrames', 5),
        dsmon_pdistctl_get($link, 3),
        'dsmonPdist',
    ),
    ...table('dsmonPdistCtl', '16.26.1.3.1.1', '3', columns('Inserts Deletes', 6), dsmon_pdistctl_get($link, 3)),
    ...table(
        'dsmonPdistStats',
        '16.26.1.3.2.1',
        "3.0.0.{$index['ip.tcp.www-http']}",
        columns('HCPkts HCOctets', 6),
        dsmon_pdstats_get($link, 3, 0, 0, $index['ip.tcp.www-http']),
    ),
    ...table(
        'dsmonHostCtl',
        '16.26.1.4.1.1',
        '3',
        columns('DroppedFrames', 7),
        dsmon_hostctl_get($link, 3),
        'dsmonHost',
    ),
    ...table('dsmonHostCtl', '16.26.1.4.1.1', '3', columns('Inserts Deletes', 8), dsmon_hostctl_get($link, 3)),
    ...table(
        'dsmonHost',
        '16.26.1.4.2.1',
        "3.0.0.{$index['ip']}.4.10.0.0.1",
        columns('InHCPkts InHCOctets', 7) + columns('OutHCPkts OutHCOctets', 13),
        dsmon_hoststats_get($link, 3, 0, 0, $index['ip'], $a),
    ),
    ...table(
        'dsmonMatrixCtl',
        '16.26.1.6.1.1',
        '3',
        columns('DroppedFrames', 5),
        dsmon_matrixctl_get($link, 3),
        'dsmonMatrix',
    ),
    ...table('dsmonMatrixCtl', '16.26.1.6.1.1', '3', columns('Inserts Deletes', 6), dsmon_matrixctl_get($link, 3)),
    ...table(
        'dsmonMatrixSD',
        '16.26.1.6.2.1',
        "3.0.0.{$index['ip']}.4.10.0.0.1.4.10.0.0.2.{$index['ip.tcp.www-http']}",
        ['HCPkts' => 8, 'HCOctets' => 11],
        $dsmonMatrix(dsmon_matrixsdstats_get($link, 3, 0, 0, $index['ip'], $index['ip.tcp.www-http'], $a, $b)),
        '',
    ),
    ...table(
        'dsmonMatrixDS',
        '16.26.1.6.3.1',
        "3.0.0.{$index['ip6']}.{$six}.2.{$six}.1.{$index['ip6.udp']}",
        ['HCPkts' => 3, 'HCOctets' => 6],
        $dsmonMatrix(dsmon_matrixdsstats_get(
            $link,
            3,
            0,
            0,
            $index['ip6'],
            $index['ip6.udp'],
            address('fd00::1'),
            address('fd00::2'),
        )),
        '',
    ),
    ...table(
        'artControl',
        '',
        '3',
        columns('TimeRemaining RptStartTime GrantedSize GeneratedRpts DroppedFrames', 1),
        rmon_art_ctl_get($link, 3),
    ),
    ...table(
        'art',
        '',
        "3.{$index['ip.tcp.www-http']}.4.10.0.0.2.4.10.0.0.1",
        columns($art, 1),
        rmon_art_rpt_get($link, 3, $index['ip.tcp.www-http'], $b, $a),
    ),
    ...table(
        'artSummary',
        '',
        "3.{$index['ip.tcp.www-http']}.4.10.0.0.2",
        columns("Clients $art", 1),
        rmon_art_sum_get($link, 3, $index['ip.tcp.www-http'], $b),
    ),
    'hostTopNRate' => ['1.3.6.1.2.1.16.5.2.1.4', '3.1', false],
    'protocolDirLastChange' => ['1.3.6.1.2.1.16.11.1', '0', 0],
    'addressMapMaxDesiredEntries' => ['1.3.6.1.2.1.16.13.3', '0', 0xffffffff],
    'sysServices' => ['1.3.6.1.2.1.1.7', '0', rmon_system_get($link)['sysServices']],
];
// All numbers are there but those that are indexes or repeat a set. Pairs of hosts and busiest hosts have rows above
// and below of their own.
$left = [
    'etherStatsDataSource', 'etherStatsStatus', 'historyControlIndex', 'historyControlDataSource', 'historyControlBucketsRequested',
    'historyControlInterval', 'historyControlStatus', 'etherHistoryIndex', 'etherHistorySampleIndex', 'alarmIndex', 'alarmInterval',
    'alarmSampleType', 'alarmStartupAlarm', 'alarmRisingThreshold', 'alarmFallingThreshold', 'alarmRisingEventIndex',
    'alarmFallingEventIndex', 'alarmStatus', 'eventIndex', 'eventType', 'eventStatus', 'logEventIndex', 'logIndex', 'hostControlIndex',
    'hostControlDataSource', 'hostControlStatus', 'hostIndex', 'hostTimeIndex', 'hostTimeCreationOrder', 'hostTopNControlIndex',
    'hostTopNHostIndex', 'hostTopNRateBase', 'hostTopNRequestedSize', 'hostTopNStatus', 'matrixControlIndex', 'matrixControlDataSource',
    'matrixControlStatus', 'matrixSDIndex', 'matrixDSIndex', 'channelIndex', 'channelIfIndex', 'channelAcceptType', 'channelDataControl',
    'channelTurnOnEventIndex', 'channelTurnOffEventIndex', 'channelEventIndex', 'channelEventStatus', 'channelStatus',
    'bufferControlIndex', 'bufferControlChannelIndex', 'bufferControlFullAction', 'bufferControlCaptureSliceSize',
    'bufferControlDownloadSliceSize', 'bufferControlDownloadOffset', 'bufferControlMaxOctetsRequested', 'bufferControlStatus',
    'captureBufferControlIndex', 'captureBufferIndex', 'protocolDistControlIndex', 'protocolDistControlDataSource',
    'protocolDistControlStatus', 'pd_flags', 'protocolDirLocalIndex', 'protocolDirLocalIndex2', 'addressMapTimeMark', 'addressMapSource',
    'addressMapControlIndex', 'addressMapControlDataSource', 'addressMapControlStatus', 'hlHostControlIndex', 'hlHostControlDataSource',
    'hlHostControlStatus', 'nlHostTimeMark', 'alHostTimeMark', 'hlMatrixControlIndex', 'hlMatrixControlDataSource',
    'hlMatrixControlStatus', 'smonVlanStatsControlIndex', 'smonVlanStatsControlDataSource', 'smonVlanStatsControlStatus',
    'smonVlanIdStatsId', 'smonPrioStatsControlIndex', 'smonPrioStatsControlDataSource', 'smonPrioStatsControlStatus', 'smonPrioStatsId',
    'dsmonStatsControlIndex', 'dsmonStatsControlAggProfile', 'dsmonStatsControlStatus', 'dsmonStatsControlDataSource_ifIndex',
    'dsmonAggGroupIndex', 'dsmonPdistCtlIndex', 'dsmonPdistAggProfile', 'dsmonPdistCtlMaxDesiredEntries',
    'dsmonPdistCtlDataSource_ifIndex', 'dsmonPdistCtlStatus', 'dsmonPdistTimeMark', 'dsmonHostCtlIndex',
    'dsmonHostCtlDataSource_ifIndex', 'dsmonHostAggProfile', 'dsmonHostCtlMaxDesiredEntries', 'dsmonHostCtlIPv4PrefixLen',
    'dsmonHostCtlIPv6PrefixLen', 'dsmonHostCtlStatus', 'dsmonHostTimeMark', 'dsmonMatrixCtlIndex', 'dsmonMatrixCtlDataSource_ifIndex',
    'dsmonMatrixAggProfile', 'dsmonMatrixCtlMaxDesiredEntries', 'dsmonMatrixCtlStatus', 'artControlIndex', 'artControlDataSource',
    'artControlRspTime1', 'artControlRspTime2', 'artControlRspTime3', 'artControlRspTime4', 'artControlRspTime5', 'artControlRspTime6',
    'artControlRspTimeout', 'artControlRequestedSize', 'artControlStatus', 'status',
    // the switch's own words for an interface
    'dsrcType', 'dsrcSlot', 'dsrcPort', 'dsrcVlan', 'dsrcChGrp', 'dsrcSpanMode', 'dsrcSpanDest',
    // these have other names in the agent's rows
    'dsmonPdistDroppedFrames', 'dsmonHostDroppedFrames', 'dsmonMatrixDroppedFrames', 'artControlDuration',
];
expect_same(
    [],
    array_values(array_diff(array_filter(array_keys($shown), is_string(...)), $left, array_keys($known))),
    'numbers that are no variables',
);
expect_same(
    rmon_art_ctl_get($link, 3)['artControlDuration'] >= 0,
    rmon_get_mib_var($link, 'artControlDuration.3') >= 0,
    'artControlDuration, which grows',
);

// What was counted, so that not all is 0.
foreach ([
    'etherStatsPkts' => 5, 'etherHistoryPkts' => 5, 'hostOutPkts' => 4, 'hostTimeInPkts' => 3, 'matrixSDPkts' => 3, 'matrixDSPkts' => 3, 'channelMatches' => 5, 'bufferControlCapturedPackets' => 5,
    'protocolDistStatsPkts' => 3, 'nlHostOutPkts' => 2, 'alHostInPkts' => 1, 'nlMatrixSDPkts' => 2, 'nlMatrixDSPkts' => 2, 'alMatrixSDPkts' => 2, 'alMatrixDSPkts' => 1, 'addressMapInserts' => 3,
    'smonVlanIdStatsTotalPkts' => 2, 'smonPrioStatsPkts' => 2, 'dsmonStatsInHCPkts' => 4, 'dsmonPdistStatsHCPkts' => 3, 'dsmonHostOutHCPkts' => 2, 'dsmonMatrixSDHCPkts' => 2, 'dsmonMatrixDSHCPkts' => 1,
    'artTotalResponses' => 1, 'artSummaryClients' => 1, 'hlHostControlAlInserts' => 6, 'hlMatrixControlNlInserts' => 3, 'dsmonHostCtlInserts' => 4, 'alarmValue' => rmon_ifentry_get($link, 1)['ifMtu'],
] as $name => $value) {
    expect_same($value, $known[$name][2], "what was counted: $name");
}
foreach ($known as $name => [$identifier, $instance, $value]) {
    $value = $value === false ? false : $value & 0xffffffff;
    expect_same($value, rmon_get_mib_var($link, "$name.$instance"), "$name by name");
    if (!str_starts_with($identifier, '1.3.6.1.2.1..')) {
        expect_same($value, rmon_get_mib_var($link, "$identifier.$instance"), "$name by identifier");
        expect_same($value, rmon_get_mib_var($link, ".$identifier.$instance"), "$name by absolute identifier");
    }
    foreach ([
        "$name.$instance.1", "$name.$instance.", "$name.40000" . substr($instance, 1),
        "$name." . substr($instance, 1), $name, strtolower("$name.$instance"), ".$name.$instance",
    ] as $none) {
        expect_same(false, rmon_get_mib_var($link, $none), "no variable: $none");
    }
}

// Invalid instances: octets and lengths out of bounds, parts that are missing.
foreach (['hostInPkts.3.5.2.0.0.0.0', 'hostInPkts.3.6.2.0.0.0.0.256', 'hostInPkts.3.7.2.0.0.0.0.1', 'nlHostInPkts.3.0.' . $index['ip'] . '.255.10.0.0.1',
    'nlHostInPkts.3.0.' . $index['ip'] . '.21' . str_repeat('.1', 21), 'nlHostInPkts.3.0.' . $index['ip'], 'nlHostInPkts.3.4294967295.' . $index['ip'] . '.4.10.0.0.1',
    'etherStatsPkts.2147483648', 'etherStatsPkts.4294967296', 'dsmonStatsInHCPkts.3.64', 'matrixSDPkts.3.6.2.0.0.0.0.2.6.2.0.0.0.0.2', 'sysUpTime.0.0', 'sysServices' . str_repeat('.0', 100)] as $none) {
    expect_same(false, rmon_get_mib_var($link, $none), "no instance: $none");
}

agent_done($agent);
--EXPECT--
OK
