--TEST--
Replies with a verifier: accepted, refused and skipped as without one, and their memory is released
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

/** After a reply's transaction id: accepted, with a verifier of so many bytes. */
$verified = fn(int $bytes, int $status, string $result = ''): string => u32(1) . u32(0) . u32(0)
    . text(str_repeat('v', $bytes)) . u32($status) . $result;
$agent = scripted_agent(
    message($verified(400, 0, i32(5))),
    message($verified(399, 5)), // an error of the agent's
    sequence(                   // replies to other calls
        ...array_fill(0, 50, message($verified(400, 0, i32(6)), xidMask: 0x40000000)),
        ...[message($verified(8, 0, i32(7)))],
    ),
);
$link = rmon_connect('127.0.0.1');
$call = function () use (&$link): mixed {
    return rmon_etherstats_set($link, 1, 2, 'x', 1);
};
expect_result($call, 5);
expect_result($call, false, ['rmon_etherstats_set: RPC: Remote system error']);
expect_result($call, 7);

// What can't be read as a reply is ignored: the call goes on waiting, here until the agent is gone.
$gone = ['rmon_etherstats_set: RPC: Unable to receive; errno = Connection reset by peer'];
$half = u32(1) . u32(0) . u32(0) . u32(400) . 'only the first bytes';
foreach (['127.1' => $verified(401, 0, i32(5)), '127.0.1' => $half] as $host => $malformed) {
    $agent->restart(sequence(message($malformed), hang_up()));
    $link = rmon_connect($host);
    expect_result($call, false, $gone);
}
done();
?>
--EXPECT--
OK
