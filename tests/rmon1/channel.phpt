--TEST--
Channels: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_channel',
    procedure: 45,
    row: sample([
        'status' => 'i32',
        'channelIndex' => 'u32',
        'channelIfIndex' => 'u32',
        'channelAcceptType' => 'i32',
        'channelDataControl' => 'i32',
        'channelTurnOnEventIndex' => 'u32',
        'channelTurnOffEventIndex' => 'u32',
        'channelEventIndex' => 'u32',
        'channelEventStatus' => 'i32',
        'channelMatches' => 'u32',
        'channelDescription' => ['text', 'of any length', UNBOUNDED],
        'channelOwner' => 'text',
        'channelStatus' => 'i32',
        'channelCreateTime' => 'u32',
        'channelDroppedFrames' => 'u32',
    ]),
    label: 'channel_get',
);

// Matches, time of creation and dropped frames are the agent's; the description may have any length.
check_writer(
    function: 'rmon_channel_set',
    procedure: 46,
    sent: [
        'status' => ['i32', 0],
        'channelIndex' => ['u32', 21],
        'channelIfIndex' => ['u32', 22],
        'channelAcceptType' => ['i32', 23],
        'channelDataControl' => ['i32', 24],
        'channelTurnOnEventIndex' => ['u32', 25],
        'channelTurnOffEventIndex' => ['u32', 26],
        'channelEventIndex' => ['u32', 4294967295],
        'channelEventStatus' => ['i32', 28],
        'channelMatches' => ['u32', 0],
        'channelDescription' => ['text', 'a description', UNBOUNDED],
        'channelOwner' => ['text', 'an owner'],
        'channelStatus' => ['i32', 31],
        'channelCreateTime' => ['u32', 0],
        'channelDroppedFrames' => ['u32', 0],
    ],
    names: [
        'channelIndex',
        'channelIfIndex',
        'channelAcceptType',
        'channelDataControl',
        'channelTurnOnEventIndex',
        'channelTurnOffEventIndex',
        'channelEventIndex',
        'channelEventStatus',
        'channelDescription',
        'channelOwner',
        'channelStatus',
    ],
    label: 'rmon_channel_set',
    order: ['Link'],
);

done();
--EXPECT--
OK
