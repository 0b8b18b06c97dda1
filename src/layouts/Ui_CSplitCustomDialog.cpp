#include "layouts/Ui_CSplitCustomDialog.h"

#include "common/CToolButton.h"
#include "common/FormParts.h"

#include <QLabel>

using namespace FormParts;

void Ui_CSplitCustomDialog::setupUi(QWidget* dialog)
{
    dialog->setObjectName("CSplitCustomDialog");
    dialog->resize(238, 274);
    dialog->setMouseTracking(true);
    dialog->setFocusPolicy(Qt::StrongFocus);

    auto* outer = NewLayout<QVBoxLayout>(dialog, "verticalLayout_2", 0);
    MenuWidget = AddWidget<QWidget>(outer, dialog, "MenuWidget");

    auto* column = NewLayout<QVBoxLayout>(MenuWidget, "_2", 6, QMargins(11, 11, 11, 11));
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
    auto* caption = AddWidget<QLabel>(column, MenuWidget, name);
    caption->setMinimumHeight(23);
    return caption;
}

void Ui_CSplitCustomDialog::AddButtonRow(QBoxLayout* column, const char* name, const char* prefix, int first,
                                         QToolButton** buttons)
{
    QHBoxLayout* row = AddRow(column, name, 6);
    for (int i = first; i < first + ButtonCount / 2; ++i) {
        buttons[i] = AddWidget<CToolButton>(row, MenuWidget, prefix + QString::number(i + 1));
        buttons[i]->setMinimumSize(30, 30);
    }
}

void Ui_CSplitCustomDialog::AddEditRow(QBoxLayout* column)
{
    widget = AddWidget<QWidget>(column, MenuWidget, "widget");
    auto* row = NewLayout<QHBoxLayout>(widget, "horizontalLayout_5", 0);
    AddSpacer(row, 313);
    btnEditSplit = AddWidget<CToolButton>(row, widget, "btnEditSplit");
    btnEditSplit->setFixedSize(21, 17);
}
