<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Sets the demo's agent to work: the control rows that its owner would have made, on each interface.
 *
 * usage: rows.php PORT
 */

use Rmon\ControlRows;
use Rmon\Probe;

require __DIR__ . '/../../library/autoload.php';

const OWNER = 'demo';

/** What a class of service is made of: the values of DSCP in each. */
const CLASSES = [
    'usual' => [],
    'bulk' => [8, 10, 12, 14],
    'business' => [16, 18, 20, 22, 24, 26, 28, 30],
    'video' => [32, 34, 36, 38],
    'voice' => [40, 44, 46],
    'network control' => [48, 56],
];

/** Control tables whose rows need no more than an interface. */
const COUNTING = [
    'hostControlTable' => 'hostControlDataSource',
    'matrixControlTable' => 'matrixControlDataSource',
    'hlHostControlTable' => 'hlHostControlDataSource',
    'hlMatrixControlTable' => 'hlMatrixControlDataSource',
    'protocolDistControlTable' => 'protocolDistControlDataSource',
    'addressMapControlTable' => 'addressMapControlDataSource',
    'smonVlanStatsControlTable' => 'smonVlanStatsControlDataSource',
    'smonPrioStatsControlTable' => 'smonPrioStatsControlDataSource',
    'artControlTable' => 'artControlDataSource',
];

function make(Probe $probe, string $table, array $row): void
{
    $table = $probe->table($table);
    $table->create(...$row, ...[$table->schema->owner => OWNER]);
}

/** A profile of named groups, which must be there before the lock is on. */
function make_classes(Probe $probe): int
{
    $row = ['dsmonAggControlIndex' => 1, 'dsmonAggControlDescr' => 'classes of service', 'dsmonAggControlOwner' => OWNER];
    $probe->table('dsmonAggControlTable')->set(...$row, dsmonAggControlStatus: 'createRequest');
    $group = 0;
    foreach (CLASSES as $name => $values) {
        foreach ($values as $value) {
            $probe->table('dsmonAggProfileTable', control: 1)->set(dsmonAggProfileDSCP: $value, dsmonAggGroupIndex: $group);
        }
        $probe->table('dsmonAggGroupTable', control: 1)->set(dsmonAggGroupIndex: $group++, dsmonAggGroupDescr: $name);
    }
    $probe->table('dsmonAggControlTable')->set(...$row, dsmonAggControlStatus: 'valid');
    return 1;
}

/** Alarms whose thresholds the capture crosses, and one that it doesn't. */
function make_alarms(Probe $probe, int $interface): void
{
    make($probe, 'eventTable', ['eventIndex' => 1, 'eventDescription' => 'much traffic in the office', 'eventType' => 'log']);
    make($probe, 'eventTable', ['eventIndex' => 2, 'eventDescription' => 'traffic in the office as usual', 'eventType' => 'log']);
    make($probe, 'eventTable', ['eventIndex' => 3, 'eventDescription' => 'frames of wrong lengths', 'eventType' => 'log']);
    $alarms = [
        ["etherStatsOctets.$interface", 10, 1_000_000, 500_000, 1, 2],
        ["etherStatsOversizePkts.$interface", 10, 3, 0, 3, 0],
        ["etherStatsUndersizePkts.$interface", 10, 1, 0, 3, 0],
        ["etherStatsDropEvents.$interface", 10, 100, 0, 3, 0],
        ["etherStatsBroadcastPkts.$interface", 30, 500, 100, 3, 0],
    ];
    foreach ($alarms as $i => [$variable, $interval, $rising, $falling, $above, $below]) {
        make($probe, 'alarmTable', [
            'alarmIndex' => $i + 1,
            'alarmVariable' => $variable,
            'alarmInterval' => $interval,
            'alarmStartupAlarm' => 'risingAlarm',
            'alarmRisingThreshold' => $rising,
            'alarmFallingThreshold' => $falling,
            'alarmRisingEventIndex' => $above,
            'alarmFallingEventIndex' => $below,
        ]);
    }
}

function make_settings(Probe $probe): void
{
    $probe->table('system')->set(sysName: 'demo', sysContact: 'noc@example.com', sysLocation: 'a recorded office');
    foreach (['127.0.0.2' => 'router of the office', '127.0.0.3' => 'router of the depot'] as $address => $name) {
        $probe->table('ndeDeviceTable')->set(address: $address, deviceName: $name, commString: 'public');
    }
    $probe->table('ndeDataSourceTable')->set(address: '127.0.0.2', datasrcIndex: 0, datasrcName: 'flows to the world');
    $probe->table('ndeFlowPathTable')->set(address: '127.0.0.2', datasrcIndex: 1, inputIndex: 1, outputIndex: 2);
    $probe->table('trapDestTable')->set(
        trapDestIndex: 1,
        trapDestCommunity: 'public',
        trapDestProtocol: 'ip.udp.snmptrap',
        trapDestAddress: '10.0.30.90',
        trapDestOwner: OWNER,
    );
}

if ($argc !== 2 || !preg_match('/^\d+$/D', $argv[1])) {
    fwrite(STDERR, "usage: rows.php PORT\n");
    exit(2);
}
$probe = Probe::connect('127.0.0.1', (int) $argv[1]);
$classes = make_classes($probe);
$each = (new ControlRows($probe, OWNER))->profile();
$index = array_fill_keys(array_keys(COUNTING), 0);
$groups = 0;
foreach ($probe->interfaces()->names() as $interface => $name) {
    foreach (COUNTING as $table => $source) {
        $key = (string) array_key_first($probe->table($table)->schema->keys);
        make($probe, $table, [$key => ++$index[$table], $source => $interface]);
    }
    foreach ([$each, $classes] as $profile) {
        $groups++;
        foreach (['dsmonStatsControl', 'dsmonPdistCtl', 'dsmonHostCtl', 'dsmonMatrixCtl'] as $prefix) {
            make($probe, "{$prefix}Table", [
                "{$prefix}Index" => $groups,
                "{$prefix}DataSource_ifIndex" => $interface,
                str_replace('Ctl', '', $prefix) . 'AggProfile' => $profile,
            ]);
        }
    }
    // Beside the samples of 30 and 1800 seconds that the agent makes of itself.
    make($probe, 'historyControlTable', [
        'historyControlIndex' => 1000 + $interface,
        'historyControlDataSource' => $interface,
        'historyControlInterval' => 5,
        'historyControlBucketsRequested' => 360,
    ]);
}
make_alarms($probe, (int) array_key_first($probe->interfaces()->names()));
make_settings($probe);
