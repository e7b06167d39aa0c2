--TEST--
The name servers that the appliance asks
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/appliance.inc';

put_plain_settings();
$resolvers = fn(int $status, array $names) => record(
    status: i32($status),
    resolvers: many_rows(count($names), fn(int $i) => text(array_values($names)[$i])),
);
$names = fn(int $count) => array_map(fn(int $i) => "10.1.2.$i", $count ? range(1, $count) : []);

// ---- rmon_get_resolvers: the status is not shown

$function = 'rmon_get_resolvers';
foreach ([0, 1, 3, 40] as $count) {
    foreach ([0, -9] as $status) {
        expect_exchange(
            function: $function,
            arguments: [],
            procedure: 66,
            request: '',
            step: reply($resolvers($status, $names($count))),
            value: $names($count),
        );
    }
}
$odd = ['', "a\0b", str_repeat('n', 255), "\xff"];
expect_exchange(
    function: $function,
    arguments: [],
    procedure: 66,
    request: '',
    step: fragmented($resolvers(0, $odd), 50),
    value: ['', 'a', str_repeat('n', 255), "\xff"],
);
$broken = ["$function: RPC: Can't decode result"];
expect_exchange(
    function: $function,
    arguments: [],
    procedure: 66,
    request: '',
    step: reply($resolvers(0, ['a', str_repeat('n', 256), 'b'])),
    value: false,
    messages: $broken,
);
expect_exchange(
    function: $function,
    arguments: [],
    procedure: 66,
    request: '',
    step: reply(i32(0) . u32(0xffffffff) . text('a')),
    value: false,
    messages: $broken,
);
expect_failures(function: $function, arguments: [], procedure: 66, request: '', label: $function);
expect_counts($function, 1, 1);
expect_links_only($function, []);
expect_order($function, ['Link'], ['Link']);

// ---- rmon_set_resolvers: strings only, in the array's own order

$function = 'rmon_set_resolvers';
expect_answers(
    function: $function,
    arguments: [['10.1.2.3', 'ns']],
    procedure: 67,
    request: $resolvers(0, ['10.1.2.3', 'ns']),
    label: $function,
);
foreach ([0, 1, 3, 40, 300] as $count) {
    expect_exchange(
        function: $function,
        arguments: [$names($count)],
        procedure: 67,
        request: $resolvers(0, $names($count)),
        step: reply(i32(0)),
        value: 0,
    );
}
$second = 'second';
$lists = [
    [[5 => 'x', 1 => 'y', 'k' => 'z'], ['x', 'y', 'z']],
    [['first', &$second], ['first', 'second']],
    [['', "a\0b", '7', "\xff"], ['', 'a', '7', "\xff"]],
    [[str_repeat('n', 255)], [str_repeat('n', 255)]],
];
foreach ($lists as [$passed, $sent]) {
    expect_exchange(
        function: $function,
        arguments: [$passed],
        procedure: 67,
        request: $resolvers(0, $sent),
        step: reply(i32(0)),
        value: 0,
    );
}
foreach ([7, 1.5, null, true, ['x'], observed('Name')] as $element) {
    foreach ([[$element], ['a', $element, 'b'], ['a', 'b', &$element]] as $list) {
        expect_no_call($function, [the_link(), $list], false, ['unexpected error']);
    }
}
foreach (['10.1.2.3', 7, null, observed('Names')] as $no_array) {
    expect_no_call($function, [the_link(), $no_array], false, ['Expected array as second parameter']);
}
expect_counts($function, 2, 2);
expect_links_only($function, [[7]]);
expect_links_only($function, ['no array']);
expect_order($function, ['Link', '[Name]'], ['Link']);

expect_too_long($function, [['a', str_repeat('n', 256)]], $function);
expect_exchange(
    function: $function,
    arguments: [['a']],
    procedure: 67,
    request: $resolvers(0, ['a']),
    step: reply(i32(0)),
    value: 0,
);
clear_appliance();
done();
--EXPECT--
OK
