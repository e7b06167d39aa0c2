--TEST--
Every argument of every function is a value of every type
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/hostile.inc';

hostile_test(function (): void {
    foreach (functions() as $function => $parameters) {
        foreach ($parameters as $i => $parameter) {
            with_values(function (string $name, mixed $value) use ($function, $parameters, $parameter, $i): void {
                if (!leads_away($parameter, $value)) {
                    $arguments = plain_arguments($function, $parameters);
                    $arguments[$i] = $value;
                    call_unharmed($function, $parameters, $arguments, "$parameter is $name");
                }
            });
        }
        // One variable in the place of all of them.
        with_values(function (string $name, mixed $value) use ($function, $parameters): void {
            $arguments = [];
            foreach ($parameters as $parameter) {
                $arguments[] = &$value;
                if (leads_away($parameter, $value)) {
                    return;
                }
            }
            call($function, $arguments);
        });
    }
});
?>
--EXPECT--
OK
