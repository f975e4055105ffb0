#include "cdialog.h"
#include "modulestate.h"
#include "stringtable.h"
#include "testdialogs.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>

#include <stdexcept>

namespace {

enum : UINT { IDS_REASON_EMPTY = 101, IDS_DETACH = 102, IDS_MISSING = 999 };
enum : UINT { IDD_REASON = 200 };

ModuleState& testModule()
{
    static ModuleState m("bravik-test", "BravikTest", "Bravik");
    static const bool filled = [] {
        m.Strings().Add({{IDS_REASON_EMPTY, "Reason cannot be empty."},
                         {IDS_DETACH, "Are you sure you want to detach this study? You cannot undo this operation."}});
        m.AddTemplate(IDD_REASON, ReasonPanelTemplate());
        QPixmap px(32, 32);
        px.fill(Qt::red);
        m.SetIcon(QIcon(px));
        return true;
    }();
    (void)filled;
    return m;
}

class GermanTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        if (QByteArray(context) == "BravikTest" && QByteArray(source) == "Reason cannot be empty.")
            return QStringLiteral("Der Grund darf nicht leer sein.");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

TEST(StringTable, LookupsByIdAndMissingIds)
{
    StringTable table("Lookups", {{1, "One"}, {2, "Zwei – два"}});
    EXPECT_STREQ("One", table.Load(1));
    EXPECT_STREQ("Zwei – два", table.Load(2));
    EXPECT_STREQ("", table.Load(3));
    CString s("stale");
    EXPECT_FALSE(table.Load(3, s));
    EXPECT_STREQ("", s);
    EXPECT_TRUE(table.Load(1, s));
    table.Add(1, "Uno");
    EXPECT_STREQ("Uno", table.Load(1));
    EXPECT_TRUE(table.Has(2));
    EXPECT_FALSE(table.Has(3));
}

TEST(StringTable, TextsGoThroughTheTranslationContext)
{
    GermanTranslator german;
    QCoreApplication::installTranslator(&german);
    {
        ModuleResourceScope scope(testModule());
        EXPECT_STREQ("Der Grund darf nicht leer sein.", LoadString(IDS_REASON_EMPTY));
        EXPECT_STREQ("Are you sure you want to detach this study? You cannot undo this operation.",
                     LoadString(IDS_DETACH));
    }
    QCoreApplication::removeTranslator(&german);
    ModuleResourceScope scope(testModule());
    EXPECT_STREQ("Reason cannot be empty.", LoadString(IDS_REASON_EMPTY));
}

TEST(ModuleState, HostIsCurrentByDefault)
{
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
    EXPECT_STREQ("", LoadString(IDS_REASON_EMPTY));
}

TEST(ModuleState, ScopeSwitchesStringsTemplatesAndIcon)
{
    ModuleResourceScope scope(testModule());
    EXPECT_EQ(&testModule(), &CurrentModuleState());
    EXPECT_STREQ("Reason cannot be empty.", LoadString(IDS_REASON_EMPTY));
    CString s;
    EXPECT_TRUE(s.LoadString(IDS_DETACH));
    EXPECT_STREQ("Are you sure you want to detach this study? You cannot undo this operation.", s);
    EXPECT_FALSE(s.LoadString(IDS_MISSING));
    CDialog dlg(IDD_REASON);
    EXPECT_STREQ("Detach Study", dlg.GetWindowText());
    EXPECT_FALSE(CurrentModuleState().Icon().isNull());
    EXPECT_EQ(QSize(32, 32), CurrentModuleState().IconPixmap(32).size());
}

TEST(ModuleState, NestedScopesRestoreInOrder)
{
    ModuleState other("other", "Other");
    other.Strings().Add(IDS_REASON_EMPTY, "other text");
    {
        ModuleResourceScope outer(testModule());
        {
            ModuleResourceScope inner(other);
            EXPECT_EQ(&other, &CurrentModuleState());
            EXPECT_STREQ("other text", LoadString(IDS_REASON_EMPTY));
        }
        EXPECT_EQ(&testModule(), &CurrentModuleState());
        EXPECT_STREQ("Reason cannot be empty.", LoadString(IDS_REASON_EMPTY));
    }
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
}

TEST(ModuleState, ScopeIsRestoredWhenAnExceptionLeaves)
{
    try {
        ModuleResourceScope scope(testModule());
        EXPECT_EQ(&testModule(), &CurrentModuleState());
        throw std::runtime_error("service failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
    // A template the host does not have.
    EXPECT_THROW(CDialog dlg(IDD_REASON), std::logic_error);
    EXPECT_EQ(&HostModuleState(), &CurrentModuleState());
}
