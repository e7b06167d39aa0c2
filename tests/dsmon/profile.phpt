--TEST--
DSMON aggregation: a profile is read by a call for each DSCP value, whether the others succeed or not
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

/** The answer about a DSCP value: its group, and nothing else that a row might show. */
function profile_row(int $dscp, int $group, int $status = 0): Step
{
    return reply(record(
        status: i32($status),
        dsmonAggControlIndex: u32(77),
        dsmonAggGroupIndex: u32($group),
        dscp: u32($dscp),
    ));
}

/** Reads the profile of control row 9: 64 calls, these answers. */
function check_profile(string $case, callable $answer, array $result): void
{
    of($case, function () use ($answer, $result): void {
        $agent = the_agent();
        $earlier = count($agent->calls());
        $agent->add(...array_map($answer, range(0, 63)));
        expect_result(fn() => dsmon_aggprofs_get(the_link(), 9), $result);
        for ($dscp = 0; $dscp < 64; $dscp++) {
            $key = record(index1: i32(9), index2: i32($dscp), getType: i32(1));
            expect_call($agent, $earlier + $dscp + 1, 103, $key);
        }
        expect_same($earlier + 64, count($agent->calls()), 'number of calls');
    });
}

check_profile('all in group 1', fn(int $dscp) => profile_row($dscp, 1), array_fill(0, 64, 1));

check_profile(
    'each in a group of its own, unsigned',
    fn(int $dscp) => profile_row($dscp, 4000000000 + $dscp),
    range(4000000000, 4000000063),
);

// The key is the value that was asked for, not the one that the agent names.
check_profile(
    'the agent names other values',
    fn(int $dscp) => profile_row(63 - $dscp, 100 + $dscp),
    range(100, 163),
);

check_profile(
    'some refused, some failed',
    fn(int $dscp) => match ($dscp) {
        0, 20 => profile_row($dscp, 5, 1),
        21, 62 => profile_row($dscp, 5, -1),
        1 => garbage_args(),
        40 => proc_unavail(),
        41 => truncated(record(i32(0), u32(77), u32(5), u32(41)), -4),
        default => profile_row($dscp, 200 + $dscp),
    },
    array_diff_key(
        array_combine(range(0, 63), range(200, 263)),
        array_flip([0, 1, 20, 21, 40, 41, 62]),
    ),
);

check_profile(
    'only the last one answered',
    fn(int $dscp) => $dscp === 63 ? profile_row(63, 8) : system_err(),
    [63 => 8],
);

check_profile('all refused', fn(int $dscp) => profile_row($dscp, 5, 2), []);
check_profile('all failed', fn() => garbage_args(), []);

// A link that breaks in the middle: what was read before remains. No reconnecting, no message.
the_agent()->add(profile_row(0, 6), profile_row(1, 7), hang_up());
expect_result(fn() => dsmon_aggprofs_get(the_link(), 9), [6, 7]);
the_link(true);

// The array is a script's own.
the_agent()->add(...array_map(fn(int $dscp) => profile_row($dscp, 1), range(0, 63)));
$profile = $copy = dsmon_aggprofs_get(the_link(), 9);
$profile[] = 2;
$profile['best effort'] = 3;
unset($profile[0]);
expect_same(array_fill(0, 64, 1), $copy);
expect_same([63 => 1, 64 => 2, 'best effort' => 3], array_slice($profile, 62, null, true));

check_refusals(function: 'dsmon_aggprofs_get', sent: ['ctlIndex' => ['i32', 9]]);

done();
?>
--EXPECT--
OK
