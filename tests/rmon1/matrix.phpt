--TEST--
Matrix: conversations in both views
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

foreach (['SD' => 0, 'DS' => 1] as $view => $direction) {
    $table = 'rmon_matrix_' . strtolower($view);
    $fields = [
        'status' => 'int',
        "matrix{$view}SourceAddress" => 'bytes',
        "matrix{$view}DestAddress" => 'bytes',
        "matrix{$view}Index" => 'int',
        "matrix{$view}Pkts" => 'counter',
        "matrix{$view}Octets" => 'counter',
        "matrix{$view}Errors" => 'counter',
    ];
    // The count stands before the getType. The source is the first address in both views.
    $key = fn(array|string $source, array|string $dest, int $getType = 1, int $count = 1) => record(
        index: i32(71),
        sourceAddress: byte_list($source),
        destAddress: byte_list($dest),
        count: i32($count),
        getType: i32($getType),
        direction: i32($direction),
    );
    $source = [10, 0, 255, 7];
    $dest = [0, 26, 43, 60, 77, 94];
    check_rows_readers(
        table: $table,
        procedure: 18,
        label: 'matrix_getbulk',
        fields: $fields,
        order: null,
        index: [71, $source, $dest],
        key: fn(int $getType, int $count) => $key($source, $dest, $getType, $count),
        kinds: ['int', 'int', 'address', 'address'],
    );

    // Four arguments are too few for the bulk form.
    expect_no_call(
        "{$table}_getbulk",
        [the_link(), 71, $source, $dest],
        null,
        ["Wrong parameter count for {$table}_getbulk()"],
    );

    $row = sample($fields);
    $exchange = fn(array $addresses, string $key, array $messages = []) =>
        expect_exchange(
            function: "{$table}_get",
            arguments: [71, ...$addresses],
            procedure: 18,
            request: $key,
            step: reply(rows(wire($row))),
            value: shown($row),
            messages: $messages,
        );
    $asSource = fn(mixed $address, array|string $bytes, array $messages = []) =>
        $exchange([$address, $dest], $key($bytes, $dest), $messages);
    check_address_argument($asSource, "{$table}_get", [71], [$dest]);
    $asDest = fn(mixed $address, array|string $bytes, array $messages = []) =>
        $exchange([$source, $address], $key($source, $bytes), $messages);
    check_address_argument($asDest, "{$table}_get", [71, $source]);

    // Anything but an array isn't looked at, be it an object.
    $asSource(new ArrayObject([1]), '');
    $asDest(new ArrayObject([1]), '');

    // The source is converted before the destination.
    $exchange(
        [[observed('Source'), 1], [2, observed('Dest')]],
        $key([1, 1], [2, 1]),
        [number_message('Source'), number_message('Dest')],
    );

    // An empty address in a row is the integer 0.
    $names = ["matrix{$view}SourceAddress", "matrix{$view}DestAddress"];
    foreach ([[$names[0]], [$names[1]], $names] as $empty) {
        $row = array_replace(sample($fields), array_fill_keys($empty, [byte_list(''), 0]));
        expect_exchange(
            function: "{$table}_get",
            arguments: [71, '', ''],
            procedure: 18,
            request: $key('', ''),
            step: reply(rows(wire($row))),
            value: shown($row),
        );
    }
}

done();
--EXPECT--
OK
