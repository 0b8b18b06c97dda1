#pragma once

#include <QDate>
#include <QObject>
#include <QVector>

class ClientArchive;
class QCalendarWidget;

/// Marks the days of a calendar on which anything was recorded. The month that is shown is looked up beside
/// the GUI.
class RecordedDays : public QObject
{
    Q_OBJECT

public:
    RecordedDays(QCalendarWidget* calendar, const ClientArchive* archive);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look();
    void mark(const QVector<QDate>& days);

    QCalendarWidget* m_calendar;
    const ClientArchive* m_archive;
    quint64 m_look = 0; ///< the answers of earlier ones don't count
};
