<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/** No table, column or interface has this name. */
class UnknownName extends BadArgument
{
    /** @var list<string> the names that are nearest to it, the best first */
    public array $nearest = [];

    /** @param iterable<string> $known */
    public static function among(string $what, string $name, iterable $known): self
    {
        $distances = [];
        foreach ($known as $candidate) {
            $candidate = (string) $candidate;
            $wanted = strtolower(substr($name, 0, 200));
            $distance = levenshtein($wanted, strtolower($candidate));
            if (str_ends_with($candidate, 'Table')) {
                // People leave it out.
                $distance = min($distance, levenshtein($wanted, strtolower(substr($candidate, 0, -5))));
            }
            if (stripos($candidate, $name) !== false) {
                $distance = min($distance, 1);
            }
            if ($distance <= max(2, intdiv(strlen($candidate), 3))) {
                $distances[$candidate] = $distance;
            }
        }
        asort($distances);
        $nearest = array_slice(array_map(strval(...), array_keys($distances)), 0, 5);
        $hint = $nearest === [] ? '' : ' Is it ' . implode(' or ', $nearest) . '?';
        $made = new self("There is no $what \"$name\".$hint");
        $made->nearest = $nearest;
        return $made;
    }
}
