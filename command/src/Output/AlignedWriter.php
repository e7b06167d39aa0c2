<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

/**
 * A table for people. Columns are as wide as their headings and the cells of the first rows; a longer cell that comes
 * later pushes its line to the right. So rows show as they come, and memory doesn't grow with them.
 */
final class AlignedWriter implements Writer
{
    /** Rows that widths are taken from, and the seconds that the first of them waits at most. */
    private const SAMPLE = 200;
    private const PATIENCE = 0.25;

    private const GAP = '  ';

    /** Columns of the terminal that a text which is cut has at least. */
    private const LEAST = 16;

    /** @var list<list<string>> */
    private array $sample = [];
    private float $since = 0.0;

    /** @var list<int>|null */
    private ?array $widths = null;

    /** The widths as sprintf() takes them, for lines of ASCII. */
    private string $format = '';

    /** @var list<string> */
    private readonly array $names;

    /** @var list<\Closure(mixed): string> */
    private array $texts;

    /** @var list<bool> */
    private readonly array $right;

    /** @var list<bool> */
    private readonly array $foreign;

    /** @var list<bool> */
    private readonly array $whole;

    /** Columns of the terminal that the last text has room in; null: all that it takes. */
    private ?int $cut = null;

    /** Columns that the terminal has room for. */
    private int $shown;

    /**
     * @param list<Field> $fields
     * @param bool $fit whether columns that the terminal has no room for are left out
     */
    public function __construct(
        private readonly array $fields,
        private readonly Screen $screen,
        private readonly bool $fit = true,
    ) {
        $this->names = array_map(static fn(Field $field) => $field->name, $fields);
        $this->texts = array_map(static fn(Field $field) => $field->text, $fields);
        $this->right = array_map(static fn(Field $field) => $field->right, $fields);
        $this->foreign = array_map(static fn(Field $field) => $field->foreign, $fields);
        $this->whole = array_map(static fn(Field $field) => $field->whole, $fields);
        $this->shown = count($fields);
    }

    public function row(array $row): void
    {
        $cells = [];
        $names = $this->names;
        $whole = $this->whole;
        $foreign = $this->foreign;
        foreach ($this->texts as $place => $text) {
            $value = $row[$names[$place]] ?? null;
            if ($whole[$place] && (is_int($value) || is_float($value) && $value < 2 ** 53)) {
                $cells[] = (string) (int) $value;
                continue;
            }
            $cell = $text($value);
            $cells[] = $foreign[$place] ? Text::visible($cell) : $cell;
        }
        if ($this->widths !== null) {
            $this->line($cells);
            return;
        }
        $now = hrtime(true) / 1e9;
        $this->since = $this->sample === [] ? $now : $this->since;
        $this->sample[] = $cells;
        if (count($this->sample) >= self::SAMPLE || $now - $this->since >= self::PATIENCE) {
            $this->begin();
        }
    }

    public function finish(): void
    {
        if ($this->widths === null && $this->sample !== []) {
            $this->begin();
        }
        $this->screen->flush();
        $left = count($this->fields) - $this->shown;
        if ($left > 0) {
            $columns = $left === 1 ? 'column' : 'columns';
            $this->screen->remark("$left more $columns: --columns all, or some by name");
        }
    }

    private function begin(): void
    {
        $headings = array_map(static fn(Field $field) => $field->heading, $this->fields);
        $widths = array_map(Text::width(...), $headings);
        foreach ($this->sample as $cells) {
            foreach ($cells as $place => $cell) {
                $widths[$place] = max($widths[$place], Text::width($cell));
            }
        }
        if ($this->fit && $this->screen->isTerminal) {
            $room = $this->screen->width();
            $this->shown = self::fitting($widths, $room);
            $last = count($widths) - 1;
            $rest = $room - array_sum(array_slice($widths, 0, $last)) - strlen(self::GAP) * $last;
            if ($this->shown === $last && !$this->right[$last] && $rest >= self::LEAST) {
                // A text at the end is cut rather than left out.
                $this->shown = count($widths);
                $this->cut = $widths[$last] = $rest;
            }
        }
        $this->widths = array_slice($widths, 0, $this->shown);
        $this->texts = array_slice($this->texts, 0, $this->shown);
        $formats = [];
        foreach ($this->widths as $place => $width) {
            $formats[] = $this->right[$place] ? "%{$width}s" : "%-{$width}s";
        }
        $this->format = implode(self::GAP, $formats);
        $this->screen->write($this->screen->strong($this->laidOut($headings)) . "\n");
        foreach ($this->sample as $cells) {
            $this->line(array_slice($cells, 0, $this->shown));
        }
        $this->sample = [];
    }

    /** @param list<string> $cells */
    private function line(array $cells): void
    {
        if ($this->cut !== null) {
            $last = count($cells) - 1;
            $cells[$last] = Text::cut($cells[$last], $this->cut);
        }
        $line = vsprintf($this->format, $cells);
        $this->screen->write((preg_match('/[^\x20-\x7e]/', $line) ? $this->laidOut($cells) : rtrim($line)) . "\n");
    }

    /** @param list<string> $cells */
    private function laidOut(array $cells): string
    {
        $laid = [];
        foreach ($this->widths as $place => $width) {
            $laid[] = $this->right[$place]
                ? Text::padLeft($cells[$place], $width)
                : Text::padRight($cells[$place], $width);
        }
        return rtrim(implode(self::GAP, $laid));
    }

    /** @param list<int> $widths */
    private static function fitting(array $widths, int $room): int
    {
        $used = 0;
        foreach ($widths as $place => $width) {
            $used += $width + ($place > 0 ? strlen(self::GAP) : 0);
            if ($used > $room) {
                return max(1, $place);
            }
        }
        return count($widths);
    }
}
