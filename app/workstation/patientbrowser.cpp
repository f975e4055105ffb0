#include "patientbrowser.h"

#include "examdataset.h"
#include "examservice.h"
#include "paramutils.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "patientsearchcriteria.h"
#include "session.h"
#include "studyrecord.h"

#include <QDate>
#include <QDateTime>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <exception>

namespace {

QString Q(const ACE_CString& s) { return QString::fromUtf8(s.c_str()); }

QString DateText(const BDate& d)
{
    if (!d.IsValid())
        return QString();
    return QDate(int(d.GetYear()), int(d.GetMonth()), int(d.GetDay())).toString(Qt::ISODate);
}

QString DateTimeText(const BDateTime& dt)
{
    if (!dt.IsValid())
        return QString();
    return QDateTime::fromSecsSinceEpoch(dt.ToInt64()).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

// What the user typed, as the service's wildcard form; a prefix search
// unless the user placed wildcards or quotes.
ACE_CString Pattern(const QString& typed)
{
    QString t = typed.trimmed();
    if (t.isEmpty())
        return ACE_CString();
    if (!t.contains(QLatin1Char('*')) && !t.contains(QLatin1Char('?')) && !t.contains(QLatin1Char('"')))
        t += QLatin1Char('*');
    ACE_CString result;
    ParamUtils::ConvertToWildcardQueryString(t.toUtf8().constData(), result);
    return result;
}

QTreeWidget* MakeList(const QStringList& headers, QWidget* parent, const char* name)
{
    auto* list = new QTreeWidget(parent);
    list->setObjectName(QLatin1String(name));
    list->setHeaderLabels(headers);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setAllColumnsShowFocus(true);
    list->header()->setStretchLastSection(true);
    return list;
}

template <class T>
void Release(std::vector<T*>& raw)
{
    for (T* p : raw)
        delete p;
    raw.clear();
}

} // namespace

PatientBrowser::PatientBrowser(QWidget* parent) : QWidget(parent)
{
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("nameEdit"));
    m_name->setPlaceholderText(QStringLiteral("Last name, first name  (* and ? match anything)"));
    m_name->setClearButtonEnabled(true);
    m_mrn = new QLineEdit(this);
    m_mrn->setObjectName(QStringLiteral("mrnEdit"));
    m_mrn->setPlaceholderText(QStringLiteral("MRN"));
    m_mrn->setClearButtonEnabled(true);
    m_search = new QPushButton(QStringLiteral("&Search"), this);
    m_search->setObjectName(QStringLiteral("searchButton"));
    m_search->setDefault(true);

    auto* nameLabel = new QLabel(QStringLiteral("&Name:"), this);
    nameLabel->setBuddy(m_name);
    auto* mrnLabel = new QLabel(QStringLiteral("&MRN:"), this);
    mrnLabel->setBuddy(m_mrn);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(nameLabel);
    searchRow->addWidget(m_name, 3);
    searchRow->addSpacing(8);
    searchRow->addWidget(mrnLabel);
    searchRow->addWidget(m_mrn, 1);
    searchRow->addWidget(m_search);

    m_patientList = MakeList({QStringLiteral("Patient Name"), QStringLiteral("MRN"), QStringLiteral("Organization"),
                              QStringLiteral("Date of Birth"), QStringLiteral("Sex")},
                             this, "patientList");
    m_examList = MakeList({QStringLiteral("Accession #"), QStringLiteral("Exam Code"), QStringLiteral("Description"),
                           QStringLiteral("Modality"), QStringLiteral("Status"), QStringLiteral("Scheduled")},
                          this, "examList");
    m_studyList = MakeList({QStringLiteral("Study Description"), QStringLiteral("Study Date"),
                            QStringLiteral("Images"), QStringLiteral("Study Instance UID")},
                           this, "studyList");

    m_examsTitle = new QLabel(QStringLiteral("Exams"), this);
    m_studiesTitle = new QLabel(QStringLiteral("Studies"), this);
    auto* examsBox = new QWidget(this);
    auto* examsLayout = new QVBoxLayout(examsBox);
    examsLayout->setContentsMargins(0, 0, 0, 0);
    examsLayout->addWidget(m_examsTitle);
    examsLayout->addWidget(m_examList);
    auto* studiesBox = new QWidget(this);
    auto* studiesLayout = new QVBoxLayout(studiesBox);
    studiesLayout->setContentsMargins(0, 0, 0, 0);
    studiesLayout->addWidget(m_studiesTitle);
    studiesLayout->addWidget(m_studyList);

    auto* lower = new QSplitter(Qt::Horizontal, this);
    lower->addWidget(examsBox);
    lower->addWidget(studiesBox);
    lower->setStretchFactor(0, 3);
    lower->setStretchFactor(1, 2);

    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(m_patientList);
    split->addWidget(lower);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(searchRow);
    layout->addWidget(split, 1);

