--TEST--
Saving captured packets may take longer than any other call
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$reply = record(lastPktIndex: u32(17), totalPktsSaved: u32(5));
$row = [0 => 5, 'totalPktsSaved' => 5, 1 => 17, 'lastPktIndex' => 17];
$started = microtime(true);
the_agent()->add(late(40.0, reply($reply)));
expect_result(fn() => rmon_capture_save_file(the_link(), 'file', 1, 2, 3, 4), $row);
expect_same(40, (int) round(microtime(true) - $started), 'seconds of the call');

done();
--EXPECT--
OK
