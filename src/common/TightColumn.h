#pragma once

#include <QVBoxLayout>

/// A column on the widget without spacing or margins, under the object name.
inline QVBoxLayout* TightColumn(QWidget* pWidget, const char* name)
{
    auto* column = new QVBoxLayout(pWidget);
    column->setObjectName(name);
    column->setSpacing(0);
    column->setContentsMargins(0, 0, 0, 0);
    return column;
}
