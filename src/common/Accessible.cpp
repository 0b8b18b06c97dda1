#include "common/Accessible.h"

#include <QWidget>

AccessibleFactory::AccessibleFactory(QAccessible::InterfaceFactory factory) : m_factory(factory)
{
    QAccessible::installFactory(factory);
}

AccessibleFactory::~AccessibleFactory()
{
    QAccessible::removeFactory(m_factory);
}

void TellAccessible(QWidget* pWidget, QAccessible::Event eKind)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(pWidget, eKind);
    QAccessible::updateAccessibility(&event);
}

void TellValue(QWidget* pWidget, int nValue)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(pWidget, nValue);
    QAccessible::updateAccessibility(&event);
}

void TellSelected(QWidget* pWidget)
{
    if (!QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(pWidget, changed);
    QAccessible::updateAccessibility(&event);
}
