<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Response;
use Rmon\Console\Table\Csv;
use Rmon\Console\Table\Field;
use Rmon\Console\Table\Filter;
use Rmon\Console\Table\ListSource;
use Rmon\Console\Table\SchemaSource;
use Rmon\Console\Table\Source;
use Rmon\Console\Text;
use Rmon\Console\Visit;
use Rmon\Ranking;
use Rmon\Table;

/**
 * The table that every page uses. What is seen of it stands in the address: "sort=-octets", "filter=10.0",
 * "columns=a,b", "rows=25", "behind=..." (a place, in the table's own order) or "page=2" (sorted). A table beside the
 * first one of a page has its id before these names: "peers-sort=...".
 *
 * In the table's own order, rows are read from the place on, as many as are shown. A table that is sorted or filtered
 * is read once from end to end, for a few seconds at most, with no more rows in memory than can be shown; below it
 * stands how much of it was read.
 */
final class DataTable implements Downloadable
{
    /** Rows of a page of the table that can be chosen; the first when nothing is said. */
    private const SIZES = [100, 25, 500];

    /** The last row that can be paged to where rows are sorted. */
    private const DEEPEST = 1000;

    /** Seconds that reading a table for sorting or filtering may take. */
    private const PATIENCE = 3.0;

    private string $title = '';
    private string $sort = '';
    private string $prefix = '';
    private int $size = self::SIZES[0];
    private bool $compact = false;
    private ?Closure $empty = null;

    private function __construct(private readonly Source|Closure $source)
    {
    }

    /**
     * Rows of a table of the library.
     *
     * @param Closure(): Table $table       called only when the rows are wanted
     * @param list<string> $usual           columns that are shown when nothing is said; empty: those that matter
     * @param (Closure(array<string, Field>): array<string, Field>)|null $change gives columns links, headings, bars
     */
    public static function of(Visit $visit, Closure $table, array $usual = [], ?Closure $change = null): self
    {
        return new self(static function () use ($visit, $table, $usual, $change): Source {
            $rows = $table();
            if ($change === null) {
                return new SchemaSource($visit, $rows, $usual);
            }
            $plain = new SchemaSource($visit, $rows, $usual);
            return new SchemaSource($visit, $rows, $usual, $change($plain->fields()));
        });
    }

    /**
     * Rows of any source.
     *
     * @param Closure(): Source $source called only when they are wanted
     */
    public static function from(Closure $source): self
    {
        return new self($source);
    }

    /**
     * Rows that the page has made.
     *
     * @param list<Field> $fields
     * @param Closure(): list<array<string, mixed>> $rows called only when they are wanted
     * @param list<string> $usual names of the fields that are shown when nothing is said; empty: all
     */
    public static function ofRows(
        array $fields,
        Closure $rows,
        string $whyNone = 'There is nothing to show.',
        array $usual = [],
    ): self {
        return new self(new ListSource($fields, $rows, $whyNone, $usual));
    }

    public function titled(string $title): self
    {
        $this->title = $title;
        return $this;
    }

    /** The order when nothing is said: a name, with "-" before it for the largest first. */
    public function sortedBy(string $sort): self
    {
        $this->sort = $sort;
        return $this;
    }

    /** A table beside the first one of a page: its names in addresses begin with this. */
    public function beside(string $id): self
    {
        $this->prefix = "$id-";
        return $this;
    }

    /** Without the controls around it, and this many rows: a panel. */
    public function compact(int $rows = 5): self
    {
        $this->compact = true;
        $this->size = $rows;
        return $this;
    }

    /** @param Closure(): string $empty why there are no rows */
    public function emptyBecause(Closure $empty): self
    {
        $this->empty = $empty;
        return $this;
    }

    public function template(): string
    {
        return 'table';
    }

    public function isLive(): bool
    {
        return true;
    }

