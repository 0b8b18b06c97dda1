#pragma once

#include <QAccessible>

class QWidget;

/// Keeps a factory of accessible interfaces known while it lives. It is asked for the first time when a
/// screen reader or the like is there; without one it costs nothing.
class AccessibleFactory
{
public:
    explicit AccessibleFactory(QAccessible::InterfaceFactory factory);
    ~AccessibleFactory();
    Q_DISABLE_COPY(AccessibleFactory)

private:
    QAccessible::InterfaceFactory m_factory;
};

/// Tells who reads the screen, if anybody does, that a widget has another name or description, as the kind
/// says.
void TellAccessible(QWidget* pWidget, QAccessible::Event eKind);

/// The same of a widget whose value is now another.
void TellValue(QWidget* pWidget, int nValue);

/// The same of a widget that was selected, or is no longer.
void TellSelected(QWidget* pWidget);
