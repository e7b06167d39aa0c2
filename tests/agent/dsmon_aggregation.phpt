--TEST--
The bundled agent's aggregation profiles: rows, groups, the map of the DSCP values, the lock
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

const GEN_ERR = 5;
const NONE = [0 => -1, 'status' => -1];

$agent = bundled_agent();
$link = module_link($agent);

/** A profile's settings. */
function profile(int $index, bool $next = false): array
{
    global $link;
    return array_slice($next ? dsmon_aggctl_getnext($link, $index) : dsmon_aggctl_get($link, $index), 2);
}

function settings(int $index, string $descr, string $owner, int $status): array
{
    return [
        'dsmonAggControlIndex' => $index, 'dsmonAggControlDescr' => $descr, 'dsmonAggControlOwner' => $owner,
        'dsmonAggControlStatus' => $status,
    ];
}

/** The groups that a walk meets, as "profile.group" => description. */
function groups(): array
{
    global $link;
    $found = [];
    for ([$profile, $group] = [0, 0]; ($row = dsmon_aggrp_getnext($link, $profile, $group))['status'] === 0;) {
        [$profile, $group] = [$row['dsmonAggControlIndex'], $row['dsmonAggGroupIndex']];
        $found["$profile.$group"] = $row['dsmonAggGroupDescr'];
    }
    return $found;
}

// At first there is nothing, and nothing is locked.
expect_same(2, dsmon_aggctl_locked($link), 'the lock');
expect_same(NONE, dsmon_aggctl_getnext($link, 0), 'the first profile');
expect_same(NONE, dsmon_aggrp_getnext($link, 0, 0), 'the first group');
expect_same([], dsmon_aggprofs_get($link, 1), 'a map of no profile');

// The life of a row.
foreach ([VALID, UNDER_CREATION, INVALID] as $status) {
    expect_same(NO_SUCH_NAME, dsmon_aggctl_set($link, 3, 'me', 'gold', $status), "status $status for no row");
}
foreach ([0, -1, 65536, 0x7fffffff] as $index) {
    expect_same(BAD_VALUE, dsmon_aggctl_set($link, $index, 'me', 'gold', CREATE_REQUEST), "index $index");
}
expect_same(BAD_VALUE, dsmon_aggctl_set($link, 3, "m\n", 'gold', CREATE_REQUEST), 'owner of two lines');
expect_same(BAD_VALUE, dsmon_aggctl_set($link, 3, 'me', "\x01", CREATE_REQUEST), 'unprintable description');
expect_same(NO_ERROR, dsmon_aggctl_set($link, 3, 'me', 'gold', CREATE_REQUEST), 'createRequest');
expect_same(BAD_VALUE, dsmon_aggctl_set($link, 3, 'me', 'gold', CREATE_REQUEST), 'createRequest again');
expect_same(settings(3, 'gold', 'me', UNDER_CREATION), profile(3), 'the new row');
expect_same(NO_ERROR, dsmon_aggctl_set($link, 3, 'you', str_repeat('d', 64), VALID), 'valid');
expect_same(settings(3, str_repeat('d', 64), 'you', VALID), profile(3), 'the valid row');
expect_same(NO_ERROR, dsmon_aggctl_set($link, 65535, '', '', CREATE_REQUEST), 'the last index');
expect_same(3, profile(0, true)['dsmonAggControlIndex'], 'the first row');
expect_same(65535, profile(3, true)['dsmonAggControlIndex'], 'the second row');
expect_same([], array_diff_key(dsmon_aggctl_getnext($link, 65535), NONE), 'the row after the last');

