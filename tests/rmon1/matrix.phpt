--TEST--
Matrix: conversations in both views
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

foreach (['SD' => 0, 'DS' => 1] as $view => $direction) {
    $table = 'rmon_matrix_' . strtolower($view);
    $fields = [
        'status' => 'i32',
        "matrix{$view}SourceAddress" => 'byte_list',
        "matrix{$view}DestAddress" => 'byte_list',
        "matrix{$view}Index" => 'i32',
        "matrix{$view}Pkts" => 'u64',
        "matrix{$view}Octets" => 'u64',
        "matrix{$view}Errors" => 'u64',
    ];
    // The count stands before the getType. The source is the first address in both views.
    $key = [
        'index' => ['i32', 71],
        'sourceAddress' => ['byte_list', [10, 0, 255, 7]],
        'destAddress' => ['byte_list', [0, 26, 43, 60, 77, 94]],
        'count' => ['i32', 1],
        'getType' => ['i32', 1],
        'direction' => ['i32', $direction],
    ];
    $names = ['index', 'sourceAddress', 'destAddress'];
    check_rows_readers(
        table: $table,
        procedure: 18,
        key: $key,
        names: $names,
        row: fn(int $n) => sample($fields, $n),
        label: 'matrix_getbulk',
    );

    // Four arguments are too few for the bulk form.
    expect_no_call(
        "{$table}_getbulk",
        [the_link(), ...arguments_of($key, $names)],
        null,
        ["Wrong parameter count for {$table}_getbulk()"],
    );

    foreach (['sourceAddress', 'destAddress'] as $address) {
        check_address(
            function: "{$table}_get",
            procedure: 18,
            sent: $key,
            address: $address,
            reply: rows(wire(sample($fields))),
            value: shown(sample($fields)),
            names: $names,
        );
    }

    // The source is converted before the destination.
    expect_exchange(
        function: "{$table}_get",
        arguments: [71, [observed('Source'), 1], [2, observed('Dest')]],
        procedure: 18,
        request: wire($key, sourceAddress: [1, 1], destAddress: [2, 1]),
        step: reply(rows(wire(sample($fields)))),
        value: shown(sample($fields)),
        messages: [number_message('Source'), number_message('Dest')],
    );

    // An empty address in a row is the integer 0.
    $names = ["matrix{$view}SourceAddress", "matrix{$view}DestAddress"];
    foreach ([[$names[0]], [$names[1]], $names] as $empty) {
        $row = array_replace(sample($fields), array_fill_keys($empty, ['byte_list', [], 'shown' => 0]));
        expect_exchange(
            function: "{$table}_get",
            arguments: [71, '', ''],
            procedure: 18,
            request: wire($key, sourceAddress: [], destAddress: []),
            step: reply(rows(wire($row))),
            value: shown($row),
        );
    }
}

done();
--EXPECT--
OK
