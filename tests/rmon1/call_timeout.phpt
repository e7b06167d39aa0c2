--TEST--
A call that isn't answered is given up after 25 seconds
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$started = microtime(true);
the_agent()->add(no_answer());
expect_result(fn() => rmon_capture_buf_get(the_link(), 1, 2), false, ['capture_buf_get: RPC: Timed out']);
expect_same(25, (int) round(microtime(true) - $started), 'seconds of the call');

done();
--EXPECT--
OK