    public function shown(Visit $visit, string $id): array
    {
        $source = $this->source();
        try {
            $view = $this->view($visit, $source);
        } catch (Waiting $waiting) {
            throw new Waiting($waiting->getMessage(), $this->title);
        }
        $rows = $view['rows'];
        $cells = [];
        foreach ($rows as $row) {
            $cells[] = array_map(static fn(Field $field) => $field->cell($row), array_values($view['fields']));
        }
        $heads = [];
        foreach ($view['fields'] as $name => $field) {
            $sorted = $view['sort'] === $name;
            $descending = $sorted ? !$view['descending'] : $field->first;
            $heads[] = [
                'text' => $field->heading,
                'hint' => $field->hint,
                'number' => $field->number,
                'sorted' => $sorted ? ($view['descending'] ? 'descending' : 'ascending') : '',
                'href' => $this->address($visit, ['sort' => ($descending ? '-' : '') . $name]),
            ];
        }
        $columns = [];
        foreach ($source->fields() as $name => $field) {
            $columns[] = [
                'name' => $name,
                'heading' => $field->heading,
                'hint' => $field->hint,
                'chosen' => isset($view['fields'][$name]),
            ];
        }
        $download = ['part' => $id];
        return [
            'title' => $this->title,
            'compact' => $this->compact,
            'prefix' => $this->prefix,
            'heads' => $heads,
            'rows' => $cells,
            'columns' => $columns,
            'filter' => Text::shown($view['filter']),
            'size' => $view['size'],
            'sizes' => self::SIZES,
            'covers' => $view['covers'],
            'warning' => $view['warning'],
            'empty' => $rows === [] ? $this->whyEmpty($view, $source) : '',
            'first' => $view['first'] ? null : $this->address($visit, []),
            'next' => $view['next'] === null ? null : $this->address($visit, $view['next']),
            'previous' => $view['previous'] === null ? null : $this->address($visit, $view['previous']),
            'csv' => $visit->address(['format' => 'csv'] + $download),
            'json' => $visit->address(['format' => 'json'] + $download),
            'all' => $view['next'] !== null || !$view['first'],
            'csvOfAll' => $visit->address(['format' => 'csv', 'all' => '1'] + $download),
            'jsonOfAll' => $visit->address(['format' => 'json', 'all' => '1'] + $download),
            'usual' => $this->address($visit, ['columns' => null, 'sort' => null, 'filter' => null, 'rows' => null]),
            'others' => $this->others($visit),
        ];
    }

    public function download(Visit $visit, string $id, string $format): Response
    {
        $source = $this->source();
        $view = $this->view($visit, $source, $visit->query('all') === '1');
        $fields = $view['fields'];
        $print = static function () use ($view, $fields, $format): void {
            if ($format === 'csv') {
                echo Csv::line(array_keys($fields));
            }
            $separator = '[';
            foreach ($view['rows'] as $row) {
                $cells = array_map(static fn(Field $field) => ($field->exact)($row), $fields);
                if ($format === 'csv') {
                    echo Csv::line(array_map(
                        static fn(mixed $cell) => is_array($cell) ? self::json($cell) : $cell,
                        $cells,
                    ));
                } else {
                    echo $separator, self::json($cells);
                    $separator = ",\n";
                }
            }
            echo $format === 'csv' ? '' : ($separator === '[' ? "[]\n" : "]\n");
        };
        $file = implode('-', array_filter([...array_values($visit->parameters), $id, date('Ymd-His')]));
        $type = $format === 'csv' ? 'text/csv; charset=utf-8' : 'application/json';
        return Response::download($print, $type, "$file.$format");
    }

    private function source(): Source
    {
        return $this->source instanceof Source ? $this->source : ($this->source)();
    }

    /**
     * What of the table is seen: its rows, and how they were come by.
     *
     * @param bool $all every row that the filter lets through, in the table's own order
     * @return array<string, mixed>
     */
    private function view(Visit $visit, Source $source, bool $all = false): array
    {
        $known = $source->fields();
        $fields = $this->chosen($visit, $source);
        $sort = $this->compact ? $this->sort : $this->query($visit, 'sort', $this->sort);
        $descending = str_starts_with($sort, '-');
        $sort = ltrim($sort, '-');
        $sort = isset($known[$sort]) ? $sort : '';
        $text = $this->compact ? '' : $this->query($visit, 'filter');
        $size = (int) $this->query($visit, 'rows');
        $size = !$this->compact && in_array($size, self::SIZES, true) ? $size : $this->size;
        $filter = Filter::of($text, $known, array_keys($fields));
        $page = $this->compact ? 1 : max(1, (int) $this->query($visit, 'page', '1'));
        $behind = $this->compact ? '' : $this->query($visit, 'behind');
        $view = [
            'fields' => $fields,
            'sort' => $sort,
            'descending' => $descending,
            'filter' => $text,
            'size' => $size,
            'first' => true,
            'next' => null,
            'previous' => null,
            'warning' => '',
        ];
        if ($all) {
            return ['rows' => self::thatHold($source->pages(), $filter), 'covers' => ''] + $view;
        }
        if ($sort === '' && $filter->isNone()) {
            $rows = $source->page($size + 1, $behind);
            $more = count($rows) > $size;
            $rows = array_slice($rows, 0, $size);
            $from = $behind === '' ? 1 : max(1, (int) $this->query($visit, 'from', '1'));
            $next = $more ? ['behind' => $source->place(end($rows)), 'from' => $from + $size] : null;
            return [
                'rows' => $rows,
                'covers' => self::covers($from, count($rows), $more ? null : $from + count($rows) - 1),
                'first' => $behind === '',
                'next' => $next,
            ] + $view;
        }
        $order = $sort === '' ? static fn(array $row): int => 0 : $known[$sort]->order;
        $page = min($page, intdiv(self::DEEPEST, $size));
        $ranking = Ranking::of(
            $source->pages(),
            $order,
            $descending,
            $page * $size,
            $filter->isNone() ? null : $filter->holds(...),
            self::PATIENCE,
        );
        $from = ($page - 1) * $size;
        $rows = array_slice($ranking->rows, $from, $size);
        $more = $ranking->matched > $from + count($rows);
        $deeper = $more && ($page + 1) * $size <= self::DEEPEST;
        return [
            'rows' => $rows,
            'covers' => self::covers($from + 1, count($rows), $ranking->complete ? $ranking->matched : null)
                . ($filter->isNone() ? '' : ', found among ' . number_format($ranking->read)),
            'warning' => $ranking->complete ? ($more && !$deeper
                ? 'These are the last that can be paged to in this order: a filter leaves fewer.' : '')
                : 'Only the first ' . number_format($ranking->read) . ' rows were read, for as long as that may take: '
                    . 'what comes behind them is not in this order yet.',
            'first' => $page === 1,
            'next' => $deeper ? ['page' => $page + 1] : null,
            'previous' => $page > 1 ? ['page' => $page - 1 === 1 ? null : $page - 1] : null,
        ] + $view;
    }

