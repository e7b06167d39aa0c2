--TEST--
An agent is killed before, during and after a reply; a late reply is never taken for the next call's
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$row = fn(int $number): string => record(
    sysDescr: text("probe $number"), sysUpTime: u32($number), sysContact: text(''), sysName: text(''),
    sysLocation: text(''), sysObjectID: text(''), sysServices: i32($number),
);
$lost = fn(string $how): array => ["rmon_system_get: RPC: Unable to $how"];
$agent = scripted_agent();

// Killed at every byte of a reply: 24 bytes of header and the row, behind a mark of 4.
$whole = accepted(0, $row(1));
for ($sent = 0; $sent < 4 + strlen($whole); $sent++) {
    $agent->restart(sequence(message($whole, sent: $sent), hang_up()));
    $link = rmon_connect('127.0.0.1');
    expect_result(
        fn() => rmon_system_get($link),
        false,
        ['rmon_system_get: RPC: Unable to receive; errno = Connection reset by peer'],
    );
    rmon_close($link);
    rmon_close($link);
}

// Killed after a reply: that one counts, the next call fails, a new link to the new agent works.
$agent->restart(sequence(reply($row(2)), hang_up()));
$link = rmon_connect('127.0.0.1');
expect_same(2, rmon_system_get($link)['sysUpTime'], 'the last reply');
$agent->restart(reply($row(3)));
expect_same(false, @rmon_system_get($link), 'the dead link');
rmon_close($link);
rmon_close($link);
$link = rmon_connect('127.0.0.1');
expect_same(3, rmon_system_get($link)['sysUpTime'], 'the new agent');

// Replies that came too late for their calls, in front of each call's own.
$agent->restart(...array_map(
    fn(int $number) => sequence(wrong_xid($row(900 + $number)), reply($row($number)), wrong_xid($row(950 + $number))),
    range(1, 40),
));
$link = rmon_connect('127.1');
for ($number = 1; $number <= 40; $number++) {
    expect_same($number, rmon_system_get($link)['sysUpTime'], 'the reply to this call');
}
done();
?>
--EXPECT--
OK
