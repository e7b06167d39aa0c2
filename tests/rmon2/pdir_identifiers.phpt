--TEST--
Identifiers and parameters of the protocol directory: what is accepted, what is refused, and when
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/pdir.inc';

$link = the_link();

/** What is sent of two byte lists; the agent answers that there is no row. */
function expect_sent(mixed $id, mixed $parameters, array $idBytes, array $parameterBytes): void
{
    expect_exchange(
        function: 'rmon_pdir_get',
        arguments: [$id, $parameters],
        procedure: 19,
        request: wire(PDIR_KEY, protocolDirID: $idBytes, protocolDirParameters: $parameterBytes),
        step: reply(rows()),
        value: false,
    );
}

// Anything but an array is an empty list; objects are not asked for an integer.
foreach (['10', 10, 1.5, true, null, observed('Argument1')] as $other) {
    expect_sent($other, [7], [], [7]);
    expect_sent([7], $other, [7], []);
}
expect_sent([0x1ff, -1, 256, PHP_INT_MIN], [PHP_INT_MAX], [0xff, 0xff, 0, 0], [0xff]);
expect_sent(range(1, 255), range(1, 255), range(1, 255), range(1, 255));

// Elements are taken as they lie in the array, whatever their keys; a hole is passed over.
$mixed = ['z' => 26, 5 => 50, 'a' => 1, 2 => 2, 9 => 'gone'];
unset($mixed[9]);
$seven = 7;
$packed = [4, &$seven, 6];
unset($packed[0]);
expect_sent($mixed, $packed, [26, 50, 1, 2], [7, 6]);

// The numbers of the types.
$types = [
    [null, 0], [2.0, 2], ['3', 3], [[4], 4], [observed('Argument5'), 5], [false, 6], [true, 6], [fopen(__FILE__, 'r'), 7],
];
foreach ($types as [$element, $number]) {
    $message = "addr element not a LONG ($number)!";
    $set = fn(mixed $link, mixed $id, mixed $parameters)
        => fn() => rmon_pdir_set($link, $id, $parameters, 'd', 1, 2, 3, 4, 'o', 5);
    $to = &$element;
    foreach ([[1, $element], [1, &$to], ['key' => 1, 'other' => $element, 'then' => []]] as $list) {
        $before = $list;
        expect_no_call(fn() => rmon_pdir_get($link, $list, []), [], false, [$message]);
        expect_no_call(fn() => rmon_pdir_getnext($link, [1], $list), [], false, [$message]);
        expect_no_call(fn() => rmon_pdir_getbulk($link, $list, ['both'], 5), [], false, [$message]);
        expect_no_call($set($link, $list, []), [], false, [$message]);
        expect_no_call($set($link, [1], $list), [], false, [$message]);
        expect_same($before, $list, "the caller's array");
    }
}

// Too many elements are reported before the type of any of them.
foreach ([256, 1000] as $count) {
    $list = array_fill(0, $count, 'x');
    $message = "too many ($count) elements in addr!";
    expect_no_call(fn() => rmon_pdir_get($link, $list, ['x']), [], false, [$message]);
    expect_no_call(fn() => rmon_pdir_getnext($link, [1], $list), [], false, [$message]);
    expect_no_call(fn() => rmon_pdir_getbulk($link, $list, [], 5), [], false, [$message]);
    expect_no_call($set($link, $list, ['x']), [], false, [$message]);
    expect_no_call($set($link, [1], $list), [], false, [$message]);
}

// Readers look the link up first; the writer reports its lists before it, and before it converts anything else.
$refused = ['987654 is not a RMON/RPC conn id!'];
$many = array_fill(0, 256, 1);
expect_no_call(fn() => rmon_pdir_get(987654, ['x'], []), [], false, $refused);
expect_no_call(fn() => rmon_pdir_getnext(987654, [], $many), [], false, $refused);
expect_no_call(fn() => rmon_pdir_getbulk(987654, ['x'], [], 5), [], false, $refused);
expect_no_call($set(987654, ['x'], []), [], false, ['addr element not a LONG (3)!']);
expect_no_call($set(987654, [], $many), [], false, ['too many (256) elements in addr!']);
expect_no_call($set(987654, ['x'], $many), [], false, ['addr element not a LONG (3)!']);
expect_no_call(
    fn() => rmon_pdir_set(
        observed('Argument1'), [], ['x'], ...array_map(fn(int $n) => observed("Argument$n"), range(4, 10)),
    ),
    [],
    false,
    ['addr element not a LONG (3)!'],
);
done();
?>
--EXPECT--
OK
