#include "cdialog.h"
#include "dialogdriver.h"
#include "qtconvert.h"
#include "scripteduser.h"
#include "testdialogs.h"
#include "uiinput.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>

namespace {

const char* const kLimit50 = "Enter no more than 50 characters.";

QString repeat(const QString& unit, int n)
{
    QString s;
    for (int i = 0; i < n; ++i)
        s += unit;
    return s;
}

} // namespace

TEST(CDialog, BuildsControlsNamedAfterTheirSymbols)
{
    FormDlg dlg;
    EXPECT_EQ(QStringLiteral("Sample Form"), dlg.windowTitle());
    EXPECT_STREQ("Sample Form", dlg.GetWindowText());
    ASSERT_NE(nullptr, dlg.GetDlgItemAs<CEdit>(IDC_NAME));
    EXPECT_FALSE(dlg.GetDlgItemAs<CEdit>(IDC_NAME)->IsMultiLine());
    EXPECT_NE(nullptr, dlg.GetDlgItemAs<CComboBox>(IDC_KIND));
    EXPECT_NE(nullptr, dlg.GetDlgItemAs<CButton>(IDC_URGENT));
    EXPECT_NE(nullptr, dlg.GetDlgItemAs<CListBox>(IDC_LIST));
    EXPECT_NE(nullptr, dlg.GetDlgItemAs<QGroupBox>(IDC_GROUP));
    EXPECT_EQ(nullptr, dlg.GetDlgItemAs<CEdit>(IDC_KIND)); // a combo is not an edit
    EXPECT_EQ(nullptr, dlg.GetDlgItem(4242));
    EXPECT_EQ(dlg.GetDlgItem(IDC_NAME), dlg.findChild<QWidget*>(QStringLiteral("IDC_NAME")));
    EXPECT_EQ(IDC_NAME, GetDlgCtrlID(dlg.GetDlgItem(IDC_NAME)));
    EXPECT_TRUE(dlg.GetDlgItemAs<CButton>(IDOK)->IsDefault());
    EXPECT_EQ(IDOK, dlg.GetDefID());
    // The static's mnemonic marker is not shown, but the text is kept as given.
    auto* nameLabel = dlg.findChildren<CStatic*>().first();
    EXPECT_EQ(QStringLiteral("Name:"), nameLabel->text());
    EXPECT_STREQ("&Name:", nameLabel->GetWindowText());
}

TEST(CDialog, HiddenAndDisabledStylesApply)
{
    CDialog dlg(ReasonPanelTemplate());
    EXPECT_TRUE(IsWindowHidden(dlg.GetDlgItem(IDC_PERMANENT)));
    EXPECT_FALSE(IsWindowHidden(dlg.GetDlgItem(IDC_DELETE_STUDIES)));
    EXPECT_TRUE(dlg.GetDlgItemAs<CEdit>(IDC_REASON_EDIT)->IsMultiLine());
    EXPECT_TRUE(dlg.GetDlgItemAs<CEdit>(IDC_REASON_EDIT)->WantReturn());
    EXPECT_TRUE(dlg.GetDlgItemAs<CComboBox>(IDC_REASONS)->IsSorted());

    DialogTemplate tpl = ReasonPanelTemplate();
    tpl.Find(IDOK)->style |= WS_DISABLED;
    CDialog disabled(tpl);
    EXPECT_FALSE(disabled.GetDlgItem(IDOK)->isEnabled());
}

TEST(CDialog, ModalScriptTypesAndPressesOk)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        DialogDriver d(dlg);
        EXPECT_EQ(1, static_cast<FormDlg&>(dlg).m_initCount); // OnInitDialog ran before the script
        d.Type(IDC_NAME, QStringLiteral("Müller 東京 🙂"));
        d.Check(IDC_URGENT);
        d.Choose(IDC_KIND, QStringLiteral("MR"));
        d.ReplaceText(IDC_CITY, QStringLiteral("Genève"));
        d.Click(IDC_RADIO_B);
        d.Screenshot("platform_sample_form");
        d.Click(IDOK);
    });
    FormDlg dlg;
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(IDOK, dlg.GetModalResult());
    EXPECT_STREQ("Müller 東京 🙂", dlg.m_name);
    EXPECT_EQ(BST_CHECKED, dlg.m_urgent);
    EXPECT_EQ(1, dlg.m_kind);
    EXPECT_STREQ("Genève", dlg.m_city);
    EXPECT_EQ(1, dlg.m_priority);
    EXPECT_EQ(1, dlg.m_initCount);
    ASSERT_EQ(1u, user.Dialogs().size());
    EXPECT_STREQ("Sample Form", user.Dialogs()[0].caption);
    EXPECT_EQ(IDOK, user.Dialogs()[0].result);
    EXPECT_TRUE(user.Messages().empty());
}

