--TEST--
Settings that can't be written: sets work all the same, one line tells, and once there is room the file has them
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/sets.inc';

$directory = sys_get_temp_dir() . '/rmon-full-' . getmypid();
$wrapper = "$directory-agent";
register_shutdown_function(fn() => [array_map(unlink(...), [$wrapper, ...glob("$directory/*")]), @rmdir($directory)]);

$program = agent_program();

/** An agent whose files end at so many blocks of 512 octets. */
function limited_agent(int $blocks): BundledAgent
{
    global $directory, $wrapper, $program;
    file_put_contents($wrapper, "#!/bin/sh\ntrap '' XFSZ\nulimit -f $blocks\nexec $program \"\$@\"\n");
    chmod($wrapper, 0700);
    putenv("RMON_AGENT=$wrapper");
    $agent = bundled_agent('--no-capture', '--state', $directory);
    putenv("RMON_AGENT=$program");
    return $agent;
}

// No room for anything: clients that set at once are answered all the same, and none waits for the next try.
$agent = limited_agent(2);
$clients = eight_clients($agent);
foreach ($clients as $index => $client) {
    expect_same(NO_ERROR, set_ether($client, $index, 0, '', CREATE_REQUEST), 'a row');
}
$count = 0;
$begun = hrtime(true);
set_at_once($clients, function () use (&$count): bool {
    return ++$count >= 800;
});
expect_same(true, hrtime(true) - $begun < 60e9, 'no set waits for a second');
expect_same(5, status_of(ask($clients[1001], 183)), 'not all is in safety');
expect_same(1, substr_count($agent->said(), 'cannot keep'), 'complaints');
end_agent($agent, 9);
expect_same([], glob("$directory/settings"), 'files');

// Room for a short file, and for some of a journal.
$agent = limited_agent(200);
make_rows($agent, 1001, 100);
expect_same(true, is_file("$directory/settings.journal"), 'there is a journal');
$client = client($agent);
$complaint = "rmon-agent: cannot keep the settings in $directory: File too large\n";
for ($n = 1; $n < 1000 && !str_contains($agent->said(), $complaint); $n++) {
    expect_same(NO_ERROR, set_ether($client, 1001, 0, "n$n", UNDER_CREATION), "set $n");
}
expect_same(1, substr_count($agent->said(), 'cannot keep'), "complaints in $n sets");
expect_same(NO_ERROR, set_ether($client, 1002, 0, 'behind it', UNDER_CREATION), 'a set after that');
expect_soon(0, fn() => status_of(ask($client, 183)), 'all is in safety again');
expect_same(1, substr_count($agent->said(), 'cannot keep'), 'complaints');
end_agent($agent, 9);

$agent = bundled_agent('--no-capture', '--state', $directory);
$client = client($agent);
expect_same('n' . $n - 1, ether_row($client, 1001)['Owner'], 'the set that could not be written at first');
expect_same('behind it', ether_row($client, 1002)['Owner'], 'the set after it');

agent_done($agent);
--EXPECT--
OK
