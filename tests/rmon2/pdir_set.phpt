--TEST--
Writing the protocol directory
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/pdir.inc';

// The record has another order than the arguments.
check_writer(
    function: 'rmon_pdir_set',
    procedure: 22,
    sent: [
        'status' => ['i32', 0],
        'protocolDirID' => ['byte_list', [0, 0, 0, 1, 0, 0, 8, 0, 0, 0, 0, 17, 0, 0, 0, 161, 200]],
        'protocolDirParameters' => ['byte_list', [0, 1, 2, 3]],
        'protocolDirLocalIndex' => ['i32', 0],
        'protocolDirDescr' => ['text', 'a description'],
        'protocolDirType' => ['i32', 0],
        'protocolDirAddressMapConfig' => ['i32', -25],
        'protocolDirHostConfig' => ['i32', 26],
        'protocolDirMatrixConfig' => ['i32', 27],
        'protocolDirOwner' => ['text', 'an owner'],
        'protocolDirStatus' => ['i32', 30],
        'protocolDirArtConfig' => ['i32', 28],
        'is_leaf' => ['i32', 0],
        'is_network' => ['i32', 0],
        'flags' => ['i32', 0],
    ],
    names: [
        'protocolDirID',
        'protocolDirParameters',
        'protocolDirDescr',
        'protocolDirAddressMapConfig',
        'protocolDirHostConfig',
        'protocolDirMatrixConfig',
        'protocolDirArtConfig',
        'protocolDirOwner',
        'protocolDirStatus',
    ],
    label: 'rmon_pdir_set',
    lists: ['protocolDirID', 'protocolDirParameters'],
);

done();
--EXPECT--
OK
