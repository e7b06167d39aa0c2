--TEST--
Channels: rows, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'channelIndex' => 'unsigned',
    'channelIfIndex' => 'unsigned',
    'channelAcceptType' => 'int',
    'channelDataControl' => 'int',
    'channelTurnOnEventIndex' => 'unsigned',
    'channelTurnOffEventIndex' => 'unsigned',
    'channelEventIndex' => 'unsigned',
    'channelEventStatus' => 'int',
    'channelMatches' => 'unsigned',
    'channelDescription' => 'text',
    'channelOwner' => 'text',
    'channelStatus' => 'int',
    'channelCreateTime' => 'unsigned',
    'channelDroppedFrames' => 'unsigned',
];
check_row_readers('rmon_channel', 45, 'channel_get', $fields, unbounded: ['channelDescription']);

// Matches, time of creation and dropped frames are the agent's; the description may have any length.
$request = fn(
    int $index,
    int $interface,
    int $acceptType,
    int $dataControl,
    int $turnOnEvent,
    int $turnOffEvent,
    int $event,
    int $eventStatus,
    string $description,
    string $owner,
    int $status,
) => record(
    status: i32(0),
    channelIndex: u32($index),
    channelIfIndex: u32($interface),
    channelAcceptType: i32($acceptType),
    channelDataControl: i32($dataControl),
    channelTurnOnEventIndex: u32($turnOnEvent),
    channelTurnOffEventIndex: u32($turnOffEvent),
    channelEventIndex: u32($event),
    channelEventStatus: i32($eventStatus),
    channelMatches: u32(0),
    channelDescription: text($description),
    channelOwner: text($owner),
    channelStatus: i32($status),
    channelCreateTime: u32(0),
    channelDroppedFrames: u32(0),
);
$arguments = [21, 22, 23, 24, 25, 26, 4294967295, 28, 'a description', 'an owner', 31];
check_writer(
    function: 'rmon_channel_set',
    procedure: 46,
    label: 'rmon_channel_set',
    arguments: $arguments,
    request: $request,
    linkedFirst: true,
    unbounded: [8],
);

done();
--EXPECT--
OK
