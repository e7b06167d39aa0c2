--TEST--
The scripted agent and the checks, tested by a plain socket client
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/agent.inc';

/** A client of the agent; reads fail after some seconds instead of hanging. */
function client(ScriptedAgent|int $agent): mixed
{
    $port = is_int($agent) ? $agent : $agent->port;
    $socket = @stream_socket_client("tcp://127.0.0.1:$port", $code, $reason, 5.0);
    if ($socket !== false) {
        stream_set_timeout($socket, 5);
    }
    return $socket;
}

/** A call of a procedure as one record, header words as RFC 5531 lays them out. */
function call(int $xid, int $procedure, string $arguments = ''): string
{
    return marked(pack('N10', $xid, 0, 2, 99999, 1, $procedure, 0, 0, 0, 0) . $arguments);
}

function marked(string $message, bool $last = true): string
{
    return pack('N', strlen($message) | ($last ? 0x80000000 : 0)) . $message;
}

/** The fragments of the next record; null when the connection ends first. */
function fragments_read(mixed $socket): ?array
{
    $fragments = [];
    do {
        $mark = stream_get_contents($socket, 4);
        if (strlen($mark) < 4) {
            return null;
        }
        $mark = unpack('N', $mark)[1];
        $length = $mark & 0x7fffffff;
        $fragments[] = $bytes = $length > 0 ? stream_get_contents($socket, $length) : '';
        if (strlen($bytes) < $length) {
            return null;
        }
    } while (!($mark & 0x80000000));
    return $fragments;
}

/** Sends a call and returns the reply in hexadecimal, a blank after each unit. */
function answer(mixed $socket, int $xid = 0x11223344, int $procedure = 4, string $arguments = ''): ?string
{
    fwrite($socket, call($xid, $procedure, $arguments));
    $fragments = fragments_read($socket);
    return $fragments === null ? null : spaced(implode('', $fragments));
}

function spaced(string $bytes): string
{
    return implode(' ', str_split(bin2hex($bytes), 8));
}

/** What a check prints, without the line it stands on. */
function printed(callable $check): string
{
    ob_start();
    $check();
    return preg_replace('/^agent_selftest\.php line \d+: /m', '', ob_get_clean());
}

// The check that all others rest on.
foreach ([[1, 1, true], [1, 2, false], [[1], ['1'], false]] as [$expected, $got, $silent]) {
    if ((printed(fn() => expect_same($expected, $got)) === '') !== $silent) {
        echo 'expect_same() cannot be trusted', "\n";
    }
}

