--TEST--
Events: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers(
    table: 'rmon_event',
    procedure: 40,
    label: 'host_ctl_get',
    fields: [
        'status' => 'int',
        'eventIndex' => 'unsigned',
        'eventDescription' => 'text',
        'eventType' => 'int',
        'eventCommunity' => 'text',
        'eventLastTimeSent' => 'unsigned',
        'eventOwner' => 'text',
        'eventStatus' => 'int',
    ],
);

// The time at which it was last sent is the agent's.
$request = fn(int $index, string $description, int $type, string $community, string $owner, int $status) => record(
    status: i32(0),
    eventIndex: u32($index),
    eventDescription: text($description),
    eventType: i32($type),
    eventCommunity: text($community),
    eventLastTimeSent: u32(0),
    eventOwner: text($owner),
    eventStatus: i32($status),
);
$arguments = [21, 'link down', 23, 'private', 'an owner', 26];
check_writer(
    function: 'rmon_event_set',
    procedure: 41,
    label: 'rmon_host_ctl_set',
    arguments: $arguments,
    request: $request,
    linkedFirst: true,
);

done();
--EXPECT--
OK
