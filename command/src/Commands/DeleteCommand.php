<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Conditions;
use Rmon\Command\ProbeCommand;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;

/** rmon delete */
final class DeleteCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('delete')
            ->setDescription('Removes a row')
            ->addArgument('table', InputArgument::REQUIRED, 'Its name; see rmon list')
            ->addArgument('keys', InputArgument::IS_ARRAY, 'KEY=VALUE for each of its keys');
    }

    protected function perform(InputInterface $input): int
    {
        $schema = Catalog::find($input->getArgument('table'));
        $keys = Conditions::values($schema, $input->getArgument('keys'), array_keys($schema->keys));
        $this->probe($input)->table($schema->name)->delete(...$keys);
        return self::SUCCESS;
    }
}