// All 64 values are in group 0 until they are set; groups go from 0 to 63.
expect_same(array_fill(0, 64, 0), dsmon_aggprofs_get($link, 3), 'the map of a new row');
expect_same(NO_ERROR, dsmon_aggprof_set($link, 3, 46, 2), 'DSCP 46');
expect_same(NO_ERROR, dsmon_aggprof_set($link, 3, 63, 63), 'DSCP 63');
expect_same(NO_ERROR, dsmon_aggprof_set($link, 3, 0, 1), 'DSCP 0');
expect_same(array_replace(array_fill(0, 64, 0), [0 => 1, 46 => 2, 63 => 63]), dsmon_aggprofs_get($link, 3), 'the map');
foreach ([[64, 0], [-1, 0], [0, 64], [0, -1]] as [$dscp, $group]) {
    expect_same(BAD_VALUE, dsmon_aggprof_set($link, 3, $dscp, $group), "DSCP $dscp in group $group");
}
expect_same(NO_SUCH_NAME, dsmon_aggprof_set($link, 4, 0, 0), 'the map of no row');
expect_same(array_fill(0, 64, 0), dsmon_aggprofs_get($link, 65535), 'the map of another row');

// Names of groups; group 0 has one as well.
expect_same(NO_SUCH_NAME, dsmon_aggrp_set($link, 4, 1, 'voice', CREATE_REQUEST), 'a group of no profile');
foreach ([64, -1, 0x7fffffff] as $group) {
    expect_same(BAD_VALUE, dsmon_aggrp_set($link, 3, $group, 'voice', CREATE_REQUEST), "group $group");
}
foreach ([[65535, 7, 'late'], [3, 63, 'last'], [3, 0, 'rest'], [3, 2, 'voice']] as [$index, $group, $descr]) {
    expect_same(NO_ERROR, dsmon_aggrp_set($link, $index, $group, $descr, CREATE_REQUEST), "group $index.$group");
}
expect_same(['3.0' => 'rest', '3.2' => 'voice', '3.63' => 'last', '65535.7' => 'late'], groups(), 'the groups');
expect_same(NONE, dsmon_aggrp_get($link, 3, 1), 'a group without a name');
expect_same(NO_ERROR, dsmon_aggrp_set($link, 3, 2, 'calls', VALID), 'another name');
expect_same(
    ['dsmonAggControlIndex' => 3, 'dsmonAggGroupIndex' => 2, 'dsmonAggGroupDescr' => 'calls'],
    array_slice(dsmon_aggrp_get($link, 3, 2), 2),
    'group 3.2',
);
expect_same(NO_ERROR, dsmon_aggrp_set($link, 3, 63, '', INVALID), 'a group goes');
expect_same(NO_SUCH_NAME, dsmon_aggrp_set($link, 3, 63, '', INVALID), 'a group goes again');

// While the lock is on, nothing of this changes.
foreach ([0, 3, -1] as $lock) {
    expect_same(BAD_VALUE, dsmon_aggctl_set_lock($link, $lock), "lock $lock");
}
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'the lock goes on');
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'the lock goes on again');
expect_same(1, dsmon_aggctl_locked($link), 'the lock');
expect_same(GEN_ERR, dsmon_aggctl_set($link, 3, 'me', 'gold', VALID), 'a profile under the lock');
expect_same(GEN_ERR, dsmon_aggctl_set($link, 5, 'me', 'gold', CREATE_REQUEST), 'a new profile under the lock');
expect_same(GEN_ERR, dsmon_aggrp_set($link, 3, 2, 'x', VALID), 'a group under the lock');
expect_same(GEN_ERR, dsmon_aggprof_set($link, 3, 46, 3), 'the map under the lock');
expect_same(2, dsmon_aggprofs_get($link, 3)[46], 'DSCP 46 under the lock');
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 2), 'the lock goes off');
expect_same(NO_ERROR, dsmon_aggprof_set($link, 3, 46, 3), 'the map without the lock');

// A profile's groups and map go with it.
expect_same(NO_ERROR, dsmon_aggctl_set($link, 3, '', '', INVALID), 'invalid');
expect_same(['65535.7' => 'late'], groups(), 'the groups that are left');
expect_same([], dsmon_aggprofs_get($link, 3), 'the map that is gone');

// The table has an end.
for ($index = 1; dsmon_aggctl_set($link, $index, '', '', CREATE_REQUEST) === NO_ERROR && $index < 2000; $index++) {
}
expect_same(1000, $index, 'the first row that finds no room');
expect_same(GEN_ERR, dsmon_aggctl_set($link, $index, '', '', CREATE_REQUEST), 'no room');

agent_done($agent);
--EXPECT--
OK
