--TEST--
The module and the bundled agent together: this machine's interfaces, a row's life
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT
declare(strict_types=1);
require __DIR__ . '/client.inc';

$agent = bundled_agent();
ini_set('rmon.default_port', (string)$agent->port);
$link = rmon_connect('127.0.0.1');

$system = rmon_system_get($link);
expect_same(php_uname('n'), $system['sysName'], 'the name');
expect_same(0, rmon_system_set($link, 'operator', 'probe', 'rack 4'), 'set');
$changed = rmon_system_get($link);
expect_same(
    ['operator', 'probe', 'rack 4'],
    [$changed['sysContact'], $changed['sysName'], $changed['sysLocation']],
    'texts',
);
expect_same($system['sysDescr'], $changed['sysDescr'], 'what no set gives stays');

$walked = [];
for ($index = 0; ($row = rmon_ifentry_getnext($link, $index))['status'] === 0; $index = $row['ifIndex']) {
    expect_same(true, $row['ifIndex'] > $index, 'in the order of the index');
    $walked[$row['ifDescr']] = $row['ifIndex'];
    expect_same($row['ifDescr'], rmon_ifentry_get($link, $row['ifIndex'])['ifDescr'], 'get and getnext agree');
}
$kernel = [];
foreach (glob('/sys/class/net/*/ifindex') as $file) {
    $kernel[basename(dirname($file))] = (int)file_get_contents($file);
}
asort($kernel);
expect_same($kernel, $walked, 'the interfaces');
expect_same(false, rmon_ifentry_get($link, 99999)['status'] === 0, 'no such interface');

$lo = $kernel['lo'];
$set = fn (int $status) => rmon_etherstats_set($link, 4000, $lo, 'the test', $status);
expect_same(false, rmon_etherstats_get($link, 4000)['status'] === 0, 'no row yet');
expect_same(0, $set(2), 'createRequest');
expect_same(3, rmon_etherstats_get($link, 4000)['etherStatsStatus'], 'underCreation');
expect_same(false, $set(2) === 0, 'createRequest again');
expect_same(0, $set(1), 'valid');
$before = rmon_etherstats_get($link, 4000);
expect_same(
    ['the test', $lo, 1],
    [$before['etherStatsOwner'], $before['etherStatsDataSource'], $before['etherStatsStatus']],
    'the row',
);
for ($i = 0; $i < 50; $i++) {
    rmon_system_get($link); // over the loopback itself
}
expect_soon(
    true,
    fn() => rmon_etherstats_get($link, 4000)['etherStatsPkts'] >= $before['etherStatsPkts'] + 100,
    'two packets a call at least',
);
$after = rmon_etherstats_get($link, 4000);
expect_same(true, $after['etherStatsOctets'] > $before['etherStatsOctets'] + 100 * 64, 'their octets');
expect_same(0, $set(4), 'invalid');
expect_same(false, rmon_etherstats_get($link, 4000)['status'] === 0, 'gone');

rmon_close($link);
rmon_close($link);
agent_done($agent);
?>
--EXPECT--
OK
