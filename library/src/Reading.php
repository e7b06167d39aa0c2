<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Schema\TableSchema;

/** The rows of a table at one time. */
final class Reading
{
    /**
     * @param TableSchema $schema
     * @param array<string, array<string, mixed>> $rows by key(); all columns, or those that rates need
     * @param int $uptime the agent's clock (sysUpTime) when reading began, in hundredths of a second
     * @param float $time this machine's clock at the same time, in seconds; only differences matter
     */
    public function __construct(
        public readonly TableSchema $schema,
        public readonly array $rows,
        public readonly int $uptime,
        public readonly float $time,
    ) {
    }

    /** Reads a table now. */
    public static function of(Table $table): self
    {
        $uptime = $table->probe->uptime();
        $time = hrtime(true) / 1e9;
        $rows = [];
        foreach ($table as $row) {
            $rows[self::key($table->schema, $row)] = $row;
        }
        return new self($table->schema, $rows, $uptime, $time);
    }

    /**
     * The name of a row: the values of its keys, octets packed.
     *
     * @param array<string, mixed> $row
     */
    public static function key(TableSchema $schema, array $row): string
    {
        $key = '';
        foreach ($schema->keys as $name => $part) {
            if (!$part->mark) {
                $value = $row[$name];
                $key .= is_array($value) ? pack('C*', ...$value) . '/' : "$value/";
            }
        }
        return $key;
    }
}
