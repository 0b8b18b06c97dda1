#include "layouts/Ui_CSegmentationDialog.h"

#include "layouts/CSplitButton.h"
#include "layouts/CSplitWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpacerItem>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

template <class Layout>
Layout* MakeLayout(QWidget* parent, const char* name, int spacing, const QMargins& margins = QMargins())
{
    auto* layout = new Layout(parent);
    layout->setObjectName(name);
    layout->setSpacing(spacing);
    layout->setContentsMargins(margins);
    return layout;
}

template <class Widget>
Widget* MakeWidget(QWidget* parent, const char* name, const QSize& minimum = QSize(0, 0))
{
    auto* widget = new Widget(parent);
    widget->setObjectName(name);
    widget->setMinimumSize(minimum);
    return widget;
}

void AddSpacer(QBoxLayout* row, int width)
{
    row->addItem(new QSpacerItem(width, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
}

} // namespace

void Ui_CSegmentationDialog::setupUi(QWidget* form)
{
    form->setObjectName("CSegmentationDialog");
    form->resize(512, 393);
    auto* outer = MakeLayout<QVBoxLayout>(form, "verticalLayout_4", 0);
    centralWidget = MakeWidget<QWidget>(form, "centralWidget");
    outer->addWidget(centralWidget);

    auto* column = MakeLayout<QVBoxLayout>(centralWidget, "verticalLayout_3", 6, QMargins(9, 9, 9, 9));
    AddSizeRow(column);
    widget = MakeWidget<QWidget>(centralWidget, "widget");
    auto* row = MakeLayout<QHBoxLayout>(widget, "horizontalLayout", 6);
    AddTabs(row);
    AddEditor(row);
    column->addWidget(widget);
    AddButtonRow(column);
}

void Ui_CSegmentationDialog::AddSizeRow(QBoxLayout* column)
{
    const QSize minimum(0, 23);
    auto* row = MakeLayout<QHBoxLayout>(nullptr, "horizontalLayout_2", 6);
    AddSpacer(row, 40);
    labRow = MakeWidget<QLabel>(centralWidget, "labRow", minimum);
    sbxRow = MakeWidget<QSpinBox>(centralWidget, "sbxRow", minimum);
    labCol = MakeWidget<QLabel>(centralWidget, "labCol", minimum);
    sbxCol = MakeWidget<QSpinBox>(centralWidget, "sbxCol", minimum);
    row->addWidget(labRow);
    row->addWidget(sbxRow);
    row->addWidget(labCol);
    row->addWidget(sbxCol);
    column->addLayout(row);
}

void Ui_CSegmentationDialog::AddTabs(QBoxLayout* row)
{
    widget1 = MakeWidget<QWidget>(widget, "widget1", QSize(150, 0));
    widget1->setMaximumSize(100, QWIDGETSIZE_MAX);
    auto* column = MakeLayout<QVBoxLayout>(widget1, "verticalLayout", 0);
    for (int i = 0; i < TabCount; ++i) {
        tab[i] = new CSplitButton(widget1);
        tab[i]->setObjectName("tab" + QString::number(i + 1));
        column->addWidget(tab[i]);
    }
    row->addWidget(widget1);
}

void Ui_CSegmentationDialog::AddEditor(QBoxLayout* row)
{
    widget2 = MakeWidget<QWidget>(widget, "widget2");
    widget2->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* column = MakeLayout<QVBoxLayout>(widget2, "verticalLayout_2", 0);
    SplitWidget = MakeWidget<CSplitWidget>(widget2, "SplitWidget");
    SplitWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    column->addWidget(SplitWidget);
    row->addWidget(widget2);
}

void Ui_CSegmentationDialog::AddButtonRow(QBoxLayout* column)
{
    widget_3 = MakeWidget<QWidget>(centralWidget, "widget_3");
    auto* row = MakeLayout<QHBoxLayout>(widget_3, "horizontalLayout_3", 6, QMargins(0, 9, 0, 0));
    AddSpacer(row, 329);
    btnOk = MakeWidget<QPushButton>(widget_3, "btnOk", QSize(75, 23));
    btnCancel = MakeWidget<QPushButton>(widget_3, "btnCancel", QSize(75, 23));
    row->addWidget(btnOk);
    row->addWidget(btnCancel);
    column->addWidget(widget_3);
}
