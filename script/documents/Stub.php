<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use PHPStan\PhpDocParser\Ast\PhpDoc\PhpDocNode;
use PHPStan\PhpDocParser\Ast\PhpDoc\PhpDocTextNode;
use PHPStan\PhpDocParser\Ast\Type\ArrayShapeNode;
use PHPStan\PhpDocParser\Ast\Type\GenericTypeNode;
use PHPStan\PhpDocParser\Ast\Type\TypeNode;
use PHPStan\PhpDocParser\Ast\Type\UnionTypeNode;
use PHPStan\PhpDocParser\Lexer\Lexer;
use PHPStan\PhpDocParser\Parser\ConstExprParser;
use PHPStan\PhpDocParser\Parser\PhpDocParser;
use PHPStan\PhpDocParser\Parser\TokenIterator;
use PHPStan\PhpDocParser\Parser\TypeParser;
use PHPStan\PhpDocParser\ParserConfig;
use RuntimeException;

/** The function table, rmon/rmon.stub.php, read as static analysers read it. */
final class Stub
{
    /** @var array<string, Page> */
    public readonly array $pages;

    /** @var array<string, array{int, string}> value and text of each constant */
    public readonly array $constants;

    private readonly Lexer $lexer;

    private readonly PhpDocParser $parser;

    public function __construct(string $file)
    {
        // The library of Debian 12 is older than the engines that deprecate some of what it does.
        $level = error_reporting(E_ALL & ~E_DEPRECATED);
        require_once 'PHPStan/PhpDocParser/autoload.php';
        $settings = class_exists(ParserConfig::class) ? [new ParserConfig([])] : [];
        $constants = new ConstExprParser(...$settings);
        $this->lexer = new Lexer(...$settings);
        $this->parser = new PhpDocParser(...[...$settings, new TypeParser(...[...$settings, $constants]), $constants]);

        $text = (string) file_get_contents($file);
        $this->constants = $this->constantsOf($text);
        $this->pages = $this->pagesOf($text);
        error_reporting($level);
    }

    /** The page that has the row of a function's result: its own or the one that it refers to. */
    public function model(Page $page): Page
    {
        return $page->model === null ? $page : $this->model($this->pages[$page->model]);
    }

    /** @return array<string, list<Page>> the pages of each section, in the order of the stub */
    public function sections(): array
    {
        $sections = [];
        foreach ($this->pages as $page) {
            $sections[$page->section][] = $page;
        }
        return $sections;
    }

    /** @return array<string, array{int, string}> */
    private function constantsOf(string $text): array
    {
        preg_match_all('~^(/\*\*(?:(?!\*/).)*\*/)\nconst (\w+) = (\d+);$~ms', $text, $found, PREG_SET_ORDER);
        $constants = [];
        foreach ($found as [, $comment, $name, $value]) {
            $constants[$name] = [(int) $value, $this->summaryOf($this->parsed($comment))];
        }
        return $constants;
    }

    /** @return array<string, Page> */
    private function pagesOf(string $text): array
    {
        $part = '/\* ---- (?<section>[^\n]*?) -+ \*/'
            . '|(?<comment>/\*\*\n(?: \*[^\n]*\n)+? \*/)\nfunction (?<name>\w+)\((?<taken>[^)]*)\)';
        preg_match_all("~^(?:$part)~m", $text, $found, PREG_SET_ORDER | PREG_UNMATCHED_AS_NULL);
        $section = '';
        $pages = [];
        foreach ($found as $each) {
            $section = $each['section'] ?? $section;
            if (isset($each['name'])) {
                $pages[$each['name']] = $this->page($each['name'], $section, $each['comment'], $each['taken']);
            }
        }
        return $pages;
    }

