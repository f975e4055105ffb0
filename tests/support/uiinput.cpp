#include "uiinput.h"

#include "cbutton.h"
#include "ccombobox.h"
#include "cedit.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace {

QString describe(const QWidget* w)
{
    if (!w)
        return QStringLiteral("(null)");
    const QString name = w->objectName();
    return QStringLiteral("%1 \"%2\"").arg(QString::fromLatin1(w->metaObject()->className()),
                                          name.isEmpty() ? QStringLiteral("(unnamed)") : name);
}

bool reachable(const QWidget* w, const char* action)
{
    if (!w) {
        ADD_FAILURE() << action << ": no such control";
        return false;
    }
    if (!UserCanReach(w)) {
        ADD_FAILURE() << action << ": " << qPrintable(describe(w)) << " is "
                      << (w->isEnabled() ? "hidden" : "disabled") << ", a user cannot reach it";
        return false;
    }
    return true;
}

QWidget* editorOf(QWidget* target)
{
    if (auto* e = qobject_cast<CEdit*>(target))
        return e->editor();
    if (auto* c = qobject_cast<QComboBox*>(target))
        return c->isEditable() ? static_cast<QWidget*>(c->lineEdit()) : nullptr;
    if (qobject_cast<QLineEdit*>(target) || qobject_cast<QPlainTextEdit*>(target))
        return target;
    return nullptr;
}

int keyFor(char32_t cp)
{
    if (cp >= 'a' && cp <= 'z')
        return Qt::Key_A + static_cast<int>(cp - 'a');
    if (cp >= 0x20 && cp < 0x7F)
        return static_cast<int>(cp); // Qt's keys for ASCII are their codes
    return Qt::Key_unknown;
}

} // namespace

bool UserCanReach(const QWidget* w)
{
    return w && w->isEnabled() && (w->isWindow() ? !w->isHidden() : w->isVisibleTo(w->window()));
}

bool TypeText(QWidget* target, const QString& text)
{
    if (!reachable(target, "TypeText"))
        return false;
    QWidget* editor = editorOf(target);
    if (!editor) {
        ADD_FAILURE() << "TypeText: " << qPrintable(describe(target)) << " is not an edit";
        return false;
    }
    editor->setFocus(Qt::OtherFocusReason);
    for (qsizetype i = 0; i < text.size(); ++i) {
        QString unit(text.at(i));
        char32_t cp = text.at(i).unicode();
        if (text.at(i).isHighSurrogate() && i + 1 < text.size()) {
            unit += text.at(i + 1);
            cp = QChar::surrogateToUcs4(text.at(i), text.at(i + 1));
            ++i;
        }
        if (cp == '\n') {
            QTest::keyClick(editor, Qt::Key_Return);
            continue;
        }
        const Qt::Key key = static_cast<Qt::Key>(keyFor(cp));
        QTest::sendKeyEvent(QTest::Press, editor, key, unit, Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Release, editor, key, unit, Qt::NoModifier);
    }
    return true;
}

bool ReplaceText(QWidget* target, const QString& text)
{
    if (!reachable(target, "ReplaceText"))
        return false;
    QWidget* editor = editorOf(target);
    if (!editor) {
        ADD_FAILURE() << "ReplaceText: " << qPrintable(describe(target)) << " is not an edit";
        return false;
    }
    editor->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Delete);
    return TypeText(target, text);
}

bool ClickButton(QWidget* button)
{
    if (!reachable(button, "ClickButton"))
        return false;
    QAbstractButton* b = nullptr;
    if (auto* cb = qobject_cast<CButton*>(button))
        b = cb->button();
    else
        b = qobject_cast<QAbstractButton*>(button);
    if (!b) {
        ADD_FAILURE() << "ClickButton: " << qPrintable(describe(button)) << " is not a button";
        return false;
    }
    QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, b->rect().center());
    return true;
}

bool SetCheckBox(QWidget* checkBox, bool checked)
{
    if (!reachable(checkBox, "SetCheckBox"))
        return false;
    QAbstractButton* b = nullptr;
    if (auto* cb = qobject_cast<CButton*>(checkBox))
        b = cb->button();
    else
        b = qobject_cast<QAbstractButton*>(checkBox);
    if (!b || !b->isCheckable()) {
        ADD_FAILURE() << "SetCheckBox: " << qPrintable(describe(checkBox)) << " is not a check box";
        return false;
    }
    if (b->isChecked() != checked)
        QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, b->rect().center());
    return b->isChecked() == checked;
}

bool ChooseComboItem(CComboBox* combo, int index)
{
    if (!reachable(combo, "ChooseComboItem"))
        return false;
    if (index < 0 || index >= combo->count()) {
        ADD_FAILURE() << "ChooseComboItem: " << qPrintable(describe(combo)) << " has no item " << index
                      << " (it has " << combo->count() << ")";
        return false;
    }
    combo->setFocus(Qt::OtherFocusReason);
    // What the box does when its list is clicked: select, then report the user's choice.
    combo->setCurrentIndex(index);
    emit combo->activated(index);
    emit combo->textActivated(combo->itemText(index));
    return true;
}

bool ChooseComboItem(CComboBox* combo, const QString& itemText)
{
    if (!combo) {
        ADD_FAILURE() << "ChooseComboItem: no such control";
        return false;
    }
    const int index = combo->findText(itemText, Qt::MatchExactly);
    if (index < 0) {
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items << combo->itemText(i);
        ADD_FAILURE() << "ChooseComboItem: " << qPrintable(describe(combo)) << " has no item \""
                      << qPrintable(itemText) << "\"; items: " << qPrintable(items.join(QStringLiteral(" | ")));
        return false;
    }
    return ChooseComboItem(combo, index);
}

bool PressKey(QWidget* target, int key, Qt::KeyboardModifiers modifiers)
{
    QWidget* w = target ? target : QApplication::focusWidget();
    if (!w) {
        ADD_FAILURE() << "PressKey: no target and no focus widget";
        return false;
    }
    QTest::keyClick(w, static_cast<Qt::Key>(key), modifiers);
    return true;
}
