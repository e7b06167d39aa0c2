<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Holds NOTICE.md against what rmon needs when it runs, by script/bootstrap and, where there is one, debian/control,
 * and its licences against the files of the packages that are installed here.
 *
 * usage: notices.php FOLDER
 */

const RUN_TIME = ['build', 'command', 'console'];
const DOCUMENTS = '/usr/share/doc';

/** Without a release in its name: php8.2-intl is php-intl. */
function plain(string $package): string
{
    return (string) preg_replace('/^php\d+\.\d+(?=-)/', 'php', $package);
}

/** @return list<string> the packages of the groups, as script/bootstrap names them for the release's own PHP */
function of_groups(string $bootstrap): array
{
    $packages = [];
    foreach (RUN_TIME as $group) {
        preg_match("/^    \\[$group\\]=\"([^\"]*)\"/m", $bootstrap, $found)
            || exit("script/bootstrap has no group $group\n") || exit(1);
        $text = strtr($found[1], ['${php:+' => '', '}' => '', '$php' => 'php']);
        array_push($packages, ...preg_split('/\s+/', $text, -1, PREG_SPLIT_NO_EMPTY));
    }
    return $packages;
}

/** @return list<string> libraries that the tree's packages are built with, and what they need but each other */
function of_control(string $control): array
{
    preg_match_all('/^Package: (\S+)/m', $control, $own);
    $names = static function (string $fields) use ($control): array {
        preg_match_all("/^(?:$fields):((?:.*\n)(?:[ \t].*\n)*)/m", $control, $texts);
        preg_match_all('/(?<=^|[,|])\s*([a-z0-9][a-z0-9.+-]+)/', implode(',', $texts[1]), $found);
        return $found[1];
    };
    $libraries = preg_grep('/^lib.*-dev$/D', $names('Build-Depends[\w-]*'));
    return array_diff([...$libraries, ...$names('Pre-Depends|Depends|Recommends')], $own[1]);
}

/** Whether something of a package ends up in a process of rmon: libraries, PHP and what PHP loads. */
function is_taken(string $package): bool
{
    $library = str_starts_with($package, 'lib');
    $php = preg_match('/^php-(?!dev$|all-dev$)/', plain($package)) === 1 && !str_contains($package, '-rmon');
    return $library || $php;
}

/** @return array<string, list<string>> licences by package */
function noticed(string $notice): array
{
    $licences = [];
    preg_match_all('/^\|([^|]+)\|([^|]*`[^|]*)\|([^|]+)\|/m', $notice, $rows, PREG_SET_ORDER);
    foreach ($rows as [, , $packages, $words]) {
        preg_match_all('/`([^`]+)`/', $packages, $names);
        foreach ($names[1] as $name) {
            $licences[$name] = array_map(trim(...), explode(',', $words));
        }
    }
    return $licences;
}

/** The package of the list that brings the library of a -dev package: its name goes on with a version alone. */
function brought(string $package, array $names): bool
{
    $library = preg_replace('/-dev$/D', '', $package, -1, $developer);
    $version = $developer > 0 ? '-?\d[\w.]*' : '';
    return preg_grep('/^' . preg_quote($library, '/') . "$version$/D", $names) !== [];
}

$root = $argv[1] ?? exit("usage: notices.php FOLDER\n");
$licences = noticed((string) file_get_contents("$root/NOTICE.md"));
$control = "$root/debian/control";
$wanted = of_groups((string) file_get_contents("$root/script/bootstrap"));
$wanted = array_merge($wanted, is_file($control) ? of_control((string) file_get_contents($control)) : []);
$wanted = array_unique(array_map(plain(...), array_filter($wanted, is_taken(...))));
$wrong = [];
foreach ($wanted as $package) {
    if (!brought($package, array_keys($licences))) {
        $wrong[] = "NOTICE.md lacks $package, which rmon needs when it runs";
    }
}
$release = PHP_MAJOR_VERSION . '.' . PHP_MINOR_VERSION;
$read = 0;
foreach ($licences as $package => $words) {
    foreach ([preg_replace('/^php-/', "php$release-", $package), $package] as $name) {
        $file = DOCUMENTS . "/$name/copyright";
        if (!is_file($file)) {
            continue;
        }
        $read++;
        // Texts break lines where they like.
        $text = preg_replace('/\s+/', ' ', (string) file_get_contents($file));
        foreach ($words as $word) {
            if (stripos($text, $word) === false) {
                $wrong[] = "$file has no \"$word\", which NOTICE.md says of $package";
            }
        }
        break;
    }
}
printf("%d packages needed, %d noticed, of %d the files are here\n", count($wanted), count($licences), $read);
array_walk($wrong, static fn(string $text) => print("$text\n"));
exit((int) ($wrong !== [] || $read === 0));
