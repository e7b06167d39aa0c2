<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exception;

/** The agent's rows are not in the order of their keys, so that a walk would never end or meet a row twice. */
class TableBroken extends RmonException
{
}
