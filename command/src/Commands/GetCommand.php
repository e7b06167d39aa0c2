<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Conditions;
use Rmon\Command\ExitCode;
use Rmon\Command\Listing;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;

/** rmon get */
final class GetCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('get')
            ->setDescription('One row of a table')
            ->addArgument('table', InputArgument::REQUIRED, 'Its name; see rmon list')
            ->addArgument('keys', InputArgument::IS_ARRAY, 'KEY=VALUE for each of its keys');
        OutputOptions::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $schema = Catalog::find($input->getArgument('table'));
        $keys = Conditions::values($schema, $input->getArgument('keys'), array_keys($schema->keys));
        $table = $this->probe($input)->table($schema->name);
        $row = $table->get(...$keys);
        if ($row === null) {
            $this->screen()->complain("rmon: $schema->name has no such row.");
            return ExitCode::FAILED;
        }
        (new Listing($options, $this->screen()))->rows([$row], $table, true);
        return self::SUCCESS;
    }
}
