<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Form;

use Closure;
use Rmon\Console\Layout;
use Rmon\Console\Refusal;
use Rmon\Console\Response;
use Rmon\Console\Text;
use Rmon\Console\Visit;

/**
 * What the forms of a page do. A form that is sent shows what will change; sent once more from there, it is done, and
 * the browser goes back to the page.
 */
final class Changes
{
    /** Fields that say how a form is sent, and nothing of the change. */
    private const OWN = ['token' => 0, 'sure' => 0];

    /** @param array<string, Closure(array<string, string>): Plan> $plans by the name of the form, from its fields */
    public static function answer(Visit $visit, array $plans): Response
    {
        $given = array_diff_key($visit->request->form, self::OWN);
        $plan = ($plans[$given['do'] ?? ''] ?? throw Refusal::notFound('There is no such form.'))($given);
        if (($visit->request->form['sure'] ?? '') !== '1' && $plan->lines !== []) {
            return Layout::page($visit, Text::shown($plan->title), 'change.twig', [
                'plan' => $plan,
                'lines' => array_map(
                    static fn(array $line) => array_map(static fn(string $text) => Text::shown($text), $line),
                    $plan->lines,
                ),
                'given' => $given,
                'back' => $visit->address(),
            ]);
        }
        $message = $plan->lines === [] ? 'Nothing changes.' : ($plan->do)() ?? "Done: $plan->title.";
        $visit->session->say(Text::shown($message));
        return Response::seeOther($visit->address());
    }
}
