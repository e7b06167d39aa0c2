<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\Output\Text;
use Rmon\Command\ProbeCommand;
use Symfony\Component\Console\Input\InputInterface;

/** rmon, alone: what there is to say. */
final class OverviewCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('commands')->setDescription('The commands that there are');
    }

    protected function perform(InputInterface $input): int
    {
        $screen = $this->screen();
        $screen->line('usage: rmon [-H HOST[:PORT]] COMMAND ...');
        $screen->line('       rmon [-H HOST[:PORT]] TABLE [COLUMN=VALUE ...]');
        $screen->line();
        $commands = $this->getApplication()->commands();
        $width = max(array_map(strlen(...), array_keys($commands)));
        foreach ($commands as $name => $command) {
            $screen->line('  ' . $screen->strong(Text::padRight($name, $width)) . "  {$command->getDescription()}");
        }
        $screen->line();
        $screen->line('Tables: rmon list. Options of a command: rmon help COMMAND. All of it: man rmon.');
        $screen->flush();
        return self::SUCCESS;
    }
}
