#include "viputil.h"

bool VIPUtil::StringToVIPStatusCode(const char* text, int& code)
{
    if (!text || text[0] < '0' || text[0] > '9' || text[1] != '\0')
        return false;
    code = text[0] - '0';
    return true;
}
