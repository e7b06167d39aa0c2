--TEST--
The bundled agent's system group is this machine's own
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$start = microtime(true);
$agent = bundled_agent();
$client = client($agent);

$system = system_group($client);
$descr = php_uname('s') . ' ' . php_uname('r') . ' ' . php_uname('v') . ' ' . php_uname('m');
expect_same($descr, $system['sysDescr'], 'sysDescr');
expect_same('', $system['sysContact'], 'sysContact');
expect_same(gethostname(), $system['sysName'], 'sysName');
expect_same('', $system['sysLocation'], 'sysLocation');
expect_same('0.0', $system['sysObjectID'], 'sysObjectID');
// 8 end-to-end and 64 applications, always; 2 where it bridges, 4 where it routes.
expect_same(72, $system['sysServices'] & ~6, 'sysServices without bridging and routing');

// Hundredths of a second since the agent's start: the time that goes by here is what is tested.
usleep(500000);
$later = system_group($client);
$grown = $later['sysUpTime'] - $system['sysUpTime'];
if ($grown < 50 || $later['sysUpTime'] > 100 * (microtime(true) - $start) + 1) {
    fail("sysUpTime went from {$system['sysUpTime']} to {$later['sysUpTime']}");
}

// Contact, name and location can be set; the host keeps its name.
$host = gethostname();
expect_same(NO_ERROR, status_of(set_system($client, 'Jane <jane@example.net>', 'probe-7', 'rack 3')), 'set');
$changed = system_group(client($agent));
expect_same('Jane <jane@example.net>', $changed['sysContact'], 'sysContact after a set');
expect_same('probe-7', $changed['sysName'], 'sysName after a set');
expect_same('rack 3', $changed['sysLocation'], 'sysLocation after a set');
expect_same($descr, $changed['sysDescr'], 'sysDescr after a set');
expect_same($host, gethostname(), 'name of the host');

// What can only be read is ignored.
$status = status_of(ask($client, 2, record(
    sysDescr: text('another'),
    sysUpTime: u32(1),
    sysContact: text(''),
    sysName: text(''),
    sysLocation: text(str_repeat('x', 255)),
    sysObjectID: text('1.3.6.1'),
    sysServices: i32(1),
)));
expect_same(NO_ERROR, $status, 'set of all fields');
$changed = system_group($client);
expect_same($descr, $changed['sysDescr'], 'sysDescr is read only');
expect_same('0.0', $changed['sysObjectID'], 'sysObjectID is read only');
expect_same($system['sysServices'], $changed['sysServices'], 'sysServices is read only');
expect_same(
    ['', '', str_repeat('x', 255)],
    [$changed['sysContact'], $changed['sysName'], $changed['sysLocation']],
    'texts',
);

// Invalid requests are refused, and change nothing.
foreach (["a\nb", "\x7f", "\x1b[2J", "caf\xe9", "\t"] as $bad) {
    expect_same(BAD_VALUE, status_of(set_system($client, $bad, 'n', 'l')), 'set of contact ' . quoted($bad));
    expect_same(BAD_VALUE, status_of(set_system($client, 'c', $bad, 'l')), 'set of name ' . quoted($bad));
    expect_same(BAD_VALUE, status_of(set_system($client, 'c', 'n', $bad)), 'set of location ' . quoted($bad));
}
expect_same(answer(GARBAGE_ARGS), set_system($client, str_repeat('x', 256), 'n', 'l'), 'set of a text of 256');
$after = system_group($client);
expect_same(['', '', str_repeat('x', 255)], [$after['sysContact'], $after['sysName'], $after['sysLocation']], 'texts');

agent_done($agent);
--EXPECT--
OK
