--TEST--
No damage of the settings file goes unnoticed; files of the older form are read; links in its place are not followed
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$directory = sys_get_temp_dir() . '/rmon-damage-' . getmypid();
mkdir($directory);
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$settings = "$directory/settings";
$lo = if_index('lo');

function started(): BundledAgent
{
    global $directory;
    return bundled_agent('--no-capture', '--state', $directory);
}

/** A start that fails: the one line about the file. */
function complaint(): string
{
    global $directory, $settings;
    $before = is_link($settings) ? null : file_get_contents($settings);
    [$code, $output, $errors] = run(agent_program(), '--port', '0', '--no-capture', '--state', $directory);
    expect_same([1, ''], [$code, $output], 'exit code and output');
    expect_same(true, is_link($settings) || file_get_contents($settings) === $before, 'the file stays as it is');
    return (string) strstr($errors, "rmon-agent: $settings");
}

/** Rows of the Ethernet statistics as a client sees them. */
function ether_rows(BundledAgent $agent): array
{
    $client = client($agent);
    return array_map(
        fn($row) => [$row['DataSource'], $row['Owner'], $row['Status']],
        walk(fn($at) => ether_row($client, $at, GETNEXT), 'Index'),
    );
}

/** An Ethernet statistics record of the file, byte by byte as it is on the wire. */
$row = fn(int $index, int $source, string $owner, int $status): string => bin2hex(record(
    status: u32(0), index: u32($index), source: u32($source), counters: str_repeat("\0", 17 * 8), owner: text($owner),
    rowStatus: u32($status), droppedFrames: str_repeat("\0", 8), createTime: u32(0),
));
$texts = bin2hex(record(
    u: text(''),
    t: u32(0),
    c: text('me'),
    n: text('probe'),
    l: text('here'),
    o: text(''),
    s: u32(0),
));

// What an older agent wrote, without check values; the next set writes the form of today.
$old = "rmon-agent settings 1\nsystem\nsystem $texts\netherStats\netherStats {$row(7, $lo, 'old', VALID)}\n"
    . "etherStats {$row(8, 0, 'older', UNDER_CREATION)}\nend\n";
file_put_contents($settings, $old);
$agent = started();
expect_same([7 => [$lo, 'old', VALID], 8 => [0, 'older', UNDER_CREATION]], ether_rows($agent), 'rows of an older file');
expect_same('probe', system_group(client($agent))['sysName'], 'texts of an older file');
expect_same($old, file_get_contents($settings), 'the older file after the start');
expect_same(NO_ERROR, set_ether(client($agent), 9, $lo, 'new', CREATE_REQUEST), 'a set');
end_agent($agent);
$file = file_get_contents($settings);
expect_same("rmon-agent settings 2\n", substr($file, 0, 22), 'the opening of the file of today');
$agent = started();
expect_same(
    [7 => [$lo, 'old', VALID], 8 => [0, 'older', UNDER_CREATION], 9 => [$lo, 'new', UNDER_CREATION]],
    ether_rows($agent),
    'rows',
);
end_agent($agent);

// Each line has its check value, the last one that of the whole text. The value is worked out here bit by bit.
$crc = function (string $text): string {
    $value = 0xffffffff;
    foreach (str_split($text) as $byte) {
        $value ^= ord($byte);
        for ($bit = 0; $bit < 8; $bit++) {
            $value = $value & 1 ? $value >> 1 ^ 0x82f63b78 : $value >> 1;
        }
    }
    return sprintf('%08x', $value ^ 0xffffffff);
};
expect_same('e3069283', $crc('123456789'), 'the published value');
$lines = explode("\n", rtrim($file, "\n"));
foreach (array_slice($lines, 1, -1) as $line) {
    expect_same($crc(substr($line, 0, -9)), substr($line, -8), "check value of $line");
}
expect_same('end ' . $crc(substr($file, 0, strrpos($file, ' '))), end($lines), 'the last line');

// One flipped bit anywhere, a line less, a line twice, two lines changed over: each keeps the agent from starting.
for ($i = 0; $i < 40; $i++) {
    $bit = intdiv($i * strlen($file) * 8, 40) + $i % 8;
    $damaged = $file;
    $damaged[$bit >> 3] = chr(ord($damaged[$bit >> 3]) ^ 1 << ($bit & 7));
    file_put_contents($settings, $damaged);
    expect_same(1, preg_match('/ is damaged in line \d+\n$/D', complaint()), "bit $bit");
}
foreach ([1, 2, 20, count($lines) - 2] as $at) {
    foreach ([[$lines[$at], $lines[$at]], [], [$lines[$at + 1], $lines[$at]]] as $instead) {
        $changed = $lines;
        array_splice($changed, $at, count($instead) === 2 && $instead[0] !== $instead[1] ? 2 : 1, $instead);
        file_put_contents($settings, implode("\n", $changed) . "\n");
        expect_same(1, preg_match('/ is damaged in line \d+\n$/D', complaint()), "line $at changed");
    }
}

// A record that can be read but not be set is not dropped either.
foreach ([
    [3, "rmon-agent settings 1\netherStats\netherStats {$row(0, $lo, '', VALID)}\nend\n"],
    [4, "rmon-agent settings 1\netherStats\netherStats {$row(5, $lo, '', VALID)}\netherStats {$row(5, 0, '', VALID)}\nend\n"],
] as [$line, $text]) {
    file_put_contents($settings, $text);
    expect_same("rmon-agent: $settings has in line $line what can't be set\n", complaint(), 'a row that is refused');
}

// Links.
rename($settings, "$directory/elsewhere");
file_put_contents("$directory/elsewhere", $file);
symlink("$directory/elsewhere", $settings);
expect_same('', complaint(), 'a link in the place of the file');
[, , $errors] = run(agent_program(), '--port', '0', '--no-capture', '--state', $directory);
expect_same(1, preg_match("#^rmon-agent: cannot read $settings: .+\n$#Dm", $errors), "what is said of a link: $errors");
unlink($settings);
symlink("$directory/victim", "$directory/settings.new");
file_put_contents("$directory/victim", 'untouched');
$agent = started();
expect_same(NO_ERROR, set_ether(client($agent), 9, $lo, '', CREATE_REQUEST), 'a set');
expect_same('untouched', file_get_contents("$directory/victim"), 'the file that a link named');
expect_same([false, true], [is_link($settings), is_file($settings)], 'the settings');

agent_done($agent);
?>
--EXPECT--
OK
