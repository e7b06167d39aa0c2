--TEST--
Conversions and reports run code that closes links, opens others, calls back, throws, changes the arguments
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/hostile.inc';

/** What user code does when the module runs it: in a conversion to a text, and in an error handler. */
final class Behaviour
{
    public static ?Closure $what = null;
    private static int $depth = 0;
    public static int $runs = 0;
    public static int $opened = 0;

    /** The error handler. The engine takes it away while it runs: what is called in it is to have one, too. */
    public static function report(): bool
    {
        set_error_handler(self::report(...));
        self::run();
        return true;
    }

    public static function run(): void
    {
        if (self::$what !== null && self::$depth < 3) {
            self::$depth++;
            self::$runs++;
            try {
                (self::$what)();
            } finally {
                self::$depth--;
            }
        }
    }
}

/** Reports when it is converted to an integer, by way of the error handler; runs code when it becomes a text. */
final class Runs
{
    public function __toString(): string
    {
        Behaviour::run();
        return '127.0.0.1';
    }
}

hostile_test(function (): void {
    set_error_handler(Behaviour::report(...));
    foreach (functions() as $function => $parameters) {
        $arguments = [];
        $behaviours = [
            'close' => Link::close(...),
            'close and open' => function (): void {
                Link::close();
                Link::open();
            },
            'open another' => fn() => [
                Behaviour::$opened += is_resource(rmon_connect('127.1')) ? 1 : 0,
                rmon_pconnect('0x7f.1'),
            ],
            'close others' => function (): void {
                $link = rmon_connect('127.1');
                while (is_resource($link)) {
                    rmon_close($link);
                }
            },
            'call again' => function () use ($function, &$arguments): void {
                call($function, $arguments);
            },
            'call again with plain arguments' => function () use ($function, $parameters): void {
                $plain = plain_arguments($function, $parameters);
                call($function, $plain);
            },
            'throw' => fn() => throw new Thrown(),
            'call and throw' => function () use ($function, $parameters): void {
                $plain = plain_arguments($function, $parameters);
                call($function, $plain);
                throw new Thrown();
            },
            'change the arguments' => function () use (&$arguments): void {
                foreach ($arguments as &$argument) {
                    if (is_array($argument)) {
                        foreach ($argument as &$element) {
                            $element = str_repeat('changed', 3);
                        }
                        unset($element);
                    }
                    $argument = array_fill(0, 300, 'changed');
                }
            },
            'drop the arguments' => function () use (&$arguments): void {
                foreach (array_keys($arguments) as $i) {
                    $arguments[$i] = null;
                }
                $arguments = [];
            },
            'collect' => gc_collect_cycles(...),
        ];
        foreach ($behaviours as $what) {
            foreach ($parameters as $i => $parameter) {
                foreach ([new Runs(), [1, new Runs(), [2], 3]] as $value) {
                    if (leads_away($parameter, $value)) {
                        continue;
                    }
                    $arguments = plain_arguments($function, $parameters);
                    $arguments[$i] = $value;
                    Behaviour::$what = $what;
                    call($function, $arguments);
                    Behaviour::$what = null;
                }
            }
            // All at once, and arrays whose elements are references to each other's.
            $object = new Runs();
            $shared = [&$object, &$object, 5];
            foreach ($parameters === ['host'] ? [] : [$object, $shared, [$shared]] as $value) {
                $arguments = array_fill(0, count($parameters), $value);
                if (isset($parameters[0]) && $parameters[0] === 'connid') {
                    $arguments[0] = Link::open();
                }
                Behaviour::$what = $what;
                call($function, $arguments);
                Behaviour::$what = null;
            }
            unset($shared, $object);
        }
        $arguments = $behaviours = [];
    }
    restore_error_handler();
    expect_same(true, Behaviour::$runs > 10000, 'user code ran often');
    expect_same(true, Behaviour::$opened > 500, 'other links were opened');
});
?>
--EXPECT--
OK
