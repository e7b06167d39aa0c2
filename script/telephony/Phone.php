<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

final class Phone
{
    public function __construct(
        public readonly string $address,
        public readonly string $number,
        public readonly string $name,
    ) {
    }

    public function known(): array
    {
        return ['address' => $this->address, 'number' => $this->number, 'name' => $this->name];
    }
}
