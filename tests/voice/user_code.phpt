--TEST--
Voice functions: user code that runs while arguments are converted and while failures are reported
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/voice.inc';

/** @return resource a link of its own, when the one before it is closed */
function a_link(): mixed
{
    the_agent();
    return rmon_connect('127.0.0.1');
}

/** Runs a call; each report goes to $handler. */
function handling(callable $handler, callable $call): mixed
{
    set_error_handler($handler);
    try {
        return $call();
    } finally {
        restore_error_handler();
    }
}

/** Closes a link for good: once for its opening, once for the script's call. */
function close_link(mixed $link): void
{
    rmon_close($link);
    rmon_close($link);
}

/** Runs a call whose first report closes the link; its result and the texts of its reports. */
function closing(mixed $link, callable $call): array
{
    $texts = [];
    $result = handling(function (int $level, string $text) use ($link, &$texts): bool {
        $texts[] = $text;
        if (count($texts) === 1) {
            close_link($link);
        }
        return true;
    }, $call);
    return [$result, $texts];
}

final class Thing
{
}

$no_integer = 'Object of class Thing could not be converted to int';

// The link is looked up after the last conversion: one that closes it leaves nothing to ask.
$calls = [
    fn(int $id) => h323_phone_rec_get($id, new Thing()),
    fn(int $id) => sccp_call_rec_getbulk($id, 1, new Thing()),
    fn(int $id) => mgcp_top_latency_rec_get($id, new Thing()),
    fn(int $id) => sccp_voice_coll_thresholds_set($id, 1, new Thing()),
    fn(int $id) => mgcp_voice_coll_thresholds_set($id, new Thing(), 1),
    fn(int $id) => mgcp_voice_coll_table_sizes_set($id, 1, 2, 3, new Thing()),
];
foreach ($calls as $number => $call) {
    $link = a_link();
    $id = get_resource_id($link);
    expect_same(
        [false, [$no_integer, "$id is not a RMON/RPC conn id!"]],
        closing($link, fn() => $call($id)),
        "call $number",
    );
}
expect_calls(the_agent(), []);

// An exception out of a conversion ends the call.
$link = a_link();
$throw = fn(int $level, string $text) => throw new ErrorException($text);
$calls = [
    fn() => h323_call_rec_getbulk($link, 1, new Thing()),
    fn() => sccp_voice_coll_thresholds_set($link, new Thing(), 1),
    fn() => mgcp_voice_coll_enable(new Thing()),
    fn() => h323_config_params_get(new Thing()),
];
foreach ($calls as $call) {
    expect_thrown(fn() => handling($throw, $call), ErrorException::class, $no_integer);
}
expect_calls(the_agent(), []);

// A report may make the same call again: neither result depends on the other.
foreach (['sccp_voice_coll_enable' => [7, false], 'mgcp_voice_coll_enable' => [0, 0]] as $function => $expected) {
    the_agent()->add(proc_unavail(), reply(i32(7)));
    $inner = null;
    $outer = handling(function () use ($function, $link, &$inner): bool {
        $inner = $function($link);
        return true;
    }, fn() => $function($link));
    expect_same($expected, [$inner, $outer], $function);
}

// It may close the link that failed, and it may throw.
the_agent()->add(hang_up());
[$result, $texts] = closing($link, fn() => mgcp_voice_coll_disable($link));
expect_same(0, $result);
expect_same(1, preg_match('/^mgcp_voice_coll_disable: RPC: Unable to (send|receive)/', $texts[0] ?? ''), 'report');
$id = get_resource_id($link);
expect_no_call('mgcp_voice_coll_disable', [$link], false, ["$id is not a RMON/RPC conn id!"]);

$link = a_link();
the_agent()->add(proc_unavail(), proc_unavail());
foreach (['h323_voice_coll_disable', 'mgcp_voice_coll_disable'] as $function) {
    expect_thrown(
        fn() => handling($throw, fn() => $function($link)),
        ErrorException::class,
        "$function: RPC: Procedure unavailable",
    );
}

done();
?>
--EXPECT--
OK
