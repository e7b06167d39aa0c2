--TEST--
No memory for the name servers' list
--SKIPIF--
<?php
if (getenv('SKIP_ASAN')) {
    die("skip needs the engine's own allocator");
}
?>
--INI--
memory_limit=-1
--FILE--
<?php
require __DIR__ . '/../exchange.inc';

// The names' addresses take 64 MB, in a process that may not grow by so much any more.
$names = array_fill(0, 8 << 20, '10.1.2.3');
the_link();
$size = (int) preg_filter('/.*^VmSize:\s+(\d+) kB$.*/ms', '$1', file_get_contents('/proc/self/status')) << 10;
$limit = $size + (16 << 20);
exec('prlimit --as=' . $limit . ' --pid ' . getmypid(), $output, $exit);
expect_same([[], 0], [$output, $exit]);
expect_result(fn() => rmon_set_resolvers(the_link(), $names), false, ["malloc failed!\n"]);
unset($names);
expect_same([], the_agent()->calls());
done();
--EXPECT--
OK
