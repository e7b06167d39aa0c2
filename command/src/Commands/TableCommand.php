<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Listing;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Schema\TableSchema;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon TABLE */
final class TableCommand extends ProbeCommand
{
    public function __construct(private readonly TableSchema $schema, string $name)
    {
        parent::__construct($name);
    }

    public static function addFilters(self|WatchCommand $command): void
    {
        $command
            ->addArgument('filters', InputArgument::IS_ARRAY, 'Only rows with COLUMN=VALUE (or !=, <, <=, >, >=, ~)')
            ->addOption('on', 'i', InputOption::VALUE_REQUIRED, 'Only rows of this interface');
        OutputOptions::define($command);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        $columns = array_keys($this->schema->columns);
        if ($input->mustSuggestArgumentValuesFor('filters')) {
            $suggestions->suggestValues(array_map(static fn(string $column) => "$column=", $columns));
        } elseif ($input->mustSuggestOptionValuesFor('columns') || $input->mustSuggestOptionValuesFor('sort')) {
            $suggestions->suggestValues($columns);
        }
    }

    protected function configure(): void
    {
        $this->setHidden(true)->setDescription("{$this->schema->name}: {$this->schema->title}");
        self::addFilters($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $table = $this->probe($input)->table($this->schema->name);
        (new Listing($options, $this->screen()))->show($table, $input->getArgument('filters'), $input->getOption('on'));
        return self::SUCCESS;
    }
}
