--TEST--
The bundled agent tells of sizes in 32 bits, and grants no more than its own bounds, however large --memory is
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

const MOST = 0x7fffffff;

// A buffer could have half of a quarter of it, and a bit more: 0x80100000 octets with the first size, which are negative
// as a number of 32 bits, and with the others 2^32 and more, whose lower 32 bits are fewer than it gets. The last size is
// the largest that the agent takes.
foreach (['16G', '32G', '65536G'] as $size) {
    $agent = reading_agent([capture_file([])], '--memory', $size);
    $link = module_link($agent);

    expect_same(
        NO_ERROR,
        start_row(fn(int $status) => rmon_channel_set($link, 1, 1, 1, 2, 0, 0, 0, 1, '', '', $status)),
        "$size: channel",
    );
    foreach ([1 => -1, 2 => MOST, 3 => 4194305, 4 => 1000] as $index => $octets) {
        $answer = start_row(
            fn(int $status) => rmon_buffer_ctl_set($link, $index, 1, 2, 0, 0, 0, $octets, '', $status),
        );
        expect_same(NO_ERROR, $answer, "$size: buffer of $octets");
        $granted = rmon_buffer_ctl_get($link, $index)['bufferControlMaxOctetsGranted'];
        expect_same(min($octets < 0 ? MOST : $octets, 4194304), $granted, "$size: of $octets octets");
    }

    foreach ([3 => 65535, 4 => 3601, 5 => 10] as $index => $buckets) {
        $answer = start_row(fn(int $status) => rmon_history_ctl_set($link, $index, 1, $buckets, 3600, '', $status));
        expect_same(NO_ERROR, $answer, "$size: history of $buckets");
        $granted = rmon_history_ctl_get($link, $index)['historyControlBucketsGranted'];
        expect_same(min($buckets, 3600), $granted, "$size: of $buckets buckets");
    }

    foreach ([1 => -1, 2 => MOST, 3 => 10001, 4 => 100] as $index => $rows) {
        $answer = start_row(
            fn(int $status) =>
                rmon_art_ctl_set($link, $index, 1, 0, 10, 20, 50, 100, 200, 500, 1000, $rows, '', $status),
        );
        expect_same(NO_ERROR, $answer, "$size: report of $rows");
        $granted = rmon_art_ctl_get($link, $index)['artControlGrantedSize'];
        expect_same(min($rows < 0 ? MOST : $rows, 10000), $granted, "$size: of $rows rows");
    }

    rmon_close($link);
    rmon_close($link); // the second one ends it: the link to the next agent is another one
    expect_same(0, end_agent($agent), "$size: the agent's exit code");
}
done();
?>
--EXPECT--
OK
