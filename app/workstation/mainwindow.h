#pragma once

#include "workstationaction.h"

#include <QMainWindow>

#include <vector>

class BasePage;
class PatientBrowser;
class QAction;
class QLabel;
class QTabWidget;

// The workstation's window: the patient browser and the duplicate patient
// worklist as tabs, the commands of WorkstationActions() in menus and on the
// toolbar, and a status bar.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow(const QString& archivePath, const QString& userName, QWidget* parent = nullptr);
    ~MainWindow() override;

    PatientBrowser* Browser() const { return m_browser; }
    // The module's duplicate patient page; null when the module has none.
    BasePage* DuplicatePage() const { return m_duplicatePage; }
    QTabWidget* Tabs() const { return m_tabs; }
    // The command by its id (WorkstationAction::id, or "refresh", "quit" ...).
    QAction* Action(const QString& id) const;

    void ShowPatients();
    void ShowDuplicates();
    // Enables each command for what is selected now.
    void UpdateActions();

private:
    void buildMenus();
    void run(const WorkstationAction& action);
    void showStatus(const QString& text);

    std::vector<WorkstationAction> m_actions;
    std::vector<QAction*> m_qactions;
    PatientBrowser* m_browser = nullptr;
    BasePage* m_duplicatePage = nullptr;
    QTabWidget* m_tabs = nullptr;
    QLabel* m_siteLabel = nullptr;
};
