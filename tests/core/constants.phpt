--TEST--
Constants, with and without the sockets extension in either order
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$constants = [
    'COMM_RO' => 1, 'COMM_RW' => 2, 'AF_INET' => 2, 'AF_INET6' => 10,
    'PDIR_FLAG_NETWORK' => 1, 'PDIR_FLAG_IP' => 2, 'PDIR_FLAG_LEAF' => 4, 'PDIR_FLAG_EXTENSION' => 8,
    'PDIR_FLAG_IP_DESC' => 16, 'PDIR_FLAG_AUTO_LEARN' => 32, 'PDIR_FLAG_BASE_PROTO' => 64,
    'PDIR_FLAG_OTHER_PROTO' => 128,
    'NORV_TARGET_ORN_AP' => 1, 'NORV_TARGET_NORV2_AP' => 3, 'NORV_TARGET_NORV1_AP' => 4, 'NORV_TARGET_DESK' => 5,
    'NORV_TARGET_TAMBO' => 6, 'NORV_TARGET_VELDRIN' => 7,
];
expect_same($constants, get_defined_constants(true)['rmon'],
    'the constants and their order');
expect_same(false, defined('comm_ro'), 'names are case-sensitive');

$show = 'echo AF_INET, " ", AF_INET6, " ", COMM_RO, " ", NORV_TARGET_VELDRIN, extension_loaded("sockets") ? "" : " no sockets";';
expect_same(['2 10 1 7 no sockets', 0], run_php($show), 'alone');
expect_same(['2 10 1 7', 0], run_php($show, ['extension=sockets']), 'sockets named after it');
$command = [
    PHP_BINARY,
    '-n',
    '-d',
    'display_errors=1',
    '-d',
    'extension=sockets',
    '-d',
    'extension=' . module_file(),
    '-r',
    $show,
];
$process = proc_open($command, [['file', '/dev/null', 'r'], ['pipe', 'w'], ['redirect', 1]], $pipes);
expect_same('2 10 1 7', stream_get_contents($pipes[1]), 'sockets named before it');
done();
?>
--EXPECT--
OK
