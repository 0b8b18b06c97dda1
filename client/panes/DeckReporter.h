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
    template <class... Arguments> void Report(void (CPaneDeck::*signal)(Arguments...), const char* name);

    CPaneDeck* m_pDeck;
    QString m_strOrigin;
    EventLog* m_pLog;
};
