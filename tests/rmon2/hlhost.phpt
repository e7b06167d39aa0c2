--TEST--
Higher-layer hosts, of the network layer and of the application layer
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

/**
 * Row $i: the second has no address. Counters that a float holds exactly, one that it can't, and the ends of the
 * range.
 */
function host(int $i): array
{
    $address = $i === 1 ? [] : [10, 0, 255, $i];
    return [
        'status' => ['i32', 100 + $i],
        'timeMark' => ['u32', 0xffffff00 + $i],
        'nlHostAddress' => ['byte_list', $address, 'shown' => $address ?: 0],
        'inPkts' => ['u64', 3000 + $i],
        'outPkts' => ['u64', '0xffffffffffffffff', 'shown' => 18446744073709551616.0],
        'inOctets' => ['u64', '0x8000000000000000', 'shown' => 9223372036854775808.0],
        'outOctets' => ['u64', '0x8000000000000401', 'shown' => 9223372036854777856.0],
        'outMacNonUnicastPkts' => ['u64', 0x700000000 + $i],
        'createTime' => ['u32', 0x80000000 + $i],
        'hlHostControlIndex' => ['i32', -900 - $i],
        'protocolDirLocalIndex' => ['i32', 1000 + $i],
        'protocolDirLocalIndex2' => ['i32', 1100 + $i],
    ];
}

foreach (['nlHost' => 0, 'alHost' => 1] as $table => $layer) {
    $name = 'rmon_' . strtolower($table);
    $key = [
        'hlHostControlIndex' => ['i32', 5],
        'timeMark' => ['u32', 0xfffffffe],
        'protocolDirLocalIndex' => ['i32', 7],
        'protocolDirLocalIndex2' => ['i32', $layer ? -9 : 0],
        'nlHostAddress' => ['byte_list', [192, 168, 0, 7]],
        'getType' => ['i32', 1],
        'applicationLayer' => ['i32', $layer],
        'count' => ['i32', 1],
    ];
    // The application-layer protocol stands behind the address, before the number of rows.
    $names = ['hlHostControlIndex', 'timeMark', 'protocolDirLocalIndex', 'nlHostAddress'];
    if ($layer) {
        $names[] = 'protocolDirLocalIndex2';
    }
    $common = [
        'procedure' => 34,
        'row' => host(...),
        'label' => 'hlhost_get',
        'names' => $names,
        // The address keeps its network-layer name.
        'keys' => [
            "{$table}TimeMark" => 'timeMark',
            'nlHostAddress',
            "{$table}InPkts" => 'inPkts',
            "{$table}OutPkts" => 'outPkts',
            "{$table}InOctets" => 'inOctets',
            "{$table}OutOctets" => 'outOctets',
            ...($table === 'nlHost' ? ['nlHostOutMacNonUnicastPkts' => 'outMacNonUnicastPkts'] : []),
            "{$table}CreateTime" => 'createTime',
            'hlHostControlIndex',
            'protocolDirLocalIndex',
            ...($table === 'alHost' ? ['protocolDirLocalIndex2'] : []),
        ],
    ];
    check_rows_reader(...$common, function: "{$name}_get", key: $key);
    check_rows_reader(
        ...$common,
        function: "{$name}_getnext",
        key: with($key, getType: 2, nlHostAddress: range(230, 245)),
    );
    check_rows_reader(
        ...$common,
        function: "{$name}_getbulk",
        key: with($key, getType: 3, nlHostAddress: range(1, 255)),
    );

    check_address(
        function: "{$name}_get",
        procedure: 34,
        sent: $key,
        address: 'nlHostAddress',
        reply: rows(),
        value: false,
        names: $names,
    );
}

done();
--EXPECT--
OK
