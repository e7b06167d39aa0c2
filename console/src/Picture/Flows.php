<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

/** Flows between the ends that have most, for pictures. What the other ends have counts for one end "others". */
final class Flows
{
    /**
     * @param list<string> $sources      the one that sends most first, the others last
     * @param list<string> $destinations
     * @param array<int, array<int, float>> $amounts by the places of source and destination
     * @param float $sum                 of all
     * @param int $named                 ends of each side before the others
     */
    private function __construct(
        public readonly array $sources,
        public readonly array $destinations,
        public readonly array $amounts,
        public readonly float $sum,
        public readonly int $named,
    ) {
    }

    /**
     * Two flows between the same ends become one, those of nothing go.
     *
     * @param iterable<Flow> $flows
     * @param int $most ends of each side that are told by name
     */
    public static function largest(iterable $flows, int $most): self
    {
        $sources = [];
        $destinations = [];
        $kept = [];
        $sum = 0.0;
        foreach ($flows as $flow) {
            if ($flow->amount > 0) {
                $sources[$flow->source] = ($sources[$flow->source] ?? 0) + $flow->amount;
                $destinations[$flow->destination] = ($destinations[$flow->destination] ?? 0) + $flow->amount;
                $kept[] = $flow;
                $sum += $flow->amount;
            }
        }
        [$sourceNames, $sourcePlaces] = self::places($sources, $most);
        [$destinationNames, $destinationPlaces] = self::places($destinations, $most);
        $amounts = [];
        foreach ($kept as $flow) {
            $source = $sourcePlaces[$flow->source] ?? $most;
            $destination = $destinationPlaces[$flow->destination] ?? $most;
            $amounts[$source][$destination] = ($amounts[$source][$destination] ?? 0.0) + $flow->amount;
        }
        ksort($amounts);
        foreach ($amounts as &$row) {
            ksort($row);
        }
        return new self($sourceNames, $destinationNames, $amounts, $sum, $most);
    }

    /** All that a source sends. */
    public function sent(int $source): float
    {
        return array_sum($this->amounts[$source] ?? []);
    }

    /** All that a destination gets. */
    public function received(int $destination): float
    {
        return array_sum(array_column($this->amounts, $destination));
    }

    /** The largest flow between two ends. */
    public function most(): float
    {
        return $this->amounts === [] ? 0.0 : max(array_map(max(...), $this->amounts));
    }

    /**
     * @param array<string, float> $sums
     * @return array{list<string>, array<string, int>} the names, and the place of each that is told by name
     */
    private static function places(array $sums, int $most): array
    {
        arsort($sums);
        $names = array_map(strval(...), array_slice(array_keys($sums), 0, $most));
        $places = array_flip($names);
        return [count($sums) > $most ? [...$names, 'others'] : $names, $places];
    }
}
