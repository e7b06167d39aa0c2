<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** A function's page in the stub. */
final class Page
{
    /**
     * @param list<Parameter> $parameters
     * @param list<Key> $keys      of the row that it returns
     * @param string $envelope     the key under which rows stand; '' where they stand under none
     * @param bool $list           whether it returns a list of rows
     * @param string|null $model   the function whose page has the row
     */
    public function __construct(
        public readonly string $name,
        public readonly string $section,
        public readonly string $summary,
        public readonly array $parameters,
        public readonly string $returns,
        public readonly string $result,
        public readonly array $keys,
        public readonly string $envelope,
        public readonly bool $list,
        public readonly ?string $model,
    ) {
    }
}