    // Enter in either field searches.
    connect(m_name, &QLineEdit::returnPressed, this, &PatientBrowser::Search);
    connect(m_mrn, &QLineEdit::returnPressed, this, &PatientBrowser::Search);
    connect(m_search, &QPushButton::clicked, this, &PatientBrowser::Search);
    connect(m_patientList, &QTreeWidget::itemActivated, this, [this] { emit patientActivated(); });
    connect(m_patientList, &QTreeWidget::itemSelectionChanged, this, [this] {
        loadExams();
        emit selectionChanged();
    });
    connect(m_examList, &QTreeWidget::itemSelectionChanged, this, [this] {
        loadStudies();
        emit selectionChanged();
    });
    connect(m_studyList, &QTreeWidget::itemSelectionChanged, this, &PatientBrowser::selectionChanged);
    connect(m_examList, &QTreeWidget::itemActivated, this, &PatientBrowser::examActivated);
}

PatientBrowser::~PatientBrowser() = default;

void PatientBrowser::FocusSearch()
{
    m_name->setFocus(Qt::ShortcutFocusReason);
    m_name->selectAll();
}

void PatientBrowser::Search()
{
    // Keep the user's place across a search that still finds it.
    const ACE_CString keptPatient = SelectedPatient() ? SelectedPatient()->GetPatientKey() : ACE_CString();
    const ACE_CString keptExam = SelectedExam() ? SelectedExam()->GetKey() : ACE_CString();

    PatientSearchCriteria criteria;
    const QString name = m_name->text();
    const int comma = name.indexOf(QLatin1Char(','));
    criteria.lastName = Pattern(comma < 0 ? name : name.left(comma));
    if (comma >= 0)
        criteria.firstName = Pattern(name.mid(comma + 1));
    criteria.patientID = Pattern(m_mrn->text());
    // One more than shown tells whether the search was cut short.
    criteria.maxRows = kMaxRows + 1;

    std::vector<PatientDetailRecord*> found;
    bool ok = false;
    ServiceRegistry* registry = Session::ServiceInstance();
    PatientManagementService* service = registry ? registry->GetPatientManagementService() : nullptr;
    if (!service) {
        emit problem(QStringLiteral("No patient service is available."));
    } else {
        try {
            ok = service->QueryPatients(criteria, found) == 0;
            if (!ok)
                emit problem(QStringLiteral("The patient search failed."));
        } catch (const std::exception& e) {
            emit problem(QStringLiteral("The patient search failed: %1").arg(QString::fromUtf8(e.what())));
        }
    }
    const bool more = static_cast<int>(found.size()) > kMaxRows;
    m_patients.clear();
    for (size_t i = 0; i < found.size(); ++i) {
        if (static_cast<int>(i) < kMaxRows)
            m_patients.emplace_back(found[i]);
        else
            delete found[i];
    }
    found.clear();

    fillPatients();
    int row = 0;
    for (size_t i = 0; i < m_patients.size(); ++i)
        if (!keptPatient.is_empty() && m_patients[i]->GetPatientKey() == keptPatient)
            row = static_cast<int>(i);
    if (!m_patients.empty())
        m_patientList->setCurrentItem(m_patientList->topLevelItem(row));
    else
        loadExams();
    if (!keptExam.is_empty()) {
        for (size_t i = 0; i < m_exams.size(); ++i)
            if (m_exams[i]->GetKey() == keptExam)
                m_examList->setCurrentItem(m_examList->topLevelItem(static_cast<int>(i)));
    }
    emit searched(PatientCount(), more);
    emit selectionChanged();
}

void PatientBrowser::Refresh() { Search(); }

void PatientBrowser::ShowPatient(const PatientDetailRecord& patient)
{
    m_name->setText(Q(patient.GetLastName()) + QStringLiteral(", ") + Q(patient.GetFirstName()));
    m_mrn->setText(Q(patient.GetPatientID()));
    Search();
    for (size_t i = 0; i < m_patients.size(); ++i)
        if (m_patients[i]->GetPatientKey() == patient.GetPatientKey())
            m_patientList->setCurrentItem(m_patientList->topLevelItem(static_cast<int>(i)));
    m_patientList->setFocus();
}

void PatientBrowser::SelectExam(const char* examKey)
{
    for (size_t i = 0; i < m_exams.size(); ++i)
        if (m_exams[i]->GetKey() == examKey)
            m_examList->setCurrentItem(m_examList->topLevelItem(static_cast<int>(i)));
}

