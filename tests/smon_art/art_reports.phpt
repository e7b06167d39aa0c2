--TEST--
Application response time: report and summary rows
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

/** Both tables: key, row (as records.inc has them) and label. Rows are shown in wire order. */
$tables = [
    'rmon_art_rpt' => [
        101,
        [
            'artControlIndex' => ['i32', -11],
            'protocolDirLocalIndex' => ['i32', -12],
            'artServerAddress' => ['byte_list', [10, 200, 0, 255]],
            'artClientAddress' => ['byte_list', range(100, 119)],
        ],
        [
            'status' => ['i32', 0],
            'artServerAddress' => ['byte_list', [192, 168, 1, 254]],
            'artClientAddress' => ['byte_list', range(220, 236)],
            'artAvgRspTime' => ['i32', -1001],
            'artMinRspTime' => ['i32', -1002],
            'artMaxRspTime' => ['i32', -1003],
            'artTotalResponses' => ['u32', 4000000000],
            'artRsps1' => ['u32', 4000000001],
            'artRsps2' => ['u32', 4000000002],
            'artRsps3' => ['u32', 4000000003],
            'artRsps4' => ['u32', 4000000004],
            'artRsps5' => ['u32', 4000000005],
            'artRsps6' => ['u32', 4000000006],
            'artRsps7' => ['u32', 4000000007],
            'artClientOctets' => ['u64', 0x100000008],
            'artServerOctets' => ['u64', 0x200000009],
            'artRetries' => ['u32', 4000000010],
            'artTimeouts' => ['u32', 4000000011],
            'artControlIndex' => ['i32', -1004],
            'protocolDirLocalIndex' => ['i32', -1005],
        ],
        'art_rpt_get',
    ],
    'rmon_art_sum' => [
        102,
        [
            'artControlIndex' => ['i32', -11],
            'protocolDirLocalIndex' => ['i32', -12],
            'artSummaryServerAddress' => ['byte_list', [10, 200, 0, 255]],
        ],
        [
            'status' => ['i32', 0],
            'artSummaryServerAddress' => ['byte_list', [192, 168, 1, 254]],
            'artSummaryClients' => ['i32', -1000],
            'artSummaryAvgRspTime' => ['i32', -1001],
            'artSummaryMinRspTime' => ['i32', -1002],
            'artSummaryMaxRspTime' => ['i32', -1003],
            'artSummaryTotalResponses' => ['u32', 4000000000],
            'artSummaryRsps1' => ['u32', 4000000001],
            'artSummaryRsps2' => ['u32', 4000000002],
            'artSummaryRsps3' => ['u32', 4000000003],
            'artSummaryRsps4' => ['u32', 4000000004],
            'artSummaryRsps5' => ['u32', 4000000005],
            'artSummaryRsps6' => ['u32', 4000000006],
            'artSummaryRsps7' => ['u32', 4000000007],
            'artSummaryClientOctets' => ['u64', 0x100000008],
            'artSummaryServerOctets' => ['u64', 0x200000009],
            'artSummaryRetries' => ['u32', 4000000010],
            'artSummaryTimeouts' => ['u32', 4000000011],
            'artControlIndex' => ['i32', -1004],
            'protocolDirLocalIndex' => ['i32', -1005],
        ],
        'art_sum_get',
    ],
];

foreach ($tables as $name => [$procedure, $key, $fields, $label]) {
    $names = array_keys($key); // the functions take the key's fields in wire order
    $key += ['getType' => ['i32', 1], 'count' => ['i32', 1]];
    $first = array_keys($fields)[1];
    $octets = current(preg_grep('/ServerOctets$/', array_keys($fields)));

    /** The row with this number, which differs from the others in its status, an address and a counter. */
    $row = fn(int $number) => with($fields, ...[
        'status' => 100 + $number,
        $first => array_fill(0, $number, 200 + $number % 50),
        $octets => $number,
    ]);
    // The number of rows is converted first, then the link, which is looked at before the rest. No rows are no
    // failure, but an empty array.
    check_rows_readers(
        table: $name,
        procedure: $procedure,
        key: $key,
        row: $row,
        label: $label,
        order: ['Link'],
        none: [],
    );

    foreach (['_get' => 1, '_getnext' => 2, '_getbulk' => 3] as $ending => $getType) {
        $function = $name . $ending;
        $bulk = $getType === 3;
        $sent = with($key, getType: $getType, count: $bulk ? 40 : 1);
        $arguments = arguments_of($sent, $bulk ? [...$names, 'count'] : $names);
        $check = fn(string $bytes, mixed $value, array $messages = []) =>
            expect_exchange(
                function: $function,
                arguments: $arguments,
                procedure: $procedure,
                request: wire($sent),
                step: reply($bytes),
                value: $value,
                messages: $messages,
            );

        // The empty array is a script's own.
        the_agent()->add(reply(rows()), reply(rows()));
        for ($round = 0; $round < 2; $round++) {
            $got = $function(the_link(), ...$arguments);
            $got[] = 'mine';
            expect_same(['mine'], $got);
        }

        // Counters above 2^63 are the nearest floats, never negative.
        $highest = array_replace(
            $fields,
            [$octets => ['u64', '0xffffffffffffffff', 'shown' => 18446744073709551616.0]],
        );
        $check(rows(wire($highest)), $bulk ? [shown($highest)] : shown($highest));

        // An address of any length; an empty one is an empty array.
        foreach ([0, 1, 16, 17, 300] as $length) {
            $bytes = array_fill_keys(array_keys(fields_with($fields, 'byte_list')), array_fill(0, $length, 255));
            $shown = shown($fields, ...$bytes);
            $check(rows(wire($fields, ...$bytes)), $bulk ? [$shown] : $shown);
        }

        // Counts that promise more than there is.
        $undecoded = ["$label: RPC: Can't decode result"];
        $three = many_rows(3, fn(int $number) => wire($row($number)));
        $check(u32(4) . substr($three, 4), false, $undecoded);
        $check(u32(0xffffffff) . substr($three, 4), false, $undecoded);
        $check(rows(wire($fields), substr(wire($fields), 0, 4) . u32(0xffffffff)), false, $undecoded);

        if ($bulk) {
            foreach (['7' => 7, '-1' => -1, '4294967299' => 3, '0' => 0] as $count => $travels) {
                expect_exchange(
                    function: $function,
                    arguments: arguments_of($sent, [...$names, 'count'], count: (string) $count),
                    procedure: $procedure,
                    request: wire($sent, count: $travels),
                    step: reply(rows()),
                    value: [],
                );
            }
        }

        foreach (array_keys(fields_with($key, 'byte_list')) as $address) {
            check_address(
                function: $function,
                procedure: $procedure,
                sent: $sent,
                address: $address,
                reply: rows(),
                value: [],
                names: $bulk ? [...$names, 'count'] : $names,
            );
        }
    }
}

// Of two addresses both are counted before either is converted; the first that is too long is named.
$server = ['1', '2'];
$arguments = [the_link(), 1, 2, &$server, range(1, 256)];
expect_no_call('rmon_art_rpt_get', $arguments, false, ['too many (256) elements in addr!']);
expect_same(['1', '2'], $server, 'what the script holds');
$server = range(1, 257);
expect_no_call('rmon_art_rpt_getbulk', [...$arguments, 5], false, ['too many (257) elements in addr!']);

done();
?>
--EXPECT--
OK
