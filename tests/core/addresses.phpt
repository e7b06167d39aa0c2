--TEST--
Address arguments: internal order, low bytes, conversion in place, limits
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$agent = scripted_agent(always(reply(rows())));
$link = rmon_connect('127.0.0.1');
$id = get_resource_id($link);
$sent = 0;

/** The call of rmon_host_get($link, 9, $address) carries these bytes. */
function expect_sent(array|string $bytes): void
{
    global $agent, $sent;
    expect_call(
        $agent,
        ++$sent,
        11,
        record(hostIndex: i32(9), hostAddress: byte_list($bytes), count: i32(1), getType: i32(1)),
    );
}

/** The call sends these bytes and leaves the caller's variable as $after. */
function expect_address(mixed $address, array $bytes, mixed $after, array $messages = []): void
{
    global $link;
    [$result, $said] = warnings(function () use (&$address, $link) {
        return rmon_host_get($link, 9, $address);
    });
    expect_same(false, $result, 'no rows');
    expect_same(array_map(fn ($text) => [E_WARNING, $text], $messages), $said, 'messages');
    expect_sent($bytes);
    expect_same($after, $address, "the caller's variable");
}

expect_address([10, 1, 1, 255], [10, 1, 1, 255], [10, 1, 1, 255]);
expect_address([], [], []);
expect_address(['10', ' 1', '0x1F', '12abc'], [10, 1, 0, 12], [10, 1, 0, 12]);
expect_address([300, -1, 256, 511.9, true, null], [44, 255, 0, 255, 1, 0], [300, -1, 256, 511, 1, 0]);
expect_address([PHP_INT_MAX, PHP_INT_MIN], [255, 0], [PHP_INT_MAX, PHP_INT_MIN]);
expect_address([3 => 1, 1 => 2, 'x' => 3, 0 => '4'], [1, 2, 3, 4], [3 => 1, 1 => 2, 'x' => 3, 0 => 4]);
$holes = [1, 2, '3', 4];
unset($holes[1]);
expect_address($holes, [1, 3, 4], [0 => 1, 2 => 3, 3 => 4]);
expect_address([[], [0]], [0, 1], [0, 1]);
expect_address([new stdClass, 7], [1, 7], [1, 7], ['Object of class stdClass could not be converted to int']);
expect_address(range(1, 255), range(1, 255), range(1, 255));

// Anything but an array is an empty address.
foreach (['10.1.1.1', 5, null, true, 1.5] as $value) {
    expect_address($value, [], $value);
}
expect_address($object = new stdClass, [], $object, ['Object of class stdClass could not be converted to int']);

// Copies, literals and references.
$address = ['10', '20'];
$copy = $address;
rmon_host_get($link, 9, $address);
expect_sent([10, 20]);
expect_same([10, 20], $address, 'the variable that was passed');
expect_same(['10', '20'], $copy, 'a copy made before');
for ($i = 0; $i < 3; $i++) {
    rmon_host_get($link, 9, ['1', '2', '3']);
    expect_sent([1, 2, 3]);
}
const LITERAL = ['7', '8'];
rmon_host_get($link, 9, LITERAL);
expect_sent([7, 8]);
expect_same(['7', '8'], LITERAL, 'a constant');
rmon_host_get($link, 9, (fn () => ['4', '5'])());
expect_sent([4, 5]);

$byte = '99';
$address = ['1', &$byte];
rmon_host_get($link, 9, $address);
expect_sent([1, 99]);
expect_same(99, $byte, 'the variable behind a reference');
$object = new class {
    public string $text = '12';
    public array $address = ['5', '6'];
};
$address = [&$object->text];
rmon_host_get($link, 9, $address);
expect_sent([12]);
expect_same('12', $object->text, 'a typed property keeps its type');
rmon_host_get($link, 9, $object->address);
expect_sent([5, 6]);
expect_same([5, 6], $object->address, 'an array in a typed property');
$recursive = ['3'];
$recursive[] = &$recursive;
rmon_host_get($link, 9, $recursive);
expect_sent([3, 1]);
$recursive = null; // the array holds itself
$nested = ['a' => ['b' => ['8', '9']]];
rmon_host_get($link, 9, $nested['a']['b']);
expect_sent([8, 9]);
expect_same(['a' => ['b' => [8, 9]]], $nested, 'an element of an array');

