--TEST--
Speeds on the page: the largest value that an agent can state means that the speed is unknown
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/agent.inc';
require __DIR__ . '/../script/page/tables.php';

expect_same('-', bits_per_second(0), 'unknown');
expect_same('999 bit/s', bits_per_second(999), 'bits');
expect_same('100 Mbit/s', bits_per_second(100_000_000), 'megabits');
expect_same('4.2 Gbit/s', bits_per_second(4_200_000_000), 'gigabits');
expect_same('over 4.2 Gbit/s', bits_per_second(0xffffffff), 'more than fits, as of an interface at 10 Gbit/s');
done();
--EXPECT--
OK
