<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** Who is let in, and to what. */
final class Guard
{
    /**
     * Whether the request may be answered at all.
     *
     * @throws Refusal
     */
    public static function admit(Configuration $configuration, Visit $visit): void
    {
        $request = $visit->request;
        if (!in_array($request->method, ['GET', 'HEAD', 'POST'], true)) {
            throw new Refusal(405, "$request->method is nothing that the console does.");
        }
        // A page of somebody else's, whose name leads to this address, is not to read what the console says.
        $name = strtolower(preg_replace('/:\d+$/D', '', $request->server('HTTP_HOST')));
        if (!in_array($name, array_map(strtolower(...), $configuration->names), true)) {
            throw new Refusal(403, 'The console is not reached by this name: see "names" in its configuration.');
        }
        if (!$configuration->signIn && !self::isLocal($request)) {
            throw new Refusal(403, 'Without sign-in the console answers this machine alone.');
        }
    }

    /**
     * Whether this user may see, or with POST change, this page.
     *
     * @param class-string<Page> $page
     * @throws Refusal
     */
    public static function permit(Configuration $configuration, Visit $visit, string $page): void
    {
        if ($configuration->signIn && $visit->user() === null && !$page::FOR_EVERYBODY) {
            throw new Refusal(401, 'Sign in first.');
        }
        if (!$visit->request->isPost()) {
            return;
        }
        if (!$visit->session->isOwn($visit->request->form['token'] ?? '')) {
            throw new Refusal(403, 'The form is too old, or came from elsewhere. Load the page again.');
        }
        if (!$page::FOR_EVERYBODY && !$visit->mayChange()) {
            throw new Refusal(403, 'Your role is read-only: an operator can change this.');
        }
    }

    /** Whether the browser runs on this machine, with nothing between it and this server. */
    private static function isLocal(Request $request): bool
    {
        $between = $request->server('HTTP_X_FORWARDED_FOR') . $request->server('HTTP_FORWARDED');
        $addresses = [$request->server('REMOTE_ADDR'), $request->server('SERVER_ADDR') ?: '127.0.0.1'];
        foreach ($addresses as $address) {
            if ($address !== '::1' && !str_starts_with($address, '127.')) {
                return false;
            }
        }
        return $between === '';
    }
}
