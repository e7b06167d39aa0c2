--TEST--
Filters: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$row = sample([
    'status' => 'i32',
    'filterIndex' => 'u32',
    'filterChannelIndex' => 'u32',
    'filterPktDataOffset' => 'u32',
    'filterPktData' => 'byte_list',
    'filterPktDataMask' => 'byte_list',
    'filterPktDataNotMask' => 'byte_list',
    'filterPktStatus' => 'u32',
    'filterPktStatusMask' => 'u32',
    'filterPktStatusNotMask' => 'u32',
    'filterOwner' => 'text',
    'filterStatus' => 'i32',
    'filterProtocolDirDataLocalIndex' => 'u32',
    'filterProtocolDirLocalIndex' => 'u32',
]);
// Scripts see the three byte lists last.
$keys = [
    'filterIndex',
    'filterChannelIndex',
    'filterPktDataOffset',
    'filterPktStatus',
    'filterPktStatusMask',
    'filterPktStatusNotMask',
    'filterOwner',
    'filterStatus',
    'filterProtocolDirDataLocalIndex',
    'filterProtocolDirLocalIndex',
    'filterPktData',
    'filterPktDataMask',
    'filterPktDataNotMask',
];
check_row_readers(table: 'rmon_filter', procedure: 43, row: $row, label: 'filter_get', keys: $keys);

// Byte lists of every length; an empty one is an empty array.
foreach ([0, 1, 15, 16, 17, 1000] as $length) {
    $bytes = array_map(fn(int $i) => $i * 7 & 255, array_keys(array_fill(0, $length, 0)));
    foreach (['filterPktData', 'filterPktDataMask', 'filterPktDataNotMask'] as $name) {
        expect_exchange(
            function: 'rmon_filter_get',
            arguments: [1],
            procedure: 43,
            request: record(index: i32(1), getType: i32(1)),
            step: reply(wire($row, ...[$name => $bytes])),
            value: shown($row, $keys, ...[$name => $bytes]),
        );
    }
}

$sent = [
    'status' => ['i32', 0],
    'filterIndex' => ['u32', 21],
    'filterChannelIndex' => ['u32', 22],
    'filterPktDataOffset' => ['u32', 23],
    'filterPktData' => ['byte_list', [1, 2]],
    'filterPktDataMask' => ['byte_list', [3]],
    'filterPktDataNotMask' => ['byte_list', range(100, 130)],
    'filterPktStatus' => ['u32', 27],
    'filterPktStatusMask' => ['u32', 28],
    'filterPktStatusNotMask' => ['u32', 29],
    'filterOwner' => ['text', 'an owner'],
    'filterStatus' => ['i32', 31],
    'filterProtocolDirDataLocalIndex' => ['u32', 32],
    'filterProtocolDirLocalIndex' => ['u32', 33],
];
$names = [
    'filterIndex',
    'filterChannelIndex',
    'filterPktDataOffset',
    'filterPktData',
    'filterPktDataMask',
    'filterPktDataNotMask',
    'filterPktStatus',
    'filterPktStatusMask',
    'filterPktStatusNotMask',
    'filterOwner',
    'filterStatus',
    'filterProtocolDirDataLocalIndex',
    'filterProtocolDirLocalIndex',
];
check_writer(
    function: 'rmon_filter_set',
    procedure: 44,
    sent: $sent,
    names: $names,
    label: 'rmon_filter_set',
    order: ['Link'],
    lists: ['filterPktData', 'filterPktDataMask', 'filterPktDataNotMask'],
);

// The lists, by the names that messages have for them.
$lists = ['filterPktData' => 'addr', 'filterPktDataMask' => 'dataMask', 'filterPktDataNotMask' => 'dataNotMask'];
foreach ($lists as $field => $name) {
    $with = fn(mixed $list) => arguments_of($sent, $names, ...[$field => $list]);
    $travels = fn(mixed $list, array|string $bytes) =>
        expect_exchange(
            function: 'rmon_filter_set',
            arguments: $with($list),
            procedure: 44,
            request: wire($sent, ...[$field => $bytes]),
            step: reply(i32(0)),
            value: 0,
        );

    // The low eight bits of each element, in the array's own order, however many they are.
    $travels([255, 256, -1, 300, 1 << 40 | 5], [255, 0, 255, 44, 5]);
    $travels([2 => 30, 'x' => 10, 1 => 20], [30, 10, 20]);
    $holes = [1, 2, 3, 4];
    unset($holes[1]);
    $travels($holes, [1, 3, 4]);
    $number = 9;
    $travels([8, &$number], [8, 9]);
    foreach ([16, 17, 255, 256, 70000] as $length) {
        $travels(array_fill(0, $length, 200), str_repeat("\xc8", $length));
    }

    // Anything but an array is an empty list.
    foreach (['', 'text', 17, 1.5, null, true, the_link(), new ArrayObject([1])] as $other) {
        $travels($other, '');
    }
    $travels([], '');

    // Elements aren't converted: the first that is no integer is told by its type.
    $refused = fn(array $list, int $type) =>
        expect_no_call('rmon_filter_set', [the_link(), ...$with($list)], false, ["$name element not a LONG ($type)!"]);
    $refused([255, 256, 'x'], 3);
    $refused([255, 256, 'x', 1.5], 3);
    $others = [[null, 0], [1.0, 2], ['1', 3], [[1], 4], [new stdClass(), 5], [true, 6], [false, 6], [the_link(), 7]];
    foreach ($others as [$element, $type]) {
        $refused([$element], $type);
        $refused([...range(1, 40), $element], $type);
    }
    $text = '1';
    $refused([&$text], 3);
    expect_same('1', $text);

    // The arguments in front of a refused list are converted, those behind it not.
    $objects = array_map(fn(int $number) => observed("Argument$number"), range(2, 14));
    $objects[array_search($field, $names, true)] = ['x'];
    expect_no_call('rmon_filter_set', [the_link(), ...$objects], false, [
        number_message('Argument2'),
        number_message('Argument3'),
        number_message('Argument4'),
        "$name element not a LONG (3)!",
    ]);
}

// The first of several bad lists is the one that is reported.
$bad = arguments_of($sent, $names, filterPktData: [null], filterPktDataMask: [1.5], filterPktDataNotMask: ['x']);
expect_no_call('rmon_filter_set', [the_link(), ...$bad], false, ['addr element not a LONG (0)!']);
expect_no_call('rmon_filter_set', [NO_LINK, ...$bad], false, [NO_LINK . ' is not a RMON/RPC conn id!']);

// The caller's arrays stay as they are.
[$data, $mask, $notMask] = [[1, 300], ['x' => 5], [7]];
the_agent()->add(reply(i32(0)));
rmon_filter_set(the_link(), 1, 2, 3, $data, $mask, $notMask, 4, 5, 6, 'owner', 7, 8, 9);
expect_same([[1, 300], ['x' => 5], [7]], [$data, $mask, $notMask]);

// The bytes are those at the time of the call, whatever a later conversion does to the array.
$data = range(1, 20);
$owner = new class {
    public function __toString(): string
    {
        $GLOBALS['data'] = null;
        return 'owner';
    }
};
$arguments = arguments_of($sent, $names, filterOwner: $owner);
expect_exchange(
    function: function (mixed $link) use (&$data, $arguments): mixed {
        $arguments[3] = &$data;
        return rmon_filter_set($link, ...$arguments);
    },
    arguments: [],
    procedure: 44,
    request: wire($sent, filterPktData: range(1, 20), filterOwner: 'owner'),
    step: reply(i32(0)),
    value: 0,
);

done();
--EXPECT--
OK
