<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Output\Field;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Schema\Catalog;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;

/** rmon describe */
final class DescribeCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('describe')
            ->setDescription('What a table is: its keys, columns, types and units')
            ->addArgument('table', InputArgument::REQUIRED, 'Its name; see rmon list');
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $schema = Catalog::find($input->getArgument('table'));
        if ($options->form === 'text') {
            $this->introduce($schema);
        }
        $settable = array_merge([], ...array_column($schema->writer?->setters() ?? [], 'columns'));
        $rows = [];
        foreach ($schema->columns + $schema->hidden as $name => $column) {
            $rows[] = [
                'column' => $name,
                'type' => $column->type->value,
                'unit' => $column->unit,
                'key' => isset($schema->keys[$name]) ? 'key' : '',
                'set' => in_array($name, $settable, true) ? 'set' : '',
                'object' => $column->object,
                'values' => self::words($column),
            ];
        }
        $fields = [
            Field::text('column', 'Column'), Field::text('type', 'Type'), Field::text('unit', 'Unit'),
            Field::text('key', ''), Field::text('set', ''), Field::text('values', 'Values'),
        ];
        if ($options->form !== 'text' || $options->columns !== []) {
            $fields[] = Field::text('object', 'Object');
        }
        $options->show($rows, $fields, OutputOptions::plain($fields), $this->screen());
        return self::SUCCESS;
    }

    private function introduce(TableSchema $schema): void
    {
        $screen = $this->screen();
        $screen->line($screen->strong($schema->name) . ": $schema->title");
        $screen->line(
            $schema->rfc === null ? "Group $schema->group, the agent's own" : "Group $schema->group, $schema->rfc",
        );
        if ($schema->control() !== null) {
            $screen->line("Its rows come and go with those of {$schema->control()}.");
        }
        if ($schema->writer !== null) {
            $screen->line('Can be set: rmon set ' . $schema->name . ' COLUMN=VALUE ...');
        }
        $screen->line();
    }

    private static function words(Column $column): string
    {
        $words = [];
        foreach ($column->values as $number => $word) {
            $words[] = "$number $word";
        }
        return implode(', ', $words);
    }
}