// The writers, against bytes worked out by hand.
expect_same('00000005', bin2hex(i32(5)));
expect_same('ffffffff', bin2hex(i32(-1)));
expect_same('80000000', bin2hex(i32(-0x80000000)));
expect_same('ffffffff', bin2hex(u32(0xffffffff)));
expect_same('0000000100000002', bin2hex(u64(0x100000002)));
expect_same('ffffffffffffffff', bin2hex(u64(-1)));
expect_same('ffffffffffffffff', bin2hex(u64('0xffffffffffffffff')));
expect_same('8000000000000005', bin2hex(u64('0x8000000000000005')));
expect_same('00000000000000ab', bin2hex(u64('0xAb')));
expect_same('00000000', bin2hex(text('')));
expect_same('00000001 61000000', spaced(text('a')));
expect_same('00000004 61626364', spaced(text('abcd')));
expect_same('00000005 61626364 65000000', spaced(text('abcde')));
expect_same('', units(''));
expect_same('00000000 00000000', spaced(units('', 2)));
expect_same('0000007f 00000080 000000ff', spaced(units("\x7f\x80\xff")));
expect_same('0000007f ffffff80 ffffffff 00000000', spaced(signed_units("\x7f\x80\xff", 4)));
expect_same('00000000', bin2hex(byte_list('')));
expect_same('00000000', bin2hex(byte_list([])));
expect_same('00000002 00000000 000000fe', spaced(byte_list("\0\xfe")));
expect_same(byte_list("\0\xfe"), byte_list([0, 254]));
expect_same('00000000', bin2hex(rows()));
expect_same('00000002 00000007 ffffffff', spaced(rows(i32(7), i32(-1))));
expect_same('00000000', bin2hex(many_rows(0, fn() => 'never')));
expect_same('00000003 00000000 00000002 00000004', spaced(many_rows(3, fn(int $i) => u32(2 * $i))));
expect_same('00000005 00000002', spaced(record(index: i32(5), getType: i32(2))));
expect_same(record(a: i32(1), b: i32(2)), record(...['a' => i32(1), 'b' => i32(2)]));
expect_thrown(fn() => i32(0x80000000), ValueError::class, '2147483648 is not from -2147483648 to 2147483647');
expect_thrown(fn() => u32(-1), ValueError::class, '-1 is not from 0 to 4294967295');
expect_thrown(fn() => units('abc', 2), ValueError::class, '3 is not from 0 to 2');
expect_thrown(fn() => byte_list([256]), ValueError::class, '256 is not from 0 to 255');
expect_thrown(
    fn() => u64('12'),
    ValueError::class,
    "u64 takes an int or '0x' and up to 16 hexadecimal digits, not '12'",
);
expect_thrown(
    fn() => eval('record(a: i32(1), b: i32(2), a: i32(3));'),
    Error::class,
    'Named parameter $a overwrites previous argument',
);

// Every reply, byte by byte.
$agent = scripted_agent(
    reply(i32(7)),
    wrong_xid(i32(7)),
    prog_unavail(),
    prog_mismatch(2, 5),
    proc_unavail(),
    garbage_args(),
    system_err(),
    denied(5),
    rpc_mismatch(3, 4),
    message(''),
    message(accepted(6)),
    truncated(i32(1) . i32(2), 4),
    truncated(i32(1) . i32(2), -2),
    raw(marked('abc')),
    sequence(wrong_xid(i32(1)), reply(i32(2))),
);
$socket = client($agent);
$accepted = '11223344 00000001 00000000 00000000 00000000';
expect_same("$accepted 00000000 00000007", answer($socket));
expect_same('51223344 00000001 00000000 00000000 00000000 00000000 00000007', answer($socket));
expect_same("$accepted 00000001", answer($socket));
expect_same("$accepted 00000002 00000002 00000005", answer($socket));
expect_same("$accepted 00000003", answer($socket));
expect_same("$accepted 00000004", answer($socket));
expect_same("$accepted 00000005", answer($socket));
expect_same('11223344 00000001 00000001 00000001 00000005', answer($socket));
expect_same('11223344 00000001 00000001 00000000 00000003 00000004', answer($socket));
expect_same('11223344', answer($socket));
expect_same("$accepted 00000006", answer($socket));
expect_same("$accepted 00000000 00000001", answer($socket));
expect_same("$accepted 00000000 00000001 0000", answer($socket));
expect_same('616263', answer($socket));
expect_same('51223344 00000001 00000000 00000000 00000000 00000000 00000001', answer($socket));
expect_same('11223344 00000001 00000000 00000000 00000000 00000000 00000002', spaced(implode(fragments_read($socket))));
expect_same(15, count($agent->calls()));

// Fragments: sizes, separate writes, a record that is cut off.
$agent = scripted_agent(
    fragmented(i32(7), 10),
    fragmented(i32(7), [1, 0, 23]),
    fragmented(i32(7), 28),
    fragmented(i32(7), 14, 0.15),
    cut(i32(7) . i32(8), 4),
);
$socket = client($agent);
foreach ([[10, 10, 8], [1, 0, 23, 4], [28], [14, 14]] as $sizes) {
    $started = microtime(true);
    fwrite($socket, call(1, 4));
    $fragments = fragments_read($socket);
    expect_same($sizes, array_map(strlen(...), $fragments));
    expect_same(pack('N*', 1, 1, 0, 0, 0, 0, 7), implode('', $fragments));
}
expect_same(true, microtime(true) - $started > 0.14, 'pause between fragments');
fwrite($socket, call(1, 4));
expect_same(marked(pack('N*', 1, 1, 0, 0, 0, 0, 7, 8)), stream_get_contents($socket) . i32(8));
expect_same([true, false], [feof($socket), stream_get_meta_data($socket)['timed_out']]);
expect_thrown(fn() => fragmented('', 0), ValueError::class, '0 is not from 1 to 2147483647');

