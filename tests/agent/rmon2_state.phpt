--TEST--
The bundled agent's RMON2 settings survive a kill
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/rmon2.inc';

$directory = sys_get_temp_dir() . '/rmon-state-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$options = ['--no-capture', '--state', $directory];
$agent = bundled_agent(...$options);
$link = link_by('127.0.0.1');
$lo = if_index('lo');

/** A link to the agent. The module has one for each host text, so each agent gets a text of its own. */
function link_by(string $host): mixed
{
    global $agent;
    ini_set('rmon.default_port', (string) $agent->port);
    return rmon_connect($host);
}

/** Sets a protocol's row. */
function set_protocol(array $key, string $descr, int $host, int $art, int $status): int
{
    global $link;
    return rmon_pdir_set($link, ...[...$key, $descr, 1, $host, $host, $art, 'me', $status]);
}

/** All that sets can change, without local indexes: those are given anew. */
function settings(mixed $link): array
{
    $tables = [];
    foreach (['rmon_pdist_ctl', 'rmon_addrmap_ctl', 'rmon_hlhost_ctl', 'rmon_hlmatrix_ctl'] as $table) {
        for ($index = 0; ($row = ("{$table}_getnext")($link, $index))['status'] === NO_ERROR;) {
            $index = array_values($row)[2];
            unset($row['protocolDistControlCreateTime']);
            $tables["$table $index"] = array_filter(
                $row,
                fn($field) => !preg_match('/Inserts|Deletes$/', (string) $field),
                ARRAY_FILTER_USE_KEY,
            );
        }
    }
    $tables['addresses'] = rmon_addrmap_scalars_get($link)['addressMapMaxDesiredEntries'];
    $tables['protocols'] = array_map(
        fn($row) => array_diff_key($row, ['protocolDirLocalIndex' => 0]),
        rmon_pdir_getbulk($link, [], [], 10000),
    );
    return $tables;
}

expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_pdist_ctl_set($link, 3, $lo, 'works', $status)),
    'distribution',
);
expect_same(NO_ERROR, rmon_pdist_ctl_set($link, 4, 0, 'waits', CREATE_REQUEST), 'distribution that waits');
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_addrmap_ctl_set($link, 65535, $lo, '', $status)),
    'address map',
);
expect_same(NO_ERROR, rmon_addrmap_scalars_set($link, 123), 'addresses');
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_hlhost_ctl_set($link, 1, $lo, 7, 0, 'hosts', $status)),
    'hosts',
);
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_hlmatrix_ctl_set($link, 1, $lo, -1, 70000, 'pairs', $status)),
    'matrix',
);

// Protocols: changed, made (a layer and what stands above it), removed (from above), removed and made again.
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 6, 80), 'web', 2, 2, UNDER_CREATION), 'change');
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_pdir_set(
        $link,
        ...[...protocol_key(1, 0x88b5), 'layer', 1, 1, 1, 1, '', $status],
    )),
    'make a layer',
);
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 6, 60000), 'mine', 3, 3, CREATE_REQUEST), 'make');
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 132, 3868), '', 3, 1, INVALID), 'remove');
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 132, 5060), '', 3, 1, INVALID), 'remove the other');
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 132), '', 3, 1, INVALID), 'remove what they stood above');
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 17, 69), '', 3, 1, INVALID), 'remove to make it again');
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => set_protocol(protocol_key(1, 0x800, 17, 69), 'files', 2, 1, $status)),
    'make it again',
);

$before = settings($link);
end_agent($agent, 9);
$agent = bundled_agent(...$options);
$link = link_by('127.0.1');
expect_same($before, settings($link), 'all of it after the kill');

// Nothing is kept twice: made undone, it stays undone.
expect_same(NO_ERROR, set_protocol(protocol_key(1, 0x800, 6, 60000), '', 3, 3, INVALID), 'remove what was made');
expect_same(NO_ERROR, rmon_hlhost_ctl_set($link, 1, $lo, 7, 0, 'hosts', INVALID), 'remove the hosts');
$before = settings($link);
end_agent($agent, 9);
$agent = bundled_agent(...$options);
$link = link_by('127.1');
expect_same($before, settings($link), 'all of it after another kill');

agent_done($agent);
--EXPECT--
OK
