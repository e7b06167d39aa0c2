--TEST--
Limits on links
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent(always(reply(i32(0))));
$show = 'function show($link) { echo is_resource($link) ? "link\n" : var_export($link, true) . "\n"; }';

/** What the calls print, without the engine's "in ... on line ...". */
function printed(string $code, array $directives): string
{
    global $agent, $show;
    [$output] = run_php("$show $code", $directives + ['rmon.default_port' => $agent->port]);
    return preg_replace('/ in Command line code on line \d+\n/', "\n", $output);
}

expect_same(
    "link\nlink\n\nWarning: RMON:Too many open connections (1)\nfalse\n",
    printed(
        "show(rmon_connect('127.0.0.1')); show(rmon_connect('127.0.0.1')); show(rmon_connect('127.1'));",
        ['rmon.max_links' => 1],
    ),
    'normal links',
);
expect_same(
    "link\n\nWarning: RMON: Too many open links (1)\nfalse\n",
    printed("show(rmon_connect('127.0.0.1')); show(rmon_pconnect('127.1'));", ['rmon.max_links' => 1]),
    'a persistent one beside a normal one',
);
expect_same(
    "link\nlink\n\nWarning: RMON:Too many open connections (1)\nfalse\n",
    printed(
        "show(rmon_pconnect('127.0.0.1')); show(rmon_pconnect('127.0.0.1')); show(rmon_connect('127.1'));",
        ['rmon.max_links' => 1],
    ),
    'a persistent one that is reused is not counted twice',
);
expect_same(
    "\nWarning: RMON:Too many open connections (0)\nfalse\n",
    printed("show(rmon_connect('127.0.0.1'));", ['rmon.max_links' => 0]),
    'none at all',
);
expect_same(
    "\nWarning: RMON: Too many open persistent links (0)\nfalse\nlink\n",
    printed("show(rmon_pconnect('127.0.0.1')); show(rmon_connect('127.0.0.1'));", ['rmon.max_persistent' => 5]),
    'the persistent limit is a switch',
);
expect_same(
    "link\n",
    printed("show(rmon_pconnect('127.0.0.1'));", ['rmon.max_persistent' => -1, 'rmon.max_links' => 1]),
    'no limit',
);
expect_same(
    "link\n\nWarning: RMON:Too many open connections (1)\nfalse\ntrue\ntrue\nlink\n",
    printed(
        "show(\$a = rmon_connect('127.0.0.1')); show(rmon_connect('127.1')); show(rmon_close(\$a)); show(rmon_close(\$a)); show(rmon_connect('127.1'));",
        ['rmon.max_links' => 1],
    ),
    'a closed link makes room',
);
expect_same(
    "\nWarning: RMON: Too many open links (0)\nfalse\n",
    printed("show(rmon_pconnect('127.0.0.1'));", ['rmon.max_links' => 0, 'rmon.max_persistent' => 5]),
    'the limit on all links comes before the switch',
);
foreach ([0, -2] as $value) {
    expect_same(
        "\nWarning: RMON: Too many open persistent links (0)\nfalse\n",
        printed("show(rmon_pconnect('127.0.0.1'));", ['rmon.max_persistent' => $value]),
        "the switch at $value",
    );
}
expect_same(
    "\nWarning: RMON:Too many open connections (0)\nfalse\n\nWarning: RMON: Too many open links (0)\nfalse\n",
    printed("show(rmon_connect('127.0.0.1')); show(rmon_pconnect('127.0.0.1'));", ['rmon.max_links' => -2]),
    'no negative limit but -1 stands for none',
);
$own = "array_map(fn (\$host) => get_resource_id(rmon_pconnect(\$host)), ['127.0.0.1', '127.0.0.1'])";
expect_same(
    'same',
    printed("[\$a, \$b] = $own; echo \$a === \$b ? 'same' : 'different';", ['rmon.allow_persistent' => 0]),
    'rmon_pconnect is rmon_connect where persistent links are not allowed',
);
expect_same(
    'same',
    printed("[\$a, \$b] = $own; echo \$a === \$b ? 'same' : 'different';", ['rmon.allow_persistent' => -1]),
    'nor are they with a negative value',
);
expect_same(
    'different',
    printed("[\$a, \$b] = $own; echo \$a === \$b ? 'same' : 'different';", ['rmon.allow_persistent' => 1]),
    'each rmon_pconnect makes a resource of its own',
);
done();
?>
--EXPECT--
OK
