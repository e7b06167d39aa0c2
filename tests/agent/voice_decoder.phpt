--TEST--
Without tshark the bundled agent says that it measures no calls; one that dies or prints nonsense costs calls alone
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

const NONE = "rmon-agent: tshark is not installed: no telephone calls are measured\n";

$command = "CRCX 1 aaln/1@gw1 MGCP 1.0\r\nC: A3C4\r\nM: sendrecv\r\n";
$frame = ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.20', 17, udp(2727, 2427, $command)));
$file = capture_file([[0.0, $frame], [1.0, $frame]]);
// Whoever the decoder's process is: it may run what is here.
$folder = sys_get_temp_dir() . '/rmon-decoder-' . getmypid();
mkdir($folder);
chmod($folder, 0755);
$path = getenv('PATH');

/** An agent that has read the file with such a tshark on its path. */
function with_decoder(string $folder, string $file): BundledAgent
{
    putenv("PATH=$folder");
    $agent = reading_agent([$file]);
    $socket = client($agent);
    start_row(fn(int $status) => set_ether($socket, 1, 1, 'decoder', $status));
    read_files($agent);
    expect_same(2, ether_row($socket, 1)['Pkts'] ?? null, 'frames that were counted');
    return $agent;
}

$agent = with_decoder($folder, $file);
expect_same(1, substr_count($agent->said(), NONE), $agent->said());
expect_same(0, end_agent($agent), "the agent's exit code");

// Who plays a scenario waits for no calls.
$agent = bundled_agent('--read', $file, '--voice', __DIR__ . '/../../agent/voice.ini');
expect_same(0, substr_count($agent->said(), NONE), $agent->said());
expect_same(0, end_agent($agent), "the agent's exit code");

// Both wait for a frame: what they had is lost with them.
foreach ([
    'dies' => 'head -c 30 >/dev/null',
    'prints nonsense' => "head -c 30 >/dev/null\n"
        . "printf '[\\n  {nonsense\\n  },\\n  {\\n  },\\n  {\\n  }'\ncat >/dev/null",
] as $what => $script) {
    file_put_contents("$folder/tshark", "#!/bin/sh\n$script\n");
    chmod("$folder/tshark", 0755);
    $agent = with_decoder($folder, $file);
    $lost = fn() => preg_match('/^rmon-agent: voice signalling: frames that were not decoded: [12]$/m', $agent->said());
    expect_soon(1, $lost, "one that $what");
    expect_same(0, substr_count($agent->said(), NONE), $agent->said());
    expect_same(0, end_agent($agent), "one that $what: the agent's exit code");
}
unlink("$folder/tshark");
rmdir($folder);
putenv("PATH=$path");

done();
--EXPECT--
OK