// Too many, and a refused link: nothing is sent, nothing converted.
foreach ([256, 300, 100000] as $count) {
    $address = array_fill(0, $count, '1');
    expect_result(function () use ($link, &$address) {
        return rmon_host_get($link, 9, $address);
    }, false, ["too many ($count) elements in addr!"]);
    expect_same('1', $address[0], 'unconverted');
}
$address = ['1'];
expect_result(function () use (&$address) {
    return rmon_host_get(99999, 9, $address);
}, false, ['99999 is not a RMON/RPC conn id!']);
expect_same(['1'], $address, 'unconverted');
$many = array_fill(0, 300, 1);
expect_result(fn () => rmon_host_get(99999, 9, $many), false, ['99999 is not a RMON/RPC conn id!']);

// In the matrix the source is converted before the destination is counted.
foreach (['sd', 'ds'] as $view) {
    foreach (['get' => [], 'getnext' => [], 'getbulk' => [5]] as $mode => $count) {
        $function = "rmon_matrix_{$view}_$mode";
        $one = ['1', '2'];
        $two = array_fill(0, 256, '3');
        expect_result(function () use ($function, $link, &$one, &$two, $count) {
            return $function($link, 1, $one, $two, ...$count);
        }, false, ['too many (256) elements in addr!']);
        expect_same([1, 2], $one, "$function: the source");
        expect_same('3', $two[0], "$function: the destination");
        $one = $two;
        $two = ['4'];
        expect_result(function () use ($function, $link, &$one, &$two, $count) {
            return $function($link, 1, $one, $two, ...$count);
        }, false, ['too many (256) elements in addr!']);
        expect_same(['3', ['4']], [$one[0], $two], "$function: a source that is refused");
    }
}

// Elsewhere both addresses are counted before either is converted.
foreach ([
    fn (&$one, &$two) => rmon_nlmatrix_ds_get($link, 1, 0, 1, $one, $two),
    fn (&$one, &$two) => rmon_almatrix_sd_getbulk($link, 1, 0, 1, $one, $two, 2, 5),
    fn (&$one, &$two) => dsmon_matrixsdstats_get($link, 1, 0, 1, 1, 2, $one, $two),
    fn (&$one, &$two) => rmon_art_rpt_get($link, 1, 2, $one, $two),
] as $call) {
    $one = ['1', '2'];
    $two = array_fill(0, 257, '3');
    expect_result(function () use ($call, &$one, &$two) {
        return $call($one, $two);
    }, false, ['too many (257) elements in addr!']);
    expect_same(['1', '2'], $one, 'the first address');
    expect_same('3', $two[0], 'the second address');
}

// User code in a conversion: it may change the array, let go of what is walked, close the link.
$address = ['1', new stdClass, &$byte, '4'];
set_error_handler(function () use (&$address, &$byte): bool {
    $address = null;
    $byte = 'changed';
    return true;
});
rmon_host_get($link, 9, $address);
restore_error_handler();
expect_sent([1, 1, 0, 4]);
expect_same([1, 1, 0, 4], $address, 'the converted array takes the place of what user code put there');

$object = new class {
    public ?stdClass $member = null;
};
$address = ['1', new stdClass];
set_error_handler(function () use (&$address, $object): bool {
    $address = null;
    $object->member = &$address;
    return true;
});
rmon_host_get($link, 9, $address);
restore_error_handler();
expect_sent([1, 1]);
expect_same(null, $object->member, 'a typed property that user code made of the variable keeps its type');
unset($address);

$address = ['1', new stdClass];
set_error_handler(function () use (&$link): bool {
    static $closed = false;
    if (!$closed) {
        $closed = true;
        rmon_close($link);
        rmon_close($link);
    }
    return true;
});
expect_same(false, rmon_host_get($link, 9, $address), 'the link was closed in the conversion');
restore_error_handler();
$link = rmon_connect('127.0.0.1');

$address = ['1', new stdClass];
set_error_handler(fn (int $level, string $message) => throw new ErrorException($message));
expect_thrown(function () use ($link, &$address) {
    rmon_host_get($link, 9, $address);
}, ErrorException::class, 'Object of class stdClass could not be converted to int');
restore_error_handler();
expect_same($sent, count($agent->calls()), 'nothing else was sent');
done();
?>
--EXPECT--
OK
