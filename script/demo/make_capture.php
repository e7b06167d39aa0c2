<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Writes what script/server --demo plays: the captures "office" and "wan" of five minutes in an office with a slow
 * database, and "known.json", what they hold. Each run writes the same.
 *
 * usage: make_capture.php DIRECTORY
 */

require __DIR__ . '/wire.php';
require __DIR__ . '/Capture.php';
require __DIR__ . '/Network.php';

/** Seconds since 1970 at which the captures begin. */
const SCENE_BEGINS = 1_770_000_000;
const SCENE_LASTS = 300;
const SEED = 20260202;

const MS = 1_000;
const SECOND = 1_000_000;

/** While the report runs, the database answers late. */
const SLOW_FROM = 110 * SECOND;
const SLOW_UNTIL = 230 * SECOND;

const EF = 46;
const AF41 = 34;
const AF21 = 18;
const CS1 = 8;
const CS2 = 16;
const CS6 = 48;

function at_random(int $from, int $to): int
{
    return mt_rand($from, $to);
}

function build_hosts(Network $net): void
{
    for ($i = 1; $i <= 24; $i++) {
        $net->host("pc$i", Network::OFFICE, '10.0.10.' . (10 + $i), $i % 2 ? '2001:db8:0:10::' . (10 + $i) : null);
    }
    // The phones of agent/voice.ini.
    $net->host('reception', Network::PHONES, '10.20.0.11');
    $net->host('workshop', Network::PHONES, '10.20.0.12');
    $net->host('office', Network::PHONES, '10.20.0.13');
    $net->host('store', Network::PHONES, '10.40.0.20');
    $net->host('depot', Network::WORLD, '10.41.0.20');
    $net->host('camera', Network::OFFICE, '10.0.10.60');
    $net->host('intranet', Network::SERVERS, '10.0.30.10', '2001:db8:0:30::10');
    $net->host('files', Network::SERVERS, '10.0.30.20');
    $net->host('mail', Network::SERVERS, '10.0.30.25', '2001:db8:0:30::25');
    $net->host('database', Network::SERVERS, '10.0.30.40');
    $net->host('resolver', Network::SERVERS, '10.0.30.53', '2001:db8:0:30::53');
    $net->host('old resolver', Network::SERVERS, '10.0.30.54');
    $net->host('callmanager', Network::SERVERS, '10.40.0.2');
    $net->host('monitor', Network::SERVERS, '10.0.30.90');
    foreach (sites() as $name => [$ip4, $ip6]) {
        $net->host($name, Network::WORLD, $ip4, $ip6);
    }
    $net->host('relay', Network::WORLD, '198.51.100.25');
    $net->host('clock', Network::WORLD, '198.51.100.123');
}

/** @return array<string, array{string, string|null, int}> address of either version, milliseconds until it answers */
function sites(): array
{
    return [
        'www.example.com' => ['203.0.113.10', '2001:db8:f::10', 25],
        'news.example.org' => ['203.0.113.20', '2001:db8:f::20', 48],
        'cdn.example.net' => ['203.0.113.30', '2001:db8:f::30', 12],
        'files.example.com' => ['198.51.100.30', null, 80],
        'shop.example.org' => ['198.51.100.40', null, 140],
        'video.example.net' => ['192.0.2.40', '2001:db8:f::40', 18],
        'maps.example.com' => ['192.0.2.50', null, 35],
    ];
}

/** Asks for a name's address, of both versions where the host has both. */
function lookup(Network $net, int $time, string $pc, string $name): int
{
    $resolver = $pc === 'pc9' ? 'old resolver' : 'resolver';
    foreach ([1 => 0, 28 => 1] as $type => $i) {
        $address = sites()[$name][$i] ?? null;
        $id = at_random(0, 0xffff);
        $asked = dns($id, $name, $type);
        if ($resolver === 'old resolver') {
            // It is gone; the computer asks the other one after a second.
            $net->question($time, $pc, $resolver, 53, 'domain', $asked, null);
        }
        $late = at_random(1, 10) === 1 ? at_random(40, 120) * MS : at_random(300, 2500);
        $from = $time + ($resolver === 'resolver' ? 0 : SECOND) + 400 * $i;
        $answer = dns($id, $name, $type, $address === null ? [] : [$address]);
        $net->question($from, $pc, 'resolver', 53, 'domain', $asked, $answer, $late);
        $end = max($end ?? 0, $from + $late);
    }
    return $end;
}

