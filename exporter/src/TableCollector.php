<?php

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
        foreach ($this->controls($choice->control) as $control) {
            $labels = $this->labelsOf($choice->control, $choice->controlLabels, $control);
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
            $choice->by === null ? static fn(array $row): int => 0 : $choice->by->name,
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
        foreach ($ranking->rows as $row) {
            $text = Labels::text($labels + $this->labelsOf($schema, $choice->labels, $row));
            if (isset($this->seen[$text])) {
                $this->tally->leaveOut($schema->name, 'duplicate', 1);
            } elseif (!$this->families->take(self::series($choice, $this->created))) {
                $this->tally->leaveOut($schema->name, 'series', 1);
            } else {
                $this->seen[$text] = true;
                $this->add($choice, $out, $text, $row, $control, $createTime === null
                    ? $began
                    : $this->clock->at($row[$createTime]));
            }
        }
    }

    /**
     * @param list<array{Family, Column|Split|Buckets|TableChoice}> $out
     * @param array<string, mixed> $row
     * @param array<string, mixed> $control
     */
    private function add(
        TableChoice $choice,
        array $out,
        string $labels,
        array $row,
        array $control,
        float $began,
    ): void {
        $counts = $this->created ? $began : null;
        foreach ($out as [$family, $what]) {
            if ($what instanceof Column) {
                $value = $row[$what->name] ?? null;
                if (is_int($value) || is_float($value)) {
                    $shown = Names::isTime($what) ? $this->clock->at($value) : Names::scaled($what, $value);
                    $family->add($labels, $shown, $what->type->isCounter() ? $counts : null);
                }
            } elseif ($what instanceof Split) {
                foreach ($what->members as $name => $member) {
                    $more = Labels::text([$what->label => $name]);
                    $family->add(
                        $labels === '' ? $more : "$labels,$more",
                        Names::scaled($member, $row[$member->name]),
                        $member->type->isCounter() ? $counts : null,
                    );
                }
            } elseif ($what instanceof Buckets) {
                $value = $what->value($row, $control);
                if ($value !== null) {
                    $family->add($labels, $value, $counts);
                }
            } else {
                $more = Labels::text($this->labelsOf($choice->schema, $choice->info, $row, false));
                $family->add($labels === '' ? $more : "$labels,$more", 1);
            }
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
     * @return array<string, string|int>
     */
    private function labelsOf(TableSchema $schema, array $columns, array $row, bool $source = true): array
    {
        $labels = [];
        $interface = $source ? TableChoice::source($schema) : null;
        if ($interface !== null && !isset($columns[self::INTERFACE])) {
            $labels[self::INTERFACE] = $this->values->text($schema->columns[$interface], $row[$interface]);
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

    /** @return Closure(array<string, mixed>): bool whether a row works; rows without a state always do */
    private static function works(TableSchema $schema): Closure
    {
        $status = (string) $schema->status;
        return isset($schema->columns[$status])
            ? static fn(array $row): bool => $row[$status] === RowStatus::valid->value
            : static fn(array $row): bool => true;
    }
}
