--TEST--
Higher-layer hosts, of the network layer and of the application layer
--FILE--
<?php
require __DIR__ . '/calls.inc';

const PROCEDURE = 34;
const LABEL = 'hlhost_get';

/** The address of row $i: the second row has none. */
function host(int $i): array
{
    return $i === 1 ? [] : [10, 0, 255, $i];
}

/** Counters that a float holds exactly, one that it can't, and the ends of the range. */
function host_bytes(int $i): string
{
    return record(
        status: i32(100 + $i),
        timeMark: u32(0xffffff00 + $i),
        nlHostAddress: byte_list(host($i)),
        inPkts: u64(3000 + $i),
        outPkts: u64('0xffffffffffffffff'),
        inOctets: u64('0x8000000000000000'),
        outOctets: u64('0x8000000000000401'),
        outMacNonUnicastPkts: u64(0x700000000 + $i),
        createTime: u32(0x80000000 + $i),
        hlHostControlIndex: i32(-900 - $i),
        protocolDirLocalIndex: i32(1000 + $i),
        protocolDirLocalIndex2: i32(1100 + $i),
    );
}

/** What a table shows of row $i; the address keeps its network-layer name. */
function host_row(string $table, int $i): array
{
    return [
        0 => 100 + $i,
        'status' => 100 + $i,
        "{$table}TimeMark" => 0xffffff00 + $i,
        'nlHostAddress' => host($i) ?: 0,
        "{$table}InPkts" => 3000.0 + $i,
        "{$table}OutPkts" => 18446744073709551616.0,
        "{$table}InOctets" => 9223372036854775808.0,
        "{$table}OutOctets" => 9223372036854777856.0,
        ...($table === 'nlHost' ? ['nlHostOutMacNonUnicastPkts' => 30064771072.0 + $i] : []),
        "{$table}CreateTime" => 2147483648 + $i,
        'hlHostControlIndex' => -900 - $i,
        'protocolDirLocalIndex' => 1000 + $i,
        ...($table === 'alHost' ? ['protocolDirLocalIndex2' => 1100 + $i] : []),
    ];
}

function request(
    int $index,
    int $timeMark,
    int $protocol,
    array $address,
    int $getType,
    int $applicationLayer,
    int $count = 1,
    int $application = 0,
): string {
    return record(
        hlHostControlIndex: i32($index),
        timeMark: u32($timeMark),
        protocolDirLocalIndex: i32($protocol),
        protocolDirLocalIndex2: i32($application),
        nlHostAddress: byte_list($address),
        getType: i32($getType),
        applicationLayer: i32($applicationLayer),
        count: i32($count),
    );
}

$ip = [192, 168, 0, 7];
$ipv6 = range(230, 245);
$long = range(1, 255);
foreach (['nlHost' => 0, 'alHost' => 1] as $table => $layer) {
    $name = 'rmon_' . strtolower($table);
    // The application-layer protocol stands behind the address, before the number of rows.
    $application = $layer ? [-9] : [];
    $arguments = fn(array $address) => [5, 0xfffffffe, 7, $address, ...$application];
    $bytes = fn(array $address, int $getType, int $count = 1)
        => request(5, 0xfffffffe, 7, $address, $getType, $layer, $count, $application[0] ?? 0);
    $row = fn(int $i) => host_row($table, $i);
    check_first_row(
        function: ["{$name}_get", $arguments($ip), PROCEDURE, $bytes($ip, 1)],
        bytes: host_bytes(...),
        row: $row,
        label: LABEL,
    );
    check_first_row(
        function: ["{$name}_getnext", $arguments($ipv6), PROCEDURE, $bytes($ipv6, 2)],
        bytes: host_bytes(...),
        row: $row,
        label: LABEL,
    );
    check_all_rows(
        function: ["{$name}_getbulk", [...$arguments($long), 40], PROCEDURE, $bytes($long, 3, 40)],
        bytes: host_bytes(...),
        row: $row,
        label: LABEL,
    );

    check_addresses(
        function: ["{$name}_get", $arguments([]), PROCEDURE, null],
        position: 3,
        request: fn(array $address) => $bytes($address, 1),
        label: LABEL,
    );

    [$kinds, $first] = $layer
        ? [['int', 'int', 'int', 'int', 'address', 'int'], [1, 2, 3, 4, 6]]
        : [['int', 'int', 'int', 'int', 'address'], [1, 2, 3, 4]];
    $last = count($kinds) + 1;
    $ones = fn(int $getType) => request(1, 1, 1, [1], $getType, $layer, 1, $layer);
    check_order(
        function: ["{$name}_get", [], PROCEDURE, $ones(1)],
        kinds: $kinds,
        before: $first,
        after: [5],
        label: LABEL,
    );
    check_order(
        function: ["{$name}_getbulk", [], PROCEDURE, $ones(3)],
        kinds: [...$kinds, 'int'],
        before: [$last, ...$first],
        after: [5],
        label: LABEL,
    );
}
done();
?>
--EXPECT--
OK
