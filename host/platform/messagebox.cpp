#include "messagebox.h"

#include "modulestate.h"
#include "qtconvert.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

MessagePresenter::~MessagePresenter() = default;

namespace {

MessagePresenter*& installed()
{
    static MessagePresenter* p = nullptr;
    return p;
}

QtMessagePresenter& production()
{
    static QtMessagePresenter p;
    return p;
}

CWnd* activeOwner()
{
    if (QWidget* w = QApplication::activeModalWidget())
        return w;
    return QApplication::activeWindow();
}

} // namespace

int QtMessagePresenter::Show(CWnd* owner, const CString& text, const CString& caption, UINT type)
{
    QMessageBox box(owner);
    box.setWindowTitle(toQString(caption));
    box.setText(toQString(text));
    box.setTextFormat(Qt::PlainText);
    switch (type & MB_ICONMASK) {
    case MB_ICONHAND: box.setIcon(QMessageBox::Critical); break;
    case MB_ICONQUESTION: box.setIcon(QMessageBox::Question); break;
    case MB_ICONEXCLAMATION: box.setIcon(QMessageBox::Warning); break;
    case MB_ICONASTERISK: box.setIcon(QMessageBox::Information); break;
    default: box.setIcon(QMessageBox::NoIcon); break;
    }

    struct Choice { QMessageBox::StandardButton button; int result; };
    std::vector<Choice> choices;
    int escapeResult = IDCANCEL;
    switch (type & MB_TYPEMASK) {
    case MB_OKCANCEL: choices = {{QMessageBox::Ok, IDOK}, {QMessageBox::Cancel, IDCANCEL}}; break;
    case MB_ABORTRETRYIGNORE:
        choices = {{QMessageBox::Abort, IDABORT}, {QMessageBox::Retry, IDRETRY}, {QMessageBox::Ignore, IDIGNORE}};
        escapeResult = IDABORT;
        break;
    case MB_YESNOCANCEL: choices = {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}, {QMessageBox::Cancel, IDCANCEL}}; break;
    case MB_YESNO: choices = {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}}; escapeResult = IDNO; break;
    case MB_RETRYCANCEL: choices = {{QMessageBox::Retry, IDRETRY}, {QMessageBox::Cancel, IDCANCEL}}; break;
    default: choices = {{QMessageBox::Ok, IDOK}}; escapeResult = IDOK; break;
    }
    QMessageBox::StandardButtons buttons;
    for (const Choice& c : choices)
        buttons |= c.button;
    box.setStandardButtons(buttons);
    const size_t def = (type & MB_DEFMASK) >> 8;
    if (def < choices.size())
        box.setDefaultButton(choices[def].button);

    box.exec();
    const QAbstractButton* clicked = box.clickedButton();
    for (const Choice& c : choices)
        if (clicked && clicked == box.button(c.button))
            return c.result;
    return escapeResult;
}

MessagePresenter* SetMessagePresenter(MessagePresenter* presenter)
{
    MessagePresenter* previous = installed();
    installed() = presenter;
    return previous;
}

MessagePresenter& CurrentMessagePresenter()
{
    MessagePresenter* p = installed();
    return p ? *p : production();
}

int AfxMessageBox(const char* text, UINT type)
{
    return CurrentMessagePresenter().Show(activeOwner(), CString(text), CurrentModuleState().AppName(), type);
}

int AfxMessageBox(UINT stringId, UINT type)
{
    return AfxMessageBox(LoadString(stringId).GetString(), type);
}

int MessageBox(CWnd* owner, const char* text, const char* caption, UINT type)
{
    return CurrentMessagePresenter().Show(owner, CString(text), CString(caption ? caption : "Error"), type);
}
