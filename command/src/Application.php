<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Command\Output\Screen;
use Rmon\Command\Output\Text;
use Rmon\ErrorStatus;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\ConnectionLost;
use Rmon\Exception\ExtensionMissing;
use Rmon\Exception\RmonException;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Catalog;
use Symfony\Component\Console\Application as ConsoleApplication;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Command\CompleteCommand;
use Symfony\Component\Console\Command\HelpCommand;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\ArgvInput;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputDefinition;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutput;
use Symfony\Component\Console\Output\OutputInterface;
use Throwable;

/** The command: each table is a command of its own besides those that are listed here. */
final class Application extends ConsoleApplication
{
    /** @param Screen|null $screen where to write; standard output and error when not given */
    public function __construct(private ?Screen $screen = null)
    {
        parent::__construct('rmon', phpversion('rmon') ?: 'without its module');
        $this->setDefaultCommand('commands');
    }

    /**
     * Runs the command.
     *
     * @param list<string> $arguments as PHP gives them
     * @return int the exit code
     */
    public static function main(array $arguments): int
    {
        ini_set('display_errors', 'stderr');
        ini_set('log_errors', '0');
        ini_set('memory_limit', '-1');
        if (!stream_isatty(STDOUT)) {
            // Saves asking the terminal that isn't there.
            foreach (['COLUMNS=80', 'LINES=24'] as $setting) {
                putenv($setting);
            }
        }
        return (new self())->run(self::input($arguments), new ConsoleOutput());
    }

    public function run(?InputInterface $input = null, ?OutputInterface $output = null): int
    {
        $input ??= new ArgvInput();
        $output ??= new ConsoleOutput();
        $error = $output instanceof ConsoleOutput ? $output->getErrorOutput() : $output;
        try {
            $this->configureIO($input, $output);
            $this->screen ??= new Screen(STDOUT, STDERR, $output->isDecorated(), $error->isDecorated());
            $code = $this->doRun($input, $output);
            $this->screen->flush();
            return $code;
        } catch (ClosedPipe | Interrupted $end) {
            return ExitCode::of($end);
        } catch (Throwable $failure) {
            $this->report($failure);
            return ExitCode::of($failure);
        }
    }

    public function screen(): Screen
    {
        return $this->screen;
    }

    /**
     * What the command is called with.
     *
     * @param list<string> $arguments as PHP gives them
     */
    public static function input(array $arguments): ArgvInput
    {
        return new ArgvInput(self::withValuesJoined($arguments));
    }

    /** @return array<string, Command> those that people are shown, by name */
    public function commands(): array
    {
        $commands = array_filter(
            $this->all(),
            static fn(Command $command) => !$command->isHidden() && $command->getName() !== 'commands',
        );
        ksort($commands);
        return $commands;
    }

    public function find(string $name): Command
    {
        if ($this->has($name)) {
            return $this->get($name);
        }
        try {
            $schema = Catalog::find($name);
        } catch (UnknownName) {
            $tables = array_keys(Catalog::all());
            $short = array_map(static fn(string $table) => preg_replace('/Table$/D', '', $table), $tables);
            throw UnknownName::among('command or table', $name, [...array_keys($this->commands()), ...$short]);
        }
        $this->add(new Commands\TableCommand($schema, $name));
        // Which is the help about it, where that is wanted.
        return $this->get($name);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        parent::complete($input, $suggestions);
        if (
            $input->getCompletionType() === CompletionInput::TYPE_ARGUMENT_VALUE
            && $input->getCompletionName() === 'command'
        ) {
            $suggestions->suggestValues(array_keys(Catalog::all()));
        }
    }

    public function getHelp(): string
    {
        return 'rmon: tables of a network probe\'s monitoring agent';
    }

    public function getLongVersion(): string
    {
        return "rmon {$this->getVersion()}";
    }

    protected function getDefaultCommands(): array
    {
        return [
            new HelpCommand(),
            new CompleteCommand(),
            new Commands\OverviewCommand(),
            new Commands\ListCommand(),
            new Commands\DescribeCommand(),
            new Commands\GetCommand(),
            new Commands\SetCommand(),
            new Commands\DeleteCommand(),
            new Commands\TopCommand(),
            new Commands\WatchCommand(),
            new Commands\CaptureCommand(),
            new Commands\VoiceCommand(),
            new Commands\AlarmsCommand(),
            new Commands\DoctorCommand(),
            new Commands\ConformanceCommand(),
            new Commands\ServeMetricsCommand(),
            new Commands\CompletionCommand(),
        ];
    }

    protected function getDefaultInputDefinition(): InputDefinition
    {
        return new InputDefinition([
            new InputArgument('command', InputArgument::REQUIRED, 'A command or a table'),
            new InputOption(
                'host',
                'H',
                InputOption::VALUE_REQUIRED,
                'The agent, HOST[:PORT]; else that of $RMON_HOST',
            ),
            new InputOption('timeout', null, InputOption::VALUE_REQUIRED, 'Seconds that connecting may take: 5'),
            new InputOption('help', 'h', InputOption::VALUE_NONE, 'Help for the command'),
            new InputOption('version', 'V', InputOption::VALUE_NONE, 'The version of the module'),
            new InputOption('ansi', null, InputOption::VALUE_NEGATABLE, 'Colours; else only on a terminal'),
            new InputOption('no-interaction', 'n', InputOption::VALUE_NONE, 'Ask nothing: it never does'),
        ]);
    }

    private function report(Throwable $failure): void
    {
        $screen = $this->screen ?? new Screen(STDOUT, STDERR, false, false);
        $lines = explode("\n", trim($failure->getMessage()));
        $text = implode("\n", array_map(Text::visible(...), $lines));
        if (!$failure instanceof RmonException && ExitCode::of($failure) === ExitCode::FAILED) {
            $text = "this should not happen: $text (" . basename($failure->getFile()) . ":{$failure->getLine()})";
        }
        $screen->complain($screen->errorColours ? "\e[1;31mrmon:\e[0m $text" : "rmon: $text");
        $hint = self::hint($failure);
        if ($hint !== null) {
            $screen->complain("      $hint");
        }
    }

    private static function hint(Throwable $failure): ?string
    {
        if ($failure instanceof ExtensionMissing) {
            return 'In a source tree script/build release makes it, and this command finds it there.';
        }
        if ($failure instanceof AgentRefused && $failure->error() === ErrorStatus::badValue) {
            return 'A row that works refuses most changes: status=underCreation stops it, status=valid starts it.';
        }
        if ($failure instanceof ConnectionLost) {
            return 'The agent was there and went, or doesn\'t answer in time. rmon doctor looks at it.';
        }
        if ($failure instanceof ConnectionFailed) {
            return 'Is rmon-agent running there, and does it listen on that address? Another one: -H HOST[:PORT].';
        }
        return null;
    }

    /**
     * "--sort -octets" and "--write -" are an option and its value, although the value begins like an option.
     *
     * @param list<string> $arguments
     * @return list<string>
     */
    private static function withValuesJoined(array $arguments): array
    {
        $joined = [];
        foreach ($arguments as $argument) {
            $before = end($joined);
            $option = match ($before) {
                '--sort', '-s' => preg_match('/^-[A-Za-z]/', $argument) ? '--sort' : null,
                '--write', '-w' => $argument === '-' ? '--write' : null,
                default => null,
            };
            if ($option !== null) {
                array_pop($joined);
                $argument = "$option=$argument";
            }
            $joined[] = $argument;
        }
        return $joined;
    }
}