    /**
     * The fields that are shown, in the order in which they were chosen.
     *
     * @return array<string, Field>
     */
    private function chosen(Visit $visit, Source $source): array
    {
        $known = $source->fields();
        $names = $this->compact ? [] : explode(',', $this->query($visit, 'columns'));
        // A form that no script has put together says it column by column.
        foreach ($this->compact ? [] : array_keys($known) as $name) {
            if ($this->query($visit, "column-$name") !== '') {
                $names[] = $name;
            }
        }
        $names = array_values(array_filter($names, static fn(string $name) => isset($known[$name])));
        $fields = [];
        foreach ($names === [] ? $source->usual() : $names as $name) {
            $fields[$name] = $known[$name];
        }
        return $fields;
    }

    /** @param array<string, mixed> $view */
    private function whyEmpty(array $view, Source $source): string
    {
        if ($view['filter'] !== '') {
            return 'No row has what the filter asks for.';
        }
        if (!$view['first']) {
            return 'There are no further rows.';
        }
        return $this->empty === null ? $source->whyNone() : ($this->empty)();
    }

    private function query(Visit $visit, string $name, string $default = ''): string
    {
        return $visit->query($this->prefix . $name, $default);
    }

    /**
     * This page with the table seen in another way; a change of what is seen begins at the first row.
     *
     * @param array<string, string|int|null> $changes
     */
    private function address(Visit $visit, array $changes): string
    {
        $query = [];
        foreach ($changes + ['behind' => null, 'from' => null, 'page' => null] as $name => $value) {
            $query[$this->prefix . $name] = $value;
        }
        return $visit->address($query);
    }

    /**
     * What a form of this table has to carry along.
     *
     * @return array<string, string>
     */
    private function others(Visit $visit): array
    {
        $own = array_map(
            fn(string $name) => $this->prefix . $name,
            ['filter', 'columns', 'rows', 'behind', 'from', 'page'],
        );
        $kept = array_diff_key($visit->request->query, array_flip([...$own, 'part', 'format', 'all']));
        $column = "{$this->prefix}column-";
        return array_filter($kept, static fn(string $name) => !str_starts_with($name, $column), ARRAY_FILTER_USE_KEY);
    }

    /**
     * @param iterable<list<array<string, mixed>>> $pages
     * @return iterable<array<string, mixed>>
     */
    private static function thatHold(iterable $pages, Filter $filter): iterable
    {
        foreach ($pages as $rows) {
            foreach ($rows as $row) {
                if ($filter->holds($row)) {
                    yield $row;
                }
            }
        }
    }

    private static function covers(int $from, int $count, ?int $of): string
    {
        if ($count === 0) {
            return '';
        }
        $text = 'Rows ' . number_format($from) . ' to ' . number_format($from + $count - 1);
        if ($of !== null && $from === 1 && $of === $count) {
            return $count === 1 ? '1 row' : number_format($count) . ' rows';
        }
        return $of === null ? $text : "$text of " . number_format($of);
    }

    private static function json(mixed $value): string
    {
        return (string) json_encode(
            $value,
            JSON_INVALID_UTF8_SUBSTITUTE | JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE,
        );
    }
}
