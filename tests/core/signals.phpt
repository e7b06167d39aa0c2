--TEST--
A dead agent raises no signal that ends the process; commands inherit no link
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent(reset_connection(), reset_connection());
// The module writes to a connection that was reset, with SIGPIPE at its default.
$code = <<<'PHP'
    pcntl_signal(SIGPIPE, SIG_DFL);
    $link = rmon_connect('127.0.0.1');
    for ($i = 0; $i < 5; $i++) {
        @rmon_system_get($link);
    }
    // Removes no signal that is there: only the answer, what was blocked, matters.
    echo pcntl_sigprocmask(SIG_UNBLOCK, [SIGUSR1], $blocked) && $blocked === [] ? 'alive' : 'signals are left blocked';
    pcntl_signal(SIGPIPE, function () { echo ' handled'; });
    pcntl_async_signals(true);
    $link = rmon_connect('127.1');
    for ($i = 0; $i < 5; $i++) {
        @rmon_system_get($link);
    }
    posix_kill(getmypid(), SIGPIPE);
    PHP;
$code = str_replace('posix_kill(getmypid(), SIGPIPE);', 'exec("kill -PIPE " . getmypid()); usleep(1000);', $code);
[$output, $exit] = run_php($code, ['rmon.default_port' => $agent->port]);
expect_same(0, $exit, "exit code; output: $output");
expect_same(1, preg_match('/^alive handled$/', $output), $output);

$agent = scripted_agent(always(reply(i32(0))));
$descriptors = fn (): int => (int)shell_exec('ls /proc/self/fd | wc -l');
$before = $descriptors();
$links = [rmon_connect('127.0.0.1'), rmon_pconnect('127.0.0.1'), rmon_connect('127.1')];
expect_same($before, $descriptors(), 'descriptors of a command');
done();
?>
--EXPECT--
OK
