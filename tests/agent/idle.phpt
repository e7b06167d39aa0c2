--TEST--
The bundled agent stays idle while it waits: for a recording, for slow clients, for a free descriptor
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/idle.inc';

/** Leaves the agent so many descriptors for clients more than it uses. */
function allow_clients(BundledAgent $agent, int $count): void
{
    $taken = scandir('/proc/' . $agent->pid() . '/fd');
    for ($limit = 0; $count > 0 || in_array((string) $limit, $taken, true); $limit++) {
        $count -= in_array((string) $limit, $taken, true) ? 0 : 1;
    }
    [$code, , $errors] = run('prlimit', '--pid', (string) $agent->pid(), "--nofile=$limit:512");
    expect_same([0, ''], [$code, $errors], 'prlimit');
}

$agent = bundled_agent('--no-capture');
$descriptors = fn() => count(scandir('/proc/' . $agent->pid() . '/fd'));
$before = $descriptors();
expect_idle($agent, 'without clients');

// Half a message; a client that never reads its many answers; one that shut down its side and reads nothing.
$half = client($agent);
fwrite($half, substr(marked(call(0)), 0, 20));
$deaf = [client($agent), client($agent)];
$calls = str_repeat(marked(call(1)), 500);
foreach ($deaf as $client) {
    stream_set_blocking($client, false);
    for ($round = 0; $round < 100; $round++) {
        @fwrite($client, $calls);
    }
}
stream_socket_shutdown($deaf[1], STREAM_SHUT_WR);
expect_idle($agent, 'with clients that hold something up');
$half = $deaf = $client = null;

// No descriptor is left for a client, and there is no other client to drop for it.
expect_soon($before, $descriptors, 'descriptors once the clients are gone');
allow_clients($agent, 0);
$waiting = client($agent);
fwrite($waiting, marked(call(0)));
expect_idle($agent, 'without a descriptor for a client');
allow_clients($agent, 2);
expect_same(answer(ACCEPTED, i32(0)), message_from($waiting), 'answer once there is one');

// With room for two, a third one takes the place of the quietest.
$second = client($agent);
expect_same(0, status_of(ask($second, 0)), 'answer to the second');
expect_same(0, status_of(ask(client($agent), 0)), 'answer to the third');
expect_same(true, hung_up($waiting), 'hung up on the quietest');
expect_same(0, end_agent($agent), "the agent's exit code");

// A recording with a long pause, and one that is over at once, again and again.
$frame = ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1, 2, 'x')));
$agent = bundled_agent('--speed', 'recorded', '--read', capture_file([[1.0, $frame], [3000.0, $frame]]));
expect_idle($agent, 'in the pause of a recording');
expect_same(1, ether_row(client($agent), 1)['Pkts'], 'the frame before the pause');
expect_same(0, end_agent($agent), "the agent's exit code");

$agent = bundled_agent('--speed', 'recorded', '--loop', '--read', capture_file([[1.0, $frame]]));
$before = work_of($agent);
sleep(WATCHED); // how often it reads in this time is what is tested
$frames = ether_row($client = client($agent), 1)['Pkts'];
// At most one in a millisecond; without a pause there would be hundreds of thousands.
if ($frames < 2 || $frames > 1000 * (PATIENCE + WATCHED)) {
    fail("the recording of one frame was read $frames times");
}
agent_done($agent);
?>
--EXPECT--
OK
