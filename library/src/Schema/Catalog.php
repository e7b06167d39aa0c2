<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

use Rmon\Exception\UnknownName;

/** Every table that the module reads, by name. */
final class Catalog
{
    private const SOURCES = [
        Tables\Interfaces::class,
        Tables\Hosts::class,
        Tables\Alarms::class,
        Tables\Capture::class,
        Tables\Protocols::class,
        Tables\HigherLayer::class,
        Tables\Smon::class,
        Tables\Dsmon::class,
        Tables\ResponseTimes::class,
        Tables\Voice::class,
        Tables\NetFlow::class,
        Tables\Administration::class,
    ];

    /** @var array<string, TableSchema> by name; those of the first sources */
    private static array $tables = [];

    /** How many sources were asked. */
    private static int $loaded = 0;

    /** @return array<string, TableSchema> by name, in the order of the groups */
    public static function all(): array
    {
        while (self::loadNext());
        return self::$tables;
    }

    /**
     * The table of this name; case and a missing "Table" at the end don't matter.
     *
     * @throws UnknownName which tells the nearest names
     */
    public static function find(string $name): TableSchema
    {
        do {
            if (isset(self::$tables[$name])) {
                return self::$tables[$name];
            }
        } while (self::loadNext());
        $wanted = strtolower($name);
        foreach (self::$tables as $known => $table) {
            $known = strtolower($known);
            if ($wanted === $known || "{$wanted}table" === $known) {
                return $table;
            }
        }
        throw UnknownName::among('table', $name, array_keys(self::$tables));
    }

    /** Loads the tables of one more source: most scripts need few of them. False when no source is left. */
    private static function loadNext(): bool
    {
        $source = self::SOURCES[self::$loaded] ?? null;
        if ($source === null) {
            return false;
        }
        self::$loaded++;
        self::$tables += array_column($source::tables(), null, 'name');
        return true;
    }
}
