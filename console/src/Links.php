<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** Where names lead to. */
final class Links
{
    /** A host's page, by its network address. */
    public static function host(Visit $visit, int $interface, string $address): string
    {
        return $visit->to(Pages\HostPage::class, [
            'interface' => $visit->interfaceSegment($interface),
            'address' => $address,
        ]);
    }
}
