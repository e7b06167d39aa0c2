--TEST--
Calls that fail: what is reported, and that the link goes on working
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$system = record(
    sysDescr: text('a probe'), sysUpTime: u32(100), sysContact: text('c'), sysName: text('n'), sysLocation: text('l'),
    sysObjectID: text('1.3.6.1'), sysServices: i32(72),
);
$row = [
    'sysDescr' => 'a probe', 'sysUpTime' => 100, 'sysContact' => 'c', 'sysName' => 'n', 'sysLocation' => 'l',
    'sysObjectID' => '1.3.6.1', 'sysServices' => 72,
];
$works = reply($system);
$cannot_decode = "rmon_system_get: RPC: Can't decode result";

foreach ([
    'garbage arguments' => [garbage_args(), "rmon_system_get: RPC: Server can't decode arguments"],
    'unknown procedure' => [proc_unavail(), 'rmon_system_get: RPC: Procedure unavailable'],
    'unknown program' => [prog_unavail(), 'rmon_system_get: RPC: Program unavailable'],
    'other versions' => [
        prog_mismatch(2, 3),
        'rmon_system_get: RPC: Program/version mismatch; low version = 2, high version = 3',
    ],
    'an error of its own' => [system_err(), 'rmon_system_get: RPC: Remote system error'],
    'denied' => [denied(1), 'rmon_system_get: RPC: Authentication error; why = Invalid client credential'],
    'other RPC versions' => [
        rpc_mismatch(3, 4),
        'rmon_system_get: RPC: Incompatible versions of RPC; low version = 3, high version = 4',
    ],
    'denied, nobody knows why' => [
        message(u32(1) . u32(1) . u32(2) . u32(1)),
        'rmon_system_get: RPC: Failed (unspecified error)',
    ],
    'neither accepted nor denied' => [
        message(u32(1) . u32(2) . u32(0)),
        'rmon_system_get: RPC: Failed (unspecified error)',
    ],
    'accepted, to no end' => [message(accepted(6)), 'rmon_system_get: RPC: Failed (unspecified error)'],
    'no result' => [truncated($system, 0), $cannot_decode],
    'half a result' => [truncated($system, 30), $cannot_decode],
    'one unit short' => [truncated($system, -4), $cannot_decode],
    'a text over its bound' => [reply(text(str_repeat('d', 256)) . substr($system, 12)), $cannot_decode],
    'a text longer than the reply' => [reply(u32(255) . 'abcd'), $cannot_decode],
    'a text of 4 GB' => [reply(u32(0xffffffff) . 'abcd'), $cannot_decode],
] as $what => [$step, $message]) {
    $agent = scripted_agent($step, $works);
    $link = rmon_connect('127.0.0.1');
    expect_result(fn () => rmon_system_get($link), false, [$message]);
    expect_result(fn () => rmon_system_get($link), $row);
    expect_same(1, $agent->connections(), "$what: the same connection");
    rmon_close($link);
    rmon_close($link);
}

// More than the record is no harm; nor is a reply in pieces, or one to somebody else's call in front.
$agent = scripted_agent(
    reply($system . 'more'),
    fragmented($system, 1),
    fragmented($system, [7, 1, 2, 30, 3]),
    sequence(wrong_xid($system), reply($system)),
    sequence(wrong_xid(''), late(0.2, reply($system))),
);
$link = rmon_connect('127.0.0.1');
for ($i = 0; $i < 5; $i++) {
    expect_result(fn () => rmon_system_get($link), $row);
}
rmon_close($link);
rmon_close($link);

// Lost connections: reported at every use, the link stays a link.
foreach ([hang_up(), reset_connection(), cut($system, 20)] as $step) {
    $agent = scripted_agent($step);
    $link = rmon_connect('127.0.0.1');
    for ($i = 0; $i < 3; $i++) {
        [$result, $messages] = warnings(fn () => rmon_system_get($link));
        expect_same(false, $result, 'a lost connection');
        expect_same(1, count($messages), 'one message');
        expect_same(
            1,
            preg_match(
                '/^rmon_system_get: RPC: (Unable to (send|receive); errno = [\w ]+|Can\'t decode result)$/',
                $messages[0][1],
            ),
            $messages[0][1],
        );
    }
    expect_same('RMON RPC link', get_resource_type($link), 'it stays registered');
    rmon_close($link);
    rmon_close($link);
}
done();
?>
--EXPECT--
OK
