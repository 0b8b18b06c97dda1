#pragma once

#include <QToolButton>

/// A tool button that may be deleted inside its clicked(): QToolButton itself writes to the button after it.
class CToolButton : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override { QAbstractButton::mouseReleaseEvent(event); }
};
