--TEST--
DSMON: a script's own code runs while arguments are converted, and may close the link or call again
--EXTENSIONS--
rmon
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$sets = [
    'dsmon_aggctl_set' => [3, 'OWNER', 'gold', 1],
    'dsmon_aggrp_set' => [3, 4, 'OWNER', 1],
    'dsmon_statsctl_set' => [3, 4, 5, 'OWNER', 1],
    'dsmon_pdistctl_set' => [3, 4, 5, 'OWNER', 1, 6],
    'dsmon_hostctl_set' => [3, 4, 5, 'OWNER', 1, 6],
    'dsmon_matrixctl_set' => [3, 4, 5, 'OWNER', 1, 6],
];

foreach ($sets as $function => $arguments) {
    $with = fn(Closure $run) =>
        array_map(fn($argument) => $argument === 'OWNER' ? new Owner($run) : $argument, $arguments);

    in_case("$function, closed meanwhile", function () use ($function, $with): void {
        $before = count(agent()->calls());
        $link = rmon_connect('127.0.0.1');
        $number = get_resource_id($link);
        $close = fn() => [rmon_close($link), rmon_close($link)];
        expect_result(fn() => $function($link, ...$with($close)), false, ["$number is not a RMON/RPC conn id!"]);
        expect_same($before, count(agent()->calls()), 'number of calls so far');
    });

    in_case("$function, called again meanwhile", function () use ($function, $with): void {
        agent()->add(reply(i32(5)), reply(i32(6)));
        on_link(function ($link) use ($function, $with): void {
            $inner = null;
            $again = function () use (&$inner, $function, $link, $with): void {
                $inner = $function($link, ...$with(fn() => null));
            };
            expect_result(fn() => $function($link, ...$with($again)), 6);
            expect_same(5, $inner);
        });
    });

    in_case("$function, ended by an exception", function () use ($function, $with): void {
        $before = count(agent()->calls());
        $throw = fn() => throw new DomainException('no owner');
        on_link(fn($link) =>
            expect_thrown(fn() => $function($link, ...$with($throw)), DomainException::class, 'no owner'));
        expect_same($before, count(agent()->calls()), 'number of calls so far');
    });
}

// A handler that throws on the message about the link.
set_error_handler(fn(int $level, string $text) => throw new DomainException($text));
$message = '4711 is not a RMON/RPC conn id!';
expect_thrown(fn() => dsmon_aggctl_get(4711, 3), DomainException::class, $message);
expect_thrown(fn() => dsmon_aggprofs_get(4711, 3), DomainException::class, $message);
expect_thrown(fn() => dsmon_hoststats_get(4711, 1, 2, 3, 4, ['5']), DomainException::class, $message);
expect_thrown(fn() => dsmon_aggctl_locked(4711), DomainException::class, $message);

done();
?>
--EXPECT--
OK
