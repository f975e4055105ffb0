#include "serviceresult.h"

std::string ServiceResult::Describe(int code)
{
    switch (code) {
    case InvalidArgument:
        return "The request was incomplete or not valid.";
    case NotFound:
        return "The record was not found; another workstation may have deleted it.";
    case MergedAway:
        return "The patient record has been merged into another patient.";
    case NotPermitted:
        return "You do not have the right to do this.";
    case Conflict:
        return "The records have changed meanwhile or the change would break an archive rule. Search again and "
               "retry.";
    case Unsupported:
        return "The organization does not offer this.";
    default:
        return "The service refused the request (code " + std::to_string(code) + ").";
    }
}
