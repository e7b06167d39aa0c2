<?php
require __DIR__ . '/calls.inc';

const PROCEDURE = 34;
const LABEL = 'hlhost_get';

/** The address of row $i, and what a script sees of it: the second row has none. */
function host(int $i, bool $shown): mixed
{
    $address = $i === 1 ? [] : [10, 0, 255, $i];
    return $shown && $address === [] ? 0 : $address;
}

/** Counters that a float holds exactly, one that it can't, and the ends of the range. */
function host_bytes(int $i): string
{
    return record(
        status: i32(100 + $i),
        timeMark: u32(0xffffff00 + $i),
        nlHostAddress: byte_list(host($i, false)),
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

function nlhost_row(int $i): array
{
    return [
        0 => 100 + $i,
        'status' => 100 + $i,
        'nlHostTimeMark' => 0xffffff00 + $i,
        'nlHostAddress' => host($i, true),
        'nlHostInPkts' => 3000.0 + $i,
        'nlHostOutPkts' => 18446744073709551616.0,
        'nlHostInOctets' => 9223372036854775808.0,
        'nlHostOutOctets' => 9223372036854777856.0,
        'nlHostOutMacNonUnicastPkts' => 30064771072.0 + $i,
        'nlHostCreateTime' => 2147483648 + $i,
        'hlHostControlIndex' => -900 - $i,
        'protocolDirLocalIndex' => 1000 + $i,
    ];
}

function alhost_row(int $i): array
{
    return [
        0 => 100 + $i,
        'status' => 100 + $i,
        'alHostTimeMark' => 0xffffff00 + $i,
        'nlHostAddress' => host($i, true),
        'alHostInPkts' => 3000.0 + $i,
        'alHostOutPkts' => 18446744073709551616.0,
        'alHostInOctets' => 9223372036854775808.0,
        'alHostOutOctets' => 9223372036854777856.0,
        'alHostCreateTime' => 2147483648 + $i,
        'hlHostControlIndex' => -900 - $i,
        'protocolDirLocalIndex' => 1000 + $i,
        'protocolDirLocalIndex2' => 1100 + $i,
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
$index = [5, 0xfffffffe, 7];
$get = ['rmon_nlhost_get', [...$index, $ip], PROCEDURE, request(5, 0xfffffffe, 7, $ip, 1, 0)];
$getnext = ['rmon_nlhost_getnext', [...$index, $ipv6], PROCEDURE, request(5, 0xfffffffe, 7, $ipv6, 2, 0)];
$getbulk = ['rmon_nlhost_getbulk', [...$index, $long, 40], PROCEDURE, request(5, 0xfffffffe, 7, $long, 3, 0, 40)];
check_first_row($get, host_bytes(...), nlhost_row(...), LABEL);
check_first_row($getnext, host_bytes(...), nlhost_row(...), LABEL);
check_all_rows($getbulk, host_bytes(...), nlhost_row(...), LABEL);

$get = ['rmon_alhost_get', [...$index, $ip, 9], PROCEDURE, request(5, 0xfffffffe, 7, $ip, 1, 1, 1, 9)];
$getnext = ['rmon_alhost_getnext', [...$index, $ipv6, 9], PROCEDURE, request(5, 0xfffffffe, 7, $ipv6, 2, 1, 1, 9)];
$getbulk = ['rmon_alhost_getbulk', [...$index, $long, 9, 40], PROCEDURE, request(5, 0xfffffffe, 7, $long, 3, 1, 40, 9)];
check_first_row($get, host_bytes(...), alhost_row(...), LABEL);
check_first_row($getnext, host_bytes(...), alhost_row(...), LABEL);
check_all_rows($getbulk, host_bytes(...), alhost_row(...), LABEL);

foreach (['nlhost' => 0, 'alhost' => 1] as $table => $layer) {
    // The application-layer protocol stands behind the address, before the number of rows.
    [$kinds, $first] = $layer ? ['iiiiai', [1, 2, 3, 4, 6]] : ['iiiia', [1, 2, 3, 4]];
    $last = strlen($kinds) + 1;
    $ones = fn(int $getType) => request(1, 1, 1, [1], $getType, $layer, 1, $layer);
    check_order(["rmon_{$table}_get", [], PROCEDURE, $ones(1)], $kinds, $first, [5], LABEL);
    check_order(["rmon_{$table}_getbulk", [], PROCEDURE, $ones(3)], $kinds . 'i', [$last, ...$first], [5], LABEL);

    $application = $layer ? [9] : [];
    check_addresses(
        ["rmon_{$table}_get", [5, 6, 7, null, ...$application], PROCEDURE, null],
        3,
        fn(array $address) => request(5, 6, 7, $address, 1, $layer, 1, $application[0] ?? 0),
        LABEL,
    );
}
done();
?>
