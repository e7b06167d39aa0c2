<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/** What a reader hands back. */
enum Shape
{
    /** A row; getbulk: a list of rows. */
    case Row;
    /** A list of rows under one key, always. */
    case Envelope;
    /** A number, which is the table's only column. */
    case Number;
    /** A list of texts, each of them a row of one column. */
    case Texts;
    /** Values under numbers: the last key and the only other column. */
    case Map;
}
