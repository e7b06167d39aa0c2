<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Conditions;
use Rmon\Command\ProbeCommand;
use Rmon\Command\UsageError;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;

/** rmon set */
final class SetCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('set')
            ->setDescription('Makes a row, or changes one')
            ->addArgument('table', InputArgument::REQUIRED, 'Its name; see rmon list')
            ->addArgument('values', InputArgument::IS_ARRAY, 'COLUMN=VALUE; what is left out stays as it is');
    }

    protected function perform(InputInterface $input): int
    {
        $schema = Catalog::find($input->getArgument('table'));
        if ($schema->writer === null) {
            throw new UsageError("$schema->name can't be set.");
        }
        $settable = array_merge(...array_column($schema->writer->setters(), 'columns'));
        $values = Conditions::values($schema, $input->getArgument('values'), array_values(array_unique($settable)));
        if ($values === []) {
            throw new UsageError("Nothing to set: rmon set $schema->name COLUMN=VALUE ...");
        }
        $this->probe($input)->table($schema->name)->set(...$values);
        return self::SUCCESS;
    }
}
