#pragma once

#include <QBasicTimer>
#include <QFrame>

class QLabel;
class QPushButton;

/// Tells for some seconds, over a deck's lower edge, that a file was saved, and opens its folder. It stays
/// while the pointer is on it.
class SavedBar : public QFrame
{
    Q_OBJECT

public:
    /// `margin` is the room to leave below it.
    SavedBar(QWidget* deck, int margin);

    void tell(const QString& path);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void place();
    void openFolder();

    int m_margin;
    QString m_path;
    QLabel* m_text;
    QPushButton* m_open;
    QBasicTimer m_timer;
};