TEST(CDialog, CancelReturnsTwoAndKeepsMembers)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        DialogDriver d(dlg);
        d.Type(IDC_NAME, QStringLiteral("typed"));
        d.Click(IDCANCEL);
    });
    FormDlg dlg;
    dlg.m_name = "before";
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_STREQ("before", dlg.m_name);
}

TEST(CDialog, EscapeCancelsAndEnterPressesTheDefaultButton)
{
    {
        ScriptedUser user;
        user.OnNextDialog([](CDialog& dlg) {
            DialogDriver d(dlg);
            d.Type(IDC_NAME, QStringLiteral("x"));
            d.PressEscape();
        });
        FormDlg dlg;
        EXPECT_EQ(IDCANCEL, dlg.DoModal());
    }
    {
        ScriptedUser user;
        user.OnNextDialog([](CDialog& dlg) {
            DialogDriver d(dlg);
            d.Type(IDC_NAME, QStringLiteral("Enter\n")); // Enter in a single-line edit
        });
        FormDlg dlg;
        EXPECT_EQ(IDOK, dlg.DoModal());
        EXPECT_STREQ("Enter", dlg.m_name);
    }
}

TEST(CDialog, EnterInAMultiLineEditWithWantReturnInsertsALineBreak)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        DialogDriver d(dlg);
        d.Type(IDC_REASON_EDIT, QStringLiteral("one\ntwo"));
        EXPECT_FALSE(dlg.HasEnded());
        EXPECT_STREQ("one\ntwo", d.Text(IDC_REASON_EDIT));
        d.Click(IDOK);
    });
    CDialog dlg(ReasonPanelTemplate());
    EXPECT_EQ(IDOK, dlg.DoModal());
}

TEST(CDialog, EnterInAMultiLineEditWithoutWantReturnPressesOk)
{
    DialogTemplate tpl = ReasonPanelTemplate();
    tpl.Find(IDC_REASON_EDIT)->style &= ~ES_WANTRETURN;
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        DialogDriver d(dlg);
        d.Type(IDC_REASON_EDIT, QStringLiteral("one\n"));
    });
    CDialog dlg(tpl);
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_STREQ("one", dlg.GetDlgItemText(IDC_REASON_EDIT));
}

TEST(CDialog, FiftyCharactersAreAcceptedFiftyOneRefusedWithTheLimitMessage)
{
    const QString fifty = repeat(QStringLiteral("ж"), 50); // 100 bytes, 50 characters
    {
        ScriptedUser user;
        FormDlg dlg;
        user.OnNextDialog([&](CDialog& d) {
            // Set programmatically: typing would already be limited by DDV_MaxChars.
            d.SetDlgItemText(IDC_NAME, fromQString(fifty));
            DialogDriver(d).Click(IDOK);
        });
        EXPECT_EQ(IDOK, dlg.DoModal());
        EXPECT_EQ(fifty, toQString(dlg.m_name));
        EXPECT_TRUE(user.Messages().empty());
    }
    {
        ScriptedUser user;
        user.ExpectMessage(kLimit50, IDOK);
        FormDlg dlg;
        user.OnNextDialog([&](CDialog& d) {
            d.SetDlgItemText(IDC_NAME, fromQString(fifty + QStringLiteral("!")));
            DialogDriver(d).Click(IDOK);
            // Refused: still open, text as typed, focus back on the field.
            EXPECT_FALSE(d.HasEnded());
            EXPECT_EQ(fifty + QStringLiteral("!"), toQString(d.GetDlgItemText(IDC_NAME)));
            EXPECT_TRUE(d.GetDlgItem(IDC_NAME)->hasFocus());
            EXPECT_EQ(51, d.GetDlgItemAs<CEdit>(IDC_NAME)->lineEdit()->selectedText().size());
            DialogDriver(d).Click(IDCANCEL);
        });
        EXPECT_EQ(IDCANCEL, dlg.DoModal());
        ASSERT_EQ(1u, user.Messages().size());
        EXPECT_STREQ(kLimit50, user.Messages()[0].text);
        EXPECT_EQ(MB_ICONEXCLAMATION, user.Messages()[0].type);
    }
}

TEST(CDialog, MaxCharsAlsoLimitsTyping)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& d) {
        DialogDriver dd(d);
        dd.Type(IDC_NAME, repeat(QStringLiteral("a"), 49) + QStringLiteral("🙂xyz"));
        EXPECT_EQ(repeat(QStringLiteral("a"), 49) + QStringLiteral("🙂"), toQString(dd.Text(IDC_NAME)));
        dd.Click(IDOK);
    });
    FormDlg dlg;
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(50, CodePointCount(dlg.m_name));
}

