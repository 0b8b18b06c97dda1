#pragma once

#include <QObject>

class QInputEvent;
class QWidget;

/// Keeps who stands before the screen in it: no window closes, no menu opens, no button works, until the
/// password was given. Closing a window asks for it, and each key but those for cameras and pages, which can
/// still be enlarged, turned and gone through.
class Kiosk : public QObject
{
    Q_OBJECT

public:
    explicit Kiosk(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The password was given; it keeps nobody any more.
    void left();

private:
    bool isRefused(QObject* watched, QEvent* event);
    bool isAsked(const QObject* watched) const;
    void ask();

    QWidget* m_dialog = nullptr; ///< the question while it is asked
    bool m_isLeft = false;
};
