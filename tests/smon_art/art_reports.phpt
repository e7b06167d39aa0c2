--TEST--
Application response time: report and summary rows
--EXTENSIONS--
rmon
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/../dsmon/tables.inc';

/** Both tables: key, row (as tables.inc has them) and label. Rows are shown in wire order. */
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

/** Addresses that a script passes, the bytes that travel, and what the script holds then. */
$texts = array_map(strval(...), range(1, 255));
$passed = [
    [[], [], []],
    [$texts, range(1, 255), range(1, 255)],
    [
        ['10', 300, -1, 1.9, true, null, 'x', '7 apples', ['a']],
        [10, 44, 255, 1, 1, 0, 0, 7, 1],
        [10, 300, -1, 1, 1, 0, 0, 7, 1],
    ],
    [[3 => '1', 1 => '2', 'a' => '3'], [1, 2, 3], [3 => 1, 1 => 2, 'a' => 3]],
    ['10', [], '10'],
    [null, [], null],
];

foreach ($tables as $name => [$procedure, $key, $fields, $label]) {
    $names = array_keys($key); // the functions take the key's fields in wire order
    $keys = array_slice(array_keys($fields), 1);
    $octets = current(preg_grep('/ServerOctets$/', $keys));

    /** The row with this number, which differs from the others in its status, an address and a counter. */
    $of_row = fn(int $number) => [
        'status' => 100 + $number,
        $keys[0] => array_fill(0, $number, 200 + $number % 50),
        $octets => $number,
    ];
    $rows = fn(int $count) => many_rows($count, fn(int $number) => bytes_of($fields, ...$of_row($number)));
    $row = fn(int $number) => row_of($fields, $keys, ...$of_row($number));

    foreach (['_get' => 1, '_getnext' => 2, '_getbulk' => 3] as $ending => $getType) {
        $function = $name . $ending;
        $bulk = $getType === 3;
        $more = fn(int|string $count) => $bulk ? [$count] : [];
        $request = fn(int $count, mixed ...$values) =>
            bytes_of($key, ...$values) . record(getType: i32($getType), count: i32($bulk ? $count : 1));
        $arguments = [...arguments_of($key, $names), ...$more(40)];
        $check = fn(string $bytes, mixed $result, array $messages = []) =>
            expect_exchange(
                function: $function,
                arguments: $arguments,
                procedure: $procedure,
                request: $request(40),
                step: reply($bytes),
                value: $result,
                messages: $messages,
            );

        $plain = row_of($fields, $keys);
        $check(rows(bytes_of($fields)), $bulk ? [$plain] : $plain);
        foreach ([1, 3, 40] as $count) {
            $check($rows($count), $bulk ? array_map($row, range(0, $count - 1)) : $row(0));
        }
        // No rows are no failure, but an empty array, which is a script's own.
        $check(rows(), []);
        the_agent()->add(reply(rows()), reply(rows()));
        for ($round = 0; $round < 2; $round++) {
            $got = $function(the_link(), ...$arguments);
            $got[] = 'mine';
            expect_same(['mine'], $got);
        }

        // Counters above 2^63 are the nearest floats, never negative.
        $highest = row_of($fields, $keys, ...[$octets => 18446744073709551616.0]);
        $check(rows(bytes_of($fields, ...[$octets => '0xffffffffffffffff'])), $bulk ? [$highest] : $highest);

        // An address of any length; an empty one is an empty array.
        foreach ([0, 1, 16, 17, 300] as $length) {
            $bytes = array_fill_keys(array_keys(fields_with($fields, 'byte_list')), array_fill(0, $length, 255));
            $shown = row_of($fields, $keys, ...$bytes);
            $check(rows(bytes_of($fields, ...$bytes)), $bulk ? [$shown] : $shown);
        }

        // Counts that promise more than there is.
        $undecoded = ["$label: RPC: Can't decode result"];
        $check(u32(4) . substr($rows(3), 4), false, $undecoded);
        $check(u32(0xffffffff) . substr($rows(3), 4), false, $undecoded);
        $check(rows(bytes_of($fields), substr(bytes_of($fields), 0, 4) . u32(0xffffffff)), false, $undecoded);

        check_failures(
            function: $function,
            arguments: $arguments,
            procedure: $procedure,
            request: $request(40),
            bytes: $rows(3),
            result: false,
            label: $label,
        );
        // The number of rows is converted first, then the link, which is looked at before the rest.
        $count = ['count' => ['i32', 40]];
        check_refusals(
            function: $function,
            fields: $key + $count,
            names: [...$names, ...$more('count')],
            order: [...$more('count'), 'Link'],
        );
        if ($bulk) {
            foreach (['7' => 7, '-1' => -1, '4294967299' => 3, '0' => 0] as $count => $sent) {
                $asked = [...arguments_of($key, $names), (string) $count];
                expect_exchange(
                    function: $function,
                    arguments: $asked,
                    procedure: $procedure,
                    request: $request($sent),
                    step: reply(rows()),
                    value: [],
                );
            }
        }

        foreach (fields_with($key, 'byte_list') as $field => [, $usual]) {
            $place = array_search($field, $names, true);
            foreach ($passed as [$given, $bytes, $held]) {
                $arguments[$place] = &$given;
                $record = $request(40, ...[$field => $bytes]);
                expect_exchange(
                    function: $function,
                    arguments: $arguments,
                    procedure: $procedure,
                    request: $record,
                    step: reply(rows()),
                    value: [],
                );
                expect_same($held, $given, "what the script holds of $field");
                unset($given);
            }

            // One element too many is refused, and leaves the array as it was.
            $many = $before = array_map(strval(...), range(1, 256));
            $arguments[$place] = &$many;
            expect_no_call($function, [the_link(), ...$arguments], false, ['too many (256) elements in addr!']);
            expect_same($before, $many, "what the script holds of $field");
            // So does a bad link, which is looked at first.
            foreach ([$before, ['1']] as $given) {
                $many = $given;
                expect_no_call($function, [NO_LINK, ...$arguments], false, [NO_LINK . ' is not a RMON/RPC conn id!']);
                expect_same($given, $many, "what the script holds of $field");
            }
            unset($many, $given);

            $arguments[$place] = [new stdClass()];
            check_closed_by_handler($function, $arguments);
            $arguments[$place] = $usual;
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
