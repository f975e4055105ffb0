// The workstation's commands. Each asks its reason through the module's
// creator and then performs the change on the archive through the session's
// services, keeping the reason. Add a dialog's command by adding an entry.
#include "workstationaction.h"

#include "boundary/bravikapp.h"
#include "boundary/deleteexamparamdlgcreator.h"
#include "boundary/examdlgcreator.h"
#include "boundary/detachstudyparamdlgcreator.h"
#include "boundary/patientdeleteparamdlgcreator.h"
#include "boundary/patientdlgcreator.h"

#include "examdataset.h"
#include "examservice.h"
#include "messagebox.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "session.h"
#include "studyrecord.h"

#include <QString>

#include <exception>

namespace {

const char* const kCaption = "Bravik Workstation";

QString Q(const ACE_CString& s) { return QString::fromUtf8(s.c_str()); }

void ShowError(QWidget* parent, const QString& text)
{
    MessageBox(parent, text.toUtf8().constData(), kCaption, MB_OK | MB_ICONSTOP);
}

// Runs one archive operation; a refusal or a fault is shown and false returned.
template <class Call>
bool Perform(QWidget* parent, const QString& what, Call call)
{
    try {
        const int result = call();
        if (result == 0)
            return true;
        ShowError(parent, QStringLiteral("%1 failed: the archive refused it (result %2).").arg(what).arg(result));
    } catch (const std::exception& e) {
        ShowError(parent, QStringLiteral("%1 failed: %2").arg(what, QString::fromUtf8(e.what())));
    }
    return false;
}

PatientManagementService* Patients()
{
    ServiceRegistry* r = Session::ServiceInstance();
    return r ? r->GetPatientManagementService() : nullptr;
}

ExamService* Exams()
{
    ServiceRegistry* r = Session::ServiceInstance();
    return r ? r->GetExamService() : nullptr;
}

QString ExamTitle(const ExamDataSet& exam)
{
    QString title = Q(exam.GetExamCode());
    if (!exam.GetDescription().is_empty())
        title += (title.isEmpty() ? QString() : QStringLiteral(" ")) + Q(exam.GetDescription());
    return title.isEmpty() ? QStringLiteral("Exam") : title;
}

void DeletePatient(ActionContext& c)
{
    const PatientDetailRecord& p = *c.patient;
    const QString name = Q(p.GetPatientName());
    TavCreator::PatientDeleteParamDlgCreator creator;
    // The archive has no separate permanent deletion: the choice is not offered.
    if (creator.DisplayModal(name.toUtf8().constData(), p.GetPatientID().c_str(), false, c.parent) != 1)
        return;
    const ACE_CString reason = creator.GetReason();
    PatientManagementService* s = Patients();
    if (!s || !Perform(c.parent, QStringLiteral("Deleting the patient"), [&] {
            return s->DeletePatient(p.GetPatientKey(), p.GetOrganizationKey(), reason);
        }))
        return;
    const QString done = QStringLiteral("Deleted patient %1 (MRN %2). Reason: %3").arg(name, Q(p.GetPatientID()), Q(reason));
    // The search after the change replaces the records the selection pointed at.
    c.refresh();
    c.status(done);
}

// New Patient... (no key) and Edit Patient... (the selected patient's key).
void EditPatient(ActionContext& c, bool create)
{
    TavCreator::PatientDlgCreator creator;
    const char* key = create || !c.patient ? "" : c.patient->GetPatientKey().c_str();
    if (creator.DisplayPatientDlg(key, c.parent) != 1 || !creator.GetpPatientData())
        return;
    const PatientDetailRecord saved = *creator.GetpPatientData();
    QString done = QStringLiteral("%1 patient %2 (MRN %3, %4).")
                       .arg(create ? QStringLiteral("Created") : QStringLiteral("Saved"), Q(saved.GetPatientName()),
                            Q(saved.GetPatientID()), Q(saved.GetOrganizationID()));
    if (creator.GetHasRemovedLink())
        done += QStringLiteral(" A link was removed.");
    c.showPatient(saved);
    c.status(done);
}

void UnlinkPatient(ActionContext& c)
{
    const PatientDetailRecord p = *c.patient;
    const QString name = Q(p.GetPatientName());
    if (p.GetLinkID().is_empty()) {
        c.status(QStringLiteral("Patient %1 (MRN %2) is not linked to another record.").arg(name, Q(p.GetPatientID())));
        return;
    }
    const CString question = CBravikApp::GetUnlinkPatientConfirmationMsg();
    if (MessageBox(c.parent, question.GetString(), kCaption, MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    PatientManagementService* s = Patients();
    if (!s || !Perform(c.parent, QStringLiteral("Removing the link"),
                       [&] { return s->UnLinkPatient(p.GetPatientKey(), p.GetOrganizationKey()); }))
        return;
    c.refresh();
    c.status(QStringLiteral("Removed the link of patient %1 (MRN %2, %3).")
                 .arg(name, Q(p.GetPatientID()), Q(p.GetOrganizationID())));
}

// The exam dialog saves the exam itself; the list then shows it selected.
void ShowSavedExam(ActionContext& c, const TavCreator::ExamDlgCreator& creator, const QString& verb)
{
    const ExamDataSet* saved = creator.GetExamDataSet();
    c.refresh();
    if (!saved)
        return;
    if (c.selectExam)
        c.selectExam(saved->GetKey().c_str());
    c.status(QStringLiteral("%1 exam %2").arg(verb, Q(saved->GetAccessionNumber())));
}

void NewExam(ActionContext& c)
{
    TavCreator::ExamDlgCreator creator;
    if (creator.DisplayExamDlg(c.patient->GetPatientKey().c_str(), "", c.parent) == 1)
        ShowSavedExam(c, creator, QStringLiteral("Created"));
}

void EditExam(ActionContext& c)
{
    TavCreator::ExamDlgCreator creator;
    const ACE_CString patientKey = c.exam->GetPatientKey();
    const ACE_CString examKey = c.exam->GetKey();
    if (creator.DisplayExamDlg(patientKey.c_str(), examKey.c_str(), c.parent) == 1)
        ShowSavedExam(c, creator, QStringLiteral("Saved"));
    else
        c.refresh(); // an unlink on the Links tab changes the list even when cancelled
}

void DeleteOrCancelExam(ActionContext& c, TavCreator::eDLGCODE mode)
{
    const ExamDataSet& e = *c.exam;
    const bool cancel = mode == TavCreator::CANCEL_EXAM;
    TavCreator::DeleteExamParamDlgCreator creator;
    if (creator.DisplayModal(ExamTitle(e).toUtf8().constData(), e.GetAccessionNumber().c_str(), mode, !cancel, false,
                             c.parent) != 1)
        return;
    const ACE_CString reason = creator.GetReason();
    ExamService* s = Exams();
    if (!s)
        return;
    QString done;
    if (cancel) {
        if (!Perform(c.parent, QStringLiteral("Cancelling the exam"),
                     [&] { return s->CancelExam(e.GetKey(), e.GetOrganizationKey(), reason); }))
            return;
        done = QStringLiteral("Cancelled exam %1. Reason: %2").arg(Q(e.GetAccessionNumber()), Q(reason));
    } else {
        const bool withStudies = creator.GetDeleteStudiesFlg() != 0;
        if (!Perform(c.parent, QStringLiteral("Deleting the exam"),
                     [&] { return s->DeleteExam(e.GetKey(), e.GetOrganizationKey(), reason, withStudies); }))
            return;
        done = QStringLiteral("Deleted exam %1%2. Reason: %3")
                   .arg(Q(e.GetAccessionNumber()), withStudies ? QStringLiteral(" with its studies") : QString(),
                        Q(reason));
    }
    c.refresh();
    c.status(done);
}

void DetachStudy(ActionContext& c)
{
    const StudyRecord& st = *c.study;
    const QString header = st.GetDescription().is_empty() ? QStringLiteral("Study") : Q(st.GetDescription());
    TavCreator::DetachStudyParamDlgCreator creator;
    const char* accession = c.exam ? c.exam->GetAccessionNumber().c_str() : "";
    if (creator.DisplayModal(header.toUtf8().constData(), accession, c.parent) != 1)
        return;
    const ACE_CString reason = creator.GetReason();
    ExamService* s = Exams();
    if (!s || !Perform(c.parent, QStringLiteral("Detaching the study"),
                       [&] { return s->DetachStudy(st.GetStudyKey(), reason); }))
        return;
    const QString done =
        QStringLiteral("Detached study %1 from exam %2. Reason: %3").arg(header, QString::fromUtf8(accession), Q(reason));
    c.refresh();
    c.status(done);
}

} // namespace

QString RightRefusal(const WorkstationAction& action, const PatientDetailRecord* patient)
{
    if (!action.right || !patient)
        return QString();
    const ACE_CString& org = patient->GetOrganizationID();
    if (Session::Instance().GetUserRights().Has(*action.right, org))
        return QString();
    const char* what = "do this";
    switch (*action.right) {
    case UserRights::eLINK_PATIENT: what = "link patients"; break;
    case UserRights::eMERGE_PATIENT: what = "merge patients"; break;
    case UserRights::eCREATE_PATIENT: what = "create, edit or delete patients"; break;
    case UserRights::eEDIT_EXAM: what = "create or edit exams"; break;
    case UserRights::eDELETE_EXAM: what = "delete or cancel exams"; break;
    case UserRights::eDETACH_STUDY: what = "detach studies"; break;
    }
    return QStringLiteral("You may not %1 in organization %2.").arg(QString::fromUtf8(what), Q(org));
}

std::vector<WorkstationAction> WorkstationActions()
{
    using Needs = WorkstationAction::Needs;
    return {
        {QStringLiteral("newPatient"), QStringLiteral("&Patient"), QStringLiteral("&New Patient..."),
         QKeySequence(Qt::CTRL | Qt::Key_N), Needs::Nothing, [](ActionContext& c) { EditPatient(c, true); }},
        {QStringLiteral("editPatient"), QStringLiteral("&Patient"), QStringLiteral("&Edit Patient..."),
         QKeySequence(), Needs::Patient, [](ActionContext& c) { EditPatient(c, false); }, UserRights::eCREATE_PATIENT},
        {QStringLiteral("unlinkPatient"), QStringLiteral("&Patient"), QStringLiteral("&Unlink Patient..."),
         QKeySequence(), Needs::Patient, UnlinkPatient, UserRights::eLINK_PATIENT},
        {QStringLiteral("deletePatient"), QStringLiteral("&Patient"), QStringLiteral("&Delete Patient..."),
         QKeySequence(Qt::CTRL | Qt::Key_Delete), Needs::Patient, DeletePatient, UserRights::eCREATE_PATIENT},
        {QStringLiteral("newExam"), QStringLiteral("&Exam"), QStringLiteral("&New Exam..."),
         QKeySequence(Qt::CTRL | Qt::Key_E), Needs::Patient, NewExam, UserRights::eEDIT_EXAM},
        // Enter or a double click on an exam runs it too (the exam list's activation).
        {QStringLiteral("editExam"), QStringLiteral("&Exam"), QStringLiteral("&Edit Exam..."), QKeySequence(),
         Needs::Exam, EditExam, UserRights::eEDIT_EXAM},
        {QStringLiteral("deleteExam"), QStringLiteral("&Exam"), QStringLiteral("&Delete Exam..."),
         QKeySequence(Qt::SHIFT | Qt::Key_Delete), Needs::Exam,
         [](ActionContext& c) { DeleteOrCancelExam(c, TavCreator::DELETE_EXAM); }, UserRights::eDELETE_EXAM},
        {QStringLiteral("cancelExam"), QStringLiteral("&Exam"), QStringLiteral("&Cancel Exam..."),
         QKeySequence(Qt::CTRL | Qt::Key_K), Needs::Exam,
         [](ActionContext& c) { DeleteOrCancelExam(c, TavCreator::CANCEL_EXAM); }, UserRights::eDELETE_EXAM},
        {QStringLiteral("detachStudy"), QStringLiteral("&Study"), QStringLiteral("De&tach Study..."),
         QKeySequence(Qt::CTRL | Qt::Key_T), Needs::Study, DetachStudy, UserRights::eDETACH_STUDY},
    };
}
