<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** The list of pages: their order is that of the navigation. */
final class Pages
{
    /** @var list<class-string<Page>> */
    public const ALL = [
        Pages\ProbesPage::class,
        Pages\SignInPage::class,
        Pages\SignOutPage::class,
        Pages\OverviewPage::class,
        Pages\InterfacesPage::class,
        Pages\InterfacePage::class,
        Pages\EthernetPage::class,
        Pages\HistoryPage::class,
        Pages\CapturePage::class,
        Pages\AlarmsPage::class,
        Pages\SettingsPage::class,
        Pages\HostsPage::class,
        Pages\HostPage::class,
        Pages\ProtocolsPage::class,
        Pages\ResponseTimesPage::class,
        Pages\VoicePage::class,
        Pages\VoiceCallPage::class,
        Pages\NetFlowPage::class,
        Pages\MacHostsPage::class,
        Pages\TopHostsPage::class,
        Pages\ConversationsPage::class,
        Pages\AddressMapPage::class,
        Pages\ServicesPage::class,
        Pages\VlansPage::class,
        Pages\TablesPage::class,
        Pages\TablePage::class,
    ];

    /**
     * The page at an address, and the parameters that the address has.
     *
     * @return array{class-string<Page>, array<string, string>}
     * @throws Refusal
     */
    public static function find(string $path): array
    {
        $segments = explode('/', $path);
        $found = null;
        foreach (self::ALL as $page) {
            $parameters = self::match(explode('/', $page::PATH), $segments);
            // A word of an address stands before a parameter that could have the same value.
            if ($parameters !== null && ($found === null || count($parameters) < count($found[1]))) {
                $found = [$page, $parameters];
            }
        }
        return $found ?? throw Refusal::notFound();
    }

    /** @return list<string> what an interface can't be called in an address, as pages are called so */
    public static function reserved(): array
    {
        $words = [];
        foreach (self::ALL as $page) {
            $word = explode('/', $page::PATH)[3] ?? '';
            if ($word !== '' && $word[0] !== '{') {
                $words[] = $word;
            }
        }
        return $words;
    }

    /**
     * @param list<string> $pattern
     * @param list<string> $segments
     * @return array<string, string>|null
     */
    private static function match(array $pattern, array $segments): ?array
    {
        if (count($pattern) !== count($segments)) {
            return null;
        }
        $parameters = [];
        foreach ($pattern as $place => $part) {
            $segment = rawurldecode($segments[$place]);
            if ($part !== '' && $part[0] === '{') {
                if ($segment === '') {
                    return null;
                }
                $parameters[trim($part, '{}')] = $segment;
            } elseif ($part !== $segment) {
                return null;
            }
        }
        return $parameters;
    }
}