/** One visit of a site: a look-up, and a connection with several requests. */
function browse(Network $net, int $time, string $pc): void
{
    $names = array_keys(sites());
    $name = $names[min(count($names) - 1, intdiv(at_random(0, 99) ** 2, 1400))];
    [, $ip6, $far] = sites()[$name];
    $version = $ip6 !== null && $net->address($pc, 6) !== null ? 6 : 4;
    $time = lookup($net, $time, $pc, $name) + at_random(200, 900);
    $answer = fn() => intdiv($far * MS * at_random(80, 190), 100);
    $talk = [
        ['client', 300, tls_hello_of_client($name)],
        ['server', $answer(), [tls_hello_of_server()]],
        ['client', 900, tls(20, "\1") . tls(23, noise(53))],
    ];
    for ($i = at_random(1, 4); $i > 0; $i--) {
        $talk[] = ['client', at_random(2, 400) * MS, tls(23, noise(at_random(180, 520)))];
        $talk[] = ['server', $answer(), tls_data(at_random(1, 8) * at_random(300, 2600)), true];
    }
    // A client's two records in a row are one request.
    $talk[2][2] .= $talk[3][2];
    array_splice($talk, 3, 1);
    $net->connection($time, $pc, $name, 443, 'https', $talk, 0, $version);
}

/** A page of the intranet, which asks the database. */
function intranet(Network $net, int $time, string $pc): void
{
    $version = $net->address($pc, 6) !== null && at_random(0, 1) ? 6 : 4;
    $slow = $time > SLOW_FROM && $time < SLOW_UNTIL;
    $query = $slow ? at_random(350, 900) * MS : at_random(3, 18) * MS;
    $sql = 'SELECT name FROM article WHERE id > ' . at_random(1, 9999) . " LIMIT 40\0";
    $net->connection($time + 4 * MS, 'intranet', 'database', 5432, 'postgresql', [
        ['client', 200, pack('NN', 32, 196608) . "user\0web\0database\0shop\0\0"],
        ['server', 900, postgres('R', pack('N', 0)) . postgres('Z', 'I')],
        ['client', 150, postgres('Q', $sql)],
        ['server', $query, str_split(postgres_rows(at_random(10, 40)), SEGMENT)],
        ['client', 300, postgres('X', '')],
    ], AF21);
    $body = str_repeat('<li>article</li>', at_random(60, 600));
    $page = "HTTP/1.1 200 OK\r\nServer: intranet\r\nContent-Type: text/html\r\nContent-Length: " . strlen($body) . "\r\n\r\n$body";
    $net->connection($time, $pc, 'intranet', 80, 'www-http', [
        ['client', 250, 'GET /articles?page=' . at_random(1, 90) . " HTTP/1.1\r\nHost: intranet.example\r\nAccept: text/html\r\n\r\n"],
        ['server', $query + 9 * MS, str_split($page, SEGMENT)],
    ], 0, $version);
}

/** A mail that a computer hands in, and the server passes on. */
function mail_out(Network $net, int $time, string $client, string $server): int
{
    $text = "From: <someone@example.com>\r\nTo: <other@example.org>\r\nSubject: minutes\r\n\r\n";
    for ($i = at_random(3, 60); $i > 0; $i--) {
        $text .= "What was agreed on stands below, point by point.\r\n";
    }
    $wait = fn() => at_random(4, 60) * MS;
    return $net->connection($time, $client, $server, 25, 'smtp', [
        ['server', $wait(), "220 mail.example.com ESMTP\r\n"],
        ['client', 2 * MS, "EHLO pc.example.com\r\n"],
        ['server', $wait(), "250-mail.example.com\r\n250-SIZE 52428800\r\n250 8BITMIME\r\n"],
        ['client', 2 * MS, "MAIL FROM:<someone@example.com>\r\n"],
        ['server', $wait(), "250 2.1.0 Ok\r\n"],
        ['client', 2 * MS, "RCPT TO:<other@example.org>\r\n"],
        ['server', $wait(), "250 2.1.5 Ok\r\n"],
        ['client', 2 * MS, "DATA\r\n"],
        ['server', $wait(), "354 End data with <CR><LF>.<CR><LF>\r\n"],
        ['client', 2 * MS, str_split("$text.\r\n", SEGMENT)],
        ['server', 3 * $wait(), "250 2.0.0 Ok: queued\r\n"],
        ['client', 2 * MS, "QUIT\r\n"],
        ['server', $wait(), "221 2.0.0 Bye\r\n"],
    ], CS2);
}

