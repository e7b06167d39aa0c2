--TEST--
DSMON addresses: 255 elements are accepted, 20 bytes are sent, and the length in a reply is not trusted
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

/*
 * Every place of an address: procedure, arguments (the address is null in
 * them), and the request with the address field and its length in their places.
 */
$places = [
    ['dsmon_hoststats_get', 138, [1, 2, 3, 4, null], fn(string $field, string $length) => record(
        dsmonHostCtlIndex: i32(1),
        dsmonHostTimeMark: u32(2),
        dsmonAggGroupIndex: u32(3),
        protocolDirLocalIndex: i32(4),
        dsmonHostAddress: $field,
        dsmonHostAddressLength: $length,
        getType: i32(1),
    )],
    ['dsmon_matrixsdstats_getnext', 141, [1, 2, 3, 4, 5, null, [7, 8, 9]], fn(string $field, string $length) => record(
        dsmonMatrixCtlIndex: i32(1),
        dsmonMatrixTimeMark: u32(2),
        dsmonAggGroupIndex: u32(3),
        dsmonMatrixNLIndex: i32(4),
        dsmonMatrixSourceAddress: $field,
        dsmonMatrixDestAddress: address([7, 8, 9]),
        dsmonMatrixALIndex: i32(5),
        dsmonMatrixSourceAddressLength: $length,
        dsmonMatrixDestAddressLength: i32(3),
        getType: i32(2),
    )],
    ['dsmon_matrixdsstats_get', 142, [1, 2, 3, 4, 5, [7, 8, 9], null], fn(string $field, string $length) => record(
        dsmonMatrixCtlIndex: i32(1),
        dsmonMatrixTimeMark: u32(2),
        dsmonAggGroupIndex: u32(3),
        dsmonMatrixNLIndex: i32(4),
        dsmonMatrixSourceAddress: address([7, 8, 9]),
        dsmonMatrixDestAddress: $field,
        dsmonMatrixALIndex: i32(5),
        dsmonMatrixSourceAddressLength: i32(3),
        dsmonMatrixDestAddressLength: $length,
        getType: i32(1),
    )],
];

/** What a script passes, the bytes that travel (the rest of the field is zero), and what the script holds then. */
$numbers = range(1, 255);
$texts = array_map(strval(...), $numbers);
$object = new stdClass();
$passed = [
    'none' => [[], [], []],
    'IPv4' => [[10, 200, 0, 255], [10, 200, 0, 255], [10, 200, 0, 255]],
    'all of the field' => [range(231, 250), range(231, 250), range(231, 250)],
    'one more' => [array_slice($texts, 0, 21), range(1, 20), range(1, 21)],
    'as many as are taken' => [$texts, range(1, 20), $numbers],
    'low bytes of what becomes an integer' => [
        ['10', 300, -1, 1.9, true, null, 'x', '7 apples', 4294967299],
        [10, 44, 255, 1, 1, 0, 0, 7, 3],
        [10, 300, -1, 1, 1, 0, 0, 7, 4294967299],
    ],
    'in the order of the array, not of its keys' => [
        [3 => '1', 1 => '2', 'last' => '3'],
        [1, 2, 3],
        [3 => 1, 1 => 2, 'last' => 3],
    ],
    'a text' => ['10', [], '10'],
    'an integer' => [10, [], 10],
    'null' => [null, [], null],
    'an object' => [$object, [], $object],
];

foreach ($places as [$function, $procedure, $arguments, $request]) {
    $place = array_search(null, $arguments, true);
    foreach ($passed as $case => [$address, $bytes, $held]) {
        of($case, function () use ($function, $procedure, $arguments, $request, $place, $address, $bytes, $held): void {
            $arguments[$place] = &$address;
            $record = $request(address($bytes), i32(count($bytes)));
            expect_exchange(
                function: $function,
                arguments: $arguments,
                procedure: $procedure,
                request: $record,
                step: reply(i32(1)),
                value: FAILED_READ,
            );
            expect_same($held, $address, 'what the script holds');
        });
    }

    // One element too many is refused, and leaves the array as it was.
    $many = $before = array_map(strval(...), range(1, 256));
    $arguments[$place] = &$many;
    expect_no_call($function, [the_link(), ...$arguments], false, ['too many (256) elements in addr!']);
    expect_same($before, $many, 'what the script holds');
    // So does a bad link, which is looked at first.
    foreach ([$before, ['1']] as $given) {
        $many = $given;
        expect_no_call($function, [NO_LINK, ...$arguments], false, [NO_LINK . ' is not a RMON/RPC conn id!']);
        expect_same($given, $many, 'what the script holds');
    }
    unset($many);

    check_closed_by_handler($function, $arguments, $place);
}

