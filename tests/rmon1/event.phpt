--TEST--
Events: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers('rmon_event', 40, 'host_ctl_get', [
    'status' => 'int',
    'eventIndex' => 'unsigned',
    'eventDescription' => 'text',
    'eventType' => 'int',
    'eventCommunity' => 'text',
    'eventLastTimeSent' => 'unsigned',
    'eventOwner' => 'text',
    'eventStatus' => 'int',
]);

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
check_writer('rmon_event_set', 41, 'rmon_host_ctl_set', $arguments, $request, true);

done();
--EXPECT--
OK
