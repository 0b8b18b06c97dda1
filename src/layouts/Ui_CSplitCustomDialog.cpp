#include "layouts/Ui_CSplitCustomDialog.h"

#include "common/CToolButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSpacerItem>
#include <QVBoxLayout>

void Ui_CSplitCustomDialog::setupUi(QWidget* dialog)
{
    dialog->setObjectName("CSplitCustomDialog");
    dialog->resize(238, 274);
    dialog->setMouseTracking(true);
    dialog->setFocusPolicy(Qt::StrongFocus);

    auto* outer = new QVBoxLayout(dialog);
    outer->setObjectName("verticalLayout_2");
    outer->setSpacing(0);
    outer->setContentsMargins(0, 0, 0, 0);
    MenuWidget = new QWidget(dialog);
    MenuWidget->setObjectName("MenuWidget");
    outer->addWidget(MenuWidget);

    auto* column = new QVBoxLayout(MenuWidget);
    column->setObjectName("_2");
    column->setSpacing(6);
    column->setContentsMargins(11, 11, 11, 11);
    labNormal = AddCaption(column, "labNormal");
    AddButtonRow(column, "horizontalLayout", "btnN", 0, btnN);
    AddButtonRow(column, "horizontalLayout_2", "btnN", 5, btnN);
    labCustom = AddCaption(column, "labCustom");
    AddButtonRow(column, "horizontalLayout_3", "btnC", 0, btnC);
    AddButtonRow(column, "horizontalLayout_4", "btnC", 5, btnC);
    AddEditRow(column);
}

QLabel* Ui_CSplitCustomDialog::AddCaption(QBoxLayout* column, const char* name)
{
    auto* caption = new QLabel(MenuWidget);
    caption->setObjectName(name);
    caption->setMinimumHeight(23);
    column->addWidget(caption);
    return caption;
}

void Ui_CSplitCustomDialog::AddButtonRow(QBoxLayout* column, const char* name, const char* prefix, int first,
                                         QToolButton** buttons)
{
    auto* row = new QHBoxLayout;
    row->setObjectName(name);
    row->setSpacing(6);
    for (int i = first; i < first + ButtonCount / 2; ++i) {
        buttons[i] = new CToolButton(MenuWidget);
        buttons[i]->setObjectName(prefix + QString::number(i + 1));
        buttons[i]->setMinimumSize(30, 30);
        row->addWidget(buttons[i]);
    }
    column->addLayout(row);
}

void Ui_CSplitCustomDialog::AddEditRow(QBoxLayout* column)
{
    widget = new QWidget(MenuWidget);
    widget->setObjectName("widget");
    auto* row = new QHBoxLayout(widget);
    row->setObjectName("horizontalLayout_5");
    row->setSpacing(0);
    row->setContentsMargins(0, 0, 0, 0);
    row->addItem(new QSpacerItem(313, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    btnEditSplit = new CToolButton(widget);
    btnEditSplit->setObjectName("btnEditSplit");
    btnEditSplit->setFixedSize(21, 17);
    row->addWidget(btnEditSplit);
    column->addWidget(widget);
}
