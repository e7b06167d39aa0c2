<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

use Rmon\Address;
use Rmon\Exception\BadArgument;

/**
 * A filter in usual words:
 *
 *     host 10.0.1.23 and (tcp port 443 or icmp)
 *
 * It is a list of terms, of which one has to hold; or, with a "not" around it, none. "and" is stronger than "or".
 */
final class FilterExpression
{
    private const PROTOCOLS = ['tcp' => 6, 'udp' => 17, 'sctp' => 132, 'icmp' => 1, 'icmp6' => 58];

    /** Where each network layer's header has the number of the protocol above it. */
    private const ABOVE = ['ip' => 9, 'ip6' => 6];

    /** Where each has the addresses: source, destination, and how long they are. */
    private const ADDRESSES = ['ip' => [12, 16, 4], 'ip6' => [8, 24, 16], 'arp' => [14, 24, 4]];

    /** Terms that an expression may come to on the way. */
    private const MOST = 4096;

    /** Octets of a text that is taken for a filter. */
    private const LONGEST = 4096;

    /** @var list<string> */
    private array $words;

    /** The words that stood before the last value, for "host A or B". @var list<string> */
    private array $before = [];

    /**
     * @param list<Term> $terms
     * @param bool $failed whether frames are wanted for which none of the terms holds
     */
    private function __construct(public array $terms = [], public bool $failed = false)
    {
    }

    /** @throws BadArgument when it is no filter, or none that filter rows can say */
    public static function parse(string $text): self
    {
        if (strlen($text) > self::LONGEST) {
            throw new BadArgument('A filter has at most ' . self::LONGEST . ' octets.');
        }
        $made = new self();
        preg_match_all('/\(|\)|!|&&|\|\||[^\s()!&|]+|\S/', strtolower($text), $found);
        $made->words = $found[0];
        if ($made->words === []) {
            $made->failed = true;
            return $made;
        }
        try {
            [$made->terms, $made->failed] = $made->alternatives();
        } catch (Inexpressible $reason) {
            throw new BadArgument("The agent's filters can't say \"$text\": {$reason->getMessage()}");
        }
        if ($made->words !== []) {
            throw $made->words[0] === ')' || $made->isQualifier($made->words[0])
                ? new BadArgument("The filter ends before \"{$made->words[0]}\".")
                : self::unknown($made->words[0]);
        }
        if (!$made->failed && $made->terms === []) {
            throw new BadArgument("No frame can be all that \"$text\" says.");
        }
        return $made;
    }

    /** @return array{list<Term>, bool} */
    private function alternatives(): array
    {
        $terms = [];
        $negated = false;
        do {
            [$more, $not] = $this->conjunction();
            if ($not && ($terms !== [] || $this->isNext('or', '||'))) {
                throw new Inexpressible(
                    '"not" can stand around the whole filter or behind an "and", not beside an "or".',
                );
            }
            $negated = $not;
            $terms = [...$terms, ...$more];
        } while ($this->take('or', '||'));
        return [$terms, $negated];
    }

    /** @return array{list<Term>, bool} */
    private function conjunction(): array
    {
        $wanted = null;
        $unwanted = [];
        do {
            [$terms, $not] = $this->factor();
            if ($not) {
                $unwanted = [...$unwanted, ...$terms];
            } else {
                $wanted = $wanted === null ? $terms : self::both($wanted, $terms);
            }
        } while ($this->take('and', '&&'));
        if ($wanted === null) {
            // Not this and not that: neither of them.
            return [$unwanted, true];
        }
        return [self::allBut($wanted, $unwanted), false];
    }

    /** @return array{list<Term>, bool} */
    private function factor(): array
    {
        if ($this->take('not', '!')) {
            [$terms, $not] = $this->factor();
            return [$terms, !$not];
        }
        if ($this->take('(')) {
            $inside = $this->alternatives();
            if (!$this->take(')')) {
                throw new BadArgument('A ")" is missing in the filter.');
            }
            return $inside;
        }
        return [$this->primitive(), false];
    }

