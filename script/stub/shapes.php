<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Prints a stub with the shapes of rows filled in where several functions return the same ones:
 *
 *     php -n shapes.php rmon.stub.php
 *
 * A shape is written by hand once, one key a line. A page that says "See NAME()." returns NAME's rows, one of them or
 * a list of them. A history whose entries are "each a row of NAME()", or "each a row of NAME() from KEY on", holds
 * NAME's rows. Static analysers know no alias on a function, so these pages get a copy of the shape.
 */

/** Columns of the longest line with copied text. */
const WIDTH = 110;

/** What a page says of its function's result, and whose rows that are. */
final class Page
{
    public readonly ?string $model;

    /** @param list<string> $alternatives the alternatives of the result's type */
    public function __construct(
        public readonly string $text,
        public readonly array $alternatives,
        public readonly string $description,
    ) {
        $this->model = preg_match('/\bSee (\w+)\(\)/', in_one_line($text), $found) ? $found[1] : null;
    }

    /** @return list<string> */
    public function shapes(): array
    {
        return array_values(preg_grep('/^(list<)?array\b/', $this->alternatives));
    }
}

function in_one_line(string $text): string
{
    return trim(preg_replace('/\s+/', ' ', preg_replace('/^ \* ?/m', '', $text)));
}

/** The offset behind the bracket that closes the one at an offset. */
function behind_bracket(string $text, int $offset): int
{
    preg_match('/[{<](?:[^{}<>]++|(?R))*+[}>]/', $text, $found, 0, $offset) ?: throw new ValueError("no end: $text");
    return $offset + strlen($found[0]);
}

/** @return array{list<string>, string} a type's alternatives, and the text behind it */
function type_and_text(string $text): array
{
    preg_match('/^(?:[^\s{}<>]++|([{<](?:[^{}<>]++|(?1))*+[}>]))+/', $text, $found);
    preg_match_all('/(?:[^\s{}<>|]++|([{<](?:[^{}<>]++|(?1))*+[}>]))+/', $found[0], $alternatives);
    return [$alternatives[0], ltrim(substr($text, strlen($found[0])))];
}

/** @return array<string, Page> the pages by the names of their functions */
function pages(string $stub): array
{
    preg_match_all('~^/\*\*\n((?: \*[^\n]*\n)+?) \*/\nfunction (\w+)\(~m', $stub, $found, PREG_SET_ORDER);
    $pages = [];
    foreach ($found as [, $text, $name]) {
        $result = str_replace(['{ ', ' }'], ['{', '}'], in_one_line(strstr($text, '@return ')));
        $pages[$name] = new Page($text, ...type_and_text(substr($result, strlen('@return '))));
    }
    return $pages;
}

/** @return list<string> the shapes of a function's rows, from the page where they are written by hand */
function shapes_of(array $pages, string $name): array
{
    $page = $pages[$name] ?? throw new ValueError("there is no page of $name");
    return $page->model === null ? $page->shapes() : shapes_of($pages, $page->model);
}

/** Lines of at most WIDTH columns, broken between words but not between a key and its type. */
function wrapped(string $text, string $indent): string
{
    $together = str_replace(': ', ":\1", $text);
    return str_replace("\1", ' ', wordwrap($together, WIDTH - strlen($indent), "\n$indent"));
}

/** The text of a page, with the shapes of the page that it refers to. */
function with_model(array $pages, Page $page): string
{
    if ($page->model === null) {
        return $page->text;
    }
    $shapes = shapes_of($pages, $page->model);
    $copied = str_starts_with($page->alternatives[0], 'list<') ? ["list<$shapes[0]>"] : $shapes;
    $type = implode('|', [...$copied, ...array_diff($page->alternatives, $page->shapes())]);
    return strstr($page->text, '@return ', true) . wrapped(trim("@return $type $page->description"), ' *     ') . "\n";
}

/** The text of a page, with the shape of the calls in its history. */
function with_history(array $pages, Page $page): string
{
    $text = $page->text;
    if ($page->model !== null || !preg_match('/\beach a row of (\w+)\(\)(?: from (\w+) on)?/', in_one_line($text), $found)) {
        return $text;
    }
    $row = preg_replace('/^array\{\w+: list<array\{(.*)\}>\}$/D', '$1', shapes_of($pages, $found[1])[0]);
    $row = isset($found[2]) ? substr($row, strpos($row, "$found[2]:")) : $row;
    $list = strpos($text, 'list<', strpos($text, 'history?:')) + strlen('list');
    return substr($text, 0, $list) . wrapped("<array{{$row}}>", ' *         ') . substr($text, behind_bracket($text, $list));
}

/** @param callable(array<string, Page>, Page): string $renew makes the new text of a page with rows */
function renewed(string $stub, callable $renew): string
{
    $pages = pages($stub);
    foreach (array_filter($pages, fn(Page $page) => $page->shapes() !== []) as $page) {
        $stub = str_replace("$page->text */\n", $renew($pages, $page) . " */\n", $stub);
    }
    return $stub;
}

// The histories first: they are part of shapes that others copy.
$stub = renewed(file_get_contents($argv[1]), with_history(...));
echo renewed($stub, with_model(...));
