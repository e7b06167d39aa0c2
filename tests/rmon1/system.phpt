--TEST--
The system group: read, and its three texts that can be set
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

// Read: no status, no key.
$fields = [
    'sysDescr' => 'text',
    'sysUpTime' => 'unsigned',
    'sysContact' => 'text',
    'sysName' => 'text',
    'sysLocation' => 'text',
    'sysObjectID' => 'text',
    'sysServices' => 'int',
];
$sample = sample($fields);
check_common(
    function: 'rmon_system_get',
    arguments: [],
    procedure: 1,
    request: '',
    label: 'rmon_system_get',
    reply: wire($sample),
    result: shown($sample),
);
check_conversions('rmon_system_get', ['int']);

$reply = record(
    sysDescr: text('probe'),
    sysUpTime: u32(4294967295),
    sysContact: text(''),
    sysName: text("p1\0p2"),
    sysLocation: text(str_repeat('x', 255)),
    sysObjectID: text('1.3.6.1.4.1.9'),
    sysServices: i32(72),
);
$row = [
    'sysDescr' => 'probe',
    'sysUpTime' => 4294967295,
    'sysContact' => '',
    'sysName' => 'p1',
    'sysLocation' => str_repeat('x', 255),
    'sysObjectID' => '1.3.6.1.4.1.9',
    'sysServices' => 72,
];
expect_exchange(
    function: 'rmon_system_get',
    arguments: [],
    procedure: 1,
    request: '',
    step: reply($reply),
    value: $row,
);

foreach (array_keys($fields, 'text') as $name) {
    check_reply_text(
        function: 'rmon_system_get',
        index: [],
        procedure: 1,
        request: '',
        label: 'rmon_system_get',
        sample: $sample,
        name: $name,
    );
}

// Set: what an operator may not set travels empty.
$request = fn(string $sysContact, string $sysName, string $sysLocation) => record(
    sysDescr: text(''),
    sysUpTime: u32(0),
    sysContact: text($sysContact),
    sysName: text($sysName),
    sysLocation: text($sysLocation),
    sysObjectID: text(''),
    sysServices: i32(0),
);
check_writer(
    function: 'rmon_system_set',
    procedure: 2,
    label: 'rmon_system_set',
    arguments: ['ops@example.net', 'probe-7', 'rack 4'],
    request: $request,
    linkedFirst: false,
);

done();
--EXPECT--
OK
