<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Closure;
use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\Labels;
use Rmon\Probe;
use Rmon\Ranking;
use Rmon\RowStatus;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use Rmon\Table;
use Rmon\Values;

/** Reads a table as a module chose it. */
final class TableCollector
{
    private const INTERFACE = 'interface';

    private readonly Values $values;

    /** @var array<string, true> labels that rows of the table at hand have */
    private array $seen = [];

    /** @param Closure(): float $left the seconds that are left of the scrape */
    public function __construct(
        private readonly Probe $probe,
        private readonly Clock $clock,
        private readonly Families $families,
        private readonly Tally $tally,
        private readonly bool $created,
        private readonly Closure $left,
    ) {
        $this->values = $probe->values();
    }

    public function collect(TableChoice $choice): void
    {
        $this->seen = [];
        $out = $choice->families();
        foreach ($out as [$family]) {
            $this->families->add($family);
        }
        $table = $this->probe->table($choice->schema->name);
        if ($choice->control === null) {
            $this->rows($choice, $table, $out, [], [], $this->clock->start);
            return;
        }
        $taken = [];
        $source = TableChoice::source($choice->control);
        foreach ($this->controls($choice->control) as $control) {
            $labels = $this->labelsOf($choice->control, $choice->controlLabels, $control, $source);
            $place = Labels::text($labels);
            $index = $control[(string) array_key_first($choice->control->keys)];
            // Two rows that count the same: the first one does. Its series stay while others come and go.
            if (isset($taken[$place])) {
                continue;
            }
            $taken[$place] = true;
            $since = $choice->since ?? $choice->control->createTime();
            $began = $since === null ? $this->clock->start : $this->clock->at($control[$since]);
            $this->rows($choice, $table->where(control: $index), $out, $labels, $control, $began);
        }
    }

    /** @return list<array<string, mixed>> control rows that work */
    private function controls(TableSchema $control): array
    {
        $rows = [];
        foreach ($this->probe->table($control->name)->pages() as $page) {
            array_push($rows, ...array_filter($page, self::works($control)));
        }
        return $rows;
    }

    /**
     * @param list<array{Family, Column|Split|Buckets|TableChoice}> $out
     * @param array<string, string|int> $labels of the control row
     * @param array<string, mixed> $control
     */
    private function rows(
        TableChoice $choice,
        Table $table,
        array $out,
        array $labels,
        array $control,
        float $began,
    ): void {
        $schema = $choice->schema;
        $ranking = Ranking::of(
            $table->pages(),
            $choice->by?->name,
            true,
            $choice->limit,
            self::works($schema),
            ($this->left)(),
        );
        if (!$ranking->complete) {
            throw new OutOfTime("{$schema->name} is too large for the time of a scrape");
        }
        $this->tally->read($schema->name, $ranking->read);
        $this->tally->leaveOut($schema->name, 'limit', $ranking->matched - count($ranking->rows));
        $createTime = $schema->createTime();
        $taken = $texts = [];
        $prefix = Labels::text($labels);
        $series = self::series($choice, $this->created);
        $source = TableChoice::source($schema);
        foreach ($ranking->rows as $row) {
            $text = Labels::joined($prefix, Labels::text($this->labelsOf($schema, $choice->labels, $row, $source)));
            if (isset($this->seen[$text])) {
                $this->tally->leaveOut($schema->name, 'duplicate', 1);
            } elseif (!$this->families->take($series)) {
                $this->tally->leaveOut($schema->name, 'series', 1);
            } else {
                $this->seen[$text] = true;
                $taken[] = $row;
                $texts[] = $text;
            }
        }
        $begins = match (true) {
            !$this->created => array_fill(0, count($taken), null),
            $createTime === null => array_fill(0, count($taken), $began),
            default => array_map($this->clock->at(...), array_column($taken, $createTime)),
        };
        foreach ($out as [$family, $what]) {
            match (true) {
                $what instanceof Column => $this->column($family, $what, $texts, $taken, $begins),
                $what instanceof Split => $this->split($family, $what, $texts, $taken, $begins),
                $what instanceof Buckets => $this->buckets($family, $what, $texts, $taken, $begins, $control),
                default => $this->info($family, $choice, $texts, $taken),
            };
        }
    }

