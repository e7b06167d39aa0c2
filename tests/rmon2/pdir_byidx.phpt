--TEST--
Protocol directory, by local index
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/pdir.inc';

// A failed call is not reported here.
check_row_readers(
    table: 'rmon_pdir_byidx',
    procedure: 20,
    row: protocol(0),
    label: null,
    keys: PDIR_BYIDX_KEYS,
);

// Rows without identifier, and without parameters.
foreach ([1, 2] as $i) {
    foreach (['rmon_pdir_byidx_get' => 1, 'rmon_pdir_byidx_getnext' => 2] as $function => $getType) {
        check_reply(
            function: $function,
            arguments: [-78],
            procedure: 20,
            request: record(index: i32(-78), getType: i32($getType)),
            reply: wire(protocol($i)),
            value: shown(protocol($i), PDIR_BYIDX_KEYS),
        );
    }
}

done();
--EXPECT--
OK
