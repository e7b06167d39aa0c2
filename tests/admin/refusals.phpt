--TEST--
Names and addresses that the system refuses to give
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_preloads();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../exchange.inc';
require __DIR__ . '/../process.inc';

/** What a call returns and reports where the system refuses. */
function expect_refused(string $call, mixed $value, array $messages = []): void
{
    $checks = var_export(dirname(__DIR__) . '/checks.inc', true);
    [$output] = run_php("require $checks; echo serialize(warnings(fn() => $call));", [], preloading('refusals'));
    expect_same(serialize([$value, array_map(fn(string $text) => [E_WARNING, $text], $messages)]), $output, $call);
}

expect_refused('rmon_gethostname()', false);
expect_refused('rmon_get_hostname()', '');
expect_refused('rmon_inet_ntop(AF_INET, [10, 1, 2, 3])', null, ['rmon_inet_ntop: inet_pton(AF_INET) failed!']);
expect_refused('rmon_inet_ntop(AF_INET6, [254, 128])', null, ['rmon_inet_ntop: inet_pton(AF_INET6) failed!']);
done();
--EXPECT--
OK
