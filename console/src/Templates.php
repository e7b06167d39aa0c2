<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Twig\Environment;
use Twig\Loader\FilesystemLoader;
use Twig\TwigFunction;

/** The templates, which escape all that they show. */
final class Templates
{
    private readonly Environment $twig;

    /** @param string $cache the directory for compiled templates */
    public function __construct(string $cache)
    {
        $this->twig = new Environment(new FilesystemLoader(dirname(__DIR__) . '/templates'), [
            'cache' => $cache,
            'auto_reload' => true,
            'autoescape' => 'html',
            'strict_variables' => true,
        ]);
        $this->twig->addFunction(new TwigFunction('asset', static function (string $name): string {
            return "/assets/$name?" . Assets::version($name);
        }));
    }

    /** @param array<string, mixed> $values */
    public function render(string $template, array $values): string
    {
        return $this->twig->render($template, $values);
    }
}