void PatientBrowser::fillPatients()
{
    const QSignalBlocker block(m_patientList);
    m_patientList->clear();
    QList<QTreeWidgetItem*> items;
    for (const auto& p : m_patients) {
        items.append(new QTreeWidgetItem(QStringList{Q(p->GetPatientName()), Q(p->GetPatientID()),
                                                     Q(p->GetOrganizationID()), DateText(p->GetDOB()),
                                                     Q(p->GetSexCode())}));
    }
    m_patientList->addTopLevelItems(items);
    for (int c = 0; c < m_patientList->columnCount() - 1; ++c)
        m_patientList->resizeColumnToContents(c);
}

void PatientBrowser::loadExams()
{
    {
        const QSignalBlocker block(m_examList);
        m_examList->clear();
    }
    m_exams.clear();
    const PatientDetailRecord* patient = SelectedPatient();
    ServiceRegistry* registry = Session::ServiceInstance();
    ExamService* service = registry ? registry->GetExamService() : nullptr;
    if (patient && service) {
        std::vector<ExamDataSet*> exams;
        try {
            if (service->QueryPatientExams(patient->GetPatientKey(), exams) != 0)
                emit problem(QStringLiteral("The patient's exams could not be read."));
        } catch (const std::exception& e) {
            emit problem(QStringLiteral("The patient's exams could not be read: %1").arg(QString::fromUtf8(e.what())));
        }
        for (ExamDataSet* e : exams)
            m_exams.emplace_back(e);
    }
    {
        const QSignalBlocker block(m_examList);
        for (const auto& e : m_exams) {
            m_examList->addTopLevelItem(new QTreeWidgetItem(
                QStringList{Q(e->GetAccessionNumber()), Q(e->GetExamCode()), Q(e->GetDescription()),
                            Q(e->GetModality()), Q(e->GetStatusCode()), DateTimeText(e->GetScheduledDT().ToLocal())}));
        }
        for (int c = 0; c < m_examList->columnCount() - 1; ++c)
            m_examList->resizeColumnToContents(c);
        if (!m_exams.empty())
            m_examList->setCurrentItem(m_examList->topLevelItem(0));
    }
    m_examsTitle->setText(patient ? QStringLiteral("Exams of %1 (%2)").arg(Q(patient->GetPatientName())).arg(ExamCount())
                                  : QStringLiteral("Exams"));
    loadStudies();
}

void PatientBrowser::loadStudies()
{
    {
        const QSignalBlocker block(m_studyList);
        m_studyList->clear();
    }
    m_studies.clear();
    const ExamDataSet* exam = SelectedExam();
    ServiceRegistry* registry = Session::ServiceInstance();
    ExamService* service = registry ? registry->GetExamService() : nullptr;
    if (exam && service) {
        std::vector<StudyRecord*> studies;
        try {
            if (service->QueryExamStudies(exam->GetKey(), studies) != 0)
                emit problem(QStringLiteral("The exam's studies could not be read."));
        } catch (const std::exception& e) {
            emit problem(QStringLiteral("The exam's studies could not be read: %1").arg(QString::fromUtf8(e.what())));
        }
        for (StudyRecord* s : studies)
            m_studies.emplace_back(s);
    }
    const QSignalBlocker block(m_studyList);
    for (const auto& s : m_studies) {
        m_studyList->addTopLevelItem(new QTreeWidgetItem(QStringList{Q(s->GetDescription()),
                                                                     DateTimeText(s->GetStudyDT().ToLocal()),
                                                                     QString::number(s->GetImageCount()),
                                                                     Q(s->GetStudyInstanceUID())}));
    }
    for (int c = 0; c < m_studyList->columnCount() - 1; ++c)
        m_studyList->resizeColumnToContents(c);
    if (!m_studies.empty())
        m_studyList->setCurrentItem(m_studyList->topLevelItem(0));
    m_studiesTitle->setText(exam ? QStringLiteral("Studies of exam %1 (%2)").arg(Q(exam->GetAccessionNumber())).arg(StudyCount())
                                 : QStringLiteral("Studies"));
}

const PatientDetailRecord* PatientBrowser::SelectedPatient() const
{
    const QTreeWidgetItem* item = m_patientList->currentItem();
    const int row = item ? m_patientList->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)) : -1;
    return row >= 0 && row < PatientCount() ? m_patients[row].get() : nullptr;
}

const ExamDataSet* PatientBrowser::SelectedExam() const
{
    const QTreeWidgetItem* item = m_examList->currentItem();
    const int row = item ? m_examList->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)) : -1;
    return row >= 0 && row < ExamCount() ? m_exams[row].get() : nullptr;
}

const StudyRecord* PatientBrowser::SelectedStudy() const
{
    const QTreeWidgetItem* item = m_studyList->currentItem();
    const int row = item ? m_studyList->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)) : -1;
    return row >= 0 && row < StudyCount() ? m_studies[row].get() : nullptr;
}
