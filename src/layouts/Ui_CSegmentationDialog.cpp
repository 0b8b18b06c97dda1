#include "layouts/Ui_CSegmentationDialog.h"

#include "common/FormParts.h"
#include "layouts/CSplitButton.h"
#include "layouts/CSplitWidget.h"

#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

using namespace FormParts;

namespace {

template <class Widget>
Widget* AddSized(QBoxLayout* row, QWidget* parent, const char* name, const QSize& minimum)
{
    auto* widget = AddWidget<Widget>(row, parent, name);
    widget->setMinimumSize(minimum);
    return widget;
}

} // namespace

void Ui_CSegmentationDialog::setupUi(QWidget* form)
{
    form->setObjectName("CSegmentationDialog");
    form->resize(512, 393);
    auto* outer = NewLayout<QVBoxLayout>(form, "verticalLayout_4", 0);
    centralWidget = AddWidget<QWidget>(outer, form, "centralWidget");

    auto* column = NewLayout<QVBoxLayout>(centralWidget, "verticalLayout_3", 6, QMargins(9, 9, 9, 9));
    AddSizeRow(column);
    widget = AddWidget<QWidget>(column, centralWidget, "widget");
    auto* row = NewLayout<QHBoxLayout>(widget, "horizontalLayout", 6);
    AddTabs(row);
    AddEditor(row);
    AddButtonRow(column);
}

void Ui_CSegmentationDialog::AddSizeRow(QBoxLayout* column)
{
    const QSize minimum(0, 23);
    QHBoxLayout* row = AddRow(column, "horizontalLayout_2", 6);
    AddSpacer(row, 40);
    labRow = AddSized<QLabel>(row, centralWidget, "labRow", minimum);
    sbxRow = AddSized<QSpinBox>(row, centralWidget, "sbxRow", minimum);
    labCol = AddSized<QLabel>(row, centralWidget, "labCol", minimum);
    sbxCol = AddSized<QSpinBox>(row, centralWidget, "sbxCol", minimum);
}

void Ui_CSegmentationDialog::AddTabs(QBoxLayout* row)
{
    widget1 = AddSized<QWidget>(row, widget, "widget1", QSize(150, 0));
    widget1->setMaximumSize(100, QWIDGETSIZE_MAX);
    auto* column = NewLayout<QVBoxLayout>(widget1, "verticalLayout", 0);
    for (int i = 0; i < TabCount; ++i)
        tab[i] = AddWidget<CSplitButton>(column, widget1, "tab" + QString::number(i + 1));
}

void Ui_CSegmentationDialog::AddEditor(QBoxLayout* row)
{
    widget2 = AddWidget<QWidget>(row, widget, "widget2");
    widget2->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* column = NewLayout<QVBoxLayout>(widget2, "verticalLayout_2", 0);
    SplitWidget = AddWidget<CSplitWidget>(column, widget2, "SplitWidget");
    SplitWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Ui_CSegmentationDialog::AddButtonRow(QBoxLayout* column)
{
    widget_3 = AddWidget<QWidget>(column, centralWidget, "widget_3");
    auto* row = NewLayout<QHBoxLayout>(widget_3, "horizontalLayout_3", 6, QMargins(0, 9, 0, 0));
    AddSpacer(row, 329);
    btnOk = AddSized<QPushButton>(row, widget_3, "btnOk", QSize(75, 23));
    btnCancel = AddSized<QPushButton>(row, widget_3, "btnCancel", QSize(75, 23));
}