    /**
     * All rows at once: large tables are read for this alone.
     *
     * @param list<string> $labels of each row
     * @param list<array<string, mixed>> $rows
     * @param list<float|null> $begins
     */
    private function column(Family $family, Column $column, array $labels, array $rows, array $begins): void
    {
        $values = array_column($rows, $column->name);
        if (count($values) !== count($rows)) {
            // A column that some rows are without.
            $has = array_filter($rows, static fn(array $row) => isset($row[$column->name]));
            $labels = array_values(array_intersect_key($labels, $has));
            $begins = array_values(array_intersect_key($begins, $has));
        }
        if (Names::isTime($column)) {
            $values = array_map($this->clock->at(...), $values);
        } elseif (Names::scaled($column, 1) !== 1) {
            $values = array_map(static fn(int|float $value) => Names::scaled($column, $value), $values);
        }
        $family->addAll($labels, $values, $column->type->isCounter() ? $begins : []);
    }

    /**
     * @param list<string> $labels
     * @param list<array<string, mixed>> $rows
     * @param list<float|null> $begins
     */
    private function split(Family $family, Split $split, array $labels, array $rows, array $begins): void
    {
        foreach ($rows as $at => $row) {
            foreach ($split->members as $name => $member) {
                $family->add(
                    Labels::joined($labels[$at], Labels::text([$split->label => $name])),
                    Names::scaled($member, $row[$member->name]),
                    $member->type->isCounter() ? $begins[$at] : null,
                );
            }
        }
    }

    /**
     * @param list<string> $labels
     * @param list<array<string, mixed>> $rows
     * @param list<float|null> $begins
     * @param array<string, mixed> $control
     */
    private function buckets(
        Family $family,
        Buckets $buckets,
        array $labels,
        array $rows,
        array $begins,
        array $control,
    ): void {
        foreach ($rows as $at => $row) {
            $value = $buckets->value($row, $control);
            if ($value !== null) {
                $family->add($labels[$at], $value, $begins[$at]);
            }
        }
    }

    /**
     * @param list<string> $labels
     * @param list<array<string, mixed>> $rows
     */
    private function info(Family $family, TableChoice $choice, array $labels, array $rows): void
    {
        foreach ($rows as $at => $row) {
            $texts = $this->labelsOf($choice->schema, $choice->info, $row, null);
            $family->add(Labels::joined($labels[$at], Labels::text($texts)), 1);
        }
    }

    /** Series of a row. */
    private static function series(TableChoice $choice, bool $created): int
    {
        $series = $choice->info === [] ? 0 : 1;
        foreach ($choice->columns as $column) {
            $series += $created && $column->type->isCounter() ? 2 : 1;
        }
        foreach ($choice->splits as $split) {
            $series += count($split->members) * ($created ? 2 : 1);
        }
        return $series + ($choice->histogram === null ? 0 : count($choice->histogram->counts) + 1);
    }

    /**
     * @param array<string, Column> $columns by label
     * @param array<string, mixed> $row
     * @param string|null $source the column with the interface; see TableChoice
     * @return array<string, string|int>
     */
    private function labelsOf(TableSchema $schema, array $columns, array $row, ?string $source): array
    {
        $labels = [];
        if ($source !== null) {
            $labels[self::INTERFACE] = $this->values->text($schema->columns[$source], $row[$source]);
        }
        foreach ($columns as $label => $column) {
            $value = $row[$column->name] ?? '';
            $labels[$label] = match ($column->type) {
                Type::NetInterface, Type::Protocol => $this->values->text($column, $value),
                default => (string) $this->values->exact($column, $value),
            };
        }
        return $labels;
    }

    /** @return (Closure(array<string, mixed>): bool)|null whether a row works; null where all do */
    private static function works(TableSchema $schema): ?Closure
    {
        $status = (string) $schema->status;
        return isset($schema->columns[$status])
            ? static fn(array $row): bool => $row[$status] === RowStatus::valid->value
            : null;
    }
}
