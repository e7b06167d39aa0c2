<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** A list of IPv4 networks. */
final class Networks
{
    /** @param list<array{int, int}> $networks address and mask of each */
    private function __construct(private readonly array $networks)
    {
    }

    /**
     * @param string $text such as "10.0.0.0/8 192.0.2.7"
     * @throws ConfigurationError
     */
    public static function of(string $text): self
    {
        $networks = [];
        foreach (preg_split('/[\s,]+/', $text, -1, PREG_SPLIT_NO_EMPTY) as $word) {
            [$address, $length] = explode('/', $word, 2) + [1 => '32'];
            $number = self::number($address);
            if ($number === null || !preg_match('/^\d{1,2}$/D', $length) || (int) $length > 32) {
                throw new ConfigurationError("\"$word\" is no IPv4 network such as 10.0.0.0/8.");
            }
            $mask = 0xffffffff << 32 - (int) $length & 0xffffffff;
            if (($number & ~$mask) !== 0) {
                throw new ConfigurationError("\"$word\" has bits behind its length: is " . long2ip($number & $mask)
                    . "/$length meant?");
            }
            $networks[] = [$number, $mask];
        }
        return new self($networks);
    }

    /** @param string $address dotted; anything else is in no network */
    public function hold(string $address): bool
    {
        $number = self::number($address);
        foreach ($this->networks as [$network, $mask]) {
            if ($number !== null && ($number & $mask) === $network) {
                return true;
            }
        }
        return false;
    }

    /** Four decimal numbers, and none of the other spellings that some programs take for an address. */
    private static function number(string $address): ?int
    {
        $valid = filter_var($address, FILTER_VALIDATE_IP, FILTER_FLAG_IPV4) !== false;
        return $valid ? (int) ip2long($address) : null;
    }
}
