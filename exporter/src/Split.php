<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Exporter\Text\Labels;

/** Columns that are one family, told apart by a label: frames by their sizes, errors by their kinds. */
final class Split
{
    /**
     * @param string $name     what the family is called behind the table's name
     * @param array<string, Column> $members by the value of the label
     */
    private function __construct(
        public readonly string $name,
        public readonly string $label,
        public readonly array $members,
    ) {
    }

    /**
     * @param string $text "LABEL VALUE=COLUMN VALUE=COLUMN ..."
     * @throws ConfigurationError
     */
    public static function of(string $title, TableSchema $schema, string $name, string $text): self
    {
        $words = preg_split('/\s+/', $text, -1, PREG_SPLIT_NO_EMPTY);
        $label = (string) array_shift($words);
        $members = [];
        foreach ($words as $word) {
            [$value, $column] = explode('=', $word, 2) + [1 => ''];
            $members[$value] = $schema->column($column);
        }
        $alike = array_map(static fn(Column $column) => [$column->type, $column->unit], $members);
        if (!Labels::isName($label) || !preg_match('/^[a-z_]+$/D', $name) || $members === []) {
            throw new ConfigurationError("[$title]: family.$name is a label, then VALUE=COLUMN of each member.");
        }
        if (count(array_unique($alike, SORT_REGULAR)) !== 1 || !Names::isMeasured(current($members))) {
            throw new ConfigurationError("[$title]: the columns of family.$name are not all of one kind and unit.");
        }
        return new self($name, $label, $members);
    }
}
