<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\BadArgument;

/** Addresses as rows have them, lists of octets, and as texts. */
final class Address
{
    /**
     * The text of a MAC, IPv4 or IPv6 address by its length; what has another length is octets in hexadecimal.
     *
     * @param list<int>|int $octets an empty address is the number 0 in some tables
     */
    public static function text(array|int $octets): string
    {
        if (!is_array($octets)) {
            return '';
        }
        return match (count($octets)) {
            4 => implode('.', $octets),
            16 => rmon_inet_ntop(AF_INET6, $octets),
            default => self::hexadecimal($octets),
        };
    }

    /**
     * Octets in hexadecimal, as MAC addresses are written: "02:00:00:00:00:01".
     *
     * @param list<int>|int $octets
     */
    public static function hexadecimal(array|int $octets): string
    {
        return is_array($octets) && $octets !== [] ? implode(':', str_split(bin2hex(pack('C*', ...$octets)), 2)) : '';
    }

    /**
     * The octets of a dotted IPv4 or an IPv6 address.
     *
     * @return list<int>
     * @throws BadArgument
     */
    public static function parse(string $text): array
    {
        if (filter_var($text, FILTER_VALIDATE_IP) === false) {
            throw new BadArgument("\"$text\" is no IPv4 or IPv6 address.");
        }
        return rmon_inet_pton(str_contains($text, ':') ? AF_INET6 : AF_INET, $text);
    }

    /**
     * The octets of a MAC address, written with ":", "-" or "." between them.
     *
     * @return list<int>
     * @throws BadArgument
     */
    public static function parseMac(string $text): array
    {
        if (!preg_match('/^([0-9a-f]{2}[:-]?){5}[0-9a-f]{2}$|^([0-9a-f]{4}\.){2}[0-9a-f]{4}$/iD', $text)) {
            throw new BadArgument("\"$text\" is no MAC address.");
        }
        return array_values(unpack('C*', hex2bin(str_replace([':', '-', '.'], '', $text))));
    }

    /**
     * Octets in hexadecimal, in pairs of digits with or without ":", "-" or blanks between them.
     *
     * @return list<int>
     * @throws BadArgument
     */
    public static function parseHexadecimal(string $text): array
    {
        $digits = preg_replace('/[:\s-]+/', '', $text);
        if (strlen($digits) % 2 !== 0 || preg_match('/[^0-9a-f]/i', $digits)) {
            throw new BadArgument("\"$text\" are no octets in hexadecimal.");
        }
        return $digits === '' ? [] : array_values(unpack('C*', hex2bin($digits)));
    }
}
