--TEST--
Protocol directory, by identifier
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/pdir.inc';

const LABEL = 'addrmap_entry_get';

foreach ([0, 13, -1, -0x80000000, 0x7fffffff] as $answer) {
    check_reply(
        function: 'rmon_pdir_lastchange_get',
        arguments: [],
        procedure: 23,
        request: '',
        reply: i32($answer),
        value: $answer,
    );
}
check_function(
    function: 'rmon_pdir_lastchange_get',
    procedure: 23,
    sent: [],
    reply: i32(13),
    value: 13,
    label: null,
);

$long = range(1, 255);
$common = [
    'procedure' => 19,
    'row' => protocol(...),
    'label' => LABEL,
    'lists' => ['protocolDirID', 'protocolDirParameters'],
];
check_rows_reader(...$common, function: 'rmon_pdir_get', key: PDIR_KEY);
check_rows_reader(
    ...$common,
    function: 'rmon_pdir_getnext',
    key: with(PDIR_KEY, protocolDirID: $long, protocolDirParameters: [], getType: 2),
);
check_rows_reader(
    ...$common,
    function: 'rmon_pdir_getbulk',
    key: with(PDIR_KEY, protocolDirID: [], protocolDirParameters: $long, getType: 3),
);

// A reply with a text of more than 255 bytes is a failed call; byte lists may be longer than any address.
$get = fn(array $row, mixed $value, array $messages = []) =>
    expect_exchange(
        function: 'rmon_pdir_get',
        arguments: arguments_of(PDIR_KEY, argument_names(PDIR_KEY)),
        procedure: 19,
        request: wire(PDIR_KEY),
        step: reply(rows(wire($row))),
        value: $value,
        messages: $messages,
    );
foreach (['protocolDirDescr', 'protocolDirOwner'] as $text) {
    $undecoded = failure_report(LABEL, "Can't decode result");
    $get(with(protocol(0), ...[$text => str_repeat('m', 256)]), false, $undecoded);
}
$row = with(protocol(0), protocolDirID: array_map(fn(int $i) => $i % 256, range(0, 9999)));
$get($row, shown($row));

done();
--EXPECT--
OK
