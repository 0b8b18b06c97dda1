#pragma once

#include <QToolButton>

/// A tool button that may be deleted inside its clicked(): QToolButton itself writes to the button after it.
/// Its default action doesn't follow its check state, which Qt 6 would have it do.
class CToolButton : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override { QAbstractButton::mouseReleaseEvent(event); }
    void checkStateSet() override { QAbstractButton::checkStateSet(); }
};
