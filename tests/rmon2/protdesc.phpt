--TEST--
Descriptions of protocols, from a file under the test build's root
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$file = getenv('RMON_TEST_ROOT') . '/usr/local/norv/etc/pdstruct.txt';
@mkdir(dirname($file), 0777, true);
@unlink($file);

function macro(string $header, string $description): string
{
    return "$header\n    PARAMETERS { }\n    DESCRIPTION\n$description\n    REFERENCE \"none of this\"\n";
}

/** What the file must hold for a name to have this description. */
function expect_description(string $content, mixed $name, string|false $description): void
{
    global $file;
    file_put_contents($file, $content);
    expect_result(fn() => rmon_getprotdesc($name), $description);
}

expect_result(fn() => rmon_getprotdesc(), null, ['Wrong parameter count for rmon_getprotdesc()']);
expect_result(fn() => rmon_getprotdesc('ip', 'ip'), null, ['Wrong parameter count for rmon_getprotdesc()']);
expect_result(fn() => rmon_getprotdesc('ip'), false);

$ip = macro('ip PROTOCOL-IDENTIFIER', "        \"The Internet Protocol,\n         version 4.\"");
expect_description($ip, 'ip', ' The Internet Protocol, version 4.');
expect_description('', 'ip', false);
expect_description($ip, '', false);
expect_description($ip, null, false);
// A zero byte in a name is a character like others.
expect_description($ip, "ip\0six", false);
expect_description($ip, "ip\0", false);
expect_description($ip, "\0", false);
$zero = macro("ip\0six PROTOCOL-IDENTIFIER", '"before"') . macro('ip PROTOCOL-IDENTIFIER', '"behind"');
expect_description($zero, "ip\0six", 'before');
expect_description($zero, "ip\0sex", false);
expect_description($zero, 'ip', 'behind');
expect_description(macro("w-ether2\0 PROTOCOL-IDENTIFIER", '"a name of nine"'), "w-ether2\0", 'a name of nine');
expect_description($ip, 'i', false);
expect_description($ip, 'ip ', ' The Internet Protocol, version 4.');
expect_description($ip, 'IP', false);
expect_description($ip, 'p', false);
expect_description($ip, str_repeat('ip', 600), false);
expect_description(macro('17 PROTOCOL-IDENTIFIER', '"number"'), 17, 'number');

// The header: the name at the start of a line, blanks, the keyword; any text may follow.
$found = ['ip PROTOCOL-IDENTIFIER', 'ipPROTOCOL-IDENTIFIER', 'ip      PROTOCOL-IDENTIFIER ::= { x }',
    'ip PROTOCOL-IDENTIFIERS'];
foreach ($found as $header) {
    expect_description(macro($header, '"text"'), 'ip', 'text');
}
$others = [' ip PROTOCOL-IDENTIFIER', "ip\tPROTOCOL-IDENTIFIER", "ip\nPROTOCOL-IDENTIFIER", 'ip protocol-identifier',
    'ipx PROTOCOL-IDENTIFIER', '-- ip PROTOCOL-IDENTIFIER', 'ip PROTOCOL', 'ip'];
foreach ($others as $header) {
    expect_description(macro($header, '"text"'), 'ip', false);
}
$two = macro('tcp PROTOCOL-IDENTIFIER', '"the first"') . macro('udp PROTOCOL-IDENTIFIER', '"the second"');
expect_description($two, 'tcp', 'the first');
expect_description($two, 'udp', 'the second');
expect_description($two . macro('tcp PROTOCOL-IDENTIFIER', '"a later one"'), 'tcp', 'the first');

// The keyword may stand anywhere in a later line, whose rest doesn't count; it is looked for beyond the next header.
expect_description("ip PROTOCOL-IDENTIFIER\n\tmyDESCRIPTIONs \"not this\"\n\"but this\"\n", 'ip', 'but this');
expect_description("ip PROTOCOL-IDENTIFIER DESCRIPTION\n\"not this\"\nDESCRIPTION\n\"but this\"\n", 'ip', 'but this');
expect_description(
    "ip PROTOCOL-IDENTIFIER\nudp PROTOCOL-IDENTIFIER\nDESCRIPTION\n\"of udp\"\n", 'ip', 'of udp',
);
expect_description("ip PROTOCOL-IDENTIFIER\n\"no keyword\"\n", 'ip', false);

// The text: up to the second quote, the first one left out.
$text = fn(string $lines, string|false $description)
    => expect_description("ip PROTOCOL-IDENTIFIER\nDESCRIPTION\n$lines", 'ip', $description);