// Silence, ends and resets; a late reply holds nobody else up.
$agent = scripted_agent(no_answer(), hang_up(), reset_connection(), late(0.6, reply(i32(1))), reply(i32(2)));
$silent = client($agent);
fwrite($silent, call(1, 4));
expect_same(1, count($agent->calls(1)));
stream_set_timeout($silent, 0, 100000);
fread($silent, 1);
expect_same(true, stream_get_meta_data($silent)['timed_out']);
foreach (['end' => '', 'reset' => false] as $kind => $read) {
    $socket = client($agent);
    fwrite($socket, call(1, 4));
    expect_same([$read, true], [fread($socket, 4), feof($socket)], $kind);
}
$slow = client($agent);
$quick = client($agent);
$started = microtime(true);
fwrite($slow, call(1, 4));
expect_same(4, count($agent->calls(4)));
expect_same($accepted . ' 00000000 00000002', answer($quick));
$arrived = [$slow];
$none = [];
expect_same(0, stream_select($arrived, $none, $none, 0), 'late replies before the quick one');
expect_same(pack('N*', 1, 1, 0, 0, 0, 0, 1), implode('', fragments_read($slow)));
$took = microtime(true) - $started;
expect_same(true, 0.59 < $took && $took < 4.0, "late reply came after $took seconds");
expect_same([1, 2, 3, 4, 5], array_column($agent->calls(), 'connection'));
$agent->add(late(0.1, reply(i32(1))), reply(i32(9)));
fwrite($slow, call(1, 4));
expect_same(6, count($agent->calls(6)));
fclose($slow);
expect_same($accepted . ' 00000000 00000009', answer($quick));

// What follows a scripted end is ignored.
$agent = scripted_agent(late(0.05, hang_up()), reply(i32(1)));
$socket = client($agent);
fwrite($socket, call(1, 4) . call(2, 5));
expect_same('', stream_get_contents($socket));
expect_calls($agent, [[4, '']]);
answer(client($agent));

// always() serves what is left; add() puts steps before it.
$agent = scripted_agent(always(reply(i32(0))), reply(i32(1)));
$socket = client($agent);
$replies = array_map(fn() => substr(answer($socket), -1), range(1, 3));
$agent->add(reply(i32(5)));
$replies[] = substr(answer($socket), -1);
$replies[] = substr(answer($socket), -1);
expect_same(['1', '0', '0', '5', '0'], $replies);
expect_same(0, $agent->steps_left());

// Calls as they arrive: fields, pieces, fragments, pipelines, megabytes.
$agent = scripted_agent(always(reply(many_rows(300000, fn(int $i) => u32($i) . text("row $i")))));
$socket = client($agent);
$long = units(random_bytes(100000));
$first = call(0xfffffff0, 61, text('abc'));
foreach (str_split($first, 7) as $piece) {
    fwrite($socket, $piece);
    usleep(1000); // so that each piece arrives alone
}
$second = substr(call(2, 5, $long), 4);
$pieces = str_split($second, 30001);
$end = marked(array_pop($pieces));
fwrite($socket, implode('', array_map(fn(string $piece) => marked($piece, false), $pieces)) . $end);
fwrite($socket, call(3, 6) . call(4, 7) . call(5, 8));
foreach ([0xfffffff0, 2, 3, 4, 5] as $xid) {
    $message = implode('', fragments_read($socket));
    expect_same($xid, unpack('N', $message)[1]);
    expect_same(true, strlen($message) > 5000000 && str_ends_with($message, u32(299999) . text('row 299999')));
}
expect_calls($agent, [[61, text('abc')], [5, $long], [6, ''], [7, ''], [8, '']]);
$calls = $agent->calls();
expect_same([0xfffffff0, 2, 3, 4, 5], array_column($calls, 'xid'));
expect_same([1, null, false], [$calls[0]->connection, $calls[0]->malformed, $calls[0]->unexpected]);

