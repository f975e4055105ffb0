#include "mainwindow.h"

#include "patientbrowser.h"

#if __has_include("duplicates/duplicatepatientpage.h")
#include "duplicates/duplicatepatientpage.h"
#define BRAVIK_WORKSTATION_HAS_DUPLICATE_PAGE 1
#endif

#include "basepage.h"
#include "messagebox.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include <map>

MainWindow::MainWindow(const QString& archivePath, const QString& userName, QWidget* parent)
    : QMainWindow(parent), m_actions(WorkstationActions())
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Bravik Workstation - %1 (%2)").arg(QFileInfo(archivePath).fileName(), userName));

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->setDocumentMode(true);
    m_browser = new PatientBrowser(m_tabs);
    m_tabs->addTab(m_browser, QStringLiteral("&Patients"));

#ifdef BRAVIK_WORKSTATION_HAS_DUPLICATE_PAGE
    // The page is the module's own widget: the host only gives it a place.
    auto* holder = new QWidget(m_tabs);
    auto* page = new CDuplicatePatientPage;
    page->Create(holder);
    auto* holderLayout = new QVBoxLayout(holder);
    holderLayout->setContentsMargins(0, 0, 0, 0);
    holderLayout->addWidget(page);
    m_duplicatePage = page;
    m_tabs->addTab(holder, QStringLiteral("&Duplicate Patients"));
    connect(page, &CDuplicatePatientPage::actionFailed, this, &MainWindow::showStatus);
#endif
    setCentralWidget(m_tabs);

    m_siteLabel = new QLabel(QStringLiteral("Archive: %1   User: %2")
                                 .arg(QDir::toNativeSeparators(QFileInfo(archivePath).absoluteFilePath()), userName),
                             this);
    m_siteLabel->setObjectName(QStringLiteral("siteLabel"));
    statusBar()->addPermanentWidget(m_siteLabel);

    buildMenus();

    connect(m_browser, &PatientBrowser::selectionChanged, this, &MainWindow::UpdateActions);
    connect(m_browser, &PatientBrowser::searched, this, [this](int shown, bool more) {
        if (more)
            showStatus(QStringLiteral("Showing the first %1 matching patients; narrow the search to see the rest.")
                           .arg(shown));
        else
            showStatus(shown == 1 ? QStringLiteral("1 patient found.") : QStringLiteral("%1 patients found.").arg(shown));
    });
    connect(m_browser, &PatientBrowser::problem, this, &MainWindow::showStatus);
    // Enter or a double click on a patient edits it, on an exam edits the exam.
    connect(m_browser, &PatientBrowser::patientActivated, this, [this] {
        for (const WorkstationAction& a : m_actions)
            if (a.id == QLatin1String("editPatient"))
                run(a);
    });
    connect(m_browser, &PatientBrowser::examActivated, this, [this] {
        if (QAction* edit = findChild<QAction*>(QStringLiteral("editExam")))
            edit->trigger();
    });
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::UpdateActions);

    resize(1180, 760);
    UpdateActions();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    QAction* refresh = file->addAction(QStringLiteral("&Refresh"));
    refresh->setObjectName(QStringLiteral("refresh"));
    refresh->setShortcut(QKeySequence::Refresh);
    connect(refresh, &QAction::triggered, this, [this] {
        if (m_tabs->currentWidget() == m_browser)
            m_browser->Refresh();
#ifdef BRAVIK_WORKSTATION_HAS_DUPLICATE_PAGE
        else if (auto* page = qobject_cast<CDuplicatePatientPage*>(m_duplicatePage))
            page->DisplayItems();
#endif
    });
    file->addSeparator();
    QAction* quit = file->addAction(QStringLiteral("&Quit"));
    quit->setObjectName(QStringLiteral("quit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    QAction* find = view->addAction(QStringLiteral("&Find Patient"));
    find->setObjectName(QStringLiteral("findPatient"));
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, this, [this] {
        ShowPatients();
        m_browser->FocusSearch();
    });
    QAction* patients = view->addAction(QStringLiteral("&Patients"));
    patients->setObjectName(QStringLiteral("showPatients"));
    patients->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_1));
    connect(patients, &QAction::triggered, this, &MainWindow::ShowPatients);
    if (m_duplicatePage) {
        QAction* dups = view->addAction(QStringLiteral("&Duplicate Patients"));
        dups->setObjectName(QStringLiteral("showDuplicates"));
        dups->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_2));
        connect(dups, &QAction::triggered, this, &MainWindow::ShowDuplicates);
    }

    QToolBar* tools = addToolBar(QStringLiteral("Commands"));
    tools->setObjectName(QStringLiteral("commands"));
    tools->setMovable(false);
    tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
    tools->addAction(refresh);
    tools->addSeparator();

    // One menu per group, in the order the groups first appear.
    std::map<QString, QMenu*> menus;
    for (const WorkstationAction& a : m_actions) {
        QMenu*& menu = menus[a.menu];
        if (!menu)
            menu = menuBar()->addMenu(a.menu);
        QAction* qa = menu->addAction(a.text);
        qa->setObjectName(a.id);
        qa->setShortcut(a.shortcut);
        QString tip = a.text;
        tip.remove(QLatin1Char('&'));
        tip.remove(QStringLiteral("..."));
        if (!a.shortcut.isEmpty())
            tip += QStringLiteral(" (%1)").arg(a.shortcut.toString(QKeySequence::NativeText));
        qa->setToolTip(tip);
        qa->setStatusTip(tip);
        qa->setProperty("baseToolTip", tip);
        connect(qa, &QAction::triggered, this, [this, &a] { run(a); });
        tools->addAction(qa);
        m_qactions.push_back(qa);
    }

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    QAction* about = help->addAction(QStringLiteral("&About Bravik Workstation"));
    about->setObjectName(QStringLiteral("about"));
    connect(about, &QAction::triggered, this, [this] {
        MessageBox(this,
                   "Bravik Workstation\n\nPatient and exam management on a site archive: patients and their exams, "
                   "the duplicate patient worklist, and the reasons kept for every deletion, cancellation and "
                   "detachment.",
                   "About Bravik Workstation", MB_OK | MB_ICONINFORMATION);
    });
}

