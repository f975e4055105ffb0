#pragma once

// DateTimeEditCtrl: a date field that may be left empty. The user types the
// date in the date pattern given (Qt letters yyyy, MM, M, dd, d; "MM/dd/yyyy"
// unless set) or picks it from the calendar that the drop button (or F4,
// Alt+Down) opens. Whatever is typed stays as typed: the owner asks
// IsValidDate() and, for text that is not a date, shows the control's own
// message with ShowInvalidDateMessage().
//
// GetDate answers GDT_VALID (0) with the date when the text is a date, and
// GDT_NONE otherwise (empty, or text that is not a date).

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QDate>
#include <QWidget>

class QLineEdit;
class QToolButton;

constexpr DWORD GDT_VALID = 0;
constexpr DWORD GDT_NONE = 1;

class BRAVIK_TOOLKIT_EXPORT DateTimeEditCtrl : public QWidget, public WindowOps<DateTimeEditCtrl>
{
    Q_OBJECT
public:
    static const char* const ClassName;

    explicit DateTimeEditCtrl(QWidget* parent = nullptr);
    ~DateTimeEditCtrl() override;

    void SetDatePattern(const QString& pattern) { m_pattern = pattern; }
    const QString& GetDatePattern() const { return m_pattern; }

    // An invalid date empties the field.
    void SetDate(const QDate& date);
    void SetEmpty() { SetDate(QDate()); }
    DWORD GetDate(QDate& date) const;
    // True when the field is empty or holds a date in the pattern.
    bool IsValidDate() const;
    bool IsEmpty() const;

    void SetWindowText(const CString& text);
    CString GetWindowText() const;

    // "You must specify a valid date. ..." naming the pattern, OK only.
    void ShowInvalidDateMessage() const;
    CString GetInvalidDateMessage() const;

    QLineEdit* lineEdit() const { return m_edit; }
    QToolButton* dropButton() const { return m_drop; }
    // Opens the calendar (what the drop button does); it returns when the
    // calendar closes.
    void DropDown();

signals:
    // The text changed, by the user or by SetDate / SetWindowText.
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    bool parse(QDate& date) const;

    QLineEdit* m_edit;
    QToolButton* m_drop;
    QString m_pattern = QStringLiteral("MM/dd/yyyy");
};
