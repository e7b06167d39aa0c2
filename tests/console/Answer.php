<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

use DOMDocument;
use DOMXPath;

/** What the console answered. */
final class Answer
{
    private ?DOMXPath $page = null;

    /** @param array<string, string> $headers by name in small letters */
    public function __construct(
        public readonly int $status,
        public readonly array $headers,
        public readonly string $body,
    ) {
    }

    /** @return list<string> the texts of what a path of XPath finds */
    public function texts(string $path): array
    {
        $texts = [];
        foreach ($this->page()->query($path) as $node) {
            $texts[] = trim(preg_replace('/\s+/', ' ', $node->textContent));
        }
        return $texts;
    }

    /** @return list<list<string>> the cells of a block's table, row by row */
    public function table(string $id): array
    {
        $rows = [];
        foreach ($this->page()->query("//*[@id='$id']//table/tbody/tr") as $row) {
            $cells = [];
            foreach ($this->page()->query('td', $row) as $cell) {
                $cells[] = trim($cell->textContent);
            }
            $rows[] = $cells;
        }
        return $rows;
    }

    /** The value of an attribute of what a path finds first. */
    public function attribute(string $path, string $name): ?string
    {
        $node = $this->page()->query($path)->item(0);
        return $node instanceof \DOMElement && $node->hasAttribute($name) ? $node->getAttribute($name) : null;
    }

    public function page(): DOMXPath
    {
        if ($this->page === null) {
            $document = new DOMDocument();
            // What libxml doesn't know of HTML is no fault of the page.
            $before = libxml_use_internal_errors(true);
            $document->loadHTML($this->body === '' ? '<p></p>' : $this->body);
            libxml_clear_errors();
            libxml_use_internal_errors($before);
            $this->page = new DOMXPath($document);
        }
        return $this->page;
    }
}
