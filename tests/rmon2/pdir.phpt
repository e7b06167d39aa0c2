--TEST--
Protocol directory, by identifier
--FILE--
<?php
require __DIR__ . '/pdir.inc';

const LABEL = 'addrmap_entry_get';

check_integer(['rmon_pdir_lastchange_get', [], 23, ''], null);

$id = [0, 0, 0, 1, 0, 0, 8, 0];
$parameters = [0, 3];
$long = range(1, 255);
$get = ['rmon_pdir_get', [$id, $parameters], 19, pdir_key($id, $parameters, 1)];
$getnext = ['rmon_pdir_getnext', [$long, []], 19, pdir_key($long, [], 2)];
$getbulk = ['rmon_pdir_getbulk', [[], $long, 5], 19, pdir_key([], $long, 3, 5)];
check_first_row(function: $get, bytes: pdir_bytes(...), row: pdir_row(...), label: LABEL);
check_first_row(function: $getnext, bytes: pdir_bytes(...), row: pdir_row(...), label: LABEL);
check_all_rows(function: $getbulk, bytes: pdir_bytes(...), row: pdir_row(...), label: LABEL);

check_refused_reply($get, rows(pdir_bytes(0, description: str_repeat('m', 256))), LABEL);
check_refused_reply($get, rows(pdir_bytes(0, owner: str_repeat('m', 256))), LABEL);

// Byte lists longer than any address.
$bytes = array_map(fn(int $i) => $i % 256, range(0, 9999));
check_reply(
    $get,
    rows(str_replace(byte_list(identifier(0)), byte_list($bytes), pdir_bytes(0))),
    array_replace(pdir_row(0), ['protocolDirID' => $bytes]),
);

check_order(
    function: ['rmon_pdir_getbulk', [], 19, pdir_key([], [], 3)],
    kinds: ['int', 'list', 'list', 'int'],
    before: [4, 1],
    after: [],
    label: LABEL,
);
done();
?>
--EXPECT--
OK
