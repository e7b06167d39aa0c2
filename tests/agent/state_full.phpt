--TEST--
A journal that can't be written: sets work all the same, one line tells, and the whole file has them
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/sets.inc';

$directory = sys_get_temp_dir() . '/rmon-full-' . getmypid();
$wrapper = "$directory-agent";
register_shutdown_function(fn() => [array_map(unlink(...), [$wrapper, ...glob("$directory/*")]), @rmdir($directory)]);

// Files end at 100 KiB; sh counts in blocks of 512 octets.
$program = agent_program();
file_put_contents($wrapper, "#!/bin/sh\ntrap '' XFSZ\nulimit -f 200\nexec $program \"\$@\"\n");
chmod($wrapper, 0700);
putenv("RMON_AGENT=$wrapper");
$agent = bundled_agent('--no-capture', '--state', $directory);
putenv("RMON_AGENT=$program");

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
