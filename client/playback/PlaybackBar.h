#pragma once

#include <QHash>
#include <QWidget>

class DayField;
class QHBoxLayout;
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

    /// A button that shows and hides a part of the tab, as it was at the last start. `name` is that of the
    /// button and the setting.
    void addPart(const QString& name, const QIcon& icon, const QString& text, QWidget* part);
    /// Hides a part while there is no room for it.
    void allowPart(const QString& name, bool isAllowed);

    /// A moment of recorded time, milliseconds since 1970.
    void showMoment(qint64 ms);
    /// A place in a file and its length, milliseconds.
    void showFile(qint64 ms, qint64 lengthMs);
    void showNothing();
    /// The speed as the deck writes it, such as "1/2X", and which way.
    void showSpeed(const QString& speed, bool isBackward);

Q_SIGNALS:
    /// To the next or the previous motion or alarm.
    void markAsked(bool next);
    /// To play backwards, or forwards again.
    void turnAsked();
    void exportAsked();

private:
    QWidget* makeMarkButtons();
    QToolButton* addTurnButton();
    QToolButton* addMarkButton(bool next);
    static QToolButton* makeButton(const QString& name, const QIcon& icon, const QString& text,
                                   const QString& key);
    QPushButton* addExportButton();
    void showTime(const QString& text);

    struct Part
    {
        QToolButton* button = nullptr;
        QWidget* widget = nullptr;
    };

    QHash<QString, Part> m_parts;
    QHBoxLayout* m_row;
    QLabel* m_time;
    QLabel* m_speed;
    QToolButton* m_turn;
};
