<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Output\Field;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;

/** rmon list */
final class ListCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('list')
            ->setDescription('The tables that there are')
            ->addArgument('word', InputArgument::OPTIONAL, 'Only those whose name, group or description has this word');
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $word = (string) $input->getArgument('word');
        $rows = [];
        foreach (Catalog::all() as $schema) {
            if ($word === '' || stripos("$schema->name $schema->group $schema->title $schema->rfc", $word) !== false) {
                $rows[] = [
                    'table' => $schema->name,
                    'title' => $schema->title,
                    'group' => $schema->group,
                    'rfc' => $schema->rfc,
                    'set' => $schema->writer !== null,
                ];
            }
        }
        $fields = [
            Field::text('table', 'Table'),
            Field::text('group', 'Group'),
            Field::text('title', 'What it holds'),
        ];
        if ($options->form !== 'text' || $options->columns !== []) {
            array_push($fields, Field::text('rfc', 'Document'), Field::text('set', 'Can be set'));
        }
        $options->show($rows, $fields, OutputOptions::plain($fields), $this->screen());
        if ($rows === []) {
            $this->screen()->remark("No table has \"$word\" in its name, group or description.");
        }
        return self::SUCCESS;
    }
}
