<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

use Rmon\Exception\BadArgument;
use Rmon\Probe;

/** Makes rows of the filter table of terms. */
final class FilterRows
{
    /** Rows that a capture makes at most. */
    private const MOST = 250;

    private const ETHERNET_TYPES = ['ip' => [0x08, 0x00], 'ip6' => [0x86, 0xdd], 'arp' => [0x08, 0x06]];

    /** Where the network layer begins without a tag and with one, and what stands before it then. */
    private const UNTAGGED = 14;
    private const TAGGED = 18;

    private const TRANSPORTS = [6 => 'tcp', 17 => 'udp', 132 => 'sctp'];

    /** Octets of headers in words of four: IPv4 with all its options. */
    private const SHORTEST_IP = 5;
    private const LONGEST_IP = 15;
    private const IP6 = 40;

    public function __construct(private readonly Probe $probe)
    {
    }

    /**
     * @return list<array<string, mixed>> columns of filterTable
     * @throws BadArgument when it takes too many
     */
    public function of(FilterExpression $filter): array
    {
        $rows = [];
        foreach ($filter->terms as $term) {
            array_push($rows, ...$this->rows($term));
        }
        if ($rows === [] && $filter->terms !== []) {
            throw new BadArgument('No frame can be all that the filter says.');
        }
        if (count($rows) > self::MOST) {
            throw new BadArgument(sprintf(
                'This filter takes %d rows of the filter table, and at most %d are made. '
                    . 'To name the protocol helps: %s.',
                count($rows),
                self::MOST,
                'tcp and not port 22',
            ));
        }
        return $rows;
    }

    /** @return list<array<string, mixed>> */
    private function rows(Term $term): array
    {
        if ($term->later) {
            return $this->laterFragments($term);
        }
        $ports = isset($term->bits['port']) || isset($term->except['port']);
        $transport = self::TRANSPORTS[$term->bits['net'][$term->network === 'ip6' ? 6 : 9][0] ?? 0] ?? null;
        $link = isset($term->bits['link']) || isset($term->except['link']);
        $onlyPorts = $ports && !$link && count($term->bits['net'] ?? []) === 1 && !isset($term->except['net']);
        if ($onlyPorts && $transport !== null) {
            // Only ports: the agent finds where the transport begins.
            return [$this->row(
                "$term->network.$transport",
                self::moved($term->bits, ['port' => 0]),
                self::moved($term->except, ['port' => 0]),
            )];
        }
        $rows = [];
        foreach ($ports ? $this->withPortsPlaced($term) : [$term] as $placed) {
            array_push($rows, ...$this->fromNetwork($placed));
        }
        return $rows;
    }

    /**
     * An offset of the fragment that isn't 0.
     *
     * @return list<array<string, mixed>>
     */
    private function laterFragments(Term $term): array
    {
        $first = Term::octets('ip', 'net', 6, [0, 0], [0x1f, 0xff]);
        $rows = [];
        foreach ((new Term($term->network, $term->bits, $term->except))->without($first) as $later) {
            array_push($rows, ...$this->fromNetwork($later));
        }
        return $rows;
    }

    /**
     * The ports at each place where the header before them can end.
     *
     * @return list<Term>
     */
    private function withPortsPlaced(Term $term): array
    {
        $lengths = $term->network === 'ip6' ? [10] : range(self::SHORTEST_IP, self::LONGEST_IP);
        $placed = [];
        foreach ($lengths as $words) {
            $starts = ['net' => 0, 'port' => 4 * $words, 'link' => -self::UNTAGGED];
            $moved = new Term(
                $term->network,
                [
                    'link' => $term->bits['link'] ?? [],
                    'net' => self::moved(array_diff_key($term->bits, ['link' => 0]), $starts),
                ],
                [
                    'link' => $term->except['link'] ?? [],
                    'net' => self::moved(array_diff_key($term->except, ['link' => 0]), $starts),
                ],
            );
            if ($term->network === 'ip') {
                // The header's length, and no later fragment.
                $moved = $moved->and(Term::octets('ip', 'net', 0, [0x40 | $words]))
                    ?->and(Term::octets('ip', 'net', 6, [0, 0], [0x1f, 0xff]));
            }
            if ($moved !== null) {
                $placed[] = $moved;
            }
        }
        return $placed;
    }

    /** @return list<array<string, mixed>> */
    private function fromNetwork(Term $term): array
    {
        $link = ($term->bits['link'] ?? []) !== [] || ($term->except['link'] ?? []) !== [];
        if (!$link) {
            return [$this->row($term->network, $term->bits['net'] ?? [], $term->except['net'] ?? [])];
        }
        if ($term->network === null) {
            return [$this->row(null, $term->bits['link'] ?? [], $term->except['link'] ?? [])];
        }
        $type = self::ETHERNET_TYPES[$term->network];
        $rows = [];
        $tag = Term::octets(null, 'link', 12, [0x81, 0x00]);
        $heads = [
            self::UNTAGGED => Term::octets(null, 'link', 12, $type),
            self::TAGGED => $tag->and(Term::octets(null, 'link', 16, $type)),
        ];
        foreach ($heads as $start => $head) {
            $whole = (new Term(null, ['link' => self::moved($term->bits, ['link' => 0, 'net' => $start])]))->and($head);
            if ($whole !== null) {
                $rows[] = $this->row(
                    null,
                    $whole->bits['link'],
                    self::moved($term->except, ['link' => 0, 'net' => $start]),
                );
            }
        }
        return $rows;
    }

    /**
     * Bits of several layers in one, each from where it begins.
     *
     * @param array<string, array<int, array{int, int}>> $layers
     * @param array<string, int> $starts the others are left out
     * @return array<int, array{int, int}>
     */
    private static function moved(array $layers, array $starts): array
    {
        $moved = [];
        foreach ($layers as $layer => $octets) {
            foreach ($octets as $offset => $bits) {
                if (isset($starts[$layer])) {
                    $moved[$starts[$layer] + $offset] = $bits;
                }
            }
        }
        return $moved;
    }

    /**
     * @param string|null $protocol the path of the protocol that the data begin with; null: the frame's start
     * @param array<int, array{int, int}> $bits
     * @param array<int, array{int, int}> $except
     * @return array<string, mixed>
     */
    private function row(?string $protocol, array $bits, array $except): array
    {
        $data = [];
        $mask = [];
        $not = [];
        $places = [...array_keys($bits), ...array_keys($except)];
        $first = $places === [] ? 0 : min($places);
        for ($place = $first; $places !== [] && $place <= max($places); $place++) {
            [$octet, $of] = $bits[$place] ?? [0, 0];
            [$other, $differs] = $except[$place] ?? [0, 0];
            $data[] = $octet | $other;
            $mask[] = $of | $differs;
            $not[] = $differs;
        }
        return [
            'filterPktDataOffset' => $first,
            'filterPktData' => $data,
            'filterPktDataMask' => $mask,
            'filterPktDataNotMask' => $not,
            'filterProtocolDirDataLocalIndex' => $protocol === null ? 0 : $this->probe->protocols()->index($protocol),
        ];
    }
}
