--TEST--
The appliance's identity, from its settings file, and this machine's name
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/appliance.inc';

const READ = 'return [norv_target_id(), norv_prod_no(), norv_prod_descr()];';

/** Code, what it returns and the warnings that it gives, in a process of its own. */
function expect_in_new_process(string $code, mixed $value, array $messages = []): void
{
    [$got, $reported] = in_new_process("return warnings(function () { $code });");
    expect_same($value, $got, 'result');
    expect_same(array_map(fn(string $text) => [E_WARNING, $text], $messages), $reported, 'list of messages');
}

/** What a file of these contents makes of the platform code, the product's number and its description. */
function expect_settings(string $contents, int $target, string $number = '', string $description = ''): void
{
    put_file(SETTINGS, $contents);
    expect_in_new_process(READ, [$target, $number, $description]);
}

expect_settings("NORV_TARGET_ID=7\nNORV_PROD_NO=\"RM-100\"\nNORV_PROD_DESCR=\"A probe\"\n", 7, 'RM-100', 'A probe');
expect_settings("# x\n\nNORV_PROD_DESCR=\"d\"\nother=1\nNORV_PROD_NO=\"n\"\nNORV_TARGET_ID=0\n", 0, 'n', 'd');
expect_settings('', -1);

// The code is a number as scanf reads it.
foreach (['=5' => 5, '= 6' => 6, '=4junk' => 4, '=+3' => 3, '=007' => 7, '=-3' => -3] as $code => $target) {
    expect_settings("NORV_TARGET_ID$code\n", $target);
}
foreach ([
    ' NORV_TARGET_ID=5', 'NORV_TARGET_ID =5', 'NORV_TARGET_ID="5"', 'norv_target_id=5', 'NORV_TARGET_ID=',
] as $line) {
    expect_settings("$line\n", -1);
}
expect_settings('NORV_TARGET_ID=6', 6);

// A text's first character goes, whatever it is; a quote goes with what follows it where it is the next to last.
$values = [
    "\"ab\"\n" => 'ab',
    "\"a\"b\"\n" => 'a"b',
    "ab\n" => "b\n",
    "\"ab\n" => "ab\n",
    "ab\"\n" => 'b',
    "\"\"\n" => '',
    "\"\n" => "\n",
    "\n" => '',
    "\"a\" \n" => "a\" \n",
    "\"ab\"\r\n" => "ab\"\r\n",
    "\"ab\";" => 'ab',
    "\"ab\"" => 'ab"',
    "\"" => '',
    '' => '',
    "\"a\0b\"\n" => 'a',
    "\"\xc3\xa4\"\n" => "\xc3\xa4",
];
foreach ($values as $value => $shown) {
    expect_settings("NORV_TARGET_ID=1\nNORV_PROD_NO=$value", 1, $shown);
    expect_settings("NORV_TARGET_ID=1\nNORV_PROD_DESCR=$value", 1, '', $shown);
}
expect_settings("NORV_TARGET_ID=1\n NORV_PROD_NO=\"ab\"\nXNORV_PROD_DESCR=\"cd\"\nNORV_PROD_NO=\"", 1);

// Later lines win, and of what they replace nothing is left.
expect_settings("NORV_TARGET_ID=3\nNORV_PROD_NO=\"long one\"\nNORV_PROD_NO=\"x\"\nNORV_TARGET_ID=4\n", 4, 'x');
expect_settings("NORV_PROD_DESCR=\"long one\"\nNORV_PROD_DESCR=\"\"\nNORV_TARGET_ID=4\n", 4);
expect_settings("NORV_TARGET_ID=4\nNORV_PROD_NO=\"long one\"\nNORV_PROD_NO=ab\n", 4, "b\n");
expect_settings("NORV_TARGET_ID=4\nNORV_PROD_DESCR=\"long one\"\nNORV_PROD_DESCR=\n", 4);

// A line is read 254 characters at a time, and each piece is a line.
foreach (['NORV_PROD_NO=' => 1, 'NORV_PROD_DESCR=' => 2] as $key => $place) {
    $fits = 254 - strlen($key) - strlen("\"\"\n");
    $cases = [
        [$fits, str_repeat('a', $fits)],
        [$fits + 1, str_repeat('a', $fits + 1) . '"'],
        [$fits + 2, str_repeat('a', $fits + 2)],
        [$fits + 500, str_repeat('a', $fits + 2)],
    ];
    foreach ($cases as [$length, $shown]) {
        $texts = [1 => '', ''];
        $texts[$place] = $shown;
        expect_settings("NORV_TARGET_ID=1\n$key\"" . str_repeat('a', $length) . "\"\n", 1, ...array_values($texts));
    }
}
expect_settings(str_repeat('.', 254) . "NORV_TARGET_ID=2\n" . str_repeat('.', 508) . "NORV_PROD_NO=\"n\"\n", 2, 'n');
expect_settings(str_repeat('.', 253) . "NORV_TARGET_ID=2\n", -1);
expect_settings('NORV_PROD_NO="' . str_repeat('a', 240) . "NORV_TARGET_ID=6\n", 6, str_repeat('a', 240));

// Without a file: reported at each call.
clear_appliance();
$unreadable = 'unable to read norv_settings file!';
expect_in_new_process(READ, [-1, '', ''], array_fill(0, 3, $unreadable));
$file = var_export(appliance(SETTINGS), true);

// Read again until a code was found, and never after.
$code = <<<CODE
    \$seen = [norv_target_id()];
    foreach (["NORV_PROD_NO=\\"1\\"\\n", "NORV_TARGET_ID=-2\\nNORV_PROD_DESCR=\\"d\\"\\n", "NORV_TARGET_ID=5\\n",
        "NORV_TARGET_ID=6\\nNORV_PROD_NO=\\"2\\"\\n"] as \$contents) {
        file_put_contents($file, \$contents);
        array_push(\$seen, norv_prod_no(), norv_prod_descr(), norv_target_id());
    }
    unlink($file);
    return [...\$seen, norv_target_id(), norv_prod_no()];
    CODE;
expect_in_new_process($code, [-1, '1', '', -1, '1', 'd', -2, '1', 'd', 5, '1', 'd', 5, 5, '1'], [$unreadable]);

// 0 is a code like any other.
put_file(SETTINGS, "NORV_TARGET_ID=0\n");
$code = "\$seen = norv_target_id(); file_put_contents($file, \"NORV_TARGET_ID=5\\n\"); return [\$seen, norv_target_id()];";
expect_in_new_process($code, [0, 0]);

// Each of them reads the file by itself, and none looks at arguments.
put_file(SETTINGS, "NORV_PROD_NO=\"no\"\nNORV_PROD_DESCR=\"descr\"\nNORV_TARGET_ID=3\n");
foreach (['norv_target_id' => 3, 'norv_prod_no' => 'no', 'norv_prod_descr' => 'descr'] as $function => $value) {
    expect_in_new_process("return $function();", $value);
    expect_in_new_process("return $function(1, [2], null);", $value);
}

// The warning may become an exception, in the middle of the call.
clear_appliance();
$code = <<<'CODE'
    set_error_handler(fn(int $level, string $text) => throw new Exception($text));
    try {
        norv_prod_no();
    } catch (Exception $thrown) {
        return $thrown->getMessage();
    }
    CODE;
expect_in_new_process($code, $unreadable);

foreach (['rmon_gethostname', 'rmon_get_hostname'] as $function) {
    expect_no_call($function, [], gethostname());
    expect_no_call($function, [NO_LINK, []], gethostname());
}
clear_appliance();
done();
--EXPECT--
OK
