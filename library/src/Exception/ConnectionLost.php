<?php

declare(strict_types=1);

namespace Rmon\Exception;

/** A link that was made carries calls no more; the next call makes it anew. */
class ConnectionLost extends ConnectionFailed
{
}
