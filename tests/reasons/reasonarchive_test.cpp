// The reason dialogs over a real site archive: the lists come from the
// archive's dictionaries, the annotation warning from the user's preference
// and the study-deletion switch from the product settings.

#include "reasonfixture.h"

#include "boundary/deleteexamparamdlgcreator.h"
#include "boundary/detachstudyparamdlgcreator.h"

#include "archivefixture.h"
#include "dictionarytopic.h"
#include "sqlitedictionaryservice.h"

#include "dictionaryrecord.h"

namespace {

class ReasonArchiveTest : public ArchiveFixture
{
protected:
    void TearDown() override
    {
        if (Arc().Installed())
            Arc().Uninstall();
        ArchiveFixture::TearDown();
    }
};

TEST_F(ReasonArchiveTest, DetachListsTheArchiveReasonsInItsOrderAndWarnsAsTheUserPrefers)
{
    Build().Dictionary(DictionaryTopic::DetachStudyReason, "ZZZ", "Wrong side scanned", "", 1);
    Build().Dictionary(DictionaryTopic::DetachStudyReason, "AAA", "Another patient's images", "", 2);
    Build().Preference("admin", "DetachAnnotationWarning", "1");
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));

    std::vector<CString> expected;
    for (DictionaryRecord* r : Arc().Dictionaries().GetDetachStudyReasonDictionary())
        expected.emplace_back(r->GetDescription().c_str());
    ASSERT_EQ(3u, expected.size());

    ScriptedUser user;
    std::vector<CString> shown;
    user.OnNextDialog([&shown](CDialog& dlg) {
        ReasonForm f(dlg);
        shown = f.ListItems();
        f.Choose(2);
        f.ClickOK();
    });
    user.ExpectMessage(
        "Previous user actions (annotations, KIN etc.) performed on these images will be lost. Do you want to continue?",
        IDYES);
    TavCreator::DetachStudyParamDlgCreator creator;
    EXPECT_EQ(IDOK, creator.DisplayModal("Detach", "ACC1", nullptr));
    EXPECT_EQ(expected, shown);
    EXPECT_EQ(expected[2], CString(creator.GetReason()));
}

TEST_F(ReasonArchiveTest, ASiteWithoutStudyDeletionHidesDeleteStudies)
{
    Build().Setting("product", "StudyDeletionEnabled", "0");
    ASSERT_TRUE(Arc().InstallIntoSession("admin"));
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        ReasonForm f(dlg);
        EXPECT_FALSE(f.IsShown(IDC_DELETE_STUDIES));
        EXPECT_EQ((std::vector<CString>{"Entered in error"}), f.ListItems());
        f.ClickOK();
    });
    user.ExpectMessage("Are you sure you want to delete this exam? You cannot undo this operation.", IDYES);
    TavCreator::DeleteExamParamDlgCreator creator;
    EXPECT_EQ(IDOK, creator.DisplayModal("Delete", "ACC1", TavCreator::DELETE_EXAM, true, true, nullptr));
    EXPECT_EQ(1, creator.GetDeleteStudiesFlg());
    EXPECT_STREQ("Entered in error", creator.GetReason());
}

} // namespace
