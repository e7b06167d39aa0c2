<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use InvalidArgumentException;
use Rmon\Exception\UnknownName;
use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\Labels;
use Rmon\Schema\Catalog;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** Which columns of a table are handed out, under which labels, and how many rows of it at most. */
final class TableChoice
{
    private const SETTINGS = ['columns', 'labels', 'of', 'info', 'limit', 'by', 'since', 'histogram'];

    private const ROWS = 1000;

    /** What Prometheus, the forms and the exporter itself put there. */
    private const RESERVED = ['le', 'quantile', 'job', 'instance', 'interface'];

    /**
     * @param list<Column> $columns numbers, each a family
     * @param array<string, Column> $labels         by label: what tells rows apart, besides the interface
     * @param array<string, Column> $controlLabels  by label: the same of the control row
     * @param array<string, Column> $info           by label: texts that go with a row
     * @param list<Split> $splits                   families whose members are several columns
     * @param int $limit                            rows at most
     * @param Column|null $by                       those with most of this; null: the first ones
     * @param string|null $since                    the column of the control row that says since when rows count
     */
    private function __construct(
        public readonly TableSchema $schema,
        public readonly ?TableSchema $control,
        public readonly array $columns,
        public readonly array $labels,
        public readonly array $controlLabels,
        public readonly array $info,
        public readonly array $splits,
        public readonly ?Buckets $histogram,
        public readonly int $limit,
        public readonly ?Column $by,
        public readonly ?string $since,
    ) {
    }

    /**
     * @param string $title    of the section, for complaints
     * @param array<string, string> $settings
     * @throws ConfigurationError
     */
    public static function of(string $title, string $table, array $settings): self
    {
        try {
            $schema = Catalog::find($table);
            return self::read($title, $schema, $settings);
        } catch (UnknownName $unknown) {
            throw new ConfigurationError("[$title]: $unknown->text");
        }
    }

    /**
     * Its families, empty, and what each has of a row: a column, several of them, or for the texts all of them.
     *
     * @return list<array{Family, Column|Split|Buckets|self}>
     * @throws ConfigurationError
     */
    public function families(): array
    {
        try {
            return $this->made();
        } catch (InvalidArgumentException $wrong) {
            throw new ConfigurationError($wrong->getMessage());
        }
    }

    /** @return list<array{Family, Column|Split|Buckets|self}> */
    private function made(): array
    {
        $families = [];
        foreach ($this->columns as $column) {
            $families[] = [Names::family($this->schema, $column), $column];
        }
        foreach ($this->splits as $split) {
            $families[] = [Names::splitFamily($this->schema, $split), $split];
        }
        if ($this->histogram !== null) {
            $families[] = [Names::histogramFamily($this->schema, $this->histogram), $this->histogram];
        }
        if ($this->info !== []) {
            $families[] = [Names::infoFamily($this->schema), $this];
        }
        return $families;
    }

    /** The column that says on which interface a row counts; null where the control row says it, or none does. */
    public static function source(TableSchema $schema): ?string
    {
        return $schema->only(Type::NetInterface);
    }

    /** @param array<string, string> $settings */
    private static function read(string $title, TableSchema $schema, array $settings): self
    {
        $splits = [];
        foreach ($settings as $name => $value) {
            if (str_starts_with($name, 'family.')) {
                $splits[] = Split::of($title, $schema, substr($name, 7), $value);
            } elseif (!in_array($name, self::SETTINGS, true)) {
                throw new ConfigurationError("[$title] knows no $name.");
            }
        }
        $control = $schema->control();
        $control = $control === null ? null : Catalog::find($control);
        $columns = array_map($schema->column(...), self::words($settings['columns'] ?? ''));
        foreach ($columns as $column) {
            if (!Names::isMeasured($column)) {
                throw new ConfigurationError("[$title]: $column->name is no number that can be handed out.");
            }
        }
        $of = self::words($settings['of'] ?? '');
        if ($control === null && ($of !== [] || isset($settings['since']) || isset($settings['histogram']))) {
            throw new ConfigurationError("[$title]: {$schema->name} has no control table.");
        }
        $labels = self::labels($title, $schema, self::words($settings['labels'] ?? ''));
        $info = self::labels($title, $schema, self::words($settings['info'] ?? ''));
        $controlLabels = $of === [] ? [] : self::labels($title, $control, $of);
        $names = array_keys([...$labels, ...$controlLabels, ...$info]);
        $splitBy = array_column($splits, 'label');
        $most = count($labels) + count($controlLabels) + count($info);
        if (count($names) < $most || array_intersect($splitBy, [...$names, ...self::RESERVED]) !== []) {
            throw new ConfigurationError("[$title] has a label twice, or one that can't be a label of its own.");
        }
        $limit = $settings['limit'] ?? (string) self::ROWS;
        if (!preg_match('/^\d{1,6}$/D', $limit)) {
            throw new ConfigurationError("limit of [$title] is a whole number.");
        }
        return new self(
            $schema,
            $control,
            array_values($columns),
            $labels,
            $controlLabels,
            $info,
            $splits,
            isset($settings['histogram']) ? Buckets::of($title, $schema, $control, $settings['histogram']) : null,
            (int) $limit,
            isset($settings['by']) ? $schema->column($settings['by']) : null,
            isset($settings['since']) ? $control->column($settings['since'])->name : null,
        );
    }

    /**
     * @param list<string> $words COLUMN:LABEL, or COLUMN alone where its own name will do
     * @return array<string, Column> by label
     */
    private static function labels(string $title, TableSchema $schema, array $words): array
    {
        $labels = [];
        foreach ($words as $word) {
            [$name, $label] = explode(':', $word, 2) + [1 => null];
            $column = $schema->column($name);
            $label ??= Names::snake($schema->heading($name));
            if (!Labels::isName($label) || in_array($label, self::RESERVED, true) || isset($labels[$label])) {
                throw new ConfigurationError("[$title]: \"$label\" can't be a label of its own.");
            }
            if ($column->secret) {
                throw new ConfigurationError("[$title]: $name is a secret, which metrics are not.");
            }
            $labels[$label] = $column;
        }
        return $labels;
    }

    /** @return list<string> */
    private static function words(string $text): array
    {
        return preg_split('/[\s,]+/', $text, -1, PREG_SPLIT_NO_EMPTY);
    }
}
