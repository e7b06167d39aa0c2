--TEST--
The system group: read, and its three texts that can be set
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

// Read: no status, no key.
$row = sample([
    'sysDescr' => 'text',
    'sysUpTime' => 'u32',
    'sysContact' => 'text',
    'sysName' => 'text',
    'sysLocation' => 'text',
    'sysObjectID' => 'text',
    'sysServices' => 'i32',
]);
check_function(
    function: 'rmon_system_get',
    procedure: 1,
    sent: [],
    reply: wire($row),
    value: shown($row),
    label: 'rmon_system_get',
);

$reply = record(
    sysDescr: text('probe'),
    sysUpTime: u32(4294967295),
    sysContact: text(''),
    sysName: text("p1\0p2"),
    sysLocation: text(str_repeat('x', 255)),
    sysObjectID: text('1.3.6.1.4.1.9'),
    sysServices: i32(72),
);
$value = [
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
    value: $value,
);

foreach (array_keys(fields_with($row, 'text')) as $text) {
    check_reply_text(
        function: 'rmon_system_get',
        procedure: 1,
        sent: [],
        row: $row,
        text: $text,
        label: 'rmon_system_get',
    );
}

// Set: what an operator may not set travels empty.
check_writer(
    function: 'rmon_system_set',
    procedure: 2,
    sent: [
        'sysDescr' => ['text', ''],
        'sysUpTime' => ['u32', 0],
        'sysContact' => ['text', 'ops@example.net'],
        'sysName' => ['text', 'probe-7'],
        'sysLocation' => ['text', 'rack 4'],
        'sysObjectID' => ['text', ''],
        'sysServices' => ['i32', 0],
    ],
    names: ['sysContact', 'sysName', 'sysLocation'],
    label: 'rmon_system_set',
);

done();
--EXPECT--
OK
