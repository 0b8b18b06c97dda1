#pragma once

#include <QTimer>

class QWidget;

/// A timer that runs only while a widget is on screen. It begins anew each time that the widget is shown.
class VisibleTimer : public QTimer
{
    Q_OBJECT

public:
    VisibleTimer(QWidget* widget, int intervalMs);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
