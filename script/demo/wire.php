<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * The bytes of the demo's frames: headers with right checksums, and messages of the protocols that are told by more
 * than their port.
 */

/** Octets of the largest segment: a tagged frame of IPv6 with it is no longer than an untagged one may be. */
const SEGMENT = 1420;

const ICMP = 1;
const TCP = 6;
const UDP = 17;
const ICMP6 = 58;

const FIN = 0x01;
const SYN = 0x02;
const PSH = 0x08;
const ACK = 0x10;

/** The internet checksum of an even number of octets, or of an odd one with a zero behind. */
function checksum(string $bytes): int
{
    $sum = array_sum(unpack('n*', strlen($bytes) % 2 ? "$bytes\0" : $bytes));
    while ($sum > 0xffff) {
        $sum = ($sum & 0xffff) + ($sum >> 16);
    }
    return ~$sum & 0xffff;
}

function mac(string $text): string
{
    return (string) hex2bin(str_replace(':', '', $text));
}

/** A packet of either version around a transport's bytes, whose checksum at that offset is filled in. */
function ip(string $from, string $to, int $protocol, string $inner, ?int $checksumAt, int $dscp, int $ttl, int $id): string
{
    [$from, $to] = [(string) inet_pton($from), (string) inet_pton($to)];
    if ($checksumAt !== null) {
        $pseudo = match (true) {
            $protocol === ICMP => '',
            strlen($from) === 16 => $from . $to . pack('NN', strlen($inner), $protocol),
            default => $from . $to . pack('nn', $protocol, strlen($inner)),
        };
        $sum = checksum($pseudo . $inner);
        // In UDP a sum of zero would say that there is none.
        $inner = substr_replace($inner, pack('n', $protocol === UDP && $sum === 0 ? 0xffff : $sum), $checksumAt, 2);
    }
    if (strlen($from) === 16) {
        return pack('NnCC', 6 << 28 | $dscp << 22, strlen($inner), $protocol, $ttl) . $from . $to . $inner;
    }
    $header = pack('CCnnnCCn', 0x45, $dscp << 2, 20 + strlen($inner), $id, 0x4000, $ttl, $protocol, 0) . $from . $to;
    return substr_replace($header, pack('n', checksum($header)), 10, 2) . $inner;
}

function tcp(int $from, int $to, int $sequence, int $acknowledged, int $flags, string $data): string
{
    $options = $flags & SYN ? pack('CCnCCCC', 2, 4, SEGMENT, 3, 3, 7, 0) : '';
    $length = (20 + strlen($options)) / 4;
    return pack('nnNNCCnnn', $from, $to, $sequence, $acknowledged, $length << 4, $flags, 0xfaf0, 0, 0) . $options . $data;
}

function udp(int $from, int $to, string $data): string
{
    return pack('nnnn', $from, $to, 8 + strlen($data), 0) . $data;
}

function dns_name(string $name): string
{
    $bytes = '';
    foreach (explode('.', $name) as $label) {
        $bytes .= chr(strlen($label)) . $label;
    }
    return $bytes . "\0";
}

/** A question, or with addresses its answer. */
function dns(int $id, string $name, int $type, ?array $addresses = null, int $flags = 0x0100, int $code = 0): string
{
    $answers = '';
    foreach ($addresses ?? [] as $address) {
        $bytes = (string) inet_pton($address);
        $answers .= pack('nnnNn', 0xc00c, $type, 1, 300, strlen($bytes)) . $bytes;
    }
    $flags = $addresses === null ? $flags : $flags | 0x8080 | $code;
    return pack('nnnnnn', $id, $flags, 1, count($addresses ?? []), 0, 0) . dns_name($name) . pack('nn', $type, 1) . $answers;
}

/** One TLS record. */
function tls(int $type, string $content): string
{
    return pack('Cnn', $type, 0x0303, strlen($content)) . $content;
}

function tls_hello_of_client(string $name): string
{
    $server = pack('Cn', 0, strlen($name)) . $name;
    $extensions = [0 => pack('n', strlen($server)) . $server, 10 => pack('nn', 2, 29), 13 => pack('nn', 2, 0x0804),
        43 => pack('Cn', 2, 0x0304), 51 => pack('nnn', 36, 29, 32) . noise(32)];
    $body = pack('n', 0x0303) . noise(32) . chr(32) . noise(32) . pack('nnnCC', 4, 0x1301, 0x1302, 1, 0);
    return tls(22, tls_handshake(1, $body . tls_extensions($extensions)));
}

