// SPDX-License-Identifier: MIT
#include "rmon/answers.h"

namespace rmon {

void report_failure(CLIENT *client, const char *label)
{
    zend_error(E_WARNING, "%s", clnt_sperror(client, label));
}

} // namespace rmon
