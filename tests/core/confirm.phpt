--TEST--
confirm_rmon_compiled
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$text = 'Congratulations, you have successfully loaded module %s in PHP';
expect_result(fn () => confirm_rmon_compiled('rmon'), sprintf($text, 'rmon'));
expect_result(fn () => confirm_rmon_compiled(12), sprintf($text, '12'));
expect_result(fn () => confirm_rmon_compiled("a\0b"), sprintf($text, 'a'));
$long = str_repeat('m', 5000);
expect_result(fn () => confirm_rmon_compiled($long), sprintf($text, $long));
expect_result(fn () => confirm_rmon_compiled(), null, ['Wrong parameter count for confirm_rmon_compiled()']);
expect_result(fn () => confirm_rmon_compiled(1, 2), null, ['Wrong parameter count for confirm_rmon_compiled()']);

$number = 5;
confirm_rmon_compiled($number);
expect_same(5, $number, "the caller's variable");
done();
?>
--EXPECT--
OK