$text('""', '');
$text('"ends without a line break"', 'ends without a line break');
$text('before "and inside" and behind', 'before and inside');
$text("   \t  \"a\tb\"", " \t a\tb");
$text('"  many    blanks  "', ' many blanks ');
$text("    \"    quote between blanks\"", ' quote between blanks');
$text("\"line\nbreaks\n\nvanish\"", 'linebreaksvanish');
$text("\"one \n two\n   three \n\n    four\"", 'one two three four');
$text("\"carriage\r\nreturns stay\"", "carriage\rreturns stay");
$text("\"zero byte\0unseen\nnext line\"", 'zero bytenext line');
$text("\"grüß\xff\"", "grüß\xff");
$text('"never closed', false);
$text('no quotes at all', false);
$text('', false);

// At most 1023 bytes; a longer text is cut, wherever its closing quote is.
$text('"' . str_repeat('m', 1022) . '"', str_repeat('m', 1022));
$text('"' . str_repeat('m', 1023) . '"', str_repeat('m', 1023));
$text('"' . str_repeat('m', 1024) . '"', str_repeat('m', 1023));
$text('"' . str_repeat('m', 5000), str_repeat('m', 1023));
$text(str_repeat("many short lines\n", 200), substr(str_repeat('many short lines', 200), 0, 1023));
$text('"' . str_repeat('    ', 3000) . 'far away"', ' far away');
$text(str_repeat('m', 1023), str_repeat('m', 1023));
$text(str_repeat('m', 1022), false);

// A line is read in pieces of 1023 bytes, each of which is a line of its own to the search.
$filler = fn(int $length) => str_repeat('-', $length);
expect_description($filler(1023) . macro('ip PROTOCOL-IDENTIFIER', '"in a second piece"'), 'ip', 'in a second piece');
expect_description($filler(1022) . macro('ip PROTOCOL-IDENTIFIER', '"elsewhere"'), 'ip', false);
expect_description($filler(1024) . macro('ip PROTOCOL-IDENTIFIER', '"elsewhere"'), 'ip', false);
expect_description('ip' . str_repeat(' ', 1021) . "PROTOCOL-IDENTIFIER\nDESCRIPTION\n\"x\"", 'ip', false);
expect_description('ip' . str_repeat(' ', 1002) . "PROTOCOL-IDENTIFIER\nDESCRIPTION\n\"x\"", 'ip', 'x');
expect_description('ip' . str_repeat(' ', 1003) . "PROTOCOL-IDENTIFIER\nDESCRIPTION\n\"x\"", 'ip', false);
expect_description("ip PROTOCOL-IDENTIFIER\n" . $filler(1020) . "DESCRIPTION\nDESCRIPTION\n\"x\"\n", 'ip', 'x');
expect_description(
    "ip PROTOCOL-IDENTIFIER\nDESCRIPTION" . str_repeat(' ', 1012) . "behind \"it\"\n", 'ip', 'behind it',
);
$name = str_repeat('n', 1003);
expect_description(macro("$name PROTOCOL-IDENTIFIER", '"long"'), $name, 'long');
expect_description(macro("n$name PROTOCOL-IDENTIFIER", '"long"'), "n$name", false);
$name = str_repeat('n', 1023);
expect_description(macro("{$name}PROTOCOL-IDENTIFIER", '"long"'), $name, false);

// One name never has a description, and asking for it leaves the script's text alone.
$ether2 = macro('ether2 PROTOCOL-IDENTIFIER', '"frames"') . macro('w-ether2 PROTOCOL-IDENTIFIER', '"wild"');
expect_description($ether2, 'ether2', 'frames');
expect_description($ether2, 'w-ether2', false);
$name = implode('-', ['w', 'ether2']);
$copy = $name;
expect_result(fn() => rmon_getprotdesc($name), false);
expect_same(['w-ether2', 'w-ether2'], [$name, $copy], "the script's text");
expect_description(macro("ether2\0002PROTOCOL-IDENTIFIER", '"zero"'), 'w-ether2', false);
expect_description(macro('w-ether2x PROTOCOL-IDENTIFIER', '"longer"'), 'w-ether2x', 'longer');

// What can't be read has no descriptions; nothing stays open.
$open = fn() => count(scandir('/proc/self/fd'));
$before = $open();
for ($i = 0; $i < 50; $i++) {
    expect_description($ip, 'ip', ' The Internet Protocol, version 4.');
    expect_description($ip, 'none', false);
    $text('"never closed', false);
    $text('"' . str_repeat('m', 1024), str_repeat('m', 1023));
    expect_description("ip PROTOCOL-IDENTIFIER\n", 'ip', false);
}
unlink($file);
mkdir($file);
for ($i = 0; $i < 50; $i++) {
    expect_result(fn() => rmon_getprotdesc('ip'), false);
}
rmdir($file);
expect_result(fn() => rmon_getprotdesc('ip'), false);
expect_same($before, $open(), 'number of open files');

// Other conversions of the name.
file_put_contents($file, macro('Array PROTOCOL-IDENTIFIER', '"by its name"'));
expect_result(fn() => rmon_getprotdesc([]), 'by its name', ['Array to string conversion']);
unlink($file);
done();
?>
--EXPECT--
OK
