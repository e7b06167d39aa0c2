<?php

declare(strict_types=1);

namespace Rmon\Command\Capture;

/**
 * Frames that have all of some bits, and of which, at choice, one set of bits differs: what a row of the filter table
 * can say.
 *
 * Bits are told by layer: "link" from the frame's start, "net" from the network layer's, "port" from the transport's.
 * Each is a list by offset of the octet and the bits in it that matter.
 */
final class Term
{
    /**
     * @param string|null $network "ip", "ip6" or "arp"; null: any frame
     * @param array<string, array<int, array{int, int}>> $bits by layer and offset: the octet and its mask
     * @param array<string, array<int, array{int, int}>> $except the same; at least one of these bits differs
     */
    public function __construct(
        public readonly ?string $network = null,
        public readonly array $bits = [],
        public readonly array $except = [],
    ) {
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
        return $bits === null
            ? null
            : new self($this->network ?? $other->network, $bits, $this->except ?: $other->except);
    }

    /**
     * Frames that are this and not the other.
     *
     * @return self|null null when there can be none
     */
    public function without(self $other): ?self
    {
        if ($other->except !== []) {
            throw new Inexpressible('A "not" within a "not" can\'t be made a filter row.');
        }
        if ($this->and(new self($other->network, $other->bits)) === null) {
            return $this;
        }
        if ($this->network === null && $other->network !== null) {
            throw new Inexpressible("What isn't $other->network takes a \"not\" around the whole filter.");
        }
        $left = self::missing($other->bits, $this->bits);
        if ($left === []) {
            return null;
        }
        if ($this->except !== []) {
            throw new Inexpressible('One filter row can rule out one thing, not two.');
        }
        return new self($this->network, $this->bits, $left);
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
