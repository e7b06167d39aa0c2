<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

/** Takes rows one by one and shows them. */
interface Writer
{
    /** @param array<string, mixed> $row */
    public function row(array $row): void;

    /** To be called when no row follows. */
    public function finish(): void;
}