// A client that does not read its answer does not keep others from being served.
$agent = scripted_agent(reply(str_repeat(i32(1), 5000000)), reply(i32(2)));
$lazy = client($agent);
fwrite($lazy, call(1, 4));
expect_same("$accepted 00000000 00000002", answer(client($agent)));
expect_same(20000024, strlen(implode('', fragments_read($lazy))));

// What was sent before the question is in the answer, what is sent after it is waited for.
$agent = scripted_agent(always(no_answer()));
$socket = client($agent);
$seen = 0;
for ($count = 1; $count <= 100; $count++) {
    fwrite($socket, call($count, 4));
    $seen += count($agent->calls()) === $count ? 1 : 0;
    expect_same($count, count($agent->calls($count)));
}
expect_same(true, $seen > 90, "$seen of 100 calls seen at once, more than 90");
$later = sprintf(
    'usleep(200000); fwrite(stream_socket_client("tcp://127.0.0.1:%d"), base64_decode("%s"));',
    $agent->port,
    base64_encode(call(1, 8)),
);
$process = proc_open([PHP_BINARY, '-n', '-r', $later], [], $pipes);
expect_call($agent, 101, 8, '');
proc_close($process);

// Connections: how many, how many still, also while another agent starts.
$agent = scripted_agent();
expect_same([0, 0], [$agent->connections(), $agent->open_connections()]);
$one = client($agent);
$two = client($agent);
$agent->wait_open_connections(2);
$other = scripted_agent();
fclose($one);
$agent->wait_open_connections(1);
expect_same([2, 1], [$agent->connections(), $agent->open_connections()]);
expect_same(
    "1 connections are open after 0.01 seconds, not 2\n",
    printed(fn() => $agent->wait_open_connections(2, 0.01)),
);

// A dead agent, an agent that came back, one that takes no new connections.
$agent = scripted_agent(reply(i32(1)), reply(i32(2)));
$socket = client($agent);
answer($socket);
$agent->stop();
expect_same('', stream_get_contents($socket));
expect_same(false, client($agent));
expect_same(0, $agent->open_connections());
$agent->restart(reply(i32(3)), sequence(refuse_further(), reply(i32(4))), reply(i32(5)));
$socket = client($agent);
expect_same("$accepted 00000000 00000003", answer($socket));
expect_same("$accepted 00000000 00000004", answer($socket));
expect_same(false, client($agent));
expect_same("$accepted 00000000 00000005", answer($socket));
expect_same([1, 2, 2, 2], array_column($agent->calls(), 'connection'));
$agent->restart();
$socket = client($agent);
$agent->refuse_further();
expect_same([false, 1], [client($agent), $agent->open_connections()]);
expect_same(false, client(dead_port()));
expect_same(true, dead_port() !== dead_port());

// All scripts so far were used up, and done() agrees.
expect_same("OK\n", printed(done(...)));
ScriptedAgent::$all = [];

// A test that dies takes its agent with it.
$script = '<?php require $argv[1]; echo scripted_agent()->port, "\n"; sleep(60);';
$process = proc_open([PHP_BINARY, '-n', '--', __DIR__ . '/agent.inc'], [['pipe', 'r'], ['pipe', 'w']], $pipes);
fwrite($pipes[0], $script);
fclose($pipes[0]);
$port = (int) fgets($pipes[1]);
expect_same(true, is_resource(client($port)));
proc_terminate($process, 9);
wait_until(fn() => client($port) === false);
expect_same(false, client($port));

