#pragma once

#include <QFrame>

class AlarmBook;
class QPushButton;
class QTreeWidget;

/// The list of alarms, with what one does about them.
class AlarmPanel : public QFrame
{
    Q_OBJECT

public:
    /// The book must outlive the panel.
    explicit AlarmPanel(AlarmBook* book, QWidget* parent = nullptr);

Q_SIGNALS:
    /// What was recorded at an alarm is to be played, from a moment, milliseconds since 1970.
    void playAsked(const QString& cameraId, qint64 fromMs);

private:
    void layOut();
    void showAlarms();
    void showButtons();
    void setChosenSeen();
    void playChosen();

    AlarmBook* m_book;
    QTreeWidget* m_list;
    QPushButton* m_seen;
    QPushButton* m_allSeen;
    QPushButton* m_play;
};
