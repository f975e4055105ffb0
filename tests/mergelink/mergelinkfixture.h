#pragma once

// What the merge and link tests share: an archive installed into the
// session, the scripted user, log capture, in-memory patient records for the
// panel tests, and a form that acts on a running merge dialog as its user.

#include <archivefixture.h>

#include "logcapture.h"
#include "scripteduser.h"

#include "cstring.h"
#include "patientdetailrecord.h"

#include <ace/SString.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class CDialog;
class LinkedMergeListCtrl;
class ListCtrlEx;
class MergePatientsDlg;
class MergePatientsDlgImpl;

class MergeLinkFixture : public ArchiveFixture
{
protected:
    void SetUp() override;
    void TearDown() override;

    // A patient record as a service would hand it over.
    static std::unique_ptr<PatientDetailRecord> Record(const std::string& key, const std::string& mrn,
                                                       const std::string& orgId, const std::string& last = "Doe",
                                                       const std::string& first = "John");

    // A patient in the archive; returns its key.
    std::string Patient(const std::string& org, const std::string& mrn, const std::string& last,
                        const std::string& first, const std::string& dob = "19700101",
                        const std::string& gid = std::string(), const std::string& sex = "M");

    // (event code, record key) of every audit row, oldest first.
    std::vector<std::pair<int, std::string>> AuditRows();
    // Same, code 51 only.
    std::vector<std::string> ShownAudits();

    // Makes userName (added with these rights in the organizations given)
    // the session's user.
    void LogInAs(const std::string& userName);

    std::unique_ptr<ScriptedUser> user;
    std::unique_ptr<LogCapture> log;
};

// Owns in-memory linked-record lists the way a creator does.
struct RecordLists
{
    std::vector<PatientDetailRecord*> first;
    std::vector<PatientDetailRecord*> second;
    std::vector<ACE_CString> blocked;
    ~RecordLists();
    PatientDetailRecord* AddFirst(std::unique_ptr<PatientDetailRecord> r)
    {
        first.push_back(r.release());
        return first.back();
    }
    PatientDetailRecord* AddSecond(std::unique_ptr<PatientDetailRecord> r)
    {
        second.push_back(r.release());
        return second.back();
    }
};

// Acts on a running merge dialog as its user would: real mouse clicks on the
// lists' cells, the footer's buttons.
class MergeForm
{
public:
    explicit MergeForm(CDialog& dlg);

    MergePatientsDlg& Dialog() const { return *m_dlg; }
    MergePatientsDlgImpl& Panel() const;
    ListCtrlEx& HeaderList() const;
    ListCtrlEx& FieldList() const;
    ListCtrlEx& AddressList() const;
    LinkedMergeListCtrl& LinkedList() const;

    static void ClickCell(ListCtrlEx& list, int row, int column);
    void SelectAll(int column) { ClickCell(HeaderList(), 1, column); }
    void ChooseField(int row, int column) { ClickCell(FieldList(), row, column); }
    void ChooseAddress(int column) { ClickCell(AddressList(), 0, column); }
    void ChooseLinked(int row, int column);
    void ToggleLinked(int row);

    bool MergeEnabled() const;
    bool ClickMerge();
    bool ClickCancel();

    static CString Text(const ListCtrlEx& list, int row, int column);
    static bool IsRadio(const ListCtrlEx& list, int row, int column);
    static bool Checked(const ListCtrlEx& list, int row, int column);

private:
    MergePatientsDlg* m_dlg;
};

// What a merge dialog run leaves: its end code and the panel's results
// (pairings as (merged away, kept) keys).
struct MergeOutcome
{
    int result = -1;
    PatientDetailRecord target;
    std::string source;
    std::vector<std::pair<std::string, std::string>> linked;
};

// Runs a merge dialog over the lists, built as the creator builds it, with
// the script acting as the user.
MergeOutcome RunMergeDialog(RecordLists& lists, const std::function<void(MergeForm&)>& script, ScriptedUser& user,
                            const char* screenshot = nullptr);
