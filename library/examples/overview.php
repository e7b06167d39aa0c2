<?php

// SPDX-License-Identifier: MIT

require __DIR__ . '/../autoload.php';

[, $host, $name, $seconds] = $argv + [1 => '127.0.0.1', 'eth0', 10];
$probe = Rmon\Probe::connect($host);
$interface = $probe->interface($name);
foreach ($interface->top('nlHostOutOctets', seconds: $seconds, limit: 5) as $talker) {
    printf("%-40s %12s\n", $talker->address, Rmon\Format::bitsPerSecond($talker->rate));
}
foreach ($interface->protocols(seconds: $seconds) as $share) {
    printf("%-40s %12s\n", $share->path, Rmon\Format::part($share->part));
}
$probe->table('eventTable')->set(eventIndex: 7, eventDescription: 'damaged frames');
$alarm = ['alarmVariable' => "etherStatsCRCAlignErrors.$interface->index", 'alarmRisingThreshold' => 10];
$probe->table('alarmTable')->set(...$alarm, alarmIndex: 7, alarmRisingEventIndex: 7);
