--TEST--
Events: rows, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_event',
    procedure: 40,
    label: 'host_ctl_get',
    row: sample([
        'status' => 'i32',
        'eventIndex' => 'u32',
        'eventDescription' => 'text',
        'eventType' => 'i32',
        'eventCommunity' => 'text',
        'eventLastTimeSent' => 'u32',
        'eventOwner' => 'text',
        'eventStatus' => 'i32',
    ]),
);

// The time at which it was last sent is the agent's.
check_writer(
    function: 'rmon_event_set',
    procedure: 41,
    sent: [
        'status' => ['i32', 0],
        'eventIndex' => ['u32', 21],
        'eventDescription' => ['text', 'link down'],
        'eventType' => ['i32', 23],
        'eventCommunity' => ['text', 'private'],
        'eventLastTimeSent' => ['u32', 0],
        'eventOwner' => ['text', 'an owner'],
        'eventStatus' => ['i32', 26],
    ],
    names: ['eventIndex', 'eventDescription', 'eventType', 'eventCommunity', 'eventOwner', 'eventStatus'],
    label: 'rmon_host_ctl_set',
    order: ['Link'],
);

done();
--EXPECT--
OK
