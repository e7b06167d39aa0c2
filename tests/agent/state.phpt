--TEST--
Settings of the bundled agent survive a restart, and a kill at any moment
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$directory = sys_get_temp_dir() . '/rmon-state-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$lo = if_index('lo');

/** Starts the agent with the directory. */
function started(): BundledAgent
{
    global $directory;
    return bundled_agent('--state', $directory);
}

// Without a set nothing is written.
$agent = started();
expect_same([], glob("$directory/*"), 'files after a start');
$client = client($agent);
$own = array_keys(walk(fn($at) => ether_row($client, $at, GETNEXT), 'Index'));

// Texts, rows in both states, and a row of the agent's own that is gone.
expect_same(NO_ERROR, status_of(set_system($client, 'contact', 'name', 'location')), 'set of the texts');
expect_same(NO_ERROR, set_ether($client, 40000, $lo, 'works', CREATE_REQUEST), 'createRequest');
expect_same(NO_ERROR, set_ether($client, 40000, $lo, 'works', VALID), 'valid');
expect_same(NO_ERROR, set_ether($client, 40001, 0, str_repeat('w', 255), CREATE_REQUEST), 'createRequest');
expect_same(NO_ERROR, set_ether($client, $lo, 0, '', INVALID), 'invalid');
expect_same(["$directory/settings"], glob("$directory/*"), 'files');
expect_same('0600', sprintf('%04o', fileperms("$directory/settings") & 07777), 'who may read them');
$file = file_get_contents("$directory/settings");
expect_same(BAD_VALUE, set_ether($client, 40001, -1, '', UNDER_CREATION), 'a set that is refused');
expect_same($file, file_get_contents("$directory/settings"), 'the file after that');

// A second agent in the same directory.
[$code, $output, $errors] = run(agent_program(), '--port', '0', '--state', $directory);
expect_same([1, ''], [$code, $output], 'a second agent');
expect_same(true, str_ends_with($errors, "rmon-agent: $directory is in use by another agent\n"), $errors);

foreach ([15, 9] as $signal) {
    end_agent($agent, $signal);
    $agent = started();
    $client = client($agent);
    $texts = system_group($client);
    expect_same(
        ['contact', 'name', 'location'],
        [$texts['sysContact'], $texts['sysName'], $texts['sysLocation']],
        'texts',
    );
    $rows = array_map(
        fn($row) => [$row['DataSource'], $row['Owner'], $row['Status']],
        walk(fn($at) => ether_row($client, $at, GETNEXT), 'Index'),
    );
    expect_same([$lo, 'works', VALID], $rows[40000] ?? null, 'the valid row');
    expect_same([0, str_repeat('w', 255), UNDER_CREATION], $rows[40001] ?? null, 'the row under creation');
    expect_same([...array_diff($own, [$lo]), 40000, 40001], array_keys($rows), 'the rows');
}

// Killed in the middle of sets: what was answered is there, and nothing that was not sent.
for ($round = 0; $round < 8; $round++) {
    $sent = 0;
    $answered = 0;
    $delay = 0.02 + 0.007 * $round;
    $limit = microtime(true) + PATIENCE;
    while (microtime(true) < $limit) {
        $sent++;
        $request = record(
            u: text(''),
            t: u32(0),
            c: text("c$sent"),
            n: text("n$round"),
            l: text(''),
            o: text(''),
            s: i32(0),
        );
        if (@fwrite($client, marked(call(2, $request))) === false || message_from($client) === '') {
            break;
        }
        $answered = $sent;
        $killer ??= proc_open(['sh', '-c', "sleep $delay; kill -9 {$agent->pid()}"], [], $pipes, null, environment());
    }
    proc_close($killer);
    $killer = null;
    end_agent($agent, 9);
    $agent = started();
    $client = client($agent);
    $texts = system_group($client);
    $got = (int) substr($texts['sysContact'], 1);
    if ($answered === 0 || $texts['sysName'] !== "n$round" || $got < $answered || $got > $sent) {
        fail("round $round: $sent sent, $answered answered, the agent has $texts[sysContact] $texts[sysName]");
    }
}

// A new file that was not finished is ignored; a damaged one keeps the agent from starting, and stays as it is.
end_agent($agent, 9);
file_put_contents("$directory/settings.new", 'half');
$agent = started();
expect_same("n7", system_group(client($agent))['sysName'], 'sysName');
end_agent($agent);
$file = file_get_contents("$directory/settings");
$lines = substr_count($file, "\n");
$damaged = [
    [1, ''],
    [1, "rmon-agent settings 3\nend\n"],
    [2, "rmon-agent settings 2\nend\n"],
    [2, "rmon-agent settings 1\n"],
    [2, "rmon-agent settings 1\nno such part\nend\n"],
    [2, "rmon-agent settings 1\nsystem 0\nend\n"],
    [2, "rmon-agent settings 1\nsystem 00\nend\n"],
    [2, "rmon-agent settings 1\nsystem 0g\nend\n"],
    // A record that ends behind its first text, which was taken already.
    [2, "rmon-agent settings 1\nsystem 00000004" . bin2hex('text') . "0000\nend\n"],
    [$lines, substr($file, 0, -1)],
    [$lines, substr($file, 0, -4)],
    [$lines + 1, "$file\n"],
];
foreach ($damaged as [$line, $text]) {
    if ($line > $lines) {
        continue;
    }
    file_put_contents("$directory/settings", $text);
    [$code, , $errors] = run(agent_program(), '--port', '0', '--state', $directory);
    expect_same(1, $code, "exit code with line $line damaged");
    $message = "rmon-agent: $directory/settings is damaged in line $line\n";
    expect_same($message, strstr($errors, "rmon-agent: $directory"), 'what it says');
    expect_same($text, file_get_contents("$directory/settings"), 'the damaged file');
}
file_put_contents("$directory/settings", $file);

// A directory that can't be used.
[$code, , $errors] = run(agent_program(), '--port', '0', '--state', "$directory/settings/x");
expect_same([1, 1], [$code, substr_count($errors, 'Not a directory')], 'no directory');

agent_done(started());
--EXPECT--
OK
