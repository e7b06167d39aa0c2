<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

/**
 * Frames that have all of some bits, and of which, at choice, one set of bits differs: what a row of the filter table
 * can say.
 *
 * Bits are given by layer: "link" from the frame's start, "net" from the network layer's, "port" from the transport's.
 * Each is a list by offset of the octet and the bits in it that matter.
 */
final class Term
{
    /** @var array<string, array<int, array{int, int}>> by layer and offset: the octet and its mask */
    public readonly array $bits;

    /** @var array<string, array<int, array{int, int}>> the same; of these bits, where there are any, one differs */
    public readonly array $except;

    /**
     * @param string|null $network "ip", "ip6" or "arp"; null: any frame
     * @param array<string, array<int, array{int, int}>> $bits
     * @param array<string, array<int, array{int, int}>> $except
     * @param bool $later whether only later fragments of IPv4 packets are meant, which have no ports
     */
    public function __construct(
        public readonly ?string $network = null,
        array $bits = [],
        array $except = [],
        public readonly bool $later = false,
    ) {
        $this->bits = array_filter($bits);
        $this->except = array_filter($except);
    }

    /**
     * Octets from an offset on.
     *
     * @param list<int> $octets
     * @param list<int> $mask all bits where it ends
     */
    public static function octets(?string $network, string $layer, int $offset, array $octets, array $mask = []): self
    {
        $bits = [];
        foreach ($octets as $place => $octet) {
            $of = $mask[$place] ?? 0xff;
            if ($of !== 0) {
                $bits[$offset + $place] = [$octet & $of, $of];
            }
        }
        return new self($network, [$layer => $bits]);
    }

    /** Frames that are both; null when there can be none. */
    public function and(self $other): ?self
    {
        if ($this->network !== null && $other->network !== null && $this->network !== $other->network) {
            return null;
        }
        if ($this->except !== [] && $other->except !== []) {
            throw new Inexpressible('One filter row can rule out one thing, not two.');
        }
        $bits = self::joined($this->bits, $other->bits);
        $later = $this->later || $other->later;
        if ($bits === null || $later && isset($bits['port'])) {
            return null;
        }
        return self::consistent($this->network ?? $other->network, $bits, $this->except ?: $other->except, $later);
    }

    /**
     * Frames that are this and not the other: where one thing is ruled out already, by a term for each bit of the other
     * that can differ.
     *
     * @return list<self>
     */
    public function without(self $other): array
    {
        if ($other->except !== []) {
            throw new Inexpressible('A "not" within a "not" can\'t be made a filter row.');
        }
        if ($this->and($other) === null) {
            return [$this];
        }
        if ($this->network === null && $other->network !== null) {
            throw new Inexpressible("What isn't $other->network takes a \"not\" around the whole filter.");
        }
        $left = self::missing($other->bits, $this->bits);
        $terms = [];
        $hasPorts = isset($this->bits['port']) || isset($this->except['port']);
        if (isset($other->bits['port']) && $other->network === 'ip' && !$hasPorts) {
            $terms[] = new self($this->network, $this->bits, $this->except, true);
        }
        if ($this->except === []) {
            return $left === [] ? $terms : [new self($this->network, $this->bits, $left, $this->later), ...$terms];
        }
        foreach ($left as $layer => $octets) {
            foreach ($octets as $offset => [$octet, $mask]) {
                for ($bit = 1; $bit < 256; $bit <<= 1) {
                    if ($mask & $bit) {
                        $terms[] = $this->and(
                            new self($this->network, [$layer => [$offset => [~$octet & $bit, $bit]]]),
                        );
                    }
                }
            }
        }
        return array_values(array_filter($terms));
    }

    /** The term without the bits that it wants both as they are and otherwise; null when nothing is left to differ. */
    private static function consistent(?string $network, array $bits, array $except, bool $later): ?self
    {
        if ($except === [] || self::joined($bits, $except) === null) {
            // One of them differs already, if any has to.
            return new self($network, $bits, [], $later);
        }
        $left = self::missing($except, $bits);
        return $left === [] ? null : new self($network, $bits, $left, $later);
    }

    /** @return array<string, array<int, array{int, int}>>|null null when they contradict each other */
    private static function joined(array $one, array $other): ?array
    {
        foreach ($other as $layer => $octets) {
            foreach ($octets as $offset => [$octet, $mask]) {
                [$known, $of] = $one[$layer][$offset] ?? [0, 0];
                if (($known ^ $octet) & $mask & $of) {
                    return null;
                }
                $one[$layer][$offset] = [$known | $octet, $mask | $of];
            }
        }
        return $one;
    }

    /** The bits that are in $wanted and not in $there. */
    private static function missing(array $wanted, array $there): array
    {
        $missing = [];
        foreach ($wanted as $layer => $octets) {
            foreach ($octets as $offset => [$octet, $mask]) {
                $rest = $mask & ~($there[$layer][$offset][1] ?? 0);
                if ($rest !== 0) {
                    $missing[$layer][$offset] = [$octet & $rest, $rest];
                }
            }
        }
        return $missing;
    }
}