    private function page(string $name, string $section, string $comment, string $taken): Page
    {
        $parsed = $this->parsed($comment);
        $result = $parsed->getReturnTagValues()[0] ?? throw new RuntimeException("$name says nothing of its result");
        [$shape, $envelope, $list] = self::row($result->type);
        return new Page(
            $name,
            $section,
            $this->summaryOf($parsed),
            self::parameters($name, $parsed, $taken),
            self::typeName($result->type),
            self::inOneLine($result->description),
            $shape === null ? [] : self::keys($shape),
            $envelope,
            $list,
            preg_match('/\bSee (\w+)\(\)/', self::inOneLine($comment), $found) ? $found[1] : null,
        );
    }

    private function parsed(string $comment): PhpDocNode
    {
        return $this->parser->parse(new TokenIterator($this->lexer->tokenize($comment)));
    }

    private function summaryOf(PhpDocNode $comment): string
    {
        $texts = array_filter($comment->children, static fn($child) => $child instanceof PhpDocTextNode);
        $paragraphs = preg_split('/\n\s*\n/', implode("\n", array_map(strval(...), $texts)));
        return trim(implode("\n\n", array_filter(array_map(self::inOneLine(...), $paragraphs))));
    }

    /** @return list<Parameter> */
    private static function parameters(string $name, PhpDocNode $comment, string $taken): array
    {
        preg_match_all('/\$(\w+)( = )?/', $taken, $found, PREG_SET_ORDER);
        $described = [];
        foreach ($comment->getParamTagValues() as $tag) {
            $described[ltrim($tag->parameterName, '$')] = $tag;
        }
        $parameters = [];
        foreach ($found as $each) {
            $tag = $described[$each[1]] ?? throw new RuntimeException("$name says nothing of \$$each[1]");
            $text = self::inOneLine($tag->description);
            $parameters[] = new Parameter($each[1], self::typeName($tag->type), $text, isset($each[2]));
        }
        if (count($parameters) !== count($described)) {
            throw new RuntimeException("$name describes a parameter that it doesn't take");
        }
        return $parameters;
    }

    /**
     * The row among the alternatives of a type, the key of the list that it is in, and whether it is in a list.
     *
     * @return array{ArrayShapeNode|null, string, bool}
     */
    private static function row(TypeNode $type): array
    {
        foreach ($type instanceof UnionTypeNode ? $type->types : [$type] as $each) {
            if ($each instanceof GenericTypeNode && $each->genericTypes[0] instanceof ArrayShapeNode) {
                return [$each->genericTypes[0], '', true];
            }
            if (!$each instanceof ArrayShapeNode) {
                continue;
            }
            $only = count($each->items) === 1 ? $each->items[0] : null;
            $type = $only?->valueType;
            if ($type instanceof GenericTypeNode && $type->genericTypes[0] instanceof ArrayShapeNode) {
                return [$type->genericTypes[0], (string) $only->keyName, true];
            }
            return [$each, '', false];
        }
        return [null, '', false];
    }

    /** @return list<Key> */
    private static function keys(ArrayShapeNode $shape): array
    {
        $keys = [];
        foreach ($shape->items as $item) {
            [$inner] = $item->valueType instanceof GenericTypeNode ? self::row($item->valueType) : [null];
            $keys[] = new Key(
                (string) $item->keyName,
                self::typeName($item->valueType),
                $item->optional,
                $inner === null ? [] : self::keys($inner),
            );
        }
        return $keys;
    }

    /** A type without the keys of its rows. */
    private static function typeName(TypeNode $type): string
    {
        return match (true) {
            $type instanceof UnionTypeNode => implode('|', array_map(self::typeName(...), $type->types)),
            $type instanceof ArrayShapeNode => 'array',
            $type instanceof GenericTypeNode => $type->type . '<' . implode(
                ', ',
                array_map(self::typeName(...), $type->genericTypes),
            ) . '>',
            default => (string) $type,
        };
    }

    private static function inOneLine(string $text): string
    {
        return trim((string) preg_replace('/\s+/', ' ', (string) preg_replace('/^\s*\* ?/m', '', $text)));
    }
}
