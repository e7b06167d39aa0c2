#include "rmon/answers.h"

void report_failure(CLIENT *client, const char *label)
{
    zend_error(E_WARNING, "%s", clnt_sperror(client, label));
}
