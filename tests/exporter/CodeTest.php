<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use PHPUnit\Framework\Attributes\DataProvider;
use PHPUnit\Framework\TestCase;
use ReflectionClass;

/** What every class of the exporter keeps to. */
final class CodeTest extends TestCase
{
    /** @return iterable<string, array{string, class-string}> */
    public static function classes(): iterable
    {
        $source = realpath(__DIR__ . '/../../exporter/src');
        $files = new \RecursiveDirectoryIterator($source, \FilesystemIterator::SKIP_DOTS);
        foreach (new \RecursiveIteratorIterator($files) as $file) {
            $name = substr($file->getPathname(), strlen($source) + 1, -4);
            yield $name => [$file->getPathname(), 'Rmon\\Exporter\\' . strtr($name, '/', '\\')];
        }
    }

    /**
     * @dataProvider classes
     * @param class-string $class
     */
    #[DataProvider('classes')]
    public function testAClassIsTypedAndExplained(string $file, string $class): void
    {
        $code = file_get_contents($file);
        self::assertStringContainsString("\n\ndeclare(strict_types=1);\n", $code);
        self::assertDoesNotMatchRegularExpression('/\brmon_\w+\(/', $code, 'the module is the library\'s alone');
        $reflection = new ReflectionClass($class);
        self::assertSame($file, $reflection->getFileName(), 'one class a file');
        self::assertNotFalse($reflection->getDocComment(), "$class says what it is");
        self::assertTrue($reflection->isFinal() || $reflection->isEnum(), "$class is final");
        foreach ($reflection->getProperties() as $property) {
            if ($property->getDeclaringClass()->name === $class) {
                self::assertTrue($property->hasType(), "$class::\$$property->name has a type");
            }
        }
    }
}
