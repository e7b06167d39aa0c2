<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Table;

use Closure;
use Rmon\Address;
use Rmon\Console\Text;
use Rmon\Console\Visit;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** A column of a table as a page shows it. */
final class Field
{
    /** In the place of what only operators are to see. */
    private const SECRET = 'for operators';

    /**
     * @param string $name              in addresses, CSV and JSON
     * @param bool $number              whether it stands to the right
     * @param Closure(array): string $text       what people read
     * @param Closure(array): mixed $exact       what programs read, and the pointer shows
     * @param string|Closure(array): mixed $order what rows are sorted by; a text names a column of numbers or lists
     * @param bool $first               whether sorting begins with the largest
     * @param Closure(array): (float|null)|null $time  of times: seconds of the day's clock
     * @param Closure(array): (float|null)|null $part  of parts of a whole: 0 to 1, shown as a bar
     * @param Closure(array): (string|null)|null $link  where it leads to
     * @param Closure(array): string|null $picture SVG that a class below Picture/ made, before the text
     * @param Closure(array): string|null $mark the word of a state that its colour follows: "up", "down", "warn"
     * @param bool $nested              whether it is a path of words with dots between them
     */
    private function __construct(
        public readonly string $name,
        public readonly string $heading,
        public readonly string $hint,
        public readonly bool $number,
        public readonly Closure $text,
        public readonly Closure $exact,
        public readonly string|Closure $order,
        public readonly bool $first = false,
        public readonly ?Closure $time = null,
        public readonly ?Closure $part = null,
        public readonly ?Closure $link = null,
        public readonly ?Closure $picture = null,
        public readonly ?Closure $mark = null,
        private readonly float $limit = INF,
        private readonly bool $nested = false,
    ) {
    }

    /** A column of one of the library's tables. */
    public static function column(Visit $visit, TableSchema $schema, Column $column): self
    {
        $name = $column->name;
        if ($column->secret && !$visit->mayChange()) {
            $hidden = static fn(array $row): string => self::SECRET;
            return self::text($name, self::words($schema->heading($name)), $hidden);
        }
        $values = $visit->probe()->values();
        $cell = static fn(array $row): mixed => $row[$name] ?? null;
        // An interface's own row has its name beside its number.
        $own = $column->type === Type::NetInterface && count($schema->keys) === 1 && isset($schema->keys[$name]);
        $exact = static fn(array $row): mixed => $values->exact($column, $cell($row));
        $byText = in_array($column->type, [Type::Protocol, Type::NetInterface, Type::Named], true) && !$own;
        $text = match (true) {
            $own => static fn(array $row): string => (string) $cell($row),
            // Few values in many rows.
            $byText => static function (array $row) use ($values, $column, $cell): string {
                static $known = [];
                $value = $cell($row);
                return $known[$value] ??= $values->text($column, $value);
            },
            // Counts are read by their thousands.
            in_array($column->unit, ['octets', 'bit/s'], true) => static fn(array $row): string =>
                $values->text($column, $cell($row)),
            $column->type->isCounter() || $column->type === Type::Gauge => static fn(array $row): string =>
                $cell($row) === null ? '' : number_format($cell($row)),
            $column->type === Type::Address => static fn(array $row): string => Address::text($row[$name]),
            default => static fn(array $row): string => $values->text($column, $cell($row)),
        };
        $isTime = $column->type === Type::Ticks && $name !== 'sysUpTime';
        return new self(
            $name,
            self::words($schema->heading($name)),
            trim("$name: {$column->type->value}" . ($column->unit === '' ? '' : ", $column->unit")),
            $column->type->isNumber() || $own,
            $text,
            $exact,
            $byText ? $text : $name,
            $column->type->isCounter() || $column->type === Type::Gauge || $isTime,
            $isTime ? static fn(array $row): ?float => self::moment($visit, $cell($row)) : null,
        );
    }

    /** @param Closure(array): string $text */
    public static function text(string $name, string $heading, Closure $text): self
    {
        return new self($name, $heading, '', false, $text, $text, $text);
    }

    /**
     * @param Closure(array): (int|float|null) $value
     * @param Closure(int|float): string $format
     */
    public static function number(
        string $name,
        string $heading,
        Closure $value,
        Closure $format,
        string $unit = '',
    ): self {
        $text = static function (array $row) use ($value, $format): string {
            $number = $value($row);
            return $number === null ? '' : $format($number);
        };
        return new self($name, $heading, $unit, true, $text, $value, $value, true);
    }

