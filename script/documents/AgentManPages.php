<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use RuntimeException;

/** rmon-agent(8) and rmon-agent.conf(5), from what the agent says of itself. */
final class AgentManPages
{
    /** What of the options a file can't have. */
    private const COMMAND_LINE = ['config', 'help', 'version'];

    private readonly string $about;

    /** @var array<string, array{string, string}> value and text of each option */
    private readonly array $options;

    private readonly string $end;

    /**
     * @param string $help    what rmon-agent --help prints
     * @param string $version the release
     */
    public function __construct(string $help, private readonly string $version)
    {
        if (!preg_match('/^usage: [^\n]*\n\n(.*?)\n\n((?: +-[^\n]*\n| {10,}[^\n]*\n)+)\n(.*)$/Ds', $help, $found)) {
            throw new RuntimeException("rmon-agent --help has another form: $help");
        }
        [, $about, $options, $end] = $found;
        $this->about = self::inOneLine($about);
        $this->end = trim($end);
        preg_match_all('/^  --(\S+)(?: (\S+))?\s+(\S.*(?:\n {10,}.*)*)/m', $options, $each, PREG_SET_ORDER);
        $known = [];
        foreach ($each as [, $name, $value, $text]) {
            $known[$name] = [$value, self::inOneLine($text)];
        }
        if (count($known) !== preg_match_all('/^  --/m', $options)) {
            throw new RuntimeException('not all options were understood');
        }
        $this->options = $known;
    }

    /** @return array<string, string> pages by file name */
    public function pages(): array
    {
        $pages = ['rmon-agent.8' => $this->agent()];
        if (isset($this->options['config'])) {
            $pages['rmon-agent.conf.5'] = $this->configuration();
        }
        return $pages;
    }

    private function agent(): string
    {
        $see = isset($this->options['config']) ? ['.BR rmon-agent.conf (5),'] : [];
        return $this->page('RMON-AGENT', 8, 'System Administration', [
            '.SH NAME', 'rmon\-agent \- monitoring agent that measures this machine\(aqs interfaces',
            '.SH SYNOPSIS', '.B rmon\-agent', '[\fIOPTION\fR ...]',
            '.SH DESCRIPTION', self::escaped($this->about),
            'Clients read and set its tables: those of RMON (RFC 2819), RMON2 (RFC 2021), DSMON (RFC 3287), SMON',
            '(RFC 2613), response times, voice quality and NetFlow settings. The command',
            '.BR rmon (1),', 'the PHP library and the web console are such clients.',
            '.PP',
            'Capture needs the right to it: root, or the capability \fBcap_net_raw\fR. Without it, Ethernet statistics',
            'come from the kernel\(aqs counters, and hosts, protocols and conversations are not counted.',
            '.SH OPTIONS',
            ...$this->listed($this->options, static fn(string $name, string $value) => trim("--$name $value")),
            '.SH SIGNALS AND EXIT STATUS', ...self::paragraphs($this->end),
            '.SH SECURITY',
            'There is no authentication and no encryption: who is allowed to connect reads and changes all that the',
            'agent has, captured frames included. Leave it on the loopback, or on a network of management behind a',
            'firewall. Once all is open that it needs, it keeps no capability but \fBcap_net_raw\fR and no system call',
            'but those that it uses, and says so in one line.',
            '.SH FILES',
            '.TP', '.I /etc/rmon\-agent.conf', 'Options, where a unit of systemd starts it.',
            '.TP', '.IR DIRECTORY /settings ", " DIRECTORY /settings.journal',
            'What was set, where \fB\-\-state\fR names the directory.',
            '.SH EXAMPLES', '.nf',
            'rmon\-agent \-i eth0 \-\-state /var/lib/rmon\-agent',
            'rmon\-agent \-\-read capture.pcap \-\-port 9912',
            '.fi',
            '.SH SEE ALSO', '.BR rmon (1),', ...$see, '.BR pcap\-filter (7)',
        ]);
    }

    private function configuration(): string
    {
        $options = array_diff_key($this->options, array_flip(self::COMMAND_LINE));
        return $this->page('RMON-AGENT.CONF', 5, 'File Formats', [
            '.SH NAME', 'rmon\-agent.conf \- what rmon\-agent is started with',
            '.SH DESCRIPTION', 'The file that the option \fB\-\-config\fR of', '.BR rmon\-agent (8)', 'names.',
            self::escaped(ucfirst($this->options['config'][1])),
            'A name that may be given several times on the command line may have several lines here.',
            '.SH NAMES',
            ...$this->listed($options, static fn(string $name, string $value) => rtrim("$name = $value", ' =')),
            '.SH EXAMPLE', '.nf',
            'listen = 10.1.0.5',
            'allow = 10.1.0.0/16',
            'interface = eth0',
            'interface = eth1',
            'state = /var/lib/rmon\-agent',
            '.fi',
            '.SH SEE ALSO', '.BR rmon\-agent (8)',
        ]);
    }

    /**
     * @param array<string, array{string, string}> $options
     * @param callable(string, string): string $shown
     * @return list<string>
     */
    private function listed(array $options, callable $shown): array
    {
        $lines = [];
        foreach ($options as $name => [$value, $text]) {
            array_push($lines, '.TP', '.B ' . self::escaped($shown($name, $value)), self::escaped(ucfirst($text)));
        }
        return $lines;
    }

    /** @return list<string> */
    private static function paragraphs(string $text): array
    {
        $lines = [];
        foreach (preg_split('/\n\s*\n/', $text) as $paragraph) {
            array_push($lines, '.PP', self::escaped(self::inOneLine($paragraph)));
        }
        return $lines;
    }

    /** @param list<string> $lines */
    private function page(string $name, int $section, string $kind, array $lines): string
    {
        $title = ".TH $name $section \"\" \"rmon $this->version\" \"$kind\"";
        return self::escapedTitle($title) . "\n" . implode("\n", $lines) . "\n";
    }

    private static function escapedTitle(string $title): string
    {
        return str_replace('-', '\-', $title);
    }

    private static function inOneLine(string $text): string
    {
        return trim((string) preg_replace('/\s+/', ' ', $text));
    }

    private static function escaped(string $text): string
    {
        $text = strtr($text, ['\\' => '\e', '-' => '\-', "'" => '\(aq', '`' => '\(ga']);
        return (string) preg_replace('/^([.\'])/m', '\\&$1', $text);
    }
}
