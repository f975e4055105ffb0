// The stubs are header-only; this unit checks that they stay complete
// (an added pure virtual makes the instantiations below fail to compile).
#include "stubservices.h"

namespace {
[[maybe_unused]] void CheckComplete()
{
    StubPatientManagementService patients;
    StubExamService exams;
    StubDictionaryService dictionaries;
    StubProviderService providers;
    StubOrgOperationsCollection organizations;
}
} // namespace