    /** @return list<Term> */
    private function primitive(): array
    {
        $qualifiers = [];
        while (($word = $this->words[0] ?? null) !== null && $this->isQualifier($word)) {
            $qualifiers[] = array_shift($this->words);
        }
        $kind = end($qualifiers);
        if ($qualifiers === []) {
            // "host A or B": B is what A was.
            $isEnd = $word === null || in_array($word, ['and', 'or', ')', '&&', '||'], true);
            if ($isEnd || $this->before === [] || !preg_match('/^[\da-f]/', $word)) {
                throw $isEnd ? new BadArgument('The filter ends too early.') : self::unknown($word);
            }
            $qualifiers = $this->before;
            $kind = end($qualifiers);
        }
        $takesValue = in_array($kind, ['host', 'net', 'port', 'src', 'dst'], true);
        $value = null;
        if ($takesValue || $kind === 'vlan' && ctype_digit($this->words[0] ?? '')) {
            $value = array_shift($this->words)
                ?? throw new BadArgument("The filter ends behind \"$kind\", where a value should be.");
            $this->before = $qualifiers;
        }
        return $this->terms($qualifiers, $value);
    }

    private static function unknown(string $word): BadArgument
    {
        return new BadArgument("\"$word\" is no word of a filter. There are: host, net, port, src, dst, ether host, "
            . 'ip, ip6, arp, tcp, udp, sctp, icmp, icmp6, vlan, broadcast, multicast, and, or, not.');
    }

    private function isQualifier(string $word): bool
    {
        return isset(self::PROTOCOLS[$word]) || in_array(
            $word,
            ['host', 'net', 'port', 'src', 'dst', 'ether', 'ip', 'ip6', 'arp', 'vlan', 'broadcast', 'multicast'],
            true,
        );
    }

    /**
     * @param list<string> $words
     * @return list<Term>
     */
    private function terms(array $words, ?string $value): array
    {
        $ways = array_values(array_intersect($words, ['src', 'dst']));
        $protocols = array_values(array_filter($words, static fn(string $word) => isset(self::PROTOCOLS[$word])));
        $networks = array_values(array_intersect($words, ['ip', 'ip6', 'arp']));
        $kinds = array_values(array_intersect($words, ['host', 'net', 'port', 'vlan', 'broadcast', 'multicast']));
        $ether = in_array('ether', $words, true);
        if (count($ways) > 1 || count($protocols) > 1 || count($networks) > 1 || count($kinds) > 1) {
            throw new BadArgument('"' . implode(' ', $words) . '" doesn\'t make sense in a filter.');
        }
        $kind = $kinds[0] ?? ($ways !== [] ? 'host' : null);
        $of = $networks === [] ? ['ip', 'ip6', 'arp'] : $networks;
        return match (true) {
            $kind === 'vlan' => [self::vlan($value)],
            $kind === 'broadcast' => [Term::octets(null, 'link', 0, [255, 255, 255, 255, 255, 255])],
            $kind === 'multicast' => [Term::octets(null, 'link', 0, [1], [1])],
            $kind === 'port' => self::port($value, $ways[0] ?? null, $protocols[0] ?? null, $of),
            $kind === 'host' && $ether => self::etherHost($value, $ways[0] ?? null),
            $kind === 'host', $kind === 'net' => self::withProtocol(
                self::addresses($kind, $value, $ways[0] ?? null, $of),
                $protocols[0] ?? null,
            ),
            $ether => throw new BadArgument('Behind "ether" stands "host", "src" or "dst".'),
            $protocols !== [] => self::protocol($protocols[0], $of),
            default => array_map(static fn(string $network) => new Term($network), $of),
        };
    }

    private static function vlan(?string $id): Term
    {
        $tagged = Term::octets(null, 'link', 12, [0x81, 0x00]);
        if ($id === null) {
            return $tagged;
        }
        if (strlen($id) > 4 || (int) $id > 4095) {
            throw new BadArgument("\"$id\" is no VLAN: 0 to 4095.");
        }
        return $tagged->and(Term::octets(null, 'link', 14, [(int) $id >> 8, (int) $id & 255], [0x0f, 0xff]));
    }

    /** @return list<Term> */
    private static function etherHost(string $address, ?string $way): array
    {
        $octets = Address::parseMac($address);
        $ways = ['dst' => Term::octets(null, 'link', 0, $octets), 'src' => Term::octets(null, 'link', 6, $octets)];
        return $way === null ? array_values($ways) : [$ways[$way]];
    }