TEST(CDialog, UpdateDataBothWaysForCheckBoxes)
{
    FormDlg dlg;
    dlg.EnsureInitDialog();
    dlg.m_urgent = BST_CHECKED;
    ASSERT_TRUE(dlg.UpdateData(FALSE));
    EXPECT_EQ(BST_CHECKED, dlg.GetDlgItemAs<CButton>(IDC_URGENT)->GetCheck());
    dlg.GetDlgItemAs<CButton>(IDC_URGENT)->SetCheck(BST_UNCHECKED);
    ASSERT_TRUE(dlg.UpdateData(TRUE));
    EXPECT_EQ(BST_UNCHECKED, dlg.m_urgent);
    EXPECT_EQ(BST_UNCHECKED, static_cast<int>(dlg.IsDlgButtonChecked(IDC_URGENT)));
}

TEST(CDialog, OnInitDialogLoadsMembersIntoControls)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& d) {
        DialogDriver dd(d);
        EXPECT_STREQ("Anna", dd.Text(IDC_NAME));
        EXPECT_STREQ("US", dd.Text(IDC_KIND));
        EXPECT_STREQ("Berlin", dd.Text(IDC_CITY));
        EXPECT_EQ(BST_CHECKED, d.GetDlgItemAs<CButton>(IDC_RADIO_C)->GetCheck());
        dd.Click(IDOK);
    });
    FormDlg dlg;
    dlg.m_name = "Anna";
    dlg.m_kind = 2;
    dlg.m_city = "ber"; // loading selects by prefix, ignoring case
    dlg.m_priority = 2;
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_STREQ("Berlin", dlg.m_city);
}

TEST(CDialog, LoadingAnEmptyComboStringSelectsTheFirstItem)
{
    // An empty prefix matches every item, so the first one is selected.
    FormDlg dlg;
    dlg.EnsureInitDialog();
    EXPECT_EQ(0, dlg.GetDlgItemAs<CComboBox>(IDC_CITY)->GetCurSel());
    EXPECT_STREQ("Berlin", dlg.GetDlgItemText(IDC_CITY));
}

TEST(CDialog, RadioButtonsOfAGroupExcludeEachOther)
{
    FormDlg dlg;
    dlg.show();
    ASSERT_TRUE(ClickButton(dlg.GetDlgItem(IDC_RADIO_A)));
    ASSERT_TRUE(ClickButton(dlg.GetDlgItem(IDC_RADIO_C)));
    EXPECT_EQ(BST_UNCHECKED, dlg.GetDlgItemAs<CButton>(IDC_RADIO_A)->GetCheck());
    EXPECT_EQ(BST_CHECKED, dlg.GetDlgItemAs<CButton>(IDC_RADIO_C)->GetCheck());
    dlg.hide();
}

TEST(CDialog, OtherButtonsReportTheirCommand)
{
    FormDlg dlg;
    dlg.show();
    QSignalSpy spy(&dlg, &CDialog::command);
    ASSERT_TRUE(ClickButton(dlg.GetDlgItem(IDC_APPLY)));
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(IDC_APPLY, spy.at(0).at(0).toInt());
    EXPECT_FALSE(dlg.HasEnded());
    dlg.hide();
}

namespace {

class EndsInInit : public CDialog
{
public:
    EndsInInit() : CDialog(FormTemplate()) {}
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        EndDialog(IDCANCEL);
        return TRUE;
    }
};

class ConfirmingDlg : public CDialog
{
public:
    ConfirmingDlg() : CDialog(FormTemplate()) {}
    void OnOK() override
    {
        if (AfxMessageBox("Save the changes?", MB_YESNO) == IDYES)
            CDialog::OnOK();
        else
            EndDialog(IDCANCEL);
    }
};

} // namespace

TEST(CDialog, EndingInOnInitDialogNeverShowsTheDialog)
{
    ScriptedUser user; // no script: a shown dialog would fail the test
    EndsInInit dlg;
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_FALSE(dlg.isVisible());
}

TEST(CDialog, MessageBoxesInsideADialogScript)
{
    ScriptedUser user;
    user.ExpectMessage("Save the changes?", IDNO);
    user.OnNextDialog([](CDialog& d) { DialogDriver(d).Click(IDOK); });
    ConfirmingDlg dlg;
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    ASSERT_EQ(1u, user.Messages().size());
    EXPECT_EQ(IDNO, user.Messages()[0].answer);
    EXPECT_EQ(static_cast<UINT>(MB_YESNO), user.Messages()[0].type);
}