// Records that are no calls of this program: refused, with the reason, without using up a step.
$agent = scripted_agent(reply(i32(1)));
$header = [1, 0, 2, 99999, 1, 4, 0, 0, 0, 0];
$wrong = [
    'message type is 1, not 0' => [1 => 1],
    'RPC version is 3, not 2' => [2 => 3],
    'program is 99998, not 99999' => [3 => 99998],
    'program version is 2, not 1' => [4 => 2],
    'credentials flavor is 1, not 0' => [6 => 1],
    'credentials length is 4, not 0' => [7 => 4],
    'verifier flavor is 2, not 0' => [8 => 2],
    'verifier length is 8, not 0' => [9 => 8],
];
foreach ($wrong as $words) {
    $socket = client($agent);
    fwrite($socket, marked(pack('N*', ...array_replace($header, $words))));
    expect_same(null, fragments_read($socket));
}
$records = [
    'its 42 bytes are no whole number of four-byte units' => marked(pack('N*', ...$header) . 'ab'),
    'it ends after 36 bytes, inside the call header' => marked(pack('N9', ...array_slice($header, 0, 9))),
    'a fragment of 2147483647 bytes is announced' => "\xff\xff\xff\xff",
];
foreach ($records as $bytes) {
    $socket = client($agent);
    fwrite($socket, $bytes);
    expect_same(null, fragments_read($socket));
}
$socket = client($agent);
fwrite($socket, substr(call(1, 4, i32(1)), 0, -1));
fclose($socket);
$reasons = [...array_keys($wrong), ...array_keys($records), 'the connection closed inside this record'];
expect_same($reasons, array_column($agent->calls(count($reasons)), 'malformed'));
expect_same(1, $agent->steps_left());
$lines = explode("\n", printed(done(...)));
expect_same('call 1 is malformed: message type is 1, not 0', $lines[0]);
expect_same('1 of the agent\'s steps were never used', $lines[count($lines) - 3]);

// A call that no step is left for.
ScriptedAgent::$all = [];
$agent = scripted_agent();
expect_same(null, answer(client($agent), 1, 9, i32(1)));
expect_same(true, $agent->calls()[0]->unexpected);
expect_same(
    "call 1 found no step left: procedure 9 on connection 1, 4 bytes of arguments\nOK\n",
    printed(done(...)),
);
ScriptedAgent::$all = [];

// Checks of calls: silent when right, clear when wrong.
$agent = scripted_agent(always(reply(i32(0))));
$socket = client($agent);
$arguments = record(index: i32(5), name: text('abc'), count: i32(9));
answer($socket, 1, 4, $arguments);
answer($socket, 2, 7);
expect_same('', printed(function () use ($agent, $arguments) {
    expect_call($agent, 1, 4, $arguments);
    expect_call($agent, 2, 7, '');
    expect_calls($agent, [[4, $arguments], [7, '']]);
}));
expect_same("call 1 is of procedure 4, not 5\n", printed(fn() => expect_call($agent, 1, 5, $arguments)));
$diff = <<<'END'
    the arguments of call 1 (procedure 4):
        expected 20 bytes, got 16
        offset  expected  got
             0  00000005  00000005
             4  00000003  00000003
             8  61626400  61626300  <
            12  00000009  00000009
            16  0000000a            <

    END;
$other = record(index: i32(5), name: u32(3) . "abd\0", count: i32(9), more: i32(10));
expect_same($diff, printed(fn() => expect_call($agent, 1, 4, $other)));
expect_same($diff, printed(fn() => expect_calls($agent, [[4, $other], [7, '']])));
expect_same(
    "call 3 never arrived; received:\n"
    . "    procedure 4 on connection 1, 16 bytes of arguments\n"
    . "    procedure 7 on connection 1, 0 bytes of arguments\n",
    printed(fn() => expect_call($agent, 3, 4, '')),
);
expect_same(
    "2 calls arrived, not 1:\n"
    . "    procedure 4 on connection 1, 16 bytes of arguments\n"
    . "    procedure 7 on connection 1, 0 bytes of arguments\n",
    printed(fn() => expect_calls($agent, [[4, $arguments]])),
);

