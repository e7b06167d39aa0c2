<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Symfony\Component\Console\Input\InputInterface;

/** Options whose values are numbers. */
final class Options
{
    public static function whole(InputInterface $input, string $option, int $least, int $most = PHP_INT_MAX): ?int
    {
        $given = $input->getOption($option);
        if ($given === null) {
            return null;
        }
        if (!preg_match('/^\d{1,18}$/D', (string) $given) || (int) $given < $least || (int) $given > $most) {
            $range = $most === PHP_INT_MAX ? "from $least on" : "from $least to $most";
            throw new UsageError("--$option is a whole number $range, not \"$given\".");
        }
        return (int) $given;
    }

    public static function seconds(InputInterface $input, string $option): ?float
    {
        $given = $input->getOption($option);
        if ($given === null) {
            return null;
        }
        if (!is_numeric($given) || $given < 0.1 || $given > 86400) {
            throw new UsageError("--$option is a number of seconds from 0.1 to 86400, not \"$given\".");
        }
        return (float) $given;
    }
}
