--TEST--
The bundled agent reads pcapng files of several interfaces, sections and byte orders; each interface is one of its own
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

/** Blocks of one byte order: formats of pack() for 16, 32 and 64 bits. */
final class Blocks
{
    private const ORDERS = ['little' => ['v', 'V', 'P'], 'big' => ['n', 'N', 'J']];

    public function __construct(private readonly string $order)
    {
    }

    public function number(int $value, int $bits): string
    {
        return pack(self::ORDERS[$this->order][intdiv($bits, 32)], $value);
    }

    public function block(int $type, string $body): string
    {
        $body .= str_repeat("\0", -strlen($body) & 3);
        $length = $this->number(12 + strlen($body), 32);
        return $this->number($type, 32) . $length . $body . $length;
    }

    /** Version 1.0, of a length that is not given. */
    public function section(): string
    {
        return $this->block(
            0x0a0d0d0a,
            $this->number(0x1a2b3c4d, 32) . $this->number(1, 16) . $this->number(0, 16) . $this->number(-1, 64),
        );
    }

    /** @param array<int, string> $options values by their codes */
    public function link(int $type, int $most, array $options = []): string
    {
        $body = $this->number($type, 16) . $this->number(0, 16) . $this->number($most, 32);
        foreach ($options as $code => $value) {
            $body .= $this->number($code, 16) . $this->number(strlen($value), 16) . $value . str_repeat("\0", -strlen($value) & 3);
        }
        return $this->block(1, $options === [] ? $body : $body . $this->number(0, 32));
    }

    private function stamped(string $link, int $time, string $frame, ?int $length): string
    {
        return $link . $this->number($time >> 32, 32) . $this->number($time & 0xffffffff, 32)
            . $this->number(strlen($frame), 32) . $this->number($length ?? strlen($frame), 32) . $frame;
    }

    public function frame(int $link, int $time, string $frame, ?int $length = null): string
    {
        return $this->block(6, $this->stamped($this->number($link, 32), $time, $frame, $length));
    }

    /** The block that was there before; it counts drops as well. */
    public function old_frame(int $link, int $time, string $frame): string
    {
        return $this->block(2, $this->stamped($this->number($link, 16) . $this->number(7, 16), $time, $frame, null));
    }

    public function simple_frame(string $frame, ?int $length = null): string
    {
        return $this->block(3, $this->number($length ?? strlen($frame), 32) . $frame);
    }
}

$directory = sys_get_temp_dir() . '/rmon-pcapng-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);

$frame = fn(int $size): string => str_pad(
    ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.1', 17, udp(1, 2))),
    $size,
    'x',
);
[$little, $big] = [new Blocks('little'), new Blocks('big')];
$second = 1000000;
$file = file_of(
    // Three interfaces: snapshot lengths of 64 and 262144, and one of bare IP packets; one comes behind frames.
    $little->section() . $little->link(1, 64, [2 => 'eth0', 8 => pack('P', 100000000)])
    . $little->link(1, 262144, [2 => "no\nname", 8 => "\1\2\3\4"])
    . $little->frame(0, 1000 * $second, $frame(64), 500) . $little->frame(1, 1001 * $second, $frame(1000))
    . $little->block(5, str_repeat("\0", 40)) // statistics
    . $little->link(101, 65535) . $little->frame(2, 1002 * $second, ip4('10.0.0.1', '10.0.0.2', 17, udp(1, 2)))
    . $little->old_frame(1, 1003 * $second + 7, $frame(80)) . $little->simple_frame(substr($frame(200), 0, 64), 200)
    // Another byte order: nanoseconds, an hour later than they say; and ticks of 1/1024 s.
    . $big->section() . $big->link(1, 0, [9 => "\x09", 14 => $big->number(3600, 64)]) . $big->link(1, 0, [8 => pack('J', 10000000000), 9 => "\x8a"])
    . $big->frame(0, 2000 * 1000000000 + 123456789, $frame(60)) . $big->frame(1, 3000 * 1024 + 512, $frame(61))
    . $big->frame(1, 3001 * 1024, $frame(62))
    // Ticks as fine as they get: 10^19 to a second, some time later, and 2^63; 64 bits count not even two seconds.
    . $big->link(1, 0, [9 => "\x13", 14 => $big->number(4000, 64)]) . $big->link(1, 0, [9 => "\xbf"])
    . $big->frame(2, -1, $frame(63)) . $big->frame(3, -1, $frame(64)),
);
$plain = capture_file([[1.0, $frame(60)]]);

$agent = reading_agent([$file, $plain], '--captures', $directory);
$link = module_link($agent);
$names = $speeds = [];
for ($index = 0; ($row = rmon_ifentry_getnext($link, $index)) && $row['status'] === 0; $index = $row['ifIndex']) {
    $names[$row['ifIndex']] = [$row['ifDescr'], $row['ifType']];
    $speeds[] = $row['ifSpeed'];
}
expect_same([
    1 => ["$file#1 eth0", 6], 2 => ["$file#2", 6], 3 => ["$file#3", 1], 4 => ["$file#4", 6], 5 => ["$file#5", 6],
    6 => ["$file#6", 6], 7 => ["$file#7", 6], 8 => [$plain, 6],
], $names, 'interfaces and their types');
// Of 8 octets, in the section's byte order; 10 Gbit/s are more than an ifSpeed can tell.
expect_same([100000000, 0, 0, 0, 4294967295, 0, 0, 0], $speeds, 'speeds');
foreach ([1, 2, 4, 5, 6, 7] as $index) {
    foreach ([CREATE_REQUEST, VALID] as $status) {
        expect_same(NO_ERROR, rmon_channel_set($link, $index, $index, 2, 1, 0, 0, 0, 1, '', '', $status), 'channel');
        expect_same(NO_ERROR, rmon_buffer_ctl_set($link, $index, $index, 1, 0, 0, 0, -1, '', $status), 'buffer');
    }
}
read_files($agent, 2);
$counted = fn(int $index): array => array_map(
    'intval',
    [rmon_etherstats_get($link, $index)['etherStatsPkts'], rmon_etherstats_get($link, $index)['etherStatsOctets']],
);
expect_same(
    [[2, 504 + 204], [2, 1004 + 84], [1, 64], [2, 65 + 66], [1, 67], [1, 68], [1, 64]],
    array_map($counted, [1, 2, 4, 5, 6, 7, 8]),
    'frames and octets of the interfaces',
);
expect_same(NO_SUCH_NAME, rmon_etherstats_get($link, 3)['status'], 'a row of what is not Ethernet');
expect_same(
    1,
    preg_match(
        "#^rmon-agent: $file ended: 9 frames in \\d+\\.\\d{3} s, 1 skipped that are not Ethernet's\n#m",
        $agent->said(),
    ),
    $agent->said(),
);

