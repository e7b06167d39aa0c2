--TEST--
The information page, the version, the module's place in the engine
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$version = phpversion('rmon');
expect_same(1, preg_match('/^\d+\.\d+\.\d+$/', $version), 'the version names a release');

[$page, $code] = run_php('phpinfo(INFO_MODULES);', [], ['RMONRPC_PORT' => '7000']);
expect_same(0, $code, 'exit code');
$ours = <<<END
    rmon

    RMON Module => enabled
    Active Persistent Links => 0
    Active Links => 0

    Directive => Local Value => Master Value
    rmon.allow_persistent => On => On
    rmon.default_port => no value => no value
    rmon.max_links => Unlimited => Unlimited
    rmon.max_persistent => Unlimited => Unlimited

    Version => $version

    END;
expect_same(true, str_contains($page, $ours), "the page: $page");

[$page] = run_php('phpinfo(INFO_MODULES);', [
    'rmon.allow_persistent' => 0, 'rmon.max_links' => 7, 'rmon.max_persistent' => 3, 'rmon.default_port' => 1234,
]);
$directives = <<<END
    rmon.allow_persistent => Off => Off
    rmon.default_port => 1234 => 1234
    rmon.max_links => 7 => 7
    rmon.max_persistent => 3 => 3
    END;
expect_same(true, str_contains($page, $directives), "configured directives: $page");

// Why a connect failed is not in its warning: the page tells.
$port = dead_port();
[$page] = run_php('@rmon_connect("127.0.0.3"); phpinfo(INFO_MODULES);', ['rmon.default_port' => $port]);
$failure = "Version => $version\nLast Failed Connect => 127.0.0.3:$port: RPC: Remote system error - Connection refused\n";
expect_same(true, str_contains($page, $failure), "the reason: $page");

expect_same(['sockets' => 'Optional'], (new ReflectionExtension('rmon'))->getDependencies(), 'dependencies');
expect_same(['', 0], run_php('', []), 'the module prints nothing of its own');
done();
?>
--EXPECT--
OK
