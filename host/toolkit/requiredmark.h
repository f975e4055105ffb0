#pragma once

// RequiredMark: the toolkit's cue for a field that must be filled: a small
// red corner in the top left of the field, always on top of it, letting
// every click through. Edit and ComboBox show it through SetRequiredFlag.

#include "bravik_toolkit_export.h"

#include <QWidget>

class BRAVIK_TOOLKIT_EXPORT RequiredMark : public QWidget
{
    Q_OBJECT
public:
    static constexpr int SIZE = 7;

    // A child of field, hidden until Show(true).
    explicit RequiredMark(QWidget* field);

    void Show(bool on);
    bool IsShown() const { return m_on; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place();
    bool m_on = false;
};
