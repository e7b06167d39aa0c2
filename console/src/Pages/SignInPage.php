<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Layout;
use Rmon\Console\Page;
use Rmon\Console\Response;
use Rmon\Console\SignIn;

/** The form that lets people in. */
final class SignInPage extends Page
{
    public const PATH = '/sign-in';
    public const TITLE = 'Sign in';
    public const FOR_EVERYBODY = true;

    public function blocks(): iterable
    {
        return [];
    }

    public function get(): Response
    {
        return $this->form('', '');
    }

    public function post(): Response
    {
        $form = $this->visit->request->form;
        $console = $this->visit->console;
        $user = (new SignIn($console->configuration, $console->state))->user(
            $form['name'] ?? '',
            $form['password'] ?? '',
            $this->visit->request->server('REMOTE_ADDR'),
        );
        if ($user === null) {
            return $this->form($form['name'] ?? '', 'The name or the password is wrong.', 403);
        }
        $this->visit->session->signIn($user);
        $to = $this->visit->query('to', '/');
        // Only to a page of the console: nothing that a browser takes for another host.
        return Response::seeOther(preg_match('#^/(?![/\\\\])[^\s\\\\]*$#D', $to) ? $to : '/');
    }

    private function form(string $name, string $wrong, int $status = 200): Response
    {
        return Layout::page($this->visit, self::TITLE, 'sign-in.twig', ['name' => $name, 'wrong' => $wrong], $status);
    }
}
