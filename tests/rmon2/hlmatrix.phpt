--TEST--
The four views of the higher-layer matrix
--FILE--
<?php
require __DIR__ . '/calls.inc';

const PROCEDURE = 37;
// All views report under one label.
const LABEL = 'nlmatrix_get';

/** The addresses of row $i: the second row has no source, the third no destination. */
function source(int $i): array
{
    return $i === 1 ? [] : [10, 0, 255, $i];
}

function dest(int $i): array
{
    return $i === 2 ? [] : [172, 16, 128, $i, 1, 2];
}

function pair_bytes(int $i): string
{
    return record(
        status: i32(100 + $i),
        timeMark: u32(0xffffff00 + $i),
        sourceAddress: byte_list(source($i)),
        destAddress: byte_list(dest($i)),
        pkts: u64('0xffffffffffffffff'),
        octets: u64(0x600000000 + $i),
        createTime: u32(0xffffffff - $i),
        hlMatrixControlIndex: i32(-800 - $i),
        protocolDirLocalIndex: i32(900 + $i),
        protocolDirLocalIndex2: i32(1000 + $i),
    );
}

/** What a view shows of row $i; the addresses of the application-layer views keep their network-layer names. */
function pair_row(string $layer, string $direction, int $i): array
{
    $view = "{$layer}Matrix{$direction}";
    return [
        0 => 100 + $i,
        'status' => 100 + $i,
        "{$view}TimeMark" => 0xffffff00 + $i,
        "nlMatrix{$direction}SourceAddress" => source($i) ?: 0,
        "nlMatrix{$direction}DestAddress" => dest($i) ?: 0,
        "{$view}Pkts" => 18446744073709551616.0,
        "{$view}Octets" => 25769803776.0 + $i,
        "{$view}CreateTime" => 4294967295.0 - $i,
        'hlMatrixControlIndex' => -800 - $i,
        'protocolDirLocalIndex' => 900 + $i,
        ...($layer === 'al' ? ['protocolDirLocalIndex2' => 1000 + $i] : []),
    ];
}

function request(
    int $index,
    int $timeMark,
    int $protocol,
    array $source,
    array $dest,
    int $application,
    int $getType,
    int $applicationLayer,
    int $direction,
    int $count,
): string {
    return record(
        hlMatrixControlIndex: i32($index),
        timeMark: u32($timeMark),
        protocolDirLocalIndex: i32($protocol),
        protocolDirLocalIndex2: i32($application),
        sourceAddress: byte_list($source),
        destAddress: byte_list($dest),
        getType: i32($getType),
        applicationLayer: i32($applicationLayer),
        direction: i32($direction),
        count: i32($count),
    );
}

$source = [192, 168, 0, 7];
$dest = range(230, 245);
$views = [['nl', 'SD', 0, 0], ['nl', 'DS', 0, 1], ['al', 'SD', 1, 0], ['al', 'DS', 1, 1]];
foreach ($views as [$layerName, $directionName, $layer, $direction]) {
    $view = strtolower("{$layerName}Matrix_$directionName");
    // The application-layer protocol stands behind the addresses, before the number of rows.
    $application = $layer ? [-9] : [];
    $arguments = [5, 0xfffffffe, 7, $source, $dest, ...$application];
    $bytes = fn(int $getType, int $count)
        => request(5, 0xfffffffe, 7, $source, $dest, $application[0] ?? 0, $getType, $layer, $direction, $count);
    $row = fn(int $i) => pair_row($layerName, $directionName, $i);
    check_first_row(
        function: ["rmon_{$view}_get", $arguments, PROCEDURE, $bytes(1, 1)],
        bytes: pair_bytes(...),
        row: $row,
        label: LABEL,
    );
    check_first_row(
        function: ["rmon_{$view}_getnext", $arguments, PROCEDURE, $bytes(2, 1)],
        bytes: pair_bytes(...),
        row: $row,
        label: LABEL,
    );
    check_all_rows(
        function: ["rmon_{$view}_getbulk", [...$arguments, 40], PROCEDURE, $bytes(3, 40)],
        bytes: pair_bytes(...),
        row: $row,
        label: LABEL,
    );

    foreach ([3, 4] as $position) {
        $addresses = fn(array $address) => array_replace([$source, $dest], [$position - 3 => $address]);
        check_addresses(
            function: ["rmon_{$view}_getnext", $arguments, PROCEDURE, null],
            position: $position,
            request: fn(array $address) => request(
                5, 0xfffffffe, 7, ...$addresses($address), application: $application[0] ?? 0,
                getType: 2, applicationLayer: $layer, direction: $direction, count: 1,
            ),
            label: LABEL,
        );
    }

    $ones = fn(int $getType) => request(1, 1, 1, [1], [1], $layer, $getType, $layer, $direction, 1);
    [$kinds, $first] = $layer
        ? [['int', 'int', 'int', 'int', 'address', 'address', 'int'], [1, 2, 3, 4, 7]]
        : [['int', 'int', 'int', 'int', 'address', 'address'], [1, 2, 3, 4]];
    $last = count($kinds) + 1;
    check_order(
        function: ["rmon_{$view}_get", [], PROCEDURE, $ones(1)],
        kinds: $kinds,
        before: $first,
        after: [5, 6],
        label: LABEL,
    );
    check_order(
        function: ["rmon_{$view}_getbulk", [], PROCEDURE, $ones(3)],
        kinds: [...$kinds, 'int'],
        before: [$last, ...$first],
        after: [5, 6],
        label: LABEL,
    );
}

// One array given twice is converted once and sent twice.
$both = ['1', '2'];
expect_exchange(
    function: function (mixed $link) use (&$both) {
        return rmon_nlmatrix_sd_get($link, 3, 4, 5, $both, $both);
    },
    arguments: [],
    procedure: PROCEDURE,
    request: request(3, 4, 5, [1, 2], [1, 2], 0, 1, 0, 0, 1),
    step: reply(rows()),
    value: false,
);
expect_same([1, 2], $both, 'an array given twice');
done();
?>
--EXPECT--
OK