    /**
     * @param list<string> $networks
     * @return list<Term>
     */
    private static function addresses(string $kind, string $value, ?string $way, array $networks): array
    {
        [$address, $bits] = [...explode('/', $value, 2), null];
        if ($kind === 'host' && $bits !== null) {
            throw new BadArgument("\"$value\" is a network: net $value.");
        }
        $octets = Address::parse($address);
        $bits ??= (string) (8 * count($octets));
        if (!preg_match('/^\d{1,3}$/D', $bits) || (int) $bits > 8 * count($octets)) {
            throw new BadArgument("\"$value\" is no network: ADDRESS/BITS.");
        }
        $mask = [];
        foreach (array_keys($octets) as $place) {
            $own = max(0, min(8, (int) $bits - 8 * $place));
            $mask[] = 0xff << 8 - $own & 0xff;
            if ($octets[$place] & ~end($mask)) {
                throw new BadArgument("\"$value\" has bits behind its first $bits.");
            }
        }
        $terms = [];
        foreach ($networks as $network) {
            [$source, $destination, $length] = self::ADDRESSES[$network];
            if ($length !== count($octets)) {
                continue;
            }
            foreach (['src' => $source, 'dst' => $destination] as $end => $offset) {
                if ($way === null || $way === $end) {
                    $terms[] = Term::octets($network, 'net', $offset, $octets, $mask);
                }
            }
        }
        return $terms;
    }

    /**
     * @param list<string> $networks
     * @return list<Term>
     */
    private static function protocol(string $protocol, array $networks): array
    {
        $possible = match ($protocol) {
            'icmp' => ['ip'],
            'icmp6' => ['ip6'],
            default => ['ip', 'ip6'],
        };
        return array_values(array_map(
            static fn(string $network) => Term::octets(
                $network,
                'net',
                self::ABOVE[$network],
                [self::PROTOCOLS[$protocol]],
            ),
            array_intersect($possible, $networks),
        ));
    }

    /**
     * @param list<string> $networks
     * @return list<Term>
     */
    private static function port(string $port, ?string $way, ?string $protocol, array $networks): array
    {
        if (!preg_match('/^\d{1,5}$/D', $port) || (int) $port > 65535) {
            throw new BadArgument(str_contains($port, '-')
                ? "\"$port\": the agent's filters know no ranges of ports."
                : "\"$port\" is no port: a number from 0 to 65535.");
        }
        if ($protocol === 'icmp' || $protocol === 'icmp6') {
            throw new BadArgument("$protocol has no ports.");
        }
        $octets = [(int) $port >> 8, (int) $port & 255];
        $terms = [];
        foreach ($protocol === null ? ['tcp', 'udp', 'sctp'] : [$protocol] as $transport) {
            foreach (self::protocol($transport, $networks) as $term) {
                foreach (['src' => 0, 'dst' => 2] as $end => $offset) {
                    if ($way === null || $way === $end) {
                        $terms[] = $term->and(Term::octets($term->network, 'port', $offset, $octets));
                    }
                }
            }
        }
        return $terms;
    }

    /**
     * @param list<Term> $terms
     * @return list<Term>
     */
    private static function withProtocol(array $terms, ?string $protocol): array
    {
        return $protocol === null ? $terms : self::both($terms, self::protocol($protocol, ['ip', 'ip6']));
    }

    /**
     * @param list<Term> $ones
     * @param list<Term> $others
     * @return list<Term>
     */
    private static function both(array $ones, array $others): array
    {
        if (count($ones) * count($others) > self::MOST) {
            throw new Inexpressible('It takes too many rows.');
        }
        $both = [];
        foreach ($ones as $one) {
            foreach ($others as $other) {
                $both[] = $one->and($other);
            }
        }
        return array_values(array_filter($both));
    }

    /**
     * @param list<Term> $wanted
     * @param list<Term> $unwanted
     * @return list<Term>
     */
    private static function allBut(array $wanted, array $unwanted): array
    {
        foreach ($unwanted as $no) {
            $left = [];
            foreach ($wanted as $yes) {
                array_push($left, ...$yes->without($no));
            }
            if (count($left) > self::MOST) {
                throw new Inexpressible('It takes too many rows. To name the protocol helps: tcp and not port 22.');
            }
            $wanted = $left;
        }
        return $wanted;
    }

    private function isNext(string ...$words): bool
    {
        return in_array($this->words[0] ?? null, $words, true);
    }

    private function take(string ...$words): bool
    {
        if (!$this->isNext(...$words)) {
            return false;
        }
        array_shift($this->words);
        return true;
    }
}
