--TEST--
The bundled agent reads captures with absurd times, truncated headers and unknown types
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';
require __DIR__ . '/groups.inc';

/** A block of a pcapng file. */
function block(int $type, string $body): string
{
    $body .= str_repeat("\0", -strlen($body) & 3);
    $length = pack('V', 12 + strlen($body));
    return pack('V', $type) . $length . $body . $length;
}

/** A pcapng file of one Ethernet interface with stamps in seconds (if_tsresol 0). @param array<array{int, string}> $frames */
function new_capture_file(array $frames): string
{
    $bytes = block(0x0a0d0d0a, pack('VvvP', 0x1a2b3c4d, 1, 0, -1)) . block(1, pack('vvVvvVV', 1, 0, 262144, 9, 1, 0, 0));
    foreach ($frames as [$time, $frame]) {
        $bytes .= block(
            6,
            pack('VVVVV', 0, $time >> 32 & 0xffffffff, $time & 0xffffffff, strlen($frame), strlen($frame)) . $frame,
        );
    }
    return file_of($bytes);
}

$query = ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1000, 53, "\0\7\1\0")));
$answer = ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.1', 17, udp(53, 1000, "\0\7\x81\0")));
$far = new_capture_file([
    [1, $query], [PHP_INT_MAX, $answer], [PHP_INT_MIN, $query], [-1, $answer], [0, $query], [1 << 40, $query], [2, $answer],
]);

// Frames that end within the header of Ethernet, which has 14 octets; what SNAP has for a type is a length.
$snap = fn(string $type) => ethernet(mac(2), mac(1), 40, "\xaa\xaa\x03\0\0\0$type" . str_repeat("\x42", 32));
$frames = [];
for ($size = 0; $size <= 14; $size++) {
    $frames[] = [1.0, substr($query, 0, $size), 60];
}
$frames = [...$frames, [2.0, $snap("\x05\xff")], [2.0, $snap("\x06\x00")], [2.0, $snap("\x08\x06")]];
$odd = capture_file($frames);

foreach ([$far, $odd] as $file) {
    foreach ([['--speed', 'full'], ['--speed', 'recorded']] as $options) {
        if ($file === $far && $options[1] === 'recorded') {
            continue; // it would take its time
        }
        $agent = reading_agent([$file], ...$options);
        $link = module_link($agent);
        foreach (start_groups($link, 1, -1) as $group => $status) {
            expect_same(1, $status, "status of $group");
        }
        if ($options[1] === 'recorded') {
            proc_terminate($agent->process, 10); // SIGUSR1; the second of pause is waited for
            expect_soon(18, fn() => (int) rmon_etherstats_get($link, 1)['etherStatsPkts'], 'frames');
        } else {
            read_files($agent);
        }
        if ($file === $far) {
            expect_same(7, (int) rmon_etherstats_get($link, 1)['etherStatsPkts'], 'frames of all times');
        } else {
            // Ethernet: the whole header, and the two types. 802.3: what is no type. The others count as neither.
            $packets = fn(int $index) => (int) (rmon_pdist_stats_get($link, 1, $index)['protocolDistStatsPkts'] ?? 0);
            $local = protocol_indexes($link);
            expect_same(
                [3, 1, 1, 0],
                array_map($packets, [1, 2, $local['arp'], $local['llc.bpdu']]),
                'ether2, llc, arp, bpdu',
            );
            expect_same(16, (int) rmon_pdist_stats_getothers($link, 1)['packets'], 'others');
            expect_same(18, (int) rmon_etherstats_get($link, 1)['etherStatsPkts'], 'frames');
        }
        rmon_close($link);
        rmon_close($link);
        expect_same(0, end_agent($agent), "the agent's exit code");
    }
}
done();
?>
--EXPECT--
OK
