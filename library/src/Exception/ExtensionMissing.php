<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/** The module rmon is not loaded. */
class ExtensionMissing extends RmonException
{
}