// Octets and times as they were recorded.
$kept = function (int $index) use ($link, $directory): string {
    rmon_capture_save_file($link, "saved$index", $index, 0, 0, 0);
    return substr(file_get_contents("$directory/saved$index.pcap"), 24);
};
$saved = fn(int $seconds, int $microseconds, string $bytes, ?int $length = null): string =>
    pack('VVVV', $seconds, $microseconds, strlen($bytes), $length ?? strlen($bytes)) . $bytes;
expect_same(
    bin2hex($saved(1000, 0, $frame(64), 500) . $saved(0, 0, substr($frame(200), 0, 64), 200)),
    bin2hex($kept(1)),
    'packets 1',
);
expect_same(bin2hex($saved(1001, 0, $frame(1000)) . $saved(1003, 7, $frame(80))), bin2hex($kept(2)), 'packets 2');
expect_same(bin2hex($saved(5600, 123456, $frame(60))), bin2hex($kept(4)), 'packets 4');
expect_same(bin2hex($saved(3000, 500000, $frame(61)) . $saved(3001, 0, $frame(62))), bin2hex($kept(5)), 'packets 5');
// 2^64 - 1 ticks: 1.8446744... and 1.9999999... seconds.
expect_same(bin2hex($saved(4001, 844674, $frame(63))), bin2hex($kept(6)), 'packets 6');
expect_same(bin2hex($saved(1, 999999, $frame(64))), bin2hex($kept(7)), 'packets 7');
rmon_close($link);
rmon_close($link);
expect_same(0, end_agent($agent), "the agent's exit code");

// One interface keeps the file's name. Again and again, too.
$one = $little->section() . $little->link(1, 262144) . $little->frame(0, $second, $frame(60));
$agent = bundled_agent('--read', file_of($one), '--loop');
$client = client($agent);
expect_soon(true, fn() => ether_row($client, 1)['Pkts'] >= 100, 'frames of a file that begins again');
end_agent($agent);

// Damage behind the first frame: the frame counts, one line reports the damage, and reading ends.
$next = $little->frame(0, $second, $frame(60));
$damaged = [
    'a header that is cut' => "\6\0\0",
    'a frame that is cut' => substr($next, 0, -5),
    'two lengths' => substr($next, 0, -4) . pack('V', 96),
    'a length of 0' => pack('VV', 6, 0) . substr($next, 8),
    'a length of 13' => pack('VV', 6, 13) . substr($next, 8),
    'a length of 4 GiB' => pack('VV', 6, 0xfffffffc) . substr($next, 8),
    'an unknown block of 4 GiB' => pack('VV', 99, 0xfffffffc) . substr($next, 8),
    'a frame of no interface' => $little->frame(1, $second, $frame(60)),
    'a frame beyond its block' => $little->block(6, pack('VVVVV', 0, 0, 0, 61, 61) . $frame(60)),
    'a frame of 4 GiB' => $little->block(6, pack('VVVVV', 0, 0, 0, 0xffffffff, 0xffffffff) . $frame(60)),
    'a frame without its numbers' => $little->block(6, pack('VVVV', 0, 0, 0, 0)),
    'an interface without its numbers' => $little->block(1, pack('V', 1)),
    'times that are too fine' => $little->link(1, 0, [9 => "\x14"]),
    'a section without an order' => $little->block(0x0a0d0d0a, pack('VvvP', 0x1a2b3c4e, 1, 0, -1)),
    'a section of another version' => $little->block(0x0a0d0d0a, pack('VvvP', 0x1a2b3c4d, 2, 0, -1)),
    'a frame of another section' => $big->section() . $big->frame(0, 0, $frame(60)),
];
foreach ($damaged as $what => $rest) {
    $agent = reading_agent([file_of($one . $rest)], '--loop');
    read_files($agent);
    expect_same(1, ether_row(client($agent), 1)['Pkts'], "frames before $what");
    expect_same(4, substr_count($agent->said(), "\n"), "lines about $what: {$agent->said()}");
    end_agent($agent);
}

// What has no Ethernet, or no interface, does not start.
foreach ([
    '/^rmon-agent: \S+ has no Ethernet frames\n$/' => $little->section() . $little->link(101, 0) . $little->frame(0, 0, 'x'),
    '/^rmon-agent: \S+ has no Ethernet frames\n$/D' => $little->section(),
    '/^rmon-agent: cannot read a capture: \S+: .+\n$/' => substr($little->section(), 0, 20),
] as $message => $bytes) {
    [$code, $output, $errors] = run(agent_program(), '--port', '0', '--read', file_of($bytes));
    expect_same([1, '', 1], [$code, $output, preg_match($message, $errors)], "what is said: $errors");
}
done();
?>
--EXPECT--
OK
