#include "dropdownfield.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

void LayOutDropDownField(QWidget* field, QLineEdit* edit, QToolButton* drop)
{
    auto* layout = new QHBoxLayout(field);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(edit, 1);
    layout->addWidget(drop);
    drop->setArrowType(Qt::DownArrow);
    drop->setFocusPolicy(Qt::NoFocus);
    field->setFocusProxy(edit);
    edit->installEventFilter(field);
}