    /**
     * A time, shown as how long ago that is.
     *
     * @param Closure(array): (float|null) $time seconds of the day's clock
     */
    public static function time(string $name, string $heading, Closure $time): self
    {
        $text = static function (array $row) use ($time): string {
            $at = $time($row);
            return $at === null ? '' : date('Y-m-d H:i:s', (int) $at);
        };
        $exact = static function (array $row) use ($time): ?string {
            $at = $time($row);
            return $at === null ? null : gmdate('Y-m-d\TH:i:s\Z', (int) $at);
        };
        return new self($name, $heading, '', false, $text, $exact, $time, true, $time);
    }

    /**
     * The same, read in another way: a number whose unit is the row's own.
     *
     * @param Closure(array): string $text
     */
    public function reading(Closure $text): self
    {
        return $this->with(text: $text);
    }

    /** The same, with a link where it leads to something. */
    public function linked(Closure $link): self
    {
        return $this->with(link: $link);
    }

    /**
     * The same, with a bar as long as its part of the whole.
     *
     * @param Closure(array): (float|null) $part 0 to 1
     * @param float $limit from where on it is too much
     */
    public function bar(Closure $part, float $limit = INF): self
    {
        return $this->with(part: $part, limit: $limit);
    }

    /**
     * The same, with a picture before the text.
     *
     * @param Closure(array): string $picture SVG that a class below Picture/ made
     */
    public function drawn(Closure $picture): self
    {
        return $this->with(picture: $picture);
    }

    /**
     * The same, coloured as a state.
     *
     * @param Closure(array): string $mark "up", "down", "warn" or nothing
     */
    public function marked(Closure $mark): self
    {
        return $this->with(mark: $mark);
    }

    /**
     * The same, a path as a place in a tree: below what stands before its last dot, which small tables leave out.
     */
    public function nested(): self
    {
        return $this->with(nested: true);
    }

    /** The same, under another heading. */
    public function titled(string $heading): self
    {
        return $this->with(heading: $heading);
    }

    /**
     * What the template shows.
     *
     * @param array<string, mixed> $row
     * @return array{text: string, title: string, href: string|null, number: bool, time: array|null, part: float|null,
     *     full: bool, picture: string, mark: string, above: string, depth: int}
     */
    public function cell(array $row): array
    {
        $text = ($this->text)($row);
        $above = $this->nested ? substr($text, 0, (int) strrpos(".$text", '.')) : '';
        $exact = ($this->exact)($row);
        $part = $this->part === null ? null : ($this->part)($row);
        $title = is_scalar($exact) && (string) $exact !== $text && $this->number ? (string) $exact : '';
        return [
            'text' => Text::shown(substr($text, strlen($above))),
            'above' => Text::shown($above),
            // Styles have a step for each of so many.
            'depth' => min(6, substr_count($above, '.')),
            'title' => $title === '' || $this->hint === '' ? Text::shown($title) : "$title",
            'href' => $this->link === null ? null : ($this->link)($row),
            'number' => $this->number,
            'time' => $this->time === null ? null : self::clock(($this->time)($row)),
            'part' => $part === null ? null : max(0.0, min(1.0, $part)),
            'full' => $part !== null && $part >= $this->limit,
            'picture' => $this->picture === null ? '' : ($this->picture)($row),
            'mark' => $this->mark === null ? '' : ($this->mark)($row),
        ];
    }

    /** @return array{iso: string, text: string}|null */
    private static function clock(?float $time): ?array
    {
        return $time === null ? null : [
            'iso' => gmdate('Y-m-d\TH:i:s\Z', (int) $time),
            'text' => date('Y-m-d H:i:s', (int) $time),
        ];
    }

    private static function moment(Visit $visit, int|float|null $ticks): ?float
    {
        return $ticks === null ? null : $visit->timeOf($ticks);
    }

    /** "OutOctets" as people read it: "Out octets". */
    public static function words(string $heading): string
    {
        $words = preg_replace('/(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])/', ' ', $heading);
        $small = static fn(array $match): string => strtolower($match[0]);
        return ucfirst(preg_replace_callback('/ [A-Z](?=[a-z]| |$)/', $small, $words));
    }

    private function with(
        ?string $heading = null,
        ?Closure $part = null,
        ?Closure $link = null,
        ?Closure $picture = null,
        ?Closure $mark = null,
        ?float $limit = null,
        ?Closure $text = null,
        ?bool $nested = null,
    ): self {
        return new self(
            $this->name,
            $heading ?? $this->heading,
            $this->hint,
            $this->number,
            $text ?? $this->text,
            $this->exact,
            $this->order,
            $this->first,
            $this->time,
            $part ?? $this->part,
            $link ?? $this->link,
            $picture ?? $this->picture,
            $mark ?? $this->mark,
            $limit ?? $this->limit,
            $nested ?? $this->nested,
        );
    }
}
