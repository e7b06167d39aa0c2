--TEST--
SNMP communities
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../exchange.inc';

function community(int $status, string $text, int $privs): string
{
    return record(status: i32($status), communityString: text($text), privs: i32($privs));
}

$key = fn(string $text, int $getType, int $count) =>
    record(communityString: text($text), getType: i32($getType), count: i32($count));
$row = fn(int $i) => community(-$i, "community $i", -100 - $i);
$shown = fn(int $i) => [0 => -$i, 'status' => -$i, 'communityString' => "community $i", 'privs' => -100 - $i];

foreach (['get' => 1, 'getnext' => 2, 'getbulk' => 3] as $form => $getType) {
    $function = "rmon_community_$form";
    $count = $form === 'getbulk' ? [40] : [];
    $arguments = ['public', ...$count];
    $bytes = $key('public', $getType, $count[0] ?? 1);

    foreach ([0, 1, 3, 40] as $rows) {
        $answer = $count ? array_map($shown, range(0, max(0, $rows - 1))) : $shown(0);
        expect_exchange(
            function: $function,
            arguments: $arguments,
            procedure: 70,
            request: $bytes,
            step: reply(many_rows($rows, $row)),
            value: $rows ? $answer : false,
        );
    }
    $three = fragmented(many_rows(3, $row), 30);
    expect_exchange(
        function: $function,
        arguments: $arguments,
        procedure: 70,
        request: $bytes,
        step: $three,
        value: $count ? array_map($shown, [0, 1, 2]) : $shown(0),
    );

    foreach ([
        ['', ''], ["a\0b", 'a'], [17, '17'], [null, ''], [str_repeat('c', 255), str_repeat('c', 255)],
    ] as [$text, $sent]) {
        $bytes_of_text = $key($sent, $getType, $count[0] ?? 1);
        expect_exchange(
            function: $function,
            arguments: [$text, ...$count],
            procedure: 70,
            request: $bytes_of_text,
            step: reply(rows()),
            value: false,
        );
    }

    // The failures go by the name of another table.
    expect_failures(function: $function, arguments: $arguments, procedure: 70, request: $bytes, label: 'art_rpt_get');
    $broken = ["art_rpt_get: RPC: Can't decode result"];
    expect_exchange(
        function: $function,
        arguments: $arguments,
        procedure: 70,
        request: $bytes,
        step: reply(u32(2) . $row(0)),
        value: false,
        messages: $broken,
    );
    expect_exchange(
        function: $function,
        arguments: $arguments,
        procedure: 70,
        request: $bytes,
        step: reply(rows(community(0, str_repeat('c', 256), 1))),
        value: false,
        messages: $broken,
    );

    expect_counts($function, 1 + count($arguments), 1 + count($arguments));
    expect_links_only($function, [observed('Community'), ...$count]);
    $bytes = $key('Community', $getType, $count[0] ?? 1);
    $messages = [[E_USER_NOTICE, 'Community as text']];
    expect_exchange(
        function: $function,
        arguments: [observed('Community'), ...$count],
        procedure: 70,
        request: $bytes,
        step: reply(rows()),
        value: false,
        messages: $messages,
    );
    expect_too_long($function, [str_repeat('c', 256), ...$count], 'art_rpt_get');
}
// The count is converted first, the text behind the link's check.
expect_order('rmon_community_getbulk', ['Link', 'Community', 'Count'], ['Count', 'Link']);
expect_exchange(
    function: 'rmon_community_getbulk',
    arguments: ['c', '-5'],
    procedure: 70,
    request: $key('c', 3, -5),
    step: reply(rows()),
    value: false,
);
expect_exchange(
    function: 'rmon_community_getbulk',
    arguments: ['c', 0x100000007],
    procedure: 70,
    request: $key('c', 3, 7),
    step: reply(rows()),
    value: false,
);

// ---- writes

foreach ([1, 2] as $privs) {
    expect_answers(
        function: 'rmon_community_set',
        arguments: ['public', $privs],
        procedure: 71,
        request: community(0, 'public', $privs),
        label: 'community_set',
    );
}
expect_exchange(
    function: 'rmon_community_set',
    arguments: ["a\0b", '1'],
    procedure: 71,
    request: community(0, 'a', COMM_RO),
    step: reply(i32(0)),
    value: 0,
);
expect_exchange(
    function: 'rmon_community_set',
    arguments: [17, COMM_RW],
    procedure: 71,
    request: community(0, '17', 2),
    step: reply(i32(0)),
    value: 0,
);
expect_exchange(
    function: 'rmon_community_set',
    arguments: ['', true],
    procedure: 71,
    request: community(0, '', 1),
    step: reply(i32(0)),
    value: 0,
);
// Other rights are refused without a warning, before anything else is looked at.
foreach ([0, 3, -1, 4294967297, 'COMM_RW', null, [], 0.5] as $privs) {
    expect_no_call('rmon_community_set', [the_link(), 'public', $privs], false);
    expect_no_call('rmon_community_set', [NO_LINK, observed('Community'), $privs], false);
}
expect_counts('rmon_community_set', 3, 3);
expect_links_only('rmon_community_set', [observed('Community'), 1]);
expect_order('rmon_community_set', ['Link', 'Community', 'Rights'], ['Rights', 'Link']);

expect_answers(
    function: 'rmon_community_delete',
    arguments: ['public'],
    procedure: 71,
    request: community(0, 'public', 0),
    label: 'community_set',
);
expect_counts('rmon_community_delete', 2, 2);
expect_links_only('rmon_community_delete', [observed('Community')]);

// The texts are bounded.
foreach (['rmon_community_set' => [1], 'rmon_community_delete' => []] as $function => $others) {
    $sent = community(0, str_repeat('c', 255), $others[0] ?? 0);
    expect_exchange(
        function: $function,
        arguments: [str_repeat('c', 255), ...$others],
        procedure: 71,
        request: $sent,
        step: reply(i32(0)),
        value: 0,
    );
    expect_too_long($function, [str_repeat('c', 256), ...$others], 'community_set');
    expect_exchange(
        function: $function,
        arguments: ['c', ...$others],
        procedure: 71,
        request: community(0, 'c', $others[0] ?? 0),
        step: reply(i32(0)),
        value: 0,
    );
}
done();
--EXPECT--
OK
