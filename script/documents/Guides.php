<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** The programs and commands of pages. */
final class Guides
{
    /** The command of this tree, for a shell. */
    private const RMON = 'rmon() { "$RMON_PHP" -d extension="$RMON_MODULE" "$RMON_ROOT/bin/rmon" "$@"; }; ';

    /** @var list<string> what went wrong */
    public array $faults = [];

    public int $runs = 0;

    public function __construct(private readonly string $root, private readonly World $world)
    {
    }

    /** A page with what its programs and commands print now. */
    public function renewed(string $file, string $text): string
    {
        $this->parse($file, $text);
        $fences = '/^```(php|console)\n(.*?)^```$(\n\n```text\n(.*?)^```$)?/ms';
        return preg_replace_callback($fences, function (array $found) use ($file): string {
            [$all, $kind, $body] = $found;
            if ($kind === 'console') {
                return "```console\n" . $this->commands($file, $body) . '```' . ($found[3] ?? '');
            }
            if (!str_starts_with($body, '<?php')) {
                return $all;
            }
            file_put_contents("{$this->world->folder}/program.php", $body);
            $output = $this->ran($file, $body, ...php_command(), ...["{$this->world->folder}/program.php"]);
            $output === '' || isset($found[3]) || $this->faults[] = "$file: a program prints what isn't shown: $output";
            return "```php\n$body```" . (isset($found[3]) ? "\n\n```text\n$output```" : '');
        }, $text);
    }

    /** Parts of programs, and commands for a shell, must be well formed. */
    public function parse(string $file, string $text): void
    {
        preg_match_all('/^```(php|sh)\n(.*?)^```$/ms', $text, $fences, PREG_SET_ORDER);
        foreach ($fences as [, $kind, $body]) {
            $part = "{$this->world->folder}/part";
            file_put_contents($part, match (true) {
                $kind === 'sh', str_starts_with($body, '<?php') => $body,
                str_starts_with($body, 'public function') => "<?php class Part {\n$body}",
                default => "<?php\n$body",
            });
            [$code, $output, $errors] = $kind === 'php' ? run(PHP_BINARY, '-n', '-l', $part) : run('bash', '-n', $part);
            if ($code !== 0) {
                $this->faults[] = "$file: a part of a program doesn't parse: $output$errors$body";
            }
        }
    }

    private function commands(string $file, string $body): string
    {
        preg_match_all('/^\$ (.*)\n((?:(?!\$ ).*\n)*)/m', $body, $commands, PREG_SET_ORDER);
        $text = '';
        foreach ($commands as [$all, $command]) {
            $text .= str_starts_with($command, 'rmon ')
                ? "\$ $command\n" . $this->ran($file, $command, 'bash', '-c', self::RMON . $command)
                : $all;
        }
        return $text;
    }

    /** What a program prints. It has to end with 0, and has nothing to complain about. */
    private function ran(string $file, string $source, string ...$command): string
    {
        $this->runs++;
        putenv("RMONRPC_PORT={$this->world->port}");
        putenv("RMON_HOST=127.0.0.1:{$this->world->port}");
        putenv('RMON_PHP=' . PHP_BINARY);
        putenv('RMON_MODULE=' . module_file());
        putenv("RMON_ROOT=$this->root");
        chdir($this->root);
        [$code, $output, $errors] = run(...$command);
        if ($code !== 0 || $errors !== '' || preg_match('/^(Warning|Notice|Fatal error|Deprecated): /m', $output)) {
            $this->faults[] = "$file: exit code $code of\n$source\n$output$errors";
        }
        return $output === '' ? '' : rtrim($output, "\n") . "\n";
    }
}
