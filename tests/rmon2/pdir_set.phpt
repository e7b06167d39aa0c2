--TEST--
Writing the protocol directory
--FILE--
<?php
require __DIR__ . '/pdir.inc';

const LABEL = 'rmon_pdir_set';

/** The record has another order than the arguments. */
function written(
    array $id,
    array $parameters,
    string $description,
    int $addressMap,
    int $host,
    int $matrix,
    int $art,
    string $owner,
    int $rowStatus,
): string {
    return record(
        status: i32(0),
        protocolDirID: byte_list($id),
        protocolDirParameters: byte_list($parameters),
        protocolDirLocalIndex: i32(0),
        protocolDirDescr: text($description),
        protocolDirType: i32(0),
        protocolDirAddressMapConfig: i32($addressMap),
        protocolDirHostConfig: i32($host),
        protocolDirMatrixConfig: i32($matrix),
        protocolDirOwner: text($owner),
        protocolDirStatus: i32($rowStatus),
        protocolDirArtConfig: i32($art),
        is_leaf: i32(0),
        is_network: i32(0),
        flags: i32(0),
    );
}

$id = [0, 0, 0, 1, 0, 0, 8, 0, 0, 0, 0, 17, 0, 0, 0, 161, 200];
$parameters = [0, 1, 2, 3];
$arguments = [$id, $parameters, 'a description', -25, 26, 27, 28, 'an owner', 30];
$set = [LABEL, $arguments, 22, written(...$arguments)];
check_integer($set, LABEL);
check_text(
    function: $set,
    position: 2,
    request: fn(string $text) => written(...array_replace($arguments, [2 => $text])),
    label: LABEL,
);
check_text(
    function: $set,
    position: 7,
    request: fn(string $text) => written(...array_replace($arguments, [7 => $text])),
    label: LABEL,
);

$ones = written([], [], 'Argument4', 1, 1, 1, 1, 'Argument9', 1);
check_order(
    function: [LABEL, [], 22, $ones],
    kinds: ['int', 'list', 'list', 'text', 'int', 'int', 'int', 'int', 'text', 'int'],
    before: [1, 4, 5, 6, 7, 8, 9, 10],
    after: [],
    label: LABEL,
);
done();
?>
--EXPECT--
OK
