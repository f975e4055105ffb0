#pragma once

// A date range in one line: "from<DATE_SEP>to", each date in the user's
// date pattern; a single date stands for itself. The drop button opens two
// calendars to pick the range. Whether the user may type in the line is
// SetEnableEdit; with SetAllowFullDeleteOnly(true) a Delete or Backspace
// clears the whole range rather than one character, so a half-edited date
// can never be left behind.

#include "bravik_toolkit_export.h"

#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QDate>
#include <QWidget>

class QLineEdit;
class QToolButton;

class BRAVIK_TOOLKIT_EXPORT DateRangeCtrl : public QWidget, public WindowOps<DateRangeCtrl>
{
    Q_OBJECT
public:
    // Written between the two dates of a range.
    static const char* const DATE_SEP;

    explicit DateRangeCtrl(QWidget* parent = nullptr);
    ~DateRangeCtrl() override;

    void SetEnableEdit(bool on);
    bool IsEditEnabled() const { return m_editEnabled; }
    void SetAllowFullDeleteOnly(bool on) { m_fullDeleteOnly = on; }
    bool IsFullDeleteOnly() const { return m_fullDeleteOnly; }

    // Qt date letters (yyyy, MM, M, dd, d), "MM/dd/yyyy" unless set.
    void SetDatePattern(const QString& pattern) { m_pattern = pattern; }
    const QString& GetDatePattern() const { return m_pattern; }

    void SetWindowText(const CString& text);
    CString GetWindowText() const;
    // Either end may be open (an invalid QDate); both open clears the range.
    void SetRange(const QDate& from, const QDate& to);
    // False when the text is not a range of valid dates.
    bool GetRange(QDate& from, QDate& to) const;

    QLineEdit* lineEdit() const { return m_edit; }
    QToolButton* dropButton() const { return m_drop; }

signals:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void openPicker();

    QLineEdit* m_edit;
    QToolButton* m_drop;
    QString m_pattern = QStringLiteral("MM/dd/yyyy");
    bool m_editEnabled = true;
    bool m_fullDeleteOnly = false;
};
