--TEST--
Capture buffers: rows of their control, and creating or changing one
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

check_row_readers(
    table: 'rmon_buffer_ctl',
    procedure: 47,
    label: 'buffer_ctl_get',
    fields: [
        'status' => 'int',
        'bufferControlIndex' => 'unsigned',
        'bufferControlChannelIndex' => 'unsigned',
        'bufferControlFullStatus' => 'int',
        'bufferControlFullAction' => 'int',
        'bufferControlCaptureSliceSize' => 'int',
        'bufferControlDownloadSliceSize' => 'int',
        'bufferControlDownloadOffset' => 'int',
        'bufferControlMaxOctetsRequested' => 'int',
        'bufferControlMaxOctetsGranted' => 'int',
        'bufferControlCapturedPackets' => 'unsigned',
        'bufferControlTurnOnTime' => 'unsigned',
        'bufferControlOwner' => 'text',
        'bufferControlStatus' => 'int',
    ],
);

// How full it is, what is granted, what was captured and since when are the agent's.
$request = fn(
    int $index,
    int $channel,
    int $fullAction,
    int $captureSlice,
    int $downloadSlice,
    int $downloadOffset,
    int $maxOctets,
    string $owner,
    int $status,
) => record(
    status: i32(0),
    bufferControlIndex: u32($index),
    bufferControlChannelIndex: u32($channel),
    bufferControlFullStatus: i32(0),
    bufferControlFullAction: i32($fullAction),
    bufferControlCaptureSliceSize: i32($captureSlice),
    bufferControlDownloadSliceSize: i32($downloadSlice),
    bufferControlDownloadOffset: i32($downloadOffset),
    bufferControlMaxOctetsRequested: i32($maxOctets),
    bufferControlMaxOctetsGranted: i32(0),
    bufferControlCapturedPackets: u32(0),
    bufferControlTurnOnTime: u32(0),
    bufferControlOwner: text($owner),
    bufferControlStatus: i32($status),
);
$arguments = [21, 22, 23, 24, 25, 26, -1, 'an owner', 29];
check_writer(
    function: 'rmon_buffer_ctl_set',
    procedure: 48,
    label: 'rmon_buffer_ctl_set',
    arguments: $arguments,
    request: $request,
    linkedFirst: true,
);

done();
--EXPECT--
OK