/** The busy one: a backup of a computer, for two minutes. */
function backup(Network $net): void
{
    $talk = [
        ['server', 2 * MS, "@RSYNCD: 31.0\n"],
        ['client', 1 * MS, "@RSYNCD: 31.0\n"],
        ['client', 1 * MS, "backup\n"],
        ['server', 5 * MS, "@RSYNCD: OK\n"],
    ];
    for ($i = 0; $i < 110; $i++) {
        $burst = [];
        for ($j = at_random(50, 130); $j > 0; $j--) {
            $burst[] = noise(SEGMENT);
        }
        $talk[] = ['client', at_random(700, 1200) * MS, $burst, true];
        $talk[] = ['server', at_random(2, 9) * MS, noise(12)];
    }
    $net->connection(100 * SECOND, 'pc13', 'files', 873, 'rsync', $talk, CS1, 4, 260);
}

function sound(Network $net, int $from, int $seconds, string $caller, int $port, string $callee, int $other): void
{
    $sources = [at_random(1, 0x7fffffff), at_random(1, 0x7fffffff)];
    for ($i = 0; $i < 50 * $seconds; $i++) {
        $time = $from + 20 * MS * $i;
        // While the line is full, the packets come less evenly.
        $uneven = $time > SLOW_FROM && $time < SLOW_UNTIL ? 14 * MS : 1200;
        $net->datagram($time + at_random(0, $uneven), $caller, $port, $callee, $other, rtp($i, $sources[0]), '', EF, 4, true);
        $net->datagram($time + at_random(0, 1200) + 3 * MS, $callee, $other, $caller, $port, rtp($i, $sources[1]), '', EF, 4, true);
        if ($i % 250 === 249) {
            $clock = SCENE_BEGINS + $time / SECOND;
            $net->datagram($time + 7 * MS, $caller, $port + 1, $callee, $other + 1, rtcp($sources[0], $sources[1], $i, $clock, 0, 40), '', EF);
            $net->datagram($time + 9 * MS, $callee, $other + 1, $caller, $port + 1, rtcp($sources[1], $sources[0], $i, $clock, 3, 96), '', EF);
        }
    }
}

/** The calls of agent/voice.ini that are shorter than the capture. */
function calls(Network $net): void
{
    sound($net, 4 * SECOND, 90, 'reception', 18000, 'workshop', 18002);
    sound($net, 150 * SECOND, 25, 'office', 18004, 'reception', 18006);
    $sdp = fn(string $address, int $port) => "v=0\r\no=- 1 1 IN IP4 $address\r\ns=-\r\nc=IN IP4 $address\r\nt=0 0\r\nm=audio $port RTP/AVP 0\r\n";
    $call = 'A3C47F21456789F0';
    [$store, $depot] = ['aaln/1@gw1.example', 'aaln/1@gw2.example'];
    $time = 120 * SECOND;
    $mgcp = function (int $time, string $gateway, string $asked, string $answer) use ($net) {
        $net->datagram($time, 'callmanager', 2727, $gateway, 2427, $asked, 'mgcp-gateway', 24);
        $net->datagram($time + 30 * MS, $gateway, 2427, 'callmanager', 2727, $answer, 'mgcp-gateway', 24);
    };
    $mgcp($time, 'store', "CRCX 1001 $store MGCP 1.0\r\nC: $call\r\nL: p:20, a:PCMU\r\nM: sendrecv\r\n", "200 1001 OK\r\nI: FDE234C8\r\n\r\n" . $sdp('10.40.0.20', 3456));
    $mgcp($time + 60 * MS, 'depot', "CRCX 1002 $depot MGCP 1.0\r\nC: $call\r\nL: p:20, a:PCMU\r\nM: sendrecv\r\n\r\n" . $sdp('10.40.0.20', 3456), "200 1002 OK\r\nI: 456789FEDCBA5\r\n\r\n" . $sdp('10.41.0.20', 3458));
    $mgcp($time + 120 * MS, 'store', "MDCX 1003 $store MGCP 1.0\r\nC: $call\r\nI: FDE234C8\r\nM: sendrecv\r\n\r\n" . $sdp('10.41.0.20', 3458), "200 1003 OK\r\n");
    sound($net, $time + 300 * MS, 60, 'store', 3456, 'depot', 3458);
    $mgcp($time + 61 * SECOND, 'store', "DLCX 1004 $store MGCP 1.0\r\nC: $call\r\nI: FDE234C8\r\n", "250 1004 OK\r\nP: PS=3000, OS=480000, PR=2997, OR=479520, PL=3, JI=9, LA=55\r\n");
    $mgcp($time + 61 * SECOND + 60 * MS, 'depot', "DLCX 1005 $depot MGCP 1.0\r\nC: $call\r\nI: 456789FEDCBA5\r\n", "250 1005 OK\r\nP: PS=3000, OS=480000, PR=2995, OR=479200, PL=5, JI=14, LA=57\r\n");
}

