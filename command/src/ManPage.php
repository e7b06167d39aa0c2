<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Schema\Catalog;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputOption;

/** rmon(1), made from the descriptions of the commands and of the tables. */
final class ManPage
{
    public function __construct(private readonly Application $application)
    {
    }

    public function text(): string
    {
        return implode("\n", [
            '.TH RMON 1 "" "' . self::escaped($this->application->getLongVersion()) . '" "User Commands"',
            '.SH NAME',
            'rmon \- tables of a network probe\(aqs monitoring agent',
            '.SH SYNOPSIS',
            '.B rmon', '[\fB\-H\fR \fIHOST\fR[:\fIPORT\fR]] \fITABLE\fR [\fICOLUMN\fR=\fIVALUE\fR ...]',
            '.br',
            '.B rmon', '[\fB\-H\fR \fIHOST\fR[:\fIPORT\fR]] \fICOMMAND\fR ...',
            '.SH DESCRIPTION',
            'The name of a table shows its rows: on a terminal with numbers as people read them, and as many',
            'columns as there is room for; elsewhere with all columns. \fB\-\-json\fR and \fB\-\-csv\fR show exact',
            'numbers under full names. Rows show as they arrive. Case, and "Table" at the end of a name, don\(aqt',
            'matter; of the name of a column, the part that says which table it belongs to can be left out, or all',
            'but a part that no other column has.',
            '.SH FILTERS',
            '.TP', '.IR COLUMN = VALUE',
            'Rows with this value: a number, an address, the name of an interface, of a protocol ("ip.tcp.https") or',
            'of a state. Values of keys are looked for by the agent. \fBcontrol\fR=\fIINDEX\fR stands for',
            'the row that says what is counted.',
            '.TP', '.IR COLUMN != VALUE', 'Rows with another value.',
            '.TP', '.IR COLUMN < NUMBER , " COLUMN" <= NUMBER , " COLUMN" > NUMBER , " COLUMN" >= NUMBER',
            'Rows whose number is smaller or larger. A shell wants quotes around these.',
            '.TP', '.IR COLUMN ~ TEXT', 'Rows that show this text there, in any case.',
            '.SH OPTIONS',
            ...$this->options($this->application->getDefinition()->getOptions()),
            '.SH OPTIONS OF TABLES',
            ...$this->options($this->application->find('system')->getDefinition()->getOptions()),
            '.SH COMMANDS',
            ...$this->commands(),
            '.SH TABLES',
            ...$this->tables(),
            '.SH EXIT STATUS',
            ...$this->exitCodes(),
            '.SH ENVIRONMENT',
            '.TP', '.B RMON_HOST', 'The agent where \fB\-H\fR isn\(aqt given; else 127.0.0.1.',
            '.TP', '.B RMONRPC_PORT', 'The port where none is given; else that of the service rmonrpc, or 9911.',
            '.TP', '.B RMONRPC_TIMEOUT', 'Milliseconds that a call waits at most, where that is less than 25 seconds.',
            '.TP', '.B NO_COLOR', 'No colours.',
            '.SH EXAMPLES',
            '.nf',
            'rmon top talkers \-\-on eth0',
            'rmon nlHost \-\-sort \-outOctets \-\-limit 10',
            'rmon ifTable operStatus=up \-\-columns descr,inOctets,outOctets',
            'rmon capture \-\-on eth0 \(aqhost 10.0.1.23 and port 443\(aq \-\-write \- | tshark \-r \-',
            'rmon set alarmTable index=1 variable=etherStatsPkts.2 risingThreshold=1000',
            '.fi',
            '',
        ]);
    }

    /** @return list<string> */
    private function commands(): array
    {
        $lines = [];
        foreach ($this->application->commands() as $name => $command) {
            $lines[] = '.SS ' . self::escaped(trim("rmon {$command->getSynopsis(true)}"));
            $lines[] = self::escaped($command->getDescription()) . '.';
            foreach (self::help($name, $command) as $line) {
                $lines[] = '.br';
                $lines[] = self::escaped($line);
            }
            foreach ($command->getDefinition()->getArguments() as $argument) {
                $lines[] = '.TP';
                $lines[] = '.I ' . self::escaped($argument->getName());
                $lines[] = self::escaped($argument->getDescription());
            }
            $own = array_udiff_assoc($command->getDefinition()->getOptions(), $this->shared(), self::compared(...));
            array_push($lines, ...$this->options($own));
            if ($command->getDefinition()->hasOption('json')) {
                array_push($lines, '.PP', 'It takes the options of tables for the form of what it shows.');
            }
        }
        return $lines;
    }

    /** @return array<string, InputOption> what is told of tables already */
    private function shared(): array
    {
        return $this->application->find('system')->getDefinition()->getOptions();
    }

    private static function compared(InputOption $one, InputOption $other): int
    {
        return $one->getDescription() <=> $other->getDescription();
    }

    /** @return list<string> what is ours of a command's help */
    private static function help(string $name, Command $command): array
    {
        return $name === 'help' ? [] : array_filter(explode("\n", strip_tags($command->getHelp())));
    }

    /**
     * @param array<InputOption> $options
     * @return list<string>
     */
    private function options(array $options): array
    {
        $lines = [];
        foreach ($options as $option) {
            $short = $option->getShortcut() === null ? '' : "-{$option->getShortcut()}, ";
            $value = $option->acceptValue() ? ' ' . strtoupper($option->getName()) : '';
            $lines[] = '.TP';
            $lines[] = '.B ' . self::escaped("$short--{$option->getName()}$value");
            $lines[] = self::escaped($option->getDescription());
        }
        return $lines;
    }

    /** @return list<string> */
    private function tables(): array
    {
        $lines = ['\fBrmon describe\fR \fITABLE\fR tells their columns.'];
        foreach (Catalog::all() as $schema) {
            array_push($lines, '.TP', '.B ' . self::escaped($schema->name), self::escaped($schema->title));
        }
        return $lines;
    }

    /** @return list<string> */
    private function exitCodes(): array
    {
        $lines = [];
        foreach (ExitCode::MEANINGS as $code => $meaning) {
            array_push($lines, '.TP', ".B $code", self::escaped($meaning));
        }
        return $lines;
    }

    private static function escaped(string $text): string
    {
        return preg_replace(
            '/^([.\'])/m',
            '\\&$1',
            strtr($text, ['\\' => '\e', '-' => '\-', "'" => '\(aq', '`' => '\(ga']),
        );
    }
}
