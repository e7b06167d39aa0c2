--TEST--
A link takes no reserved port and less than 64 KB of memory, long calls and replies included
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

const LINKS = 200;

// An address of the process's own network: its texts are many, and each is a link's host.
$hosts = array_map(fn(int $zeros) => '127.0.0.' . str_repeat('0', $zeros) . '1', range(0, LINKS - 1));

/** Kilobytes of this process in memory. */
$resident = fn(): int => (int) preg_replace('/.*^VmRSS:\s*(\d+).*/ms', '$1', file_get_contents('/proc/self/status'));

// 2,000 rows of 72 bytes and an address of 24: more than is read at once.
$row = record(
    status: i32(0), hostAddress: byte_list([0, 26, 43, 60, 77, 94]), hostCreationOrder: i32(3), hostIndex: i32(1),
    hostInPkts: u64(1), hostOutPkts: u64(2), hostInOctets: u64(3), hostOutOctets: u64(4), hostOutErrors: u64(5),
    hostOutBroadcastPkts: u64(6), hostOutMulticastPkts: u64(7),
);
$agent = scripted_agent(always(reply(u32(2000) . str_repeat($row, 2000))));
$use = function (mixed $link): void {
    // A call that is longer than what is sent at once fails for its result, which is another table's.
    @rmon_get_mib_var($link, str_repeat('x', 100000));
    if (count(rmon_host_getbulk($link, 1, [], 2000)) !== 2000) {
        fail('a reply is cut');
    }
};
$use(rmon_connect($hosts[0]));
$before = $resident();
$links = [];
for ($i = 1; $i < LINKS; $i++) {
    $use($links[] = rmon_connect($hosts[$i]));
}
$each = ($resident() - $before) / count($links);
// The sanitizers' allocator takes memory of its own.
expect_same(true, $each < 64 || getenv('USE_ZEND_ALLOC') === '0', "$each KB for each link");

// The ports from which the links came, as the kernel has them.
$ports = [];
foreach (file('/proc/self/net/tcp') as $line) {
    if (preg_match('/^ *\d+: 0100007F:([0-9A-F]{4}) 0100007F:([0-9A-F]{4}) 01 /', $line, $found) && hexdec($found[2]) === $agent->port) {
        $ports[] = hexdec($found[1]);
    }
}
expect_same(LINKS, count($ports), 'connections to the agent');
expect_same([], array_filter($ports, fn(int $port) => $port < 1024), 'reserved ports among theirs');
done();
?>
--EXPECT--
OK
