#pragma once

#include "archive/ArchiveIndex.h"

#include <QDate>
#include <QObject>
#include <QRgb>

class ClientArchive;
class CPaneDeck;
class DayScale;
class DeckStreams;
class PaneTracks;

/// Seconds of the day that have one colour of the scale, the last one not counted.
struct DayRun
{
    int from = 0;
    int to = 0;
    QRgb color = 0;
};

/// What a camera has recorded on the day that is shown.
struct DayRow
{
    QString camera;
    int pane = -1; ///< the first one that shows it
    QVector<DayRun> runs;
    QVector<Span> marks;
};

/// The cameras whose recordings are shown in the panes of a page, each once, and what they have on the day of
/// the scale. It looks by itself while the tab is on screen, and reads as many cameras at a time as the
/// archive tells of soon.
class DayRows : public QObject
{
    Q_OBJECT

public:
    DayRows(CPaneDeck* deck, DeckStreams* streams, const PaneTracks* tracks, const DayScale* scale,
            const ClientArchive* archive, QWidget* tab);

    const QVector<DayRow>& rows() const { return m_rows; }
    /// The row of the active pane's camera; -1 if it has none.
    int activeRow() const;

Q_SIGNALS:
    /// There are other rows, or another one is the active one.
    void rowsChanged();
    /// More or less is known of some rows.
    void contentChanged();

private Q_SLOTS:
    void look();
    void takeArchive(const QString& camera);
    void readNext();

private:
    QVector<DayRow> shownRows() const;
    void readLater(const QString& camera);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    const PaneTracks* m_tracks;
    const DayScale* m_scale;
    const ClientArchive* m_archive;
    QVector<DayRow> m_rows;
    QDate m_day;
    QString m_active;
    QStringList m_unread; ///< cameras that are to be read anew
};
