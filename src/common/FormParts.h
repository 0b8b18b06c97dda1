#pragma once

#include <QBoxLayout>
#include <QMargins>
#include <QSpacerItem>
#include <QWidget>

/// What forms are built of. Style sheets and applications find each part by its object name.
namespace FormParts {

/// A widget of a class on its parent.
template <class Widget> Widget* NewWidget(QWidget* parent, const QString& name)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(name);
    return widget;
}

/// The same, at the end of a row or column.
template <class Widget> Widget* AddWidget(QBoxLayout* box, QWidget* parent, const QString& name)
{
    auto* widget = NewWidget<Widget>(parent, name);
    box->addWidget(widget);
    return widget;
}

/// The layout of a widget, or without one a layout for a place in another.
template <class Layout>
Layout* NewLayout(QWidget* widget, const QString& name, int spacing, const QMargins& margins = QMargins())
{
    auto* layout = new Layout(widget);
    layout->setObjectName(name);
    layout->setSpacing(spacing);
    layout->setContentsMargins(margins);
    return layout;
}

/// A row at the end of another or of a column.
inline QHBoxLayout* AddRow(QBoxLayout* box, const QString& name, int spacing,
                           const QMargins& margins = QMargins())
{
    auto* row = NewLayout<QHBoxLayout>(nullptr, name, spacing, margins);
    box->addLayout(row);
    return row;
}

/// Room in a row that grows with it.
inline void AddSpacer(QBoxLayout* row, int width, int height = 20)
{
    row->addItem(new QSpacerItem(width, height, QSizePolicy::Expanding, QSizePolicy::Minimum));
}

} // namespace FormParts