TEST(CDialog, AScriptThatDoesNotEndTheDialogFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.OnNextDialog([](CDialog&) {});
            FormDlg dlg;
            EXPECT_EQ(IDCANCEL, dlg.DoModal());
        },
        "returned without ending the dialog");
}

TEST(CDialog, AnUnscriptedDialogFailsTheTestAndIsCancelled)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            FormDlg dlg;
            EXPECT_EQ(IDCANCEL, dlg.DoModal());
        },
        "A dialog nobody scripted was opened: \"Sample Form\"");
}

TEST(CDialog, ClickingADisabledButtonFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.OnNextDialog([](CDialog& d) {
                d.GetDlgItem(IDOK)->setEnabled(false);
                DialogDriver dd(d);
                EXPECT_FALSE(dd.Click(IDOK));
                EXPECT_FALSE(d.HasEnded());
                dd.Click(IDCANCEL);
            });
            FormDlg dlg;
            EXPECT_EQ(IDCANCEL, dlg.DoModal());
        },
        "is disabled, a user cannot reach it");
}

TEST(CDialog, ChildDialogSitsInsideItsParent)
{
    QWidget host;
    host.resize(600, 400);
    CDialog page(ReasonPanelTemplate());
    ASSERT_TRUE(page.Create(&host));
    EXPECT_TRUE(page.IsChildDialog());
    EXPECT_FALSE(page.isWindow());
    EXPECT_EQ(&host, page.parentWidget());
    page.MoveWindow(CRect(10, 20, 310, 220));
    CRect client;
    page.GetClientRect(client);
    EXPECT_EQ(CRect(0, 0, 300, 200), client);
    EXPECT_EQ(QRect(10, 20, 300, 200), page.geometry());
}

TEST(CDialog, ReplaceDlgItemSwapsThePlaceholder)
{
    FormDlg dlg;
    const QRect where = dlg.GetDlgItem(IDC_PLACEHOLDER)->geometry();
    auto* real = new QPushButton(QStringLiteral("real"));
    EXPECT_EQ(real, dlg.ReplaceDlgItem(IDC_PLACEHOLDER, real));
    EXPECT_EQ(real, dlg.GetDlgItem(IDC_PLACEHOLDER));
    EXPECT_EQ(where, real->geometry());
    EXPECT_EQ(QStringLiteral("IDC_PLACEHOLDER"), real->objectName());
    EXPECT_EQ(&dlg, real->parentWidget());
}

TEST(CDialog, TemplateByIdComesFromTheCurrentModule)
{
    EXPECT_THROW(CDialog(9999), std::logic_error);
}

namespace {

// Dialog code calls the window functions unqualified, as it always has.
class WindowCallsDlg : public CDialog
{
public:
    WindowCallsDlg() : CDialog(ReasonPanelTemplate()) {}
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        SetWindowText("Cancel Exam");
        SetWindowText(GetDlgItem(IDC_NOTE), "Reason for Cancellation");
        ShowWindow(GetDlgItem(IDC_DELETE_STUDIES), SW_HIDE);
        EnableWindow(GetDlgItem(IDOK), FALSE);
        return TRUE;
    }
};

} // namespace

TEST(CDialog, WindowFunctionsFromDialogCode)
{
    WindowCallsDlg dlg;
    dlg.EnsureInitDialog();
    EXPECT_STREQ("Cancel Exam", dlg.GetWindowText());
    EXPECT_STREQ("Reason for Cancellation", CDialog::GetWindowText(dlg.GetDlgItem(IDC_NOTE)));
    EXPECT_TRUE(IsWindowHidden(dlg.GetDlgItem(IDC_DELETE_STUDIES)));
    EXPECT_FALSE(IsWindowEnabled(dlg.GetDlgItem(IDOK)));
}

TEST(DialogDriver, FindsControlsInChildWindowsByTheirId)
{
    ScriptedUser user;
    user.OnNextDialog([](CDialog& dlg) {
        // A footer band holding the dialog's Cancel button, as framed dialogs have.
        auto* footer = new QWidget(&dlg);
        auto* cancel = new QPushButton(QStringLiteral("Cancel"), footer);
        SetDlgCtrlID(cancel, 7002);
        QObject::connect(cancel, &QPushButton::clicked, &dlg, [&dlg] { dlg.EndDialog(IDCANCEL); });
        footer->show();
        EXPECT_EQ(nullptr, dlg.GetDlgItem(7002));
        DialogDriver d(dlg);
        EXPECT_EQ(cancel, d.Item(7002));
        d.Click(7002);
    });
    CDialog dlg(ReasonPanelTemplate());
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
}
