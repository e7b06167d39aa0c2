--TEST--
A kill in front of any call to the disk leaves what the bundled agent answered, also while a new settings file takes its journal's place
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
needs_preloads();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/sets.inc';

$directory = sys_get_temp_dir() . '/rmon-steps-' . getmypid();
$first = "$directory-first";
foreach ([$directory, $first] as $made) {
    mkdir($made);
    register_shutdown_function(fn() => [array_map(unlink(...), glob("$made/*")), @rmdir($made)]);
}

/** The row that is set. */
const ROW = 2000;

function set_row(mixed $client, int $number): bool
{
    fwrite($client, ether_call(ROW, (string) $number, UNDER_CREATION));
    $message = message_from($client);
    if ($message !== '') {
        expect_same(NO_ERROR, status_of($message), "set $number");
    }
    return $message !== '';
}

// A settings file and a journal to begin with.
$agent = bundled_agent('--state', $first);
make_rows($agent, ROW, ROWS_OF_A_JOURNAL);
expect_same(true, set_row(client($agent), 1), 'a set for the journal');
end_agent($agent, 9);
expect_same(true, is_file("$first/settings.journal"), 'there is a journal');

$preload = getenv('RMON_TEST_PRELOADS') . '/last_disk_call.so';
$answers = [];
for ($last = 1, $code = -1; $code !== 0 && $last <= 100; $last++) {
    array_map(unlink(...), glob("$directory/*"));
    foreach (['settings', 'settings.journal'] as $name) {
        copy("$first/$name", "$directory/$name");
    }
    $agent = bundled_agent_in(
        [
            'LD_PRELOAD' => $preload,
            'RMON_LAST_DISK_CALL' => (string) $last,
            // The sanitizers' runtime otherwise wants to be the first library.
            'ASAN_OPTIONS' => getenv('ASAN_OPTIONS') . ':verify_asan_link_order=0',
        ],
        '--state',
        $directory,
    );
    // Of these the first one makes a new settings file, since there is a journal, the second one a new journal, the
    // third one makes it longer; the end makes the next settings file.
    $client = client($agent);
    for ($answered = 1; $answered < 4 && set_row($client, $answered + 1); $answered++);
    $code = end_agent($agent);
    $answers[] = $answered;

    $agent = bundled_agent('--state', $directory);
    $client = client($agent);
    $got = (int) ether_row($client, ROW)['Owner'];
    $allowed = [$answered, min($answered + 1, 4)];
    expect_same(true, in_array($got, $allowed, true), "disk call $last: $got after an answer to $answered");
    expect_same(ROW + ROWS_OF_A_JOURNAL - 1, ether_row($client, ROW + ROWS_OF_A_JOURNAL - 1)['Index'], 'the last row');
    expect_same(true, set_row($client, 5), 'a set after it');
    expect_same(0, end_agent($agent), "the agent's exit code");
}
// File: an old one removed, made, written in two steps, synced, renamed, directory synced, journal removed.
// Journal: an old one removed, made, written in two steps, synced, directory synced; then written in two, synced.
expect_same([1 => 8, 2 => 6, 3 => 3, 4 => 8 + 1], array_count_values($answers), 'calls to the disk by answers before them');
done();
?>
--EXPECT--
OK
