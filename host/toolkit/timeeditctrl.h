#pragma once

// TimeEditCtrl: a time-of-day field (24-hour "HH:mm:ss"), typed or stepped
// with the arrow keys, beside a DateTimeEditCtrl for date and time pairs.
// Templates name it as a Custom control of class TimeEditCtrl::ClassName.

#include "bravik_toolkit_export.h"

#include "cwnd.h"

#include <QTimeEdit>

class BRAVIK_TOOLKIT_EXPORT TimeEditCtrl : public QTimeEdit, public WindowOps<TimeEditCtrl>
{
    Q_OBJECT
public:
    static const char* const ClassName;

    explicit TimeEditCtrl(QWidget* parent = nullptr);
    ~TimeEditCtrl() override;

    void SetTime(int hour, int minute, int second);
    int GetHour() const { return time().hour(); }
    int GetMinute() const { return time().minute(); }
    int GetSecond() const { return time().second(); }
};
