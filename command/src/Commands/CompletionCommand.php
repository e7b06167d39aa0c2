<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use ReflectionClass;
use Rmon\Command\UsageError;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Command\DumpCompletionCommand;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\ArrayInput;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** rmon completion: Symfony's scripts, and ours for shells that its older versions have none for. */
final class CompletionCommand extends Command
{
    private const SHELLS = ['bash', 'zsh', 'fish'];

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('shell')) {
            $suggestions->suggestValues(self::SHELLS);
        }
    }

    protected function configure(): void
    {
        $this->setName('completion')
            ->setDescription('A script that makes a shell complete commands, tables and columns')
            ->addArgument(
                'shell',
                InputArgument::OPTIONAL,
                implode(', ', self::SHELLS) . '; that of $SHELL if left out',
            );
        $this->setHelp(
            "For this shell alone:  eval \"$(rmon completion bash)\"\n"
            . "For good: write it where the shell looks for such scripts, as in\n"
            . "  rmon completion bash > ~/.local/share/bash-completion/completions/rmon\n"
            . "  rmon completion zsh  > \"\${fpath[1]}/_rmon\"\n"
            . '  rmon completion fish > ~/.config/fish/completions/rmon.fish',
        );
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $shell = $input->getArgument('shell') ?? basename((string) getenv('SHELL'));
        if (!in_array($shell, self::SHELLS, true)) {
            throw new UsageError("There is completion for " . implode(', ', self::SHELLS) . ", not for \"$shell\".");
        }
        $symfony = dirname((new ReflectionClass(DumpCompletionCommand::class))->getFileName(), 2);
        if (is_file("$symfony/Resources/completion.$shell")) {
            $theirs = new DumpCompletionCommand();
            $theirs->setApplication($this->getApplication());
            return $theirs->run(new ArrayInput(['shell' => $shell]), $output);
        }
        $script = file_get_contents(dirname(__DIR__, 2) . "/resources/completion.$shell");
        $output->write($script, false, OutputInterface::OUTPUT_RAW);
        return self::SUCCESS;
    }
}
