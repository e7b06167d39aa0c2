<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Alarm;

use Rmon\Exception\RmonException;
use Rmon\Probe;
use Rmon\Schema\Catalog;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** A variable that an alarm watches, such as "etherStatsPkts.2", and what that is to people. */
final class Variable
{
    /**
     * @param string $text           as the agent has it
     * @param Column|null $column    null for one that isn't a column of a table here
     * @param string|null $interface the name of the interface that it is counted on; null where that isn't known
     */
    private function __construct(
        public readonly string $text,
        public readonly ?Column $column,
        public readonly ?string $interface,
    ) {
    }

    public static function of(Probe $probe, string $text): self
    {
        [$object, $instance] = explode('.', $text, 2) + [1 => ''];
        foreach (Catalog::all() as $schema) {
            foreach ($schema->columns as $column) {
                if ($column->object === $object || $column->name === $object) {
                    return new self($text, $column, self::interface($probe, $schema, $instance));
                }
            }
        }
        return new self($text, null, null);
    }

    /** "etherStatsPkts of eth0" */
    public function name(): string
    {
        // Behind a control row's index, an instance says more than the interface.
        $name = substr_count($this->text, '.') === 1 ? strstr($this->text, '.', true) : $this->text;
        return $this->interface === null ? $this->text : "$name of $this->interface";
    }

    /** "1,700 packets", "1 packet" */
    public function amount(int $value): string
    {
        $unit = $this->column?->unit ?? '';
        $unit = $value === 1 ? preg_replace('/(?<=..)s$/D', '', $unit) : $unit;
        return rtrim(number_format($value) . " $unit");
    }

    /** The interface of the row, or of the control row, that an instance begins with. */
    private static function interface(Probe $probe, TableSchema $schema, string $instance): ?string
    {
        $index = (int) $instance;
        if ($schema->name === 'ifTable') {
            return $probe->interfaces()->name($index);
        }
        $schema = count($schema->keys) === 1 ? $schema : Catalog::find($schema->control() ?? $schema->name);
        foreach (count($schema->keys) === 1 ? $schema->columns : [] as $column) {
            if ($column->type === Type::NetInterface) {
                $row = self::row($probe, $schema, $index);
                return $row === null ? null : $probe->interfaces()->name($row[$column->name]);
            }
        }
        return null;
    }

    /** @return array<string, mixed>|null */
    private static function row(Probe $probe, TableSchema $schema, int $index): ?array
    {
        try {
            return $probe->table($schema->name)->get(...[array_key_first($schema->keys) => $index]);
        } catch (RmonException) {
            // A name is worth no failure of what it is the name of.
            return null;
        }
    }
}
