<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\Console\Block\Block;
use Rmon\Console\Block\Waiting;
use Rmon\ControlRow;
use Rmon\Exception\RmonException;

/** What stands around the blocks of a page: probes and groups at the left, the place and its controls above. */
final class Layout
{
    /** Seconds between two refreshes that can be chosen. */
    private const REFRESH = [0, 2, 5, 10, 30];

    public static function block(Visit $visit, string $id, Block $block): string
    {
        try {
            $shown = $block->shown($visit, $id);
            $template = $block->template();
            $waiting = false;
        } catch (Waiting $waiting) {
            $shown = ['title' => $waiting->title, 'text' => $waiting->getMessage()];
            $template = 'waiting';
        }
        return $visit->console->templates()->render('block.twig', [
            'id' => $id,
            'template' => "block/$template.twig",
            'live' => $block->isLive(),
            'soon' => $waiting !== false,
            'block' => $shown,
            'visit' => $visit,
        ]);
    }

    /** @param array<string, mixed> $content */
    public static function page(
        Visit $visit,
        string $title,
        string $template,
        array $content,
        int $status = 200,
    ): Response {
        $signedIn = !$visit->console->configuration->signIn || $visit->user() !== null;
        try {
            $configured = $visit->configured();
        } catch (Refusal) {
            $configured = null;
        }
        $html = $visit->console->templates()->render($template, $content + [
            'title' => $title,
            'visit' => $visit,
            'configuration' => $visit->console->configuration,
            'probes' => $signedIn ? $visit->console->configuration->probes : [],
            'probe' => $signedIn ? $configured : null,
            'user' => $visit->user(),
            'groups' => $signedIn && $configured !== null && $status < 500 ? self::groups($visit) : [],
            'interfaces' => $signedIn && $configured !== null && $status < 500 ? self::interfaces($visit) : [],
            'refresh' => self::REFRESH,
            'theme' => in_array($visit->request->cookies['theme'] ?? '', ['light', 'dark'], true)
                ? $visit->request->cookies['theme'] : '',
            'used' => $signedIn && $status === 200 ? self::used($visit) : [],
            'message' => $signedIn ? $visit->session->said() : null,
            'version' => Assets::version(...),
        ]);
        return new Response($html, $status);
    }

    /**
     * The control rows that the page stands on, and whether the console has made them.
     *
     * @return list<array{table: string, index: int, made: bool, href: string}>
     */
    private static function used(Visit $visit): array
    {
        return array_map(static fn(ControlRow $row): array => [
            'table' => $row->table,
            'index' => $row->index,
            'made' => $row->made,
            'href' => $visit->to(Pages\TablePage::class, ['table' => $row->table]),
        ], $visit->used());
    }

    /**
     * The pages of this probe, by group.
     *
     * @return array<string, list<array{title: string, href: string, here: bool}>>
     */
    private static function groups(Visit $visit): array
    {
        $groups = [];
        try {
            $interface = self::interfaceOf($visit);
        } catch (RmonException) {
            return [];
        }
        foreach (Pages::ALL as $page) {
            if ($page::GROUP === '' || $interface === null && str_contains($page::PATH, '{interface}')) {
                continue;
            }
            $groups[$page::GROUP][] = [
                'title' => $page::TITLE,
                'href' => $visit->to($page, ['interface' => (string) $interface]),
                'here' => $page === $visit->page,
            ];
        }
        return $groups;
    }

    /**
     * The interfaces that this page could be about as well.
     *
     * @return list<array{name: string, href: string, here: bool}>
     */
    private static function interfaces(Visit $visit): array
    {
        $page = $visit->page;
        if ($page === null) {
            return [];
        }
        $page = str_contains($page::PATH, '{interface}') ? $page : Pages\InterfacePage::class;
        try {
            $names = $visit->probe()->interfaces()->names();
        } catch (RmonException) {
            return [];
        }
        $interfaces = [];
        foreach ($names as $index => $name) {
            $segment = $visit->interfaceSegment($index);
            $interfaces[] = [
                'name' => Text::shown($name),
                'href' => $visit->to($page, ['interface' => $segment]),
                'here' => in_array($visit->parameters['interface'] ?? null, [$segment, $name, (string) $index], true),
            ];
        }
        return $interfaces;
    }

    /** The interface that links to pages of one lead to: this page's, or the probe's first that isn't the loopback. */
    private static function interfaceOf(Visit $visit): ?string
    {
        if (isset($visit->parameters['interface'])) {
            return $visit->parameters['interface'];
        }
        $names = $visit->probe()->interfaces()->names();
        $others = array_filter($names, static fn(string $name) => $name !== 'lo');
        $index = array_key_first($others) ?? array_key_first($names);
        return $index === null ? null : $visit->interfaceSegment($index);
    }
}
