<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** A probe that the configuration names: the console talks to no other host. */
final class ConfiguredProbe
{
    public function __construct(
        public readonly string $name,
        public readonly string $host,
        public readonly int $port,
        public readonly string $title,
    ) {
    }

    /** Where it is, for people: "10.0.0.5:9911". */
    public function address(): string
    {
        return "$this->host:$this->port";
    }
}
