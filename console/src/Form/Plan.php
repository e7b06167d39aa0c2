<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Form;

use Closure;

/** A change that somebody asks for: what it is, shown before it is made. */
final class Plan
{
    /**
     * @param string $title  "Alarm 7 changes"
     * @param list<array{string, string, string}> $lines what changes, what it is, what it will be
     * @param Closure(): (string|null) $do makes the change; a message about it, if $title isn't one
     * @param bool $dangerous whether something is lost by it
     */
    public function __construct(
        public readonly string $title,
        public readonly array $lines,
        public readonly Closure $do,
        public readonly bool $dangerous = false,
    ) {
    }

    /**
     * The lines of those values that change.
     *
     * @param array<string, string> $before by label
     * @param array<string, string> $after  the same labels, or some of them
     * @return list<array{string, string, string}>
     */
    public static function differences(array $before, array $after): array
    {
        $lines = [];
        foreach ($after as $label => $value) {
            $was = $before[$label] ?? '';
            if ($was !== $value) {
                $lines[] = [(string) $label, $was, $value];
            }
        }
        return $lines;
    }
}