// Checks of values: all that === and the order of keys tell apart, and the bits of floats.
$pairs = [
    'it: expected int 1, got string(1) "1"' => [1, '1'],
    'it: expected float 1.0 (bits 3ff0000000000000), got int 1' => [1.0, 1],
    'it: expected float 0.0 (bits 0000000000000000), got float -0.0 (bits 8000000000000000)' => [0.0, -0.0],
    'it: expected false, got null' => [false, null],
    'it: expected string(2) "a\000", got string(1) "a"' => ["a\0", 'a'],
    '["a"][0]: expected int 1, got true' => [['a' => [1]], ['a' => [true]]],
    'it: expected key "a" before key 0, got it after' => [['a' => 1, 0 => 2], [0 => 2, 'a' => 1]],
    '["a"]: expected int 1, got no such key' => [['a' => 1], []],
    '["b"]: expected no such key, got []' => [[], ['b' => []]],
    'it: expected ["a" => int 1, 3 => [true]], got null' => [['a' => 1, 3 => [true]], null],
    'it: expected array of 5, got int 0' => [[1, 2, 3, 4, 5], 0],
];
foreach ($pairs as $difference => [$expected, $got]) {
    expect_same("value differs\n    $difference\n", printed(fn() => expect_same($expected, $got)));
    expect_same('', printed(fn() => expect_same($got, $got)));
}
expect_same('', printed(fn() => expect_same([NAN, -0.0, 'x' => [1.5]], [NAN, -0.0, 'x' => [1.5]])));
expect_same(
    22,
    substr_count(printed(fn() => expect_same(range(1, 30), range(2, 31))), "\n"),
    'twenty differences, a title and the count of the rest',
);

// Checks of results, messages and errors.
$noisy = function () {
    trigger_error('one', E_USER_WARNING);
    trigger_error('two', E_USER_NOTICE);
    return 5;
};
$warning = fn() => hex2bin('abc');
expect_same([5, [[E_USER_WARNING, 'one'], [E_USER_NOTICE, 'two']]], warnings($noisy));
expect_same(null, set_error_handler(null), 'error handler left behind');
expect_same('', printed(function () use ($noisy, $warning) {
    expect_result($noisy, 5, [[E_USER_WARNING, 'one'], [E_USER_NOTICE, 'two']]);
    expect_result($warning, false, ['hex2bin(): Hexadecimal input string must have an even length']);
    expect_result(fn() => ['a' => 1], ['a' => 1]);
    expect_thrown(fn() => throw new LogicException('x'), LogicException::class, 'x');
}));
expect_same(
    "list of messages differs\n    [0]: expected no such key, got [int 512, string(3) \"one\"]\n",
    printed(fn() => expect_result(fn() => !trigger_error('one', E_USER_WARNING), false)),
);
expect_same("result differs\n    it: expected int 1, got int 2\n", printed(fn() => expect_result(fn() => 2, 1)));
expect_same(
    "list of messages differs\n    [0]: expected [int 2, string(4) \"text\"], got no such key\n",
    printed(fn() => expect_result(fn() => 1, 1, ['text'])),
);
expect_same(
    "nothing was thrown, expected Error: x\n",
    printed(fn() => expect_thrown(fn() => 1, Error::class, 'x')),
);
expect_same(
    "what was thrown differs\n    [0]: expected string(5) \"Error\", got string(9) \"TypeError\"\n",
    printed(fn() => expect_thrown(fn() => throw new TypeError('x'), Error::class, 'x')),
);
ob_start();
fail('here');
expect_same('agent_selftest.php line ' . (__LINE__ - 1) . ": here\n", ob_get_clean());

done();
--EXPECT--
OK
