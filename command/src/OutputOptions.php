<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Command\Output\AlignedWriter;
use Rmon\Command\Output\CsvWriter;
use Rmon\Command\Output\Field;
use Rmon\Command\Output\JsonWriter;
use Rmon\Command\Output\RecordWriter;
use Rmon\Command\Output\Screen;
use Rmon\Command\Output\Writer;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** Options that all commands share that show rows: which rows and columns, in what order and form. */
final class OutputOptions
{
    /** Rows beyond twice the limit that are kept before the last ones go. */
    private const SLACK = 1000;

    /**
     * @param list<string> $columns                names as they were given; empty: all that there is room for
     * @param list<array{string, int}> $sort       names as they were given, with 1 for upwards and -1 for downwards
     */
    private function __construct(
        public readonly string $form,
        public readonly bool $exact,
        public readonly array $columns,
        public readonly array $sort,
        public readonly ?int $limit,
    ) {
    }

    public static function define(Command $command): void
    {
        $command
            ->addOption('json', 'j', InputOption::VALUE_NONE, 'One JSON object a line')
            ->addOption('csv', null, InputOption::VALUE_NONE, 'Comma-separated values')
            ->addOption('columns', 'c', InputOption::VALUE_REQUIRED, 'These columns, by commas; "all" for all')
            ->addOption('sort', 's', InputOption::VALUE_REQUIRED, 'Sort by these columns; -COLUMN: the largest first')
            ->addOption('limit', 'l', InputOption::VALUE_REQUIRED, 'At most so many rows')
            ->addOption('exact', null, InputOption::VALUE_NONE, 'Whole numbers instead of "1.5 MB"');
    }

    public static function from(InputInterface $input): self
    {
        if ($input->getOption('json') && $input->getOption('csv')) {
            throw new UsageError('--json and --csv exclude each other.');
        }
        $sort = [];
        foreach (self::names($input->getOption('sort')) as $name) {
            $sort[] = [ltrim($name, '+-'), $name[0] === '-' ? -1 : 1];
        }
        $columns = self::names($input->getOption('columns'));
        return new self(
            $input->getOption('json') ? 'json' : ($input->getOption('csv') ? 'csv' : 'text'),
            $input->getOption('exact'),
            $columns,
            $sort,
            Options::whole($input, 'limit', 0),
        );
    }

    /**
     * Shows rows: sorts and limits them, in the form that was asked for.
     *
     * @param iterable<array<string, mixed>> $rows
     * @param list<Field> $fields
     * @param callable(string): string $resolve the field that a name means
     * @return int how many rows were shown
     */
    public function show(iterable $rows, array $fields, callable $resolve, Screen $screen, bool $asRecord = false): int
    {
        $writer = $this->writer($this->chosen($fields, $resolve), $screen, $asRecord);
        $sort = array_map(static fn(array $by) => [$resolve($by[0]), $by[1]], $this->sort);
        $count = 0;
        if ($this->limit !== 0) {
            foreach ($sort === [] ? $rows : $this->sorted($rows, $sort, $screen) as $row) {
                $writer->row($row);
                $count++;
                if (!$screen->isTerminal && ($count & 63) === 0) {
                    $screen->progress(static fn() => "$count rows");
                }
                if ($count === $this->limit) {
                    break;
                }
            }
        }
        $writer->finish();
        return $count;
    }

    /** @param list<Field> $fields */
    public function writer(array $fields, Screen $screen, bool $asRecord = false): Writer
    {
        return match (true) {
            $this->form === 'json' => new JsonWriter($fields, $screen),
            $this->form === 'csv' => new CsvWriter($fields, $screen),
            $asRecord => new RecordWriter($fields, $screen),
            default => new AlignedWriter($fields, $screen, $this->columns === []),
        };
    }

    /** How names resolve where fields aren't columns of a table. */
    public static function plain(array $fields): callable
    {
        $names = array_map(static fn(Field $field) => $field->name, $fields);
        return static function (string $name) use ($names): string {
            foreach ($names as $known) {
                if (strcasecmp($known, $name) === 0) {
                    return $known;
                }
            }
            throw \Rmon\Exception\UnknownName::among('column', $name, $names);
        };
    }

    /**
     * @param list<Field> $fields
     * @return list<Field>
     */
    private function chosen(array $fields, callable $resolve): array
    {
        if ($this->columns === [] || $this->columns === ['all']) {
            return $fields;
        }
        $byName = [];
        foreach ($fields as $field) {
            $byName[$field->name] = $field;
        }
        return array_map(static fn(string $name) => $byName[$resolve($name)], $this->columns);
    }

    /**
     * @param iterable<array<string, mixed>> $rows
     * @param list<array{string, int}> $sort
     * @return list<array<string, mixed>>
     */
    private function sorted(iterable $rows, array $sort, Screen $screen): array
    {
        $order = static function (array $one, array $other) use ($sort): int {
            foreach ($sort as [$name, $way]) {
                $result = ($one[$name] ?? null) <=> ($other[$name] ?? null);
                if ($result !== 0) {
                    return $way * $result;
                }
            }
            return 0;
        };
        $kept = [];
        $read = 0;
        $room = $this->limit === null ? PHP_INT_MAX : 2 * $this->limit + self::SLACK;
        foreach ($rows as $row) {
            $kept[] = $row;
            $read++;
            $screen->progress(static fn() => "$read rows read");
            if (count($kept) >= $room) {
                usort($kept, $order);
                array_splice($kept, $this->limit);
            }
        }
        usort($kept, $order);
        return $kept;
    }

    /** @return list<string> */
    private static function names(?string $given): array
    {
        $names = $given === null ? [] : array_map(trim(...), explode(',', $given));
        if (in_array('', array_map(static fn(string $name) => ltrim($name, '+-'), $names), true)) {
            throw new UsageError("\"$given\" is no list of columns: names with commas between them.");
        }
        return $names;
    }
}
