--TEST--
The address map itself
--FILE--
<?php
require __DIR__ . '/calls.inc';

const PROCEDURE = 31;
const LABEL = 'addrmap_entry_get';

/** The addresses of row $i: the second row has no MAC address, the third none at all. */
function network(int $i): array
{
    return $i === 2 ? [] : [192, 168, 255, $i];
}

function mac(int $i): array
{
    return $i === 1 || $i === 2 ? [] : [0, 0x1a, 0x2b, 0x3c, 0xff, $i];
}

function entry_bytes(int $i): string
{
    return record(
        status: i32(100 + $i),
        addressMapTimeMark: u32(0xffffff00 + $i),
        protocolDirLocalIndex: i32(-300 - $i),
        addressMapNetworkAddress: byte_list(network($i)),
        addressMapSource: i32(500 + $i),
        addressMapPhysicalAddress: byte_list(mac($i)),
        addressMapLastChange: u32(0x80000000 + $i),
    );
}

function entry_row(int $i): array
{
    return [
        0 => 100 + $i,
        'status' => 100 + $i,
        'addressMapTimeMark' => 0xffffff00 + $i,
        'addressMapNetworkAddress' => network($i) ?: 0,
        'addressMapSource' => 500 + $i,
        'addressMapPhysicalAddress' => mac($i) ?: 0,
        'addressMapLastChange' => 0x80000000 + $i,
        'protocolDirLocalIndex' => -300 - $i,
    ];
}

function request(int $timeMark, int $protocol, array $address, int $source, int $getType, int $count = 1): string
{
    return record(
        addressMapTimeMark: u32($timeMark),
        protocolDirLocalIndex: i32($protocol),
        addressMapNetworkAddress: byte_list($address),
        addressMapSource: i32($source),
        getType: i32($getType),
        count: i32($count),
    );
}

$ip = [192, 168, 0, 7];
$ipv6 = range(230, 245);
$long = range(1, 255);
check_first_row(
    function: ['rmon_addrmap_entry_get', [0xfffffffe, 6, $ip, -8], PROCEDURE, request(0xfffffffe, 6, $ip, -8, 1)],
    bytes: entry_bytes(...),
    row: entry_row(...),
    label: LABEL,
);
check_first_row(
    function: ['rmon_addrmap_entry_getnext', [0xfffffffe, 6, $ipv6, -8], PROCEDURE, request(0xfffffffe, 6, $ipv6, -8, 2)],
    bytes: entry_bytes(...),
    row: entry_row(...),
    label: LABEL,
);
check_all_rows(
    function: ['rmon_addrmap_entry_getbulk', [0xfffffffe, 6, $long, -8, 40], PROCEDURE, request(0xfffffffe, 6, $long, -8, 3, 40)],
    bytes: entry_bytes(...),
    row: entry_row(...),
    label: LABEL,
);

check_addresses(
    function: ['rmon_addrmap_entry_getnext', [5, 6, null, 8], PROCEDURE, null],
    position: 2,
    request: fn(array $address) => request(5, 6, $address, 8, 2),
    label: LABEL,
);

// The link is looked up before anything but the number of rows is converted.
$ones = fn(int $getType) => request(1, 1, [1], 1, $getType);
check_order(
    function: ['rmon_addrmap_entry_get', [], PROCEDURE, $ones(1)],
    kinds: ['int', 'int', 'int', 'address', 'int'],
    before: [1],
    after: [2, 3, 5, 4],
    label: LABEL,
);
check_order(
    function: ['rmon_addrmap_entry_getbulk', [], PROCEDURE, $ones(3)],
    kinds: ['int', 'int', 'int', 'address', 'int', 'int'],
    before: [6, 1],
    after: [2, 3, 5, 4],
    label: LABEL,
);
done();
?>
--EXPECT--
OK
