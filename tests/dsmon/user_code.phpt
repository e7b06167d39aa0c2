--TEST--
DSMON: a script's own code runs while arguments are converted, and may close the link or call again
--EXTENSIONS--
rmon
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$sets = [
    'dsmon_aggctl_set' => [3, 'OWNER', 'gold', 1],
    'dsmon_aggrp_set' => [3, 4, 'OWNER', 1],
    'dsmon_statsctl_set' => [3, 4, 5, 'OWNER', 1],
    'dsmon_pdistctl_set' => [3, 4, 5, 'OWNER', 1, 6],
    'dsmon_hostctl_set' => [3, 4, 5, 'OWNER', 1, 6],
    'dsmon_matrixctl_set' => [3, 4, 5, 'OWNER', 1, 6],
];

foreach ($sets as $function => $arguments) {
    $with = fn(TextWithCode $owner) => array_map(
        fn($argument) => $argument === 'OWNER' ? $owner : $argument,
        $arguments,
    );

    check_closed_by_text($function, $with);

    of("$function, called again meanwhile", function () use ($function, $with): void {
        the_agent()->add(reply(i32(5)), reply(i32(6)));
        $inner = null;
        $owner = new TextWithCode(function () use (&$inner, $function, $with): void {
            $inner = $function(the_link(), ...$with(new TextWithCode(fn() => null)));
        });
        expect_result(fn() => $function(the_link(), ...$with($owner)), 6);
        expect_same(5, $inner);
    });

    of("$function, ended by an exception", function () use ($function, $with): void {
        $earlier = count(the_agent()->calls());
        $owner = new TextWithCode(fn() => throw new DomainException('no owner'));
        expect_thrown(fn() => $function(the_link(), ...$with($owner)), DomainException::class, 'no owner');
        expect_same($earlier, count(the_agent()->calls()), 'number of calls');
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
