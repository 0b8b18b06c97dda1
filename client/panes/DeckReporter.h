#pragma once

#include <QObject>
#include <QPoint>

class CPaneDeck;
class EventLog;
class QTreeWidgetItem;

/// Writes every signal of a deck to the log, as its name and arguments.
class DeckReporter : public QObject
{
    Q_OBJECT

public:
    DeckReporter(CPaneDeck* deck, const QString& origin, EventLog* log);

private:
    template <class... Arguments> void report(void (CPaneDeck::*signal)(Arguments...), const char* name);

    CPaneDeck* m_deck;
    QString m_origin;
    EventLog* m_log;
};
