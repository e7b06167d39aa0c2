--TEST--
The four views of the higher-layer matrix
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

/** Row $i: the second has no source, the third no destination. */
function pair(int $i): array
{
    $source = $i === 1 ? [] : [10, 0, 255, $i];
    $dest = $i === 2 ? [] : [172, 16, 128, $i, 1, 2];
    return [
        'status' => ['i32', 100 + $i],
        'timeMark' => ['u32', 0xffffff00 + $i],
        'sourceAddress' => ['byte_list', $source, 'shown' => $source ?: 0],
        'destAddress' => ['byte_list', $dest, 'shown' => $dest ?: 0],
        'pkts' => ['u64', '0xffffffffffffffff', 'shown' => 18446744073709551616.0],
        'octets' => ['u64', 0x600000000 + $i],
        'createTime' => ['u32', 0xffffffff - $i, 'shown' => 4294967295.0 - $i],
        'hlMatrixControlIndex' => ['i32', -800 - $i],
        'protocolDirLocalIndex' => ['i32', 900 + $i],
        'protocolDirLocalIndex2' => ['i32', 1000 + $i],
    ];
}

foreach ([['nl', 'SD', 0, 0], ['nl', 'DS', 0, 1], ['al', 'SD', 1, 0], ['al', 'DS', 1, 1]] as $case) {
    [$layerName, $directionName, $layer, $direction] = $case;
    $view = "{$layerName}Matrix$directionName";
    $name = strtolower("rmon_{$layerName}matrix_$directionName");
    $key = [
        'hlMatrixControlIndex' => ['i32', 5],
        'timeMark' => ['u32', 0xfffffffe],
        'protocolDirLocalIndex' => ['i32', 7],
        'protocolDirLocalIndex2' => ['i32', $layer ? -9 : 0],
        'sourceAddress' => ['byte_list', [192, 168, 0, 7]],
        'destAddress' => ['byte_list', range(230, 245)],
        'getType' => ['i32', 1],
        'applicationLayer' => ['i32', $layer],
        'direction' => ['i32', $direction],
        'count' => ['i32', 1],
    ];
    // The application-layer protocol stands behind the addresses, before the number of rows.
    $names = ['hlMatrixControlIndex', 'timeMark', 'protocolDirLocalIndex', 'sourceAddress', 'destAddress'];
    if ($layer) {
        $names[] = 'protocolDirLocalIndex2';
    }
    check_rows_readers(
        table: $name,
        procedure: 37,
        key: $key,
        row: pair(...),
        label: 'nlmatrix_get', // of all views
        names: $names,
        // The addresses of the application-layer views keep their network-layer names.
        keys: [
            "{$view}TimeMark" => 'timeMark',
            "nlMatrix{$directionName}SourceAddress" => 'sourceAddress',
            "nlMatrix{$directionName}DestAddress" => 'destAddress',
            "{$view}Pkts" => 'pkts',
            "{$view}Octets" => 'octets',
            "{$view}CreateTime" => 'createTime',
            'hlMatrixControlIndex',
            'protocolDirLocalIndex',
            ...($layer ? ['protocolDirLocalIndex2'] : []),
        ],
    );
    foreach (['sourceAddress', 'destAddress'] as $address) {
        check_address(
            function: "{$name}_getnext",
            procedure: 37,
            sent: with($key, getType: 2),
            address: $address,
            reply: rows(),
            value: false,
            names: $names,
        );
    }

    if ($case === ['nl', 'SD', 0, 0]) {
        // One array given twice is converted once and sent twice.
        $both = ['1', '2'];
        expect_exchange(
            function: function (mixed $link) use (&$both): mixed {
                return rmon_nlmatrix_sd_get($link, 3, 4, 5, $both, $both);
            },
            arguments: [],
            procedure: 37,
            request: wire(
                $key,
                hlMatrixControlIndex: 3,
                timeMark: 4,
                protocolDirLocalIndex: 5,
                sourceAddress: [1, 2],
                destAddress: [1, 2],
            ),
            step: reply(rows()),
            value: false,
        );
        expect_same([1, 2], $both, 'an array given twice');
    }
}

done();
--EXPECT--
OK
