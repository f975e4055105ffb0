#include "archivedb.h"

#include <server.h>

void ThrowServerFault(const std::string& what)
{
    throw Framework::Server(what);
}