// Of two addresses both are counted before either is converted; the first that is too long is named.
foreach (['dsmon_matrixsdstats_get', 'dsmon_matrixdsstats_getnext'] as $function) {
    $source = ['1', '2'];
    $arguments = [the_link(), 1, 2, 3, 4, 5, &$source, range(1, 256)];
    expect_no_call($function, $arguments, false, ['too many (256) elements in addr!']);
    expect_same(['1', '2'], $source, 'what the script holds');
    $source = range(1, 257);
    expect_no_call($function, $arguments, false, ['too many (257) elements in addr!']);
    unset($source);
}

// A literal is never written to.
for ($round = 0; $round < 2; $round++) {
    $earlier = count(the_agent()->calls());
    the_agent()->add(reply(i32(1)));
    dsmon_hoststats_get(the_link(), 1, 2, 3, 4, ['10', '20', ['30']]);
    expect_call(the_agent(), $earlier + 1, 138, $places[0][3](address([10, 20, 1]), i32(3)));
}

// ---- Replies -------------------------------------------------------------------

/** Lengths that an agent may claim, and how many of the twenty bytes are shown. */
$claims = [
    0 => 0, 1 => 1, 4 => 4, 16 => 16, 17 => 17, 20 => 20, 21 => 20, 255 => 20, 0x7fffffff => 20,
    -1 => 0, -20 => 0, -0x80000000 => 0,
];
$source = range(236, 255);
$destination = range(1, 20);
$host = fn(int $length) => record(
    status: i32(0),
    dsmonHostCtlIndex: i32(1),
    dsmonHostTimeMark: u32(2),
    dsmonAggGroupIndex: u32(3),
    protocolDirLocalIndex: i32(4),
    dsmonHostAddress: address($source),
    dsmonHostAddressLength: i32($length),
    dsmonHostInHCPkts: u64('0x7878787878787878'),
    dsmonHostInHCOctets: u64(0),
    dsmonHostOutHCPkts: u64(0),
    dsmonHostOutHCOctets: u64(0),
);
$pair = fn(int $source_length, int $destination_length) => record(
    status: i32(0),
    dsmonMatrixCtlIndex: i32(1),
    dsmonMatrixTimeMark: u32(2),
    dsmonAggGroupIndex: u32(3),
    dsmonMatrixNLIndex: i32(4),
    dsmonMatrixSourceAddress: address($source),
    dsmonMatrixDestAddress: address($destination),
    dsmonMatrixALIndex: i32(5),
    dsmonMatrixSourceAddressLength: i32($source_length),
    dsmonMatrixDestAddressLength: i32($destination_length),
    hcPkts: u64('0x7878787878787878'),
    hcOctets: u64(0),
);
/** The bytes that a claim makes of an address; an address of none is the integer 0. */
$shown = fn(array $address, int $count) => array_slice($address, 0, $count) ?: 0;

foreach ($claims as $claim => $count) {
    of("a length of $claim", function () use ($claim, $count, $host, $pair, $shown, $source, $destination): void {
        the_agent()->add(reply($host($claim)), reply($pair($claim, 3)), reply($pair(2, $claim)));
        $row = dsmon_hoststats_get(the_link(), 1, 2, 3, 4, []);
        expect_same($shown($source, $count), $row['dsmonHostAddress']);
        $row = dsmon_matrixsdstats_get(the_link(), 1, 2, 3, 4, 5, [], []);
        expect_same($shown($source, $count), $row['dsmonMatrixSourceAddress']);
        expect_same([1, 2, 3], $row['dsmonMatrixDestAddress']);
        $row = dsmon_matrixdsstats_get(the_link(), 1, 2, 3, 4, 5, [], []);
        expect_same([236, 237], $row['dsmonMatrixSourceAddress']);
        expect_same($shown($destination, $count), $row['dsmonMatrixDestAddress']);
    });
}

done();
?>
--EXPECT--
OK