QAction* MainWindow::Action(const QString& id) const { return findChild<QAction*>(id); }

void MainWindow::ShowPatients() { m_tabs->setCurrentWidget(m_browser); }

void MainWindow::ShowDuplicates()
{
    if (m_duplicatePage)
        m_tabs->setCurrentIndex(1);
}

void MainWindow::UpdateActions()
{
    const bool browsing = m_tabs->currentWidget() == m_browser;
    for (size_t i = 0; i < m_actions.size(); ++i) {
        bool enabled = browsing;
        switch (m_actions[i].needs) {
        case WorkstationAction::Needs::Nothing:
            break;
        case WorkstationAction::Needs::Patient:
            enabled = enabled && m_browser->SelectedPatient();
            break;
        case WorkstationAction::Needs::Exam:
            enabled = enabled && m_browser->SelectedExam();
            break;
        case WorkstationAction::Needs::Study:
            enabled = enabled && m_browser->SelectedStudy();
            break;
        }
        // A command the user may not run on this patient says why instead.
        const QString refusal = enabled ? RightRefusal(m_actions[i], m_browser->SelectedPatient()) : QString();
        const QString base = m_qactions[i]->property("baseToolTip").toString();
        m_qactions[i]->setToolTip(refusal.isEmpty() ? base : base + QStringLiteral(": ") + refusal);
        m_qactions[i]->setEnabled(enabled && refusal.isEmpty());
    }
}

void MainWindow::run(const WorkstationAction& action)
{
    ActionContext context;
    context.parent = this;
    context.patient = m_browser->SelectedPatient();
    context.exam = m_browser->SelectedExam();
    context.study = m_browser->SelectedStudy();
    context.refresh = [this] { m_browser->Refresh(); };
    context.status = [this](const QString& text) { showStatus(text); };
    context.showPatient = [this](const PatientDetailRecord& patient) { m_browser->ShowPatient(patient); };
    context.selectExam = [this](const char* examKey) { m_browser->SelectExam(examKey); };
    // A shortcut can fire while its command is disabled for the selection.
    if ((action.needs == WorkstationAction::Needs::Patient && !context.patient) ||
        (action.needs == WorkstationAction::Needs::Exam && !context.exam) ||
        (action.needs == WorkstationAction::Needs::Study && !context.study))
        return;
    if (const QString refusal = RightRefusal(action, context.patient); !refusal.isEmpty()) {
        showStatus(refusal);
        return;
    }
    action.run(context);
    UpdateActions();
}

void MainWindow::showStatus(const QString& text) { statusBar()->showMessage(text); }
