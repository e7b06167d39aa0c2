<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\Console\Block\Block;
use Rmon\Console\Block\Downloadable;
use Rmon\Console\Block\Failed;
use Rmon\Console\Block\Panels;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\RmonException;
use Rmon\Exception\UnknownName;

/**
 * A page: where it is, what it is called, and the blocks that it shows. A new one is a class below Pages/ and a line in
 * Pages::ALL.
 */
abstract class Page
{
    /** Its address; "{probe}", "{interface}" and the like are parameters. */
    public const PATH = '';

    public const TITLE = '';

    /** The group in the navigation that it belongs to; empty: it isn't in the navigation. */
    public const GROUP = '';

    /** Whether people see it, and use its form, without having signed in. */
    public const FOR_EVERYBODY = false;

    final public function __construct(protected readonly Visit $visit)
    {
    }

    /**
     * What it shows, the answer first. Each has an id, by which it is refreshed alone: letters, digits and "-".
     *
     * @return iterable<string, Block>
     */
    abstract public function blocks(): iterable;

    public function title(): string
    {
        return static::TITLE;
    }

    public function get(): Response
    {
        $format = $this->visit->query('format', '', ['csv', 'json']);
        $part = $this->visit->query('part');
        $shown = [];
        $status = 200;
        foreach ($part === '' ? $this->blocks() : $this->parts() as $id => $block) {
            if ($part !== '' && $part !== $id) {
                continue;
            }
            if ($format !== '') {
                if ($block instanceof Downloadable) {
                    return $block->download($this->visit, $id, $format);
                }
                continue;
            }
            try {
                $shown[$id] = Layout::block($this->visit, $id, $block);
            } catch (RmonException $failure) {
                // One block that fails leaves the others alone, unless nothing else can be asked either.
                if ($failure instanceof ConnectionFailed && $part === '' || $failure instanceof UnknownName) {
                    throw $failure;
                }
                $shown[$id] = Layout::block($this->visit, $id, new Failed(Problem::of($failure)));
            }
        }
        if ($format !== '' || $shown === [] && $part !== '') {
            throw Refusal::notFound('The page has no such part.');
        }
        return $part !== ''
            ? new Response(implode('', $shown), $status)
            : Layout::page($this->visit, $this->title(), 'page.twig', ['blocks' => $shown], $status);
    }

    /**
     * The blocks, and behind each the blocks inside it.
     *
     * @return iterable<string, Block>
     */
    private function parts(): iterable
    {
        foreach ($this->blocks() as $id => $block) {
            yield $id => $block;
            if ($block instanceof Panels) {
                yield from $block->blocks;
            }
        }
    }

    /** What a form of this page does. Changes go on to a page by GET. */
    public function post(): Response
    {
        throw new Refusal(405, 'Nothing can be changed here.');
    }
}
