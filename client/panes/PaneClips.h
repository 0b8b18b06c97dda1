#pragma once

#include "archive/SegmentTrack.h"

#include <QHash>
#include <QObject>

#include <functional>

/// What an operator takes out of the recordings: clips between two marks, and whole files. Both are written
/// beside the GUI.
class PaneClips : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    using Pieces = std::function<QVector<TrackPiece>(qint64 fromMs, qint64 toMs)>;

    /// The first mark of a pane begins a clip; the second one ends it, in whatever order the moments are, and
    /// saves what there is in between, which `pieces` tells. True if the pane has a mark now.
    bool mark(int pane, qint64 ms, const Pieces& pieces, const QString& camera);
    bool isMarked(int pane) const { return m_starts.contains(pane); }
    void forget(int pane) { m_starts.remove(pane); }
    /// Saves a copy of a piece's file.
    void download(const TrackPiece& piece, const QString& camera);

    /// How the log writes a moment of recorded time.
    static QString clockText(qint64 ms);

Q_SIGNALS:
    /// One line for the log.
    void told(const QString& text);
    /// A file lies there now.
    void saved(const QString& path);

private:
    /// `work` gives a line for the log, and true if the file was saved.
    void workBeside(const QString& path, std::function<std::pair<QString, bool>()> work);

    QHash<int, qint64> m_starts;
};
