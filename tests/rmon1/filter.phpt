--TEST--
Filters: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'filterIndex' => 'unsigned',
    'filterChannelIndex' => 'unsigned',
    'filterPktDataOffset' => 'unsigned',
    'filterPktData' => 'bytes',
    'filterPktDataMask' => 'bytes',
    'filterPktDataNotMask' => 'bytes',
    'filterPktStatus' => 'unsigned',
    'filterPktStatusMask' => 'unsigned',
    'filterPktStatusNotMask' => 'unsigned',
    'filterOwner' => 'text',
    'filterStatus' => 'int',
    'filterProtocolDirDataLocalIndex' => 'unsigned',
    'filterProtocolDirLocalIndex' => 'unsigned',
];
// Scripts see the three byte lists last.
$order = [
    'status',
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
check_row_readers(table: 'rmon_filter', procedure: 43, label: 'filter_get', fields: $fields, order: $order);

// Byte lists of every length; an empty one is an empty array.
foreach ([0, 1, 15, 16, 17, 1000] as $length) {
    $bytes = array_map(fn(int $i) => $i * 7 & 255, array_keys(array_fill(0, $length, 0)));
    foreach (['filterPktData', 'filterPktDataMask', 'filterPktDataNotMask'] as $name) {
        $row = array_replace(sample($fields), [$name => [byte_list($bytes), $bytes]]);
        expect_exchange(
            function: 'rmon_filter_get',
            arguments: [1],
            procedure: 43,
            request: key_of(1, 1),
            step: reply(wire($row)),
            value: shown($row, $order),
        );
    }
}

$request = fn(
    int $index,
    int $channel,
    int $offset,
    mixed $data,
    mixed $mask,
    mixed $notMask,
    int $status,
    int $statusMask,
    int $statusNotMask,
    string $owner,
    int $rowStatus,
    int $dataLocalIndex,
    int $localIndex,
) => record(
    status: i32(0),
    filterIndex: u32($index),
    filterChannelIndex: u32($channel),
    filterPktDataOffset: u32($offset),
    filterPktData: byte_list($data),
    filterPktDataMask: byte_list($mask),
    filterPktDataNotMask: byte_list($notMask),
    filterPktStatus: u32($status),
    filterPktStatusMask: u32($statusMask),
    filterPktStatusNotMask: u32($statusNotMask),
    filterOwner: text($owner),
    filterStatus: i32($rowStatus),
    filterProtocolDirDataLocalIndex: u32($dataLocalIndex),
    filterProtocolDirLocalIndex: u32($localIndex),
);
$arguments = [21, 22, 23, [1, 2], [3], range(100, 130), 27, 28, 29, 'an owner', 31, 32, 33];
check_writer(
    function: 'rmon_filter_set',
    procedure: 44,
    label: 'rmon_filter_set',
    arguments: $arguments,
    request: $request,
    linkedFirst: true,
);

$lists = [3 => 'addr', 4 => 'dataMask', 5 => 'dataNotMask'];
foreach ($lists as $place => $name) {
    $with = fn(mixed $list) => array_replace($arguments, [$place => $list]);
    $sent = fn(mixed $list, array|string $bytes) =>
        expect_exchange(
            function: 'rmon_filter_set',
            arguments: $with($list),
            procedure: 44,
            request: $request(...$with($bytes)),
            step: reply(i32(0)),
            value: 0,
        );

    // The low eight bits of each element, in the array's own order, however many they are.
    $sent([255, 256, -1, 300, 1 << 40 | 5], [255, 0, 255, 44, 5]);
    $sent([2 => 30, 'x' => 10, 1 => 20], [30, 10, 20]);
    $holes = [1, 2, 3, 4];
    unset($holes[1]);
    $sent($holes, [1, 3, 4]);
    $number = 9;
    $sent([8, &$number], [8, 9]);
    foreach ([16, 17, 255, 256, 70000] as $length) {
        $sent(array_fill(0, $length, 200), str_repeat("\xc8", $length));
    }

    // Anything but an array is an empty list.
    foreach (['', 'text', 17, 1.5, null, true, the_link(), new ArrayObject([1])] as $other) {
        $sent($other, '');
    }
    $sent([], '');

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
    $objects[$place] = ['x'];
    expect_no_call('rmon_filter_set', [the_link(), ...$objects], false, [
        number_message('Argument2'),
        number_message('Argument3'),
        number_message('Argument4'),
        "$name element not a LONG (3)!",
    ]);
}

// The first of several bad lists is the one that is reported.
$bad = array_replace($arguments, [3 => [null], 4 => [1.5], 5 => ['x']]);
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
$bytes = $request(1, 2, 3, range(1, 20), '', '', 4, 5, 6, 'owner', 7, 8, 9);
$number = count(the_agent()->calls()) + 1;
the_agent()->add(reply(i32(0)));
expect_same(0, rmon_filter_set(the_link(), 1, 2, 3, $data, [], [], 4, 5, 6, $owner, 7, 8, 9));
expect_call(the_agent(), $number, 44, $bytes);

done();
--EXPECT--
OK
