--TEST--
Protocol distribution, and what belongs to no protocol
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

function stats(int $i): array
{
    return [
        'status' => ['i32', 100 + $i],
        'protocolDistControlIndex' => ['i32', -200 - $i],
        'protocolDirLocalIndex' => ['i32', 300 + $i],
        'protocolDistStatsPkts' => ['u64', '0x8000000000000000', 'shown' => 9223372036854775808.0],
        'protocolDistStatsOctets' => ['u64', 0x500000000 + $i],
        'pd_flags' => ['u32', 0xffffff00 + $i],
    ];
}

check_rows_readers(
    table: 'rmon_pdist_stats',
    procedure: 26,
    key: with(TWO_INDEXES_AND_COUNT, index1: 5, index2: -6),
    row: stats(...),
    label: 'rmon_pdist_ctl_get', // the control table's
    // The flags stand right behind the control row's index, which has the number 1 as well.
    keys: fn(array $row) => [
        0 => $row['status'][1],
        'status' => $row['status'][1],
        1 => $row['protocolDistControlIndex'][1],
        'pd_flags' => $row['pd_flags'][1],
        'protocolDistControlIndex' => $row['protocolDistControlIndex'][1],
        'protocolDirLocalIndex' => $row['protocolDirLocalIndex'][1],
        'protocolDistStatsPkts' => 9223372036854775808.0,
        'protocolDistStatsOctets' => (float) $row['protocolDistStatsOctets'][1],
    ],
);

// A list's keys are 0 to 2 although 10 rows were wanted.
the_agent()->add(reply(many_rows(3, fn(int $i) => wire(stats($i)))));
expect_same([0, 1, 2], array_keys(rmon_pdist_stats_getbulk(the_link(), 5, -6, 10)), 'keys of a list');

// Others.
$label = 'rmon_pdist_stats_getothers';
$others = [
    'status' => ['i32', 0],
    'packets' => ['u64', '0xffffffffffffffff', 'shown' => 18446744073709551616.0],
    'octets' => ['u64', 0x700000003],
];
check_function(
    function: $label,
    procedure: 184,
    sent: ['index' => ['i32', -77]],
    reply: wire($others),
    value: shown($others),
    label: $label,
);

// A status that is not zero makes the answer a failure, reported in the words for a call that went well.
foreach ([1, -1, 0x7fffffff] as $status) {
    expect_exchange(
        function: $label,
        arguments: [-77],
        procedure: 184,
        request: i32(-77),
        step: reply(wire($others, status: $status)),
        value: false,
        messages: ["$label: RPC: Success"],
    );
}

done();
--EXPECT--
OK
