--TEST--
The bundled agent's RMON2 tables count frames that are cut or damaged
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

// Frames cut at every length, and random bytes.
mt_srand(7);
$option = "\x88\0\0\0\0\0\0\0" . inet_pton('fe80::9') . "\2\0" . str_repeat("\xff", 30);
$models = [
    ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.1', 6, tcp(1, 80, 2, 'GET'))),
    ethernet(mac(1), mac(2), 0x86dd, ip6('fe80::2', 'fe80::1', 58, $option)),
    ethernet(mac(1), mac(2), 0x0806, arp(1, mac(2), '10.0.0.2', mac(0), '10.0.0.1')),
    ethernet(mac(1), mac(2), 30, "\xaa\xaa\x03\0\0\0\x08\0" . ip4('10.0.0.2', '10.0.0.1', 17, udp(1, 53))),
];
$list = [];
foreach ($models as $model) {
    for ($size = 0; $size <= strlen($model); $size++) {
        $list[] = [1.0, substr($model, 0, $size), strlen($model)];
    }
    for ($i = 0; $i < 500; $i++) {
        $damaged = $model;
        for ($j = mt_rand(1, 6); $j > 0; $j--) {
            $damaged[mt_rand(12, strlen($damaged) - 1)] = chr(mt_rand(0, 255));
        }
        $list[] = [1.0, $damaged];
    }
}
$agent = reading_agent([capture_file($list)]);
$link = module_link($agent);
start_row(fn(int $status) => rmon_pdist_ctl_set($link, 1, 1, '', $status));
start_row(fn(int $status) => rmon_addrmap_ctl_set($link, 1, 1, '', $status));
start_row(fn(int $status) => rmon_hlhost_ctl_set($link, 1, 1, -1, -1, '', $status));
start_row(fn(int $status) => rmon_hlmatrix_ctl_set($link, 1, 1, -1, -1, '', $status));
read_files($agent);

// Every one of them counts once: as one network layer's, or as one of the others.
$networks = 0;
foreach (rmon_pdist_stats_getbulk($link, 1, 0, 1000) as $row) {
    $networks += $row['pd_flags'] & PDIR_FLAG_NETWORK ? $row['protocolDistStatsPkts'] : 0;
}
expect_same((float) count($list), $networks + rmon_pdist_stats_getothers($link, 1)['packets'], 'hostile frames');
$walk = 0;
for ($at = [0, 0, 0, [], [], 0]; $row = rmon_almatrix_sd_getnext($link, ...$at); $walk++) {
    $at = [
        $row['hlMatrixControlIndex'],
        0,
        $row['protocolDirLocalIndex'],
        $row['nlMatrixSDSourceAddress'],
        $row['nlMatrixSDDestAddress'],
        $row['protocolDirLocalIndex2'],
    ];
}
expect_same(count(rmon_almatrix_ds_getbulk($link, 0, 0, 0, [], [], 0, 10000)), $walk, 'pairs of hostile frames');

rmon_close($link);
agent_done($agent);
--EXPECT--
OK