/** A server's hello, the change of the cipher, and what comes encrypted behind them. */
function tls_hello_of_server(): string
{
    $extensions = [43 => pack('n', 0x0304), 51 => pack('nn', 29, 32) . noise(32)];
    $body = pack('n', 0x0303) . noise(32) . chr(32) . noise(32) . pack('nC', 0x1301, 0);
    return tls(22, tls_handshake(2, $body . tls_extensions($extensions))) . tls(20, "\1") . tls(23, noise(900));
}

function tls_handshake(int $type, string $body): string
{
    return pack('N', $type << 24 | strlen($body)) . $body;
}

/** @param array<int, string> $extensions */
function tls_extensions(array $extensions): string
{
    $bytes = '';
    foreach ($extensions as $type => $content) {
        $bytes .= pack('nn', $type, strlen($content)) . $content;
    }
    return pack('n', strlen($bytes)) . $bytes;
}

/** Records that fill as many octets, none of them longer than a segment. */
function tls_data(int $octets): array
{
    $records = [];
    for (; $octets > 0; $octets -= SEGMENT) {
        $records[] = tls(23, noise(max(24, min(SEGMENT, $octets)) - 5));
    }
    return $records;
}

/** Octets without a meaning, the same in each run. */
function noise(int $octets): string
{
    static $pool = null;
    if ($pool === null) {
        for ($i = 0; $i < 2048; $i++) {
            $pool .= pack('N', mt_rand(0, 0xffffffff));
        }
    }
    return substr($pool, mt_rand(0, strlen($pool) - $octets), $octets);
}

/** A message of PostgreSQL behind its start. */
function postgres(string $type, string $content): string
{
    return $type . pack('N', 4 + strlen($content)) . $content;
}

/** The rows of one text column that a query gives. */
function postgres_rows(int $count): string
{
    $bytes = postgres('T', pack('n', 1) . "name\0" . pack('NnNnNn', 0, 0, 25, 0xffff, 0xffffffff, 0));
    for ($i = 0; $i < $count; $i++) {
        $text = sprintf('article %06d, %s', mt_rand(1, 999999), str_repeat('x', mt_rand(10, 60)));
        $bytes .= postgres('D', pack('nN', 1, strlen($text)) . $text);
    }
    return $bytes . postgres('C', "SELECT $count\0") . postgres('Z', 'I');
}

/** A value of ASN.1's basic encoding. */
function ber(int $tag, string $content): string
{
    $length = strlen($content);
    return chr($tag) . ($length < 128 ? chr($length) : pack('Cn', 0x82, $length)) . $content;
}

/** A question of SNMP version 2c for the octets that an interface took in, or its answer. */
function snmp(int $id, ?int $value = null): string
{
    $name = ber(6, "\x2b\x06\x01\x02\x01\x02\x02\x01\x0a\x01");
    $variable = ber(0x30, $name . ($value === null ? ber(5, '') : ber(0x41, pack('N', $value & 0x7fffffff))));
    $pdu = ber(2, pack('N', $id)) . ber(2, "\0") . ber(2, "\0") . ber(0x30, $variable);
    return ber(0x30, ber(2, "\1") . ber(4, 'public') . ber($value === null ? 0xa0 : 0xa2, $pdu));
}

/** A packet of G.711 sound, 20 ms long. */
function rtp(int $number, int $source): string
{
    return pack('CCnNN', 0x80, $number === 0 ? 0x80 : 0, $number & 0xffff, 160 * $number, $source) . noise(160);
}

/** What a sender reports of itself and of the one whom it hears. */
function rtcp(int $source, int $other, int $sent, float $time, int $lost, int $jitter): string
{
    $stamp = (int) floor($time);
    return pack('CCnN', 0x81, 200, 12, $source)
        . pack('NNNNN', $stamp + 2208988800, (int) (fmod($time, 1) * 0xffffffff), 160 * $sent, $sent, 160 * $sent)
        . pack('NNNNNN', $other, $lost & 0xffffff, $sent, $jitter, 0, 0);
}
