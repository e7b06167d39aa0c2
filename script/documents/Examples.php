<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use Rmon\Probe;
use Rmon\Schema\Catalog;
use Rmon\Schema\Key;
use Rmon\Schema\Setter;
use Rmon\Schema\Shape;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use RuntimeException;

/**
 * The arguments of each function's example. Readers get the keys of a table's first row, or what a walk begins with;
 * setters what that row holds already. The others are in arguments.php.
 */
final class Examples
{
    /** Calls that read better so. Each machine has a name of its own: what is shown is that it is the engine's. */
    private const CODES = [
        'rmon_gethostname' => "rmon_gethostname() === php_uname('n')",
        'rmon_get_hostname' => "rmon_get_hostname() === php_uname('n')",
        'rmon_inet_pton' => "rmon_inet_pton(AF_INET, '10.0.10.11')",
        'rmon_inet_ntop' => 'rmon_inet_ntop(AF_INET, [10, 0, 10, 11])',
    ];

    /** @var array<string, TableSchema> the table of each reader and setter */
    private array $tables = [];

    /** @var array<string, list<mixed>> arguments by function, those behind the link */
    private readonly array $given;

    /** @var array<string, array<string, mixed>|null> first rows by table */
    private array $rows = [];

    /** @var array<string, array<string, mixed>> the rows of other tables that they were found by */
    private array $parents = [];

    public function __construct(private readonly Probe $probe)
    {
        foreach (Catalog::all() as $schema) {
            foreach ($schema->functions() as $function) {
                $this->tables[$function] ??= $schema;
            }
        }
        $this->given = require __DIR__ . '/arguments.php';
    }

    public function tableOf(string $function): ?TableSchema
    {
        return $this->tables[$function] ?? null;
    }

    /** The call of a function's example, in which $link is the link. */
    public function code(Page $page): string
    {
        if (isset(self::CODES[$page->name])) {
            return self::CODES[$page->name];
        }
        $linked = ($page->parameters[0] ?? null)?->name === 'connid' ? ['$link'] : [];
        $given = implode(', ', [...$linked, ...array_map(shown(...), $this->arguments($page))]);
        return "$page->name($given)";
    }

    /** @return list<mixed> the arguments, without the link */
    public function arguments(Page $page): array
    {
        $schema = $this->tableOf($page->name);
        return match (true) {
            isset($this->given[$page->name]) => $this->given[$page->name],
            count($page->parameters) === 1 => [],
            $schema === null => throw new RuntimeException("arguments.php has no arguments for $page->name()"),
            in_array($page->name, $schema->reader->functions(), true) => $this->read($schema, $page->name),
            default => $this->set($schema, $page->name),
        };
    }

    /** @return list<mixed>|null arguments of a reader for a row that isn't there; null where there is always one */
    public function missing(Page $page): ?array
    {
        $schema = $this->tableOf($page->name);
        $keys = $schema === null ? [] : $this->keys($schema);
        if ($keys === [] || !in_array($page->name, $schema->reader->functions(), true)) {
            return null;
        }
        $arguments = array_map(static fn(Key $key) => match (true) {
            $key->mark => 0,
            $key->type->isOctets() => array_fill(0, $key->type === Type::Mac ? 6 : 20, 255),
            $key->type->isText() => str_repeat('z', 20),
            default => 65535,
        }, $keys);
        return $page->name === $schema->reader->getBulk ? [...$arguments, 2] : $arguments;
    }

    /** @return list<Key> the keys that readers take */
    private function keys(TableSchema $schema): array
    {
        $keys = array_values($schema->keys);
        return $schema->reader->shape === Shape::Map ? array_slice($keys, 0, -1) : $keys;
    }

    /** @return list<mixed> */
    private function read(TableSchema $schema, string $function): array
    {
        if ($function === $schema->reader->get) {
            $row = $this->firstRow($schema) + $this->parents[$schema->name];
            return array_map(static fn(Key $key) => $key->mark ? 0 : $row[$key->name], $this->keys($schema));
        }
        $starts = [];
        foreach ($this->keys($schema) as $key) {
            $known = $key->of !== null && !$key->mark;
            $starts[] = $known && !$key->inRow ? $this->parents($schema)[$key->name] : $key->start;
        }
        return $function === $schema->reader->getBulk ? [...$starts, 2] : $starts;
    }

    /** @return list<mixed> */
    private function set(TableSchema $schema, string $function): array
    {
        $row = $this->firstRow($schema) + $this->parents[$schema->name];
        $named = static fn(Setter $setter) => $setter->function === $function;
        $setters = array_filter($schema->writer->setters(), $named);
        return array_map(
            static fn(string $name) => $row[$name]
                ?? throw new RuntimeException("arguments.php has no arguments for $function(): $name is in no row"),
            array_values($setters)[0]->columns,
        );
    }

    /** @return array<string, mixed> */
    private function firstRow(TableSchema $schema): array
    {
        $parents = $this->parents($schema);
        $this->rows[$schema->name] ??= $schema->hasRows()
            ? $this->probe->table($schema->name, ...$parents)->first()
            : $this->probe->table($schema->name)->get();
        return $this->rows[$schema->name] ?? throw new RuntimeException("there is no row of $schema->name");
    }

    /** @return array<string, mixed> the keys that rows don't show, from the tables that they name */
    private function parents(TableSchema $schema): array
    {
        if (!isset($this->parents[$schema->name])) {
            $this->parents[$schema->name] = [];
            foreach ($schema->keys as $key) {
                if (!$key->inRow) {
                    $of = Catalog::find((string) $key->of);
                    $row = $this->firstRow($of);
                    $this->parents[$schema->name][$key->name] = $row[$key->name] ?? $row[array_key_first($of->keys)];
                }
            }
        }
        return $this->parents[$schema->name];
    }
}