/** What nobody asks for and each network has. */
function background(Network $net): void
{
    $all = mac('ff:ff:ff:ff:ff:ff');
    for ($time = 500 * MS; $time < SCENE_LASTS * SECOND; $time += 2 * SECOND) {
        $bpdu = hex2bin('424203' . '0000000000' . '8000' . '02005e000001' . '00000000' . '8000' . '02005e000001' . '8001' . '0000' . '1400' . '0200' . '0f00');
        $net->frame($time, mac('01:80:c2:00:00:00'), $net->mac('router'), pack('n', strlen($bpdu)) . $bpdu, 'llc.bpdu', null);
    }
    for ($time = 2 * SECOND; $time < SCENE_LASTS * SECOND; $time += 30 * SECOND) {
        $lldp = pack('nC', 1 << 9 | 7, 4) . $net->mac('router') . pack('nC', 2 << 9 | 5, 5) . 'ge24' . pack('nn', 3 << 9 | 2, 120)
            . pack('n', 5 << 9 | 6) . 'router' . pack('n', 0);
        $net->frame($time, mac('01:80:c2:00:00:0e'), $net->mac('router'), pack('n', 0x88cc) . $lldp, 'lldp', null);
    }
    for ($i = 0; $i < 120; $i++) {
        $pc = 'pc' . at_random(1, 24);
        $time = at_random(0, (SCENE_LASTS - 1) * SECOND);
        $vlan = Network::OFFICE;
        $arp = fn(int $operation, string $mac, string $ip, string $asked, string $askedIp) =>
            pack('nnnCCn', 0x0806, 1, 0x0800, 6, 4, $operation) . $mac . inet_pton($ip) . $asked . inet_pton($askedIp);
        $net->frame($time, $all, $net->mac($pc), $arp(1, $net->mac($pc), $net->address($pc), str_repeat("\0", 6), '10.0.10.1'), 'arp', $vlan);
        $net->frame($time + at_random(100, 400), $net->mac($pc), $net->mac('router'), $arp(2, $net->mac('router'), '10.0.10.1', $net->mac($pc), $net->address($pc)), 'arp', $vlan);
    }
    // A device that sends frames which are too short, and one that sends too long ones.
    for ($i = 0; $i < 5; $i++) {
        $net->frame((40 + 50 * $i) * SECOND, $all, mac('02:00:5e:0a:00:fe'), pack('nnnCCn', 0x0806, 1, 0x0800, 6, 4, 1)
            . mac('02:00:5e:0a:00:fe') . inet_pton('10.0.10.99') . str_repeat("\0", 6) . inet_pton('10.0.10.1'), 'arp', null, filled: false);
    }
    for ($i = 0; $i < 12; $i++) {
        $net->datagram((103 + $i) * SECOND, 'files', 50000, 'database', 50001, noise(4000), '', 0, 4, true);
    }
    for ($i = 0; $i < 40; $i++) {
        $pc = 'pc' . at_random(1, 24);
        $time = at_random(0, SCENE_LASTS * SECOND - 1);
        $query = dns(0, '_ipp._tcp.local', 12, null, 0);
        $packet = ip($net->address($pc), '224.0.0.251', UDP, udp(5353, 5353, $query), 6, 0, 255, $i);
        $net->frame($time, mac('01:00:5e:00:00:fb'), $net->mac($pc), "\x08\0$packet", 'ip.udp.mdns', Network::OFFICE, [$net->address($pc), '224.0.0.251']);
    }
    for ($i = 0; $i < 30; $i++) {
        $pc = 'pc' . (1 + 2 * at_random(0, 11));
        // A neighbour is asked for and answers.
        $own = $net->address($pc, 6);
        $time = at_random(0, (SCENE_LASTS - 1) * SECOND);
        $asked = pack('CCnN', 135, 0, 0, 0) . inet_pton('2001:db8:0:10::1') . "\1\1" . $net->mac($pc);
        $group = 'ff02::1:ff00:1';
        $packet = ip($own, $group, ICMP6, $asked, 2, 0, 255, 0);
        $net->frame($time, mac('33:33:ff:00:00:01'), $net->mac($pc), "\x86\xdd$packet", 'ip6.icmp6', Network::OFFICE, [$own, $group]);
        $answer = pack('CCnN', 136, 0, 0, 0xe0000000) . inet_pton('2001:db8:0:10::1') . "\2\1" . $net->mac('router');
        $packet = ip('2001:db8:0:10::1', $own, ICMP6, $answer, 2, 0, 255, 0);
        $net->frame($time + 300, $net->mac($pc), $net->mac('router'), "\x86\xdd$packet", 'ip6.icmp6', Network::OFFICE, ['2001:db8:0:10::1', $own]);
    }
    for ($time = 5 * SECOND, $i = 0; $time < SCENE_LASTS * SECOND; $time += 5 * SECOND, $i++) {
        foreach (['pc1' => 'database', 'pc2' => 'www.example.com'] as $pc => $server) {
            $echo = fn(int $type) => pack('CCnnn', $type, 0, 0, 77, $i) . str_repeat('.', 56);
            $net->packet($time, $pc, $server, 4, ICMP, $echo(8), 'icmp');
            $net->packet($time + at_random(300, 30 * MS), $server, $pc, 4, ICMP, $echo(0), 'icmp');
        }
        $net->question($time + 9 * MS, 'monitor', 'intranet', 161, 'snmp', snmp($i), snmp($i, 40000 * $i), 900, CS2, timed: false);
        $stamp = fn() => pack('NN', SCENE_BEGINS + 2208988800 + intdiv($time, SECOND), at_random(0, 0x7fffffff));
        if ($i % 6 === 0) {
            $net->question($time + 20 * MS, 'resolver', 'clock', 123, 'ntp', "\x23\0\6\xec" . str_repeat("\0", 36) . $stamp(), "\x24\1\6\xec\0\0\0\x10\0\0\0\x20GPS\0" . $stamp() . $stamp() . $stamp() . $stamp(), 19 * MS, CS6, timed: false);
        }
        foreach (['reception', 'workshop', 'office'] as $phone) {
            if ($i % 6 === 1) {
                $net->connection($time + 30 * MS, $phone, 'callmanager', 2000, 'sccp', [
                    ['client', 300, pack('VVV', 4, 0, 0)],
                    ['server', 2 * MS, pack('VVV', 4, 0, 0x0100)],
                ], 24);
            }
        }
    }
    // A camera's picture for those who watch it.
    for ($i = 0; $i < 10 * SCENE_LASTS; $i++) {
        $picture = pack('CCnNN', 0x80, 96 | ($i % 3 === 2 ? 0x80 : 0), $i, 9000 * intdiv($i, 3), 4711) . noise(at_random(300, 1200));
        $net->datagram(100 * MS * $i + 11 * MS, 'camera', 40000, 'monitor', 40002, $picture, '', AF41, 4, true);
    }
}

