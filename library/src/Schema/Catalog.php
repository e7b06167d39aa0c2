<?php

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

    /** @var array<string, TableSchema>|null */
    private static ?array $tables = null;

    /** @return array<string, TableSchema> by name, in the order of the groups */
    public static function all(): array
    {
        if (self::$tables === null) {
            $tables = [];
            foreach (self::SOURCES as $source) {
                array_push($tables, ...$source::tables());
            }
            self::$tables = array_column($tables, null, 'name');
        }
        return self::$tables;
    }

    /**
     * The table of this name; case and a missing "Table" at the end don't matter.
     *
     * @throws UnknownName which tells the nearest names
     */
    public static function find(string $name): TableSchema
    {
        $tables = self::all();
        if (isset($tables[$name])) {
            return $tables[$name];
        }
        $wanted = strtolower($name);
        foreach ($tables as $known => $table) {
            $known = strtolower($known);
            if ($wanted === $known || "{$wanted}table" === $known) {
                return $table;
            }
        }
        throw UnknownName::among('table', $name, array_keys($tables));
    }
}
