--TEST--
Capture buffers: rows of their control, and creating or changing one
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

check_row_readers(
    table: 'rmon_buffer_ctl',
    procedure: 47,
    label: 'buffer_ctl_get',
    row: sample([
        'status' => 'i32',
        'bufferControlIndex' => 'u32',
        'bufferControlChannelIndex' => 'u32',
        'bufferControlFullStatus' => 'i32',
        'bufferControlFullAction' => 'i32',
        'bufferControlCaptureSliceSize' => 'i32',
        'bufferControlDownloadSliceSize' => 'i32',
        'bufferControlDownloadOffset' => 'i32',
        'bufferControlMaxOctetsRequested' => 'i32',
        'bufferControlMaxOctetsGranted' => 'i32',
        'bufferControlCapturedPackets' => 'u32',
        'bufferControlTurnOnTime' => 'u32',
        'bufferControlOwner' => 'text',
        'bufferControlStatus' => 'i32',
    ]),
);

// How full it is, what is granted, what was captured and since when are the agent's.
check_writer(
    function: 'rmon_buffer_ctl_set',
    procedure: 48,
    sent: [
        'status' => ['i32', 0],
        'bufferControlIndex' => ['u32', 21],
        'bufferControlChannelIndex' => ['u32', 22],
        'bufferControlFullStatus' => ['i32', 0],
        'bufferControlFullAction' => ['i32', 23],
        'bufferControlCaptureSliceSize' => ['i32', 24],
        'bufferControlDownloadSliceSize' => ['i32', 25],
        'bufferControlDownloadOffset' => ['i32', 26],
        'bufferControlMaxOctetsRequested' => ['i32', -1],
        'bufferControlMaxOctetsGranted' => ['i32', 0],
        'bufferControlCapturedPackets' => ['u32', 0],
        'bufferControlTurnOnTime' => ['u32', 0],
        'bufferControlOwner' => ['text', 'an owner'],
        'bufferControlStatus' => ['i32', 29],
    ],
    names: [
        'bufferControlIndex',
        'bufferControlChannelIndex',
        'bufferControlFullAction',
        'bufferControlCaptureSliceSize',
        'bufferControlDownloadSliceSize',
        'bufferControlDownloadOffset',
        'bufferControlMaxOctetsRequested',
        'bufferControlOwner',
        'bufferControlStatus',
    ],
    label: 'rmon_buffer_ctl_set',
    order: ['Link'],
);

done();
--EXPECT--
OK
