--TEST--
SNMP communities
--FILE--
<?php
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
        expect_exchange($function, $arguments, 70, $bytes, reply(many_rows($rows, $row)), $rows ? $answer : false);
    }
    $three = fragmented(many_rows(3, $row), 30);
    expect_exchange($function, $arguments, 70, $bytes, $three, $count ? array_map($shown, [0, 1, 2]) : $shown(0));

    foreach ([['', ''], ["a\0b", 'a'], [17, '17'], [null, ''], [str_repeat('c', 255), str_repeat('c', 255)]] as [$text, $sent]) {
        $bytes_of_text = $key($sent, $getType, $count[0] ?? 1);
        expect_exchange($function, [$text, ...$count], 70, $bytes_of_text, reply(rows()), false);
    }

    // The failures go by the name of another table.
    expect_failures($function, $arguments, 70, $bytes, 'art_rpt_get');
    $broken = ["art_rpt_get: RPC: Can't decode result"];
    expect_exchange($function, $arguments, 70, $bytes, reply(u32(2) . $row(0)), false, $broken);
    expect_exchange($function, $arguments, 70, $bytes, reply(rows(community(0, str_repeat('c', 256), 1))), false, $broken);

    expect_counts($function, 1 + count($arguments), 1 + count($arguments));
    expect_links_only($function, [observed('Community'), ...$count]);
    $bytes = $key('Community', $getType, $count[0] ?? 1);
    $messages = [[E_USER_NOTICE, 'Community as text']];
    expect_exchange($function, [observed('Community'), ...$count], 70, $bytes, reply(rows()), false, $messages);
    expect_too_long($function, [str_repeat('c', 256), ...$count], 'art_rpt_get');
}
// The count is converted first, the text behind the link's check.
expect_order('rmon_community_getbulk', ['Link', 'Community', 'Count'], ['Count', 'Link']);
expect_exchange('rmon_community_getbulk', ['c', '-5'], 70, $key('c', 3, -5), reply(rows()), false);
expect_exchange('rmon_community_getbulk', ['c', 0x100000007], 70, $key('c', 3, 7), reply(rows()), false);

// ---- writes

foreach ([1, 2] as $privs) {
    expect_answers('rmon_community_set', ['public', $privs], 71, community(0, 'public', $privs), 'community_set');
}
expect_exchange('rmon_community_set', ["a\0b", '1'], 71, community(0, 'a', COMM_RO), reply(i32(0)), 0);
expect_exchange('rmon_community_set', [17, COMM_RW], 71, community(0, '17', 2), reply(i32(0)), 0);
expect_exchange('rmon_community_set', ['', true], 71, community(0, '', 1), reply(i32(0)), 0);
// Other rights are refused without a word, before anything else is looked at.
foreach ([0, 3, -1, 4294967297, 'COMM_RW', null, [], 0.5] as $privs) {
    expect_no_call('rmon_community_set', [the_link(), 'public', $privs], false);
    expect_no_call('rmon_community_set', [NO_LINK, observed('Community'), $privs], false);
}
expect_counts('rmon_community_set', 3, 3);
expect_links_only('rmon_community_set', [observed('Community'), 1]);
expect_order('rmon_community_set', ['Link', 'Community', 'Rights'], ['Rights', 'Link']);

expect_answers('rmon_community_delete', ['public'], 71, community(0, 'public', 0), 'community_set');
expect_counts('rmon_community_delete', 2, 2);
expect_links_only('rmon_community_delete', [observed('Community')]);

// The texts are bounded.
foreach (['rmon_community_set' => [1], 'rmon_community_delete' => []] as $function => $others) {
    $sent = community(0, str_repeat('c', 255), $others[0] ?? 0);
    expect_exchange($function, [str_repeat('c', 255), ...$others], 71, $sent, reply(i32(0)), 0);
    expect_too_long($function, [str_repeat('c', 256), ...$others], 'community_set');
    expect_exchange($function, ['c', ...$others], 71, community(0, 'c', $others[0] ?? 0), reply(i32(0)), 0);
}
done();
--EXPECT--
OK
