<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Rmon\Console\Response;
use Rmon\Console\Visit;

/** A block that programs can have as well. */
interface Downloadable extends Block
{
    /** @param string $format "csv" or "json" */
    public function download(Visit $visit, string $id, string $format): Response;
}
