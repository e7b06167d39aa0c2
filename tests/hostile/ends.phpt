--TEST--
A conversion ends the request: by exit, by a fatal error; the next request works
--CONFLICTS--
appliance
--ENV--
USE_TRACKED_ALLOC=1
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/hostile.inc';

$agent = new AnsweringAgent('numbered');
$server = new OneProcessServer('
    require ' . var_export(__DIR__ . '/hostile.inc', true) . ';' . <<<'PHP'

    final class Ends
    {
        public static string $how;

        public static function now(): string
        {
            if (self::$how === 'exit') {
                exit('exit');
            }
            if (self::$how === 'exit from a call') {
                $arguments = plain_arguments('rmon_host_getbulk', array_pad(['connid'], 4, ''));
                call('rmon_host_getbulk', $arguments);
                exit('exit from a call');
            }
            restore_error_handler();
            trigger_error('fatal', E_USER_ERROR);
            return '';
        }

        public function __toString(): string
        {
            return self::now();
        }
    }

    ini_set('html_errors', '0');
    [$function, $i, Ends::$how] = explode(' ', $do, 3);
    $parameters = functions()[$function];
    if (Ends::$how === 'works') {
        $arguments = plain_arguments('rmon_host_getbulk', array_pad(['connid'], 4, ''));
        exit(count(rmon_host_getbulk(...$arguments)) . ' rows');
    }
    set_error_handler(static fn() => Ends::now());
    $arguments = plain_arguments($function, $parameters);
    $arguments[$i] = converts($function, $parameters[$i]) ? [7, new Ends(), 9] : new Ends();
    call($function, $arguments);
    echo 'went on';
    PHP, ['rmon.default_port' => $agent->port]);

$ended = 0;
$hows = ['exit', 'exit from a call', 'fatal'];
foreach (functions() as $function => $parameters) {
    foreach (array_keys($parameters) as $i) {
        $how = $hows[$ended % 3];
        $output = $server->request("$function $i $how");
        // An argument that is no array where one is expected is often not looked at.
        if (str_contains($output, 'went on')) {
            continue;
        }
        $ended++;
        if (!str_contains($output, $how)) {
            fail("$function, argument $i, $how: " . substr($output, 0, 300));
        }
    }
    if (!$server->is_running()) {
        fail("the server is gone after $function");
        break;
    }
}
expect_same('1 rows', $server->request('rmon_host_getbulk 0 works'), 'the next request');
expect_same(true, $ended > 800, "$ended requests ended in a conversion");
done();
?>
--EXPECT--
OK
