#pragma once

// DatePickerCtrl: a date picker that always holds a date (the date-of-birth
// field): typed section by section in the date pattern given, or picked from
// the calendar that its arrow, F4 or Alt+Down drops down. When the calendar
// drops down it takes the keyboard focus, so the arrow keys move through the
// days at once and Enter picks one.

#include "bravik_toolkit_export.h"

#include "cwnd.h"
#include "windefs.h"

#include <QDateEdit>

class QCalendarWidget;

class BRAVIK_TOOLKIT_EXPORT DatePickerCtrl : public QDateEdit, public WindowOps<DatePickerCtrl>
{
    Q_OBJECT
public:
    static const char* const ClassName;

    explicit DatePickerCtrl(QWidget* parent = nullptr);
    ~DatePickerCtrl() override;

    // Qt date letters; "MM/dd/yyyy" unless set.
    void SetDatePattern(const QString& pattern);
    // An invalid date is ignored (the picker keeps its date).
    void SetDate(const QDate& date);
    QDate GetDate() const { return date(); }

    // Opens the calendar, as the arrow does.
    void DropDown();
    bool IsDroppedDown() const;
    QCalendarWidget* calendar() const { return calendarWidget(); }

signals:
    // The calendar has dropped down (and has the focus).
    void droppedDown();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void watchPopup();
    QWidget* m_popup = nullptr;
};
