<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Page;
use Rmon\Console\Refusal;
use Rmon\Console\Response;

/** Where the form that signs out leads. */
final class SignOutPage extends Page
{
    public const PATH = '/sign-out';
    public const TITLE = 'Sign out';
    public const FOR_EVERYBODY = true;

    public function blocks(): iterable
    {
        throw Refusal::notFound();
    }

    public function post(): Response
    {
        $this->visit->session->signOut();
        return Response::seeOther('/sign-in');
    }
}
