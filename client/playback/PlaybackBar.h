#pragma once

#include <QWidget>

class DayField;
class QLabel;
class QPushButton;
class QToolButton;

/// The row below a playback deck that says which moment is shown, at which speed, and leads to what there is
/// to do with recordings.
class PlaybackBar : public QWidget
{
    Q_OBJECT

public:
    /// Takes the field and what follows it into its row.
    PlaybackBar(DayField* field, QWidget* trouble);

    /// A moment of recorded time, milliseconds since 1970.
    void showMoment(qint64 ms);
    /// A place in a file and its length, milliseconds.
    void showFile(qint64 ms, qint64 lengthMs);
    void showNothing();
    /// As the deck writes it, such as "1/2X".
    void showSpeed(const QString& speed);

Q_SIGNALS:
    /// To the next or the previous motion or alarm.
    void markAsked(bool next);
    void exportAsked();

private:
    QToolButton* addMarkButton(bool next);
    QPushButton* addExportButton();
    void showTime(const QString& text);

    QLabel* m_time;
    QLabel* m_speed;
};
