--TEST--
Changed network settings are written out by the appliance's own command
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/appliance.inc';

$agent = the_agent();
$ran = appliance('/ran');
$port = $agent->port;

/** A command that notes its name, its arguments and its open files, talks, and fails. */
function command(): string
{
    global $ran;
    return <<<SH
        #!/bin/sh
        {
            echo "\${0##*/} \$*"
            for file in /proc/\$\$/fd/*; do readlink "\$file"; done
        } >>'$ran'
        echo noise
        echo noise >&2
        exit 3
        SH;
}

/** The command lines that ran since the last time, and the open files that they had. */
function taken(): array
{
    global $ran;
    $lines = is_file($ran) ? file($ran, FILE_IGNORE_NEW_LINES) : [];
    @unlink($ran);
    $files = preg_grep('~^(/|pipe:|socket:|anon_inode:)~', $lines);
    return [array_values(array_diff($lines, $files)), array_values($files)];
}

/** What one function after the other returns and reports in a process of its own, the agent doing these steps. */
function changes(string $calls, Step ...$steps): array
{
    global $agent, $port;
    $agent->add(...$steps);
    $code = <<<CODE
        ini_set('rmon.default_port', '$port');
        \$link = rmon_connect('127.0.0.1');
        return warnings(fn() => [$calls]);
        CODE;
    $got = in_new_process($code);
    return [$got[0], array_column($got[1], 1)];
}

const ALL = <<<'CODE'
    rmon_set_ipconfig($link, '10.1.2.3', '255.0.0.0', '10.255.255.255', '10.0.0.1'),
    rmon_set_hostname($link, 'probe'),
    rmon_set_resolvers($link, ['10.1.2.4'])
    CODE;

clear_appliance();
@unlink($ran);
put_file(NET_CONF_INIT, command(), 0755);
put_file(VD_NET_CONF, command(), 0755);

// The kind of appliance tells the command. It runs for every answer, and nothing of it is seen.
$commands = [
    1 => null,
    2 => null,
    3 => 'net_conf_init -q stop',
    4 => 'net_conf_init -q stop',
    5 => null,
    6 => null,
    7 => 'vd_net_conf -q write',
    8 => null,
    -1 => null,
];
foreach ($commands as $target => $command) {
    put_file(SETTINGS, "NORV_TARGET_ID=$target\n");
    $got = changes(ALL, reply(i32(0)), reply(i32(-7)), reply(i32(41)));
    expect_same([[0, -7, 41], []], $got, "outcome on target $target");
    expect_same($command === null ? [] : array_fill(0, 3, $command), taken()[0], "commands on target $target");
}

// It doesn't run after a call that failed, or that was refused.
put_file(SETTINGS, "NORV_TARGET_ID=7\n");
$got = changes(ALL, proc_unavail(), proc_unavail(), proc_unavail());
expect_same([false, false, false], $got[0]);
expect_same([], taken()[0]);
$got = changes(
    "rmon_set_ipconfig(\$link, 'x', 'x', 'x', 'x'), rmon_set_resolvers(\$link, [1]), rmon_set_hostname(1, 'a')",
);
expect_same([false, false, false], $got[0]);
expect_same([], taken()[0]);

// Nor for a read, or this machine's own name.
$ipconfig = str_repeat(i32(0), 6);
$got = changes(
    'count(rmon_get_ipconfig($link)), rmon_get_resolvers($link), rmon_get_hostname()',
    reply($ipconfig),
    reply(i32(0) . rows()),
);
expect_same([[7, [], gethostname()], []], $got);
expect_same([], taken()[0]);

// Without a settings file, each change tells so; a call that failed never looks for it.
put_file(SETTINGS, null);
$unreadable = 'unable to read norv_settings file!';
$got = changes(ALL, reply(i32(0)), reply(i32(-7)), reply(i32(41)));
expect_same([[0, -7, 41], array_fill(0, 3, $unreadable)], $got);
$got = changes(ALL, proc_unavail(), proc_unavail(), proc_unavail());
expect_same([
    [false, false, false],
    array_map(fn(string $name) => "rmon_set_$name: RPC: Procedure unavailable", ['ipconfig', 'hostname', 'resolvers']),
], $got);
expect_same([], taken()[0]);

// The report of that runs code that changes settings itself; the answer stays.
put_file(SETTINGS, null);
$agent->add(reply(i32(5)), reply(i32(6)));
$code = <<<CODE
    ini_set('rmon.default_port', '$port');
    \$link = rmon_connect('127.0.0.1');
    \$inner = null;
    set_error_handler(function () use (\$link, &\$inner) {
        \$inner = @rmon_set_hostname(\$link, 'inner');
    });
    return [rmon_set_hostname(\$link, 'outer'), \$inner];
    CODE;
expect_same([5, 6], in_new_process($code));

// A command that isn't there changes nothing.
put_file(SETTINGS, "NORV_TARGET_ID=3\n");
put_file(NET_CONF_INIT, null);
expect_same([[0, -7, 41], []], changes(ALL, reply(i32(0)), reply(i32(-7)), reply(i32(41))));

// The settings are read once: later changes of the file are ignored.
put_file(SETTINGS, "NORV_TARGET_ID=7\n");
$file = var_export(appliance(SETTINGS), true);
$got = changes(
    "rmon_set_hostname(\$link, 'a'), file_put_contents($file, \"NORV_TARGET_ID=5\\n\"), rmon_set_hostname(\$link, 'b')",
    reply(i32(0)),
    reply(i32(0)),
);
expect_same([[0, 17, 0], []], $got);
expect_same(['vd_net_conf -q write', 'vd_net_conf -q write'], taken()[0]);

// The command inherits no link. That of a stream of PHP's own shows that it would be seen.
put_file(SETTINGS, "NORV_TARGET_ID=7\n");
$agent->add(reply(i32(0)));
$code = <<<CODE
    \$sockets = fn() => preg_grep('/^socket:/', array_map(fn(\$file) => @readlink("/proc/self/fd/\$file"), scandir('/proc/self/fd')));
    ini_set('rmon.default_port', '$port');
    \$before = \$sockets();
    \$link = rmon_connect('127.0.0.1');
    \$other = rmon_pconnect('127.0.1');
    \$links = array_diff(\$sockets(), \$before);
    \$stream = stream_socket_client('tcp://127.0.0.1:$port');
    \$streams = array_diff(\$sockets(), \$before, \$links);
    return [rmon_set_hostname(\$link, 'probe'), array_values(\$links), array_values(\$streams)];
    CODE;
[$answer, $links, $streams] = in_new_process($code);
expect_same([0, 2, 1], [$answer, count($links), count($streams)]);
[$lines, $files] = taken();
expect_same(['vd_net_conf -q write'], $lines);
expect_same($streams, array_values(array_intersect($files, $streams)), "the stream's socket in the command");
expect_same([], array_values(array_intersect($files, $links)), "the links' sockets in the command");
clear_appliance();
done();
--EXPECT--
OK