function scene(): Network
{
    mt_srand(SEED);
    $net = new Network();
    build_hosts($net);
    for ($i = 1; $i <= 24; $i++) {
        for ($time = at_random(0, 25 * SECOND); $time < (SCENE_LASTS - 8) * SECOND; $time += at_random(9, 36) * SECOND) {
            at_random(0, 2) === 0 ? intranet($net, $time, "pc$i") : browse($net, $time, "pc$i");
        }
        $time = at_random(0, 280 * SECOND);
        $end = mail_out($net, $time, "pc$i", 'mail');
        if ($i % 2 === 0) {
            mail_out($net, $end + 300 * MS, 'mail', 'relay');
        }
    }
    backup($net);
    calls($net);
    background($net);
    return $net;
}

if ($argc !== 2 || str_starts_with($argv[1], '-')) {
    fwrite(STDERR, "usage: make_capture.php DIRECTORY\n");
    exit(2);
}
ini_set('memory_limit', '512M');
$net = scene();
$net->office->write("$argv[1]/office");
$net->wan->write("$argv[1]/wan");
$known = ['seconds' => SCENE_LASTS, 'office' => $net->office->known(), 'wan' => $net->wan->known()];
file_put_contents("$argv[1]/known.json", json_encode($known, JSON_PRETTY_PRINT | JSON_THROW_ON_ERROR) . "\n");
