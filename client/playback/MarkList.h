#pragma once

#include <QWidget>

class ClientArchive;
class DayRows;
class MarkModel;
class QLabel;
class QListView;

/// The list of the day's motion and alarms, beside a playback deck.
class MarkList : public QWidget
{
    Q_OBJECT

public:
    MarkList(const DayRows* rows, const ClientArchive* archive);

Q_SIGNALS:
    /// By a click or the Enter key.
    void chosen(int pane, qint64 ms);

private:
    void choose(int row);
    void showCount();

    MarkModel* m_model;
    QListView* m_view;
    QLabel* m_title;
    int m_place = 0; ///< of the scroll bar, before the marks change
};
