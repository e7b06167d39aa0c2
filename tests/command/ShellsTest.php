<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Command;

use PHPUnit\Framework\Attributes\DataProvider;
use Rmon\Command\Application;
use Rmon\Command\ExitCode;
use Rmon\Command\ManPage;
use Rmon\Schema\Catalog;

/** Completion, and the manual page. */
final class ShellsTest extends CommandTestCase
{
    /** @return list<string> what is offered for the last word */
    private function offered(string ...$words): array
    {
        $inputs = array_map(
            static fn(string $word) => "-i$word",
            array_filter($words, static fn(string $word) => $word !== ''),
        );
        $run = $this->rmon(
            null,
            '_complete',
            '--no-interaction',
            '-sbash',
            '-c' . (count($words) - 1),
            ...array_values($inputs),
        );
        self::assertSame([0, ''], [$run->code(), $run->error]);
        return array_values(array_filter(explode("\n", $run->out)));
    }

    public function testNames(): void
    {
        $first = $this->offered('rmon', '');
        self::assertSame([], array_diff([...array_keys(Catalog::all()), 'top', 'capture', 'list'], $first));
        self::assertContains('nlHostTable', $this->offered('rmon', 'describe', ''));
        self::assertContains('nlHostAddress=', $this->offered('rmon', 'nlHost', ''));
        self::assertContains('nlHostInPkts', $this->offered('rmon', 'nlHost', '--columns', ''));
        self::assertContains('--columns', $this->offered('rmon', 'nlHost', '--'));
        self::assertSame(['hosts', 'talkers', 'protocols', 'conversations'], $this->offered('rmon', 'top', ''));
        self::assertContains('packets', $this->offered('rmon', 'top', 'hosts', '--by', ''));
    }

    /** @return iterable<string, array{string, list<string>}> a shell, and how it reads a script without running it */
    public static function shells(): iterable
    {
        yield 'bash' => ['bash', ['bash', '-n']];
        yield 'zsh' => ['zsh', ['zsh', '-n']];
        yield 'fish' => ['fish', ['fish', '--no-execute']];
    }

    /**
     * @dataProvider shells
     * @param list<string> $reader
     */
    #[DataProvider('shells')]
    public function testAScriptForAShell(string $shell, array $reader): void
    {
        $run = $this->rmon(null, 'completion', $shell);
        self::assertSame([0, ''], [$run->code(), $run->error]);
        self::assertStringContainsString('_complete', $run->out);
        [$code, , $error] = \run(...[...$reader, \file_of($run->out)]);
        self::assertSame([0, ''], [$code, $error]);
    }

    public function testFishAsksForWords(): void
    {
        $script = \file_of($this->rmon(null, 'completion', 'fish')->out);
        // The command runs the PHP that is first in the path, which need not be the one of the tests.
        $php = sys_get_temp_dir() . '/rmon-php-' . getmypid();
        mkdir($php);
        symlink(PHP_BINARY, "$php/php");
        $path = \dirname(__DIR__, 2) . "/bin $php";
        [$code, $output, $error] = \run(
            'fish',
            '-c',
            "set -gx PATH $path \$PATH; source $script; complete -C 'rmon describe nlHost'",
        );
        unlink("$php/php");
        rmdir($php);
        self::assertSame([0, "nlHostTable\n", ''], [$code, $output, $error]);
    }

    public function testTheManualPage(): void
    {
        $application = new Application();
        $page = (new ManPage($application))->text();
        [$code, $text, $error] = \run('groff', '-ww', '-man', '-Tascii', '-P-cbou', \file_of($page));
        self::assertSame([0, ''], [$code, $error]);
        $words = preg_replace('/-\n\s+|\s+/', ' ', $text);
        foreach ($application->commands() as $name => $command) {
            self::assertStringContainsString("rmon $name", $words);
        }
        foreach (Catalog::all() as $name => $schema) {
            self::assertStringContainsString($name, $words);
        }
        foreach (array_keys(ExitCode::MEANINGS) as $code) {
            self::assertMatchesRegularExpression("/^ +$code +[A-Z]/m", $text);
        }
    }
}
