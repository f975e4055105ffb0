#pragma once

// What the patient dialog tests share: a site archive installed into the
// session (NORTH, SOUTH, Enterprise and the federated FED; "admin" holds
// every right), the scripted user, log capture, and a form that acts on a
// running patient dialog as its user would, a method per page.

#include <archivefixture.h>

#include "dialogdriver.h"
#include "logcapture.h"
#include "scripteduser.h"

#include "cstring.h"
#include "patientdetailrecord.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace TavCreator {
class PatientDlgCreator;
}

class CLinkPatientImpl;
class PatientForm;
class CreateLinkedPatientsImpl;
class PatientDlg;
class PatientDemographicsImpl;

class PatientFixture : public ArchiveFixture
{
protected:
    void SetUp() override;
    void TearDown() override;

    // A patient in the archive; returns its key.
    std::string Patient(const std::string& orgKey, const std::string& mrn, const std::string& last = "Doe",
                        const std::string& first = "John", const std::string& dob = "19700101",
                        const std::string& sex = "M");
    // The patient as the archive holds it now.
    PatientDetailRecord Read(const std::string& key);
    // Runs the patient dialog for key (empty: create) through a creator (the
    // caller's, or one of its own), with script as the user; a script that
    // leaves the dialog open ends with Cancel. firstTab is clicked first.
    int RunDialog(const std::string& key, const std::function<void(PatientForm&)>& script,
                  TavCreator::PatientDlgCreator* creator = nullptr, const char* firstTab = nullptr);
    // Logs in as userName, given these rights in the organizations listed.
    void LogInAs(const std::string& userName);
    void Grant(const std::string& userName, const std::vector<std::string>& createIn,
               const std::vector<std::string>& linkIn);

    std::unique_ptr<ScriptedUser> user;
    std::unique_ptr<LogCapture> log;
};

// Acts on a running patient dialog.
class PatientForm
{
public:
    explicit PatientForm(CDialog& dlg);

    PatientDlg& Dialog() const { return *m_dlg; }
    DialogDriver& Driver() { return m_driver; }
    PatientDemographicsImpl& Demographics() const;
    CLinkPatientImpl& Links() const;
    CreateLinkedPatientsImpl& CreateLinked() const;

    // Clicks the tab that reads name.
    bool Tab(const char* name);
    CString ActiveTab() const;
    bool Type(int id, const QString& text) { return m_driver.ReplaceText(id, text); }
    bool Choose(int id, const QString& text) { return m_driver.Choose(id, text); }
    CString Text(int id) const { return m_driver.Text(id); }
    bool OKEnabled() const;
    bool ClickOK() { return m_driver.Click(IDOK); }
    bool ClickCancel() { return m_driver.Click(IDCANCEL); }
    // The widget holding the keyboard focus is id's control (or inside it).
    bool HasFocus(int id) const;
    // The header's lines.
    std::vector<CString> HeaderLines() const;
    bool Screenshot(const char* name) const { return m_driver.Screenshot(name); }

    // Links page: clicks a row's MRN cell and types into the editor.
    bool EditLinkedMRN(int row, const QString& text);
    CString LinkedCell(int row, int column) const;
    int LinkedRows() const;
    bool SelectLinkedRow(int row);

private:
    PatientDlg* m_dlg;
    DialogDriver m_driver;
};
