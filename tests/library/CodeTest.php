<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use ReflectionClass;
use ReflectionMethod;

/** What every class of the library keeps to. */
final class CodeTest extends TestCase
{
    /** @return iterable<string, array{string, string}> */
    public static function classes(): iterable
    {
        $source = realpath(__DIR__ . '/../../library/src');
        $files = new \RecursiveDirectoryIterator($source, \FilesystemIterator::SKIP_DOTS);
        foreach (new \RecursiveIteratorIterator($files) as $file) {
            $name = substr($file->getPathname(), strlen($source) + 1, -4);
            yield $name => [$file->getPathname(), 'Rmon\\' . strtr($name, '/', '\\')];
        }
    }

    /** @dataProvider classes */
    #[DataProvider('classes')]
    public function testAClassIsTypedAndExplained(string $file, string $class): void
    {
        self::assertStringContainsString("\n\ndeclare(strict_types=1);\n", file_get_contents($file));
        $reflection = new ReflectionClass($class);
        self::assertSame($file, $reflection->getFileName(), 'one class a file');
        self::assertNotFalse($reflection->getDocComment(), "$class says what it is");
        self::assertTrue(
            $reflection->isFinal() || $reflection->isEnum() || is_a($class, \Throwable::class, true),
            "$class is final",
        );
        foreach ($reflection->getProperties() as $property) {
            if ($property->getDeclaringClass()->name === $class) {
                self::assertTrue($property->hasType(), "$class::\$$property->name has a type");
            }
        }
        foreach ($reflection->getMethods() as $method) {
            if ($method->getDeclaringClass()->name === $class && $method->isUserDefined()) {
                self::assertMethodIsTyped($method);
            }
        }
    }

    private static function assertMethodIsTyped(ReflectionMethod $method): void
    {
        $name = "$method->class::$method->name";
        foreach ($method->getParameters() as $parameter) {
            self::assertTrue($parameter->hasType(), "$name: \$$parameter->name has a type");
        }
        if (!$method->isConstructor() && !$method->isDestructor()) {
            self::assertTrue($method->hasReturnType(), "$name has a return type");
        }
    }

    public function testNothingOutsideOfTheLinkCallsTheModuleByName(): void
    {
        $functions = get_extension_funcs('rmon');
        $calls = [];
        foreach (self::classes() as [$file]) {
            $tokens = array_values(array_filter(
                token_get_all(file_get_contents($file)),
                static fn(mixed $token) => !is_array($token) || $token[0] !== T_WHITESPACE,
            ));
            foreach ($tokens as $at => $token) {
                if (is_array($token) && in_array($token[1], $functions, true) && $tokens[$at + 1] === '(') {
                    $calls[basename($file)][] = $token[1];
                }
            }
        }
        self::assertEqualsCanonicalizing(
            ['Link.php' => ['rmon_close'], 'Address.php' => ['rmon_inet_ntop', 'rmon_inet_pton']],
            $calls,
        );
    }

    /** PHPUnit took providers from comments up to 11; since 10 it takes them from attributes, since 11 static ones only. */
    public function testProvidersOfTestsAreKnownToEachPhpUnit(): void
    {
        $methods = 0;
        foreach (glob(__DIR__ . '/../{library,command}/*Test.php', GLOB_BRACE) as $file) {
            $code = file_get_contents($file);
            $attribute = '#\[DataProvider\(\'(\w+)\'\)\]';
            preg_match_all("~@dataProvider (\w+)(?:(?!\*/).)*\*/\s+(?:$attribute)?~s", $code, $named);
            self::assertSame($named[1], $named[2], $file);
            self::assertSame(preg_match_all("~^ +$attribute~m", $code), count($named[1]), $file);
            foreach ($named[1] as $name) {
                self::assertStringContainsString("public static function $name(", $code, $file);
                $methods++;
            }
        }
        self::assertGreaterThan(10, $methods);
    }
}
