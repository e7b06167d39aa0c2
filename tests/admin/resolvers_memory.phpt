--TEST--
No memory for the name servers' list
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../exchange.inc';
require __DIR__ . '/../process.inc';

// The list takes 64 MB, in a process that may not grow by so much any more. A sanitizer would end the process there
// unless told otherwise; its report of that is expected.
$port = the_agent()->port;
$code = <<<CODE
    ini_set('rmon.default_port', '$port');
    \$link = rmon_connect('127.0.0.1');
    \$names = array_fill(0, 8 << 20, '10.1.2.3');
    preg_match('/^VmSize:\s+(\d+) kB$/m', file_get_contents('/proc/self/status'), \$found);
    exec('prlimit --as=' . ((int) \$found[1] + (32 << 10) << 10) . ' --pid ' . getmypid());
    var_dump(rmon_set_resolvers(\$link, \$names));
    CODE;
$options = ['ASAN_OPTIONS' => getenv('ASAN_OPTIONS') . ':allocator_may_return_null=1:log_path=/dev/null'];
[$output, $exit] = run_php($code, ['memory_limit' => -1, 'html_errors' => 0], $options);
expect_same(0, $exit);
expect_same("\nWarning: malloc failed!\n in Command line code on line 6\nbool(false)\n", $output);
expect_same([], the_agent()->calls());
done();
--EXPECT--
OK
