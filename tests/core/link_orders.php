<?php
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

/*
 * Random sequences against a small model: for each link, how many references
 * its connect calls and the module have, and how many variables name it.
 */
$agent = scripted_agent(always(reply(i32(7))));
mt_srand(20261121);
$hosts = ['127.0.0.1', '127.1', '0x7f.1', '2130706433'];

$variables = [];  // slot => link
$links = [];      // id => [host, references, held, persistent]
$by_host = [];    // host => id of the normal link
$persistent = []; // hosts with a persistent connection

$named = function (int $id) use (&$variables): bool {
    return (bool)array_filter($variables, fn ($link) => get_resource_id($link) === $id);
};
/** Drops links that nothing holds any more. */
$sweep = function () use (&$links, $named): void {
    foreach ($links as $id => $link) {
        if ($link['references'] === 0 || (!$link['held'] && !$named($id))) {
            unset($links[$id]);
        }
    }
};
$connect = function (string $host, bool $lasting) use (&$variables, &$links, &$by_host, &$persistent): void {
    $link = $lasting ? rmon_pconnect($host) : rmon_connect($host);
    $id = get_resource_id($link);
    if (!$lasting && isset($by_host[$host], $links[$by_host[$host]])) {
        expect_same($by_host[$host], $id, "the link to $host in use");
        $links[$id]['references']++;
    } else {
        expect_same(false, isset($links[$id]), 'a new link has a new id');
        $links[$id] = ['references' => 2, 'held' => true, 'persistent' => $lasting];
        if ($lasting) {
            $persistent[$host] = true;
        } else {
            $by_host[$host] = $id;
        }
    }
    $variables[mt_rand(0, 9)] = $link;
    unset($link);
};

for ($step = 0; $step < 4000; $step++) {
    $slot = $variables ? array_rand($variables) : null;
    $host = $hosts[mt_rand(0, 3)];
    switch (mt_rand(0, 7)) {
        case 0:
            $connect($host, false);
            break;
        case 1:
            $connect($host, true);
            break;
        case 2:
            $slot !== null && $variables[mt_rand(0, 9)] = $variables[$slot];
            break;
        case 3:
            unset($variables[$slot]);
            break;
        default:
            if ($slot === null) {
                break;
            }
            $id = get_resource_id($variables[$slot]);
            if (mt_rand(0, 1)) {
                expect_same(isset($links[$id]) ? 7 : false, @rmon_etherstats_set(mt_rand(0, 1) ? $id : $variables[$slot], 1, 2, 'x', 1), "use of $id in step $step");
                break;
            }
            expect_same(isset($links[$id]) ? true : null, @rmon_close($variables[$slot]), "close of $id in step $step");
            if (isset($links[$id])) {
                $links[$id]['references']--;
                $links[$id]['held'] = false;
            }
    }
    $sweep();
    $normal = count(array_filter($links, fn ($link) => !$link['persistent']));
    expect_same([$normal + count($persistent), count($persistent)], link_counts(), "counts after step $step");
    if ($step % 500 === 0) {
        $agent->wait_open_connections($normal + count($persistent));
    }
}
$variables = [];
$sweep();
$agent->wait_open_connections(count(array_filter($links, fn ($link) => !$link['persistent'])) + count($persistent));
done();
?>
