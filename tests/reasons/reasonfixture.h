#pragma once

// What the reason dialog tests share: a dictionary service holding the four
// reason lists a test gives it, installed in the session; the site switches
// back at their defaults; and a driver for the framed reason dialogs (panel
// controls by id, footer buttons, header texts).

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/resource.h"
#include "reasons/examdeleteparamdlgimpl.h"
#include "reasons/header.h"
#include "reasons/reasonparamdlg.h"

#include "dialogdriver.h"
#include "scopedservices.h"
#include "scripteduser.h"
#include "stubservices.h"
#include "uiinput.h"

#include "ccombobox.h"
#include "preferences.h"
#include "sitepolicy.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

class ReasonDictionaries : public StubDictionaryService
{
public:
    ~ReasonDictionaries() override;

    // Each list keeps the order given: that is the dictionary's order.
    void SetDetach(const std::vector<std::string>& descriptions) { fill(m_detach, descriptions, "DET"); }
    void SetDeleteExam(const std::vector<std::string>& descriptions) { fill(m_deleteExam, descriptions, "DEX"); }
    void SetCancelExam(const std::vector<std::string>& descriptions) { fill(m_cancelExam, descriptions, "CEX"); }
    void SetDeletePatient(const std::vector<std::string>& descriptions) { fill(m_deletePatient, descriptions, "DPT"); }

    const std::vector<DictionaryRecord*>& GetDeleteExamReasonDictionary() override { return m_deleteExam; }
    const std::vector<DictionaryRecord*>& GetCancelExamReasonDictionary() override { return m_cancelExam; }
    const std::vector<DictionaryRecord*>& GetDeletePatientsReasonDictionary() override { return m_deletePatient; }
    const std::vector<DictionaryRecord*>& GetDetachStudyReasonDictionary() override { return m_detach; }

private:
    void fill(std::vector<DictionaryRecord*>& list, const std::vector<std::string>& descriptions, const char* prefix);

    std::vector<std::unique_ptr<DictionaryRecord>> m_owned;
    std::vector<DictionaryRecord*> m_detach;
    std::vector<DictionaryRecord*> m_deleteExam;
    std::vector<DictionaryRecord*> m_cancelExam;
    std::vector<DictionaryRecord*> m_deletePatient;
};

class ReasonTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    void SetStudyDeletionEnabled(bool on);

    ReasonDictionaries m_dictionaries;
    std::unique_ptr<ScopedServices> m_services;
};

// Acts on a running reason dialog as its user.
class ReasonForm
{
public:
    explicit ReasonForm(CDialog& dlg);

    ReasonParamDlg& Dialog() const { return *m_dlg; }
    ExamDeleteParamDlgImpl& Panel() const { return *m_dlg->GetPanel(); }
    DialogDriver& PanelDriver() { return m_panel; }

    CString Caption() const { return m_dlg->GetWindowText(); }
    CString FirstHeaderText() const { return m_dlg->GetHeader()->GetFirstText(); }
    CString SecondHeaderText() const { return m_dlg->GetHeader()->GetSecondText(); }
    CString OKText() const { return m_dlg->GetFooter()->GetOKButton().GetWindowText(); }
    CString CancelText() const { return m_dlg->GetFooter()->GetCancelButton().GetWindowText(); }
    CString Note() const { return m_panel.Text(IDC_REASON_NOTE); }
    CString ReasonText() const { return m_panel.Text(IDC_REASON_EDIT); }
    std::vector<CString> ListItems() const;
    int ListSelection() const;

    bool IsShown(int id) const { return m_panel.IsShown(id); }
    bool IsEnabled(int id) const { return m_panel.IsEnabled(id); }
    bool IsChecked(int id) const;

    bool TypeReason(const QString& text) { return m_panel.ReplaceText(IDC_REASON_EDIT, text); }
    // Moves the caret to the end of the text first (Ctrl+End), then types.
    bool AppendReason(const QString& text);
    bool Choose(int index) { return m_panel.Choose(IDC_REASON_LIST, index); }
    bool Check(int id, bool on = true) { return m_panel.Check(id, on); }
    bool ClickOK() { return ClickButton(&m_dlg->GetFooter()->GetOKButton()); }
    bool ClickCancel() { return ClickButton(&m_dlg->GetFooter()->GetCancelButton()); }

private:
    ReasonParamDlg* m_dlg;
    DialogDriver m_panel;
};

// The panel's template rectangle of a control, mapped with the dialog units
// of its font (Arial 10 point), as the dialog manager places it.
CRect PanelControlPixels(int x, int y, int cx, int cy);
