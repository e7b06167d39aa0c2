--TEST--
Protocol directory, by local index
--FILE--
<?php
require __DIR__ . '/pdir.inc';

$get = ['rmon_pdir_byidx_get', [77], 20, record(index: i32(77), getType: i32(1))];
$getnext = ['rmon_pdir_byidx_getnext', [-78], 20, record(index: i32(-78), getType: i32(2))];
foreach ([0, 1, 2] as $i) {
    check_reply($get, pdir_bytes($i), pdir_byidx_row($i));
    check_reply($getnext, pdir_bytes($i), pdir_byidx_row($i));
}

// A failed call is not reported here.
check_failures($get, null);
check_failures($getnext, null);
check_refused_reply($get, pdir_bytes(0, owner: str_repeat('m', 256)), null);

check_order(
    function: ['rmon_pdir_byidx_get', [], 20, record(index: i32(1), getType: i32(1))],
    kinds: ['int', 'int'],
    before: [1, 2],
    after: [],
    label: null,
);
done();
?>
--EXPECT--
OK
