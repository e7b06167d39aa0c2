--TEST--
Arguments: what may stand for a link, an integer, a text; user code that runs in a conversion
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$set = fn (int $index, int $source, string $owner, int $status): array => [5, record(
    status: i32(0), etherStatsIndex: u32($index & 0xffffffff), etherStatsDataSource: u32($source & 0xffffffff),
    counters: str_repeat(u64(0), 17), etherStatsOwner: text($owner), etherStatsStatus: u32($status & 0xffffffff),
    etherStatsDroppedFrames: u64(0), etherStatsCreateTime: u32(0),
)];
$agent = scripted_agent(always(reply(i32(-5))));
$link = rmon_connect('127.0.0.1');
$id = get_resource_id($link);
$sent = [];

// What integers and texts become; the caller's variables stay.
foreach ([
    [[$link, 1, 2, 'me', 4], [1, 2, 'me', 4]],
    [[$id, '3', ' 4', "o\0wner", '5x'], [3, 4, 'o', 5]],
    [[(string)$id, 1.9, -2.9, 17, true], [1, -2, '17', 1]],
    [[(float)$id, null, false, null, '0x10'], [0, 0, '', 0]],
    [[$link, [], [0], 1.5, 'none'], [0, 1, '1.5', 0]],
    [[$link, 4294967296 + 7, -1, false, 4294967295], [7, -1, '', -1]],
    [[$link, PHP_INT_MAX, PHP_INT_MIN, true, 2 ** 40 + 3], [-1, 0, '1', 3]],
    [[$link, NAN, INF, 'e', -INF], [0, 0, 'e', 0], ['NAN', 'INF', '-INF']],
    [[$link, $link, 1, str_repeat('o', 255), 1], [$id, 1, str_repeat('o', 255), 1]],
] as $case) {
    [$arguments, $expected] = $case;
    $before = $arguments;
    // What no integer can be is reported by engines since 8.5.
    $reports = array_map(
        fn (string $float) => "The float $float is not representable as an int, cast occurred",
        PHP_VERSION_ID < 80500 ? [] : $case[2] ?? [],
    );
    expect_result(fn () => rmon_etherstats_set(...$arguments), -5, $reports);
    expect_same(var_export($before, true), var_export($arguments, true), "the caller's arguments");
    $sent[] = $set(...$expected);
}
expect_calls($agent, $sent);

// An owner over 255 bytes fails in the encoder; the link goes on working.
expect_result(
    fn () => rmon_etherstats_set($link, 1, 1, str_repeat('o', 256), 1),
    false,
    ["rmon_etherstats_set: RPC: Can't encode arguments"],
);
expect_same(5, $agent->calls(count($sent) + 1)[count($sent)]->procedure, 'the call broke off in its arguments');
expect_result(fn () => rmon_etherstats_set($link, 1, 1, 'o', 1), -5);

// No link.
foreach ([
    [99999, 99999], [-1, -1], ['none', 0], [null, 0], [1.5, 1], [[], 0], [[5], 1],
    [4294967296 + $id, 4294967296 + $id],
] as [$value, $number]) {
    expect_result(fn () => rmon_system_get($value), false, ["$number is not a RMON/RPC conn id!"]);
}
$file = fopen('php://memory', 'r');
$number = get_resource_id($file);
expect_result(fn () => rmon_system_get($file), false, ["$number is not a RMON/RPC conn id!"]);
fclose($file);
expect_result(fn () => rmon_system_get($file), false, ["$number is not a RMON/RPC conn id!"]);
expect_result(
    fn () => rmon_system_get(new stdClass),
    false,
    ['Object of class stdClass could not be converted to int', '1 is not a RMON/RPC conn id!'],
);

// Texts of objects.
class Owner
{
    public function __construct(private readonly Closure $text)
    {
    }

    public function __toString(): string
    {
        return ($this->text)();
    }
}
$calls = count($agent->calls());
expect_result(fn () => rmon_etherstats_set($link, 1, 1, new Owner(fn () => 'object'), 1), -5);
expect_call($agent, $calls + 1, ...$set(1, 1, 'object', 1));
foreach ([new stdClass, fn () => 1] as $object) {
    expect_result(
        fn () => rmon_etherstats_set($link, 1, 1, $object, 1),
        null,
        ['Object of class ' . get_class($object) . ' could not be converted to string'],
    );
}
expect_thrown(
    fn () => rmon_etherstats_set($link, 1, 1, new Owner(fn () => throw new DomainException('no text')), 1),
    DomainException::class,
    'no text',
);
expect_result(fn () => rmon_etherstats_set($link, 1, 1, [1], 1), -5, ['Array to string conversion']);
expect_call($agent, $calls + 2, ...$set(1, 1, 'Array', 1));
expect_same($calls + 2, count($agent->calls()), 'refused texts send nothing');

// A conversion that calls the same function, opens links, closes the link in the middle of the call.
$inner = null;
$owner = new Owner(function () use (&$inner, $link): string {
    $inner = rmon_etherstats_set($link, 7, 7, 'inner', 7);
    rmon_connect('127.1');
    return 'outer';
});
expect_result(fn () => rmon_etherstats_set($link, 1, 1, $owner, 1), -5);
expect_same(-5, $inner, 'the inner call');
expect_call($agent, $calls + 3, ...$set(7, 7, 'inner', 7));
expect_call($agent, $calls + 4, ...$set(1, 1, 'outer', 1));

$owner = new Owner(function () use (&$link): string {
    rmon_close($link);
    rmon_close($link);
    $link = null;
    return 'closed';
});
expect_result(fn () => rmon_etherstats_set($link, 1, 1, $owner, 1), false, ["$id is not a RMON/RPC conn id!"]);
expect_result(fn () => rmon_etherstats_set($id, 1, 1, 'x', 1), false, ["$id is not a RMON/RPC conn id!"]);

// Error handlers that throw.
set_error_handler(fn (int $level, string $message) => throw new ErrorException($message));
$link = rmon_connect('127.0.0.1');
expect_thrown(fn () => rmon_system_get(5, 5), ErrorException::class, 'Wrong parameter count for rmon_system_get()');
expect_thrown(fn () => rmon_system_get(-3), ErrorException::class, '-3 is not a RMON/RPC conn id!');
expect_thrown(fn () => rmon_etherstats_set($link, 1, 1, [], 1), ErrorException::class, 'Array to string conversion');
expect_thrown(fn () => rmon_etherstats_set($link, new stdClass, 1, '', 1), ErrorException::class,
    'Object of class stdClass could not be converted to int');
expect_thrown(
    fn () => rmon_connect(new stdClass),
    ErrorException::class,
    'Object of class stdClass could not be converted to string',
);
restore_error_handler();
expect_same($calls + 4, count($agent->calls()), 'a conversion that threw sends nothing');
expect_result(fn () => rmon_etherstats_set($link, 1, 1, 'x', 1), -5);
done();
?>
--EXPECT--
OK
