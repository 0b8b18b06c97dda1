#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QVector>

#include <memory>
#include <vector>

class CPaneDeck;
class DeckStreams;
class PacketRing;
class VideoSource;
struct EncodedPacket;

/// The panes whose last minute is kept. Keeping it means encoding for a camera that gives pictures only, so a
/// page of more than four playing panes keeps the minute of the active one alone.
QVector<int> panesWithRing(const QVector<int>& playing, int active);

/// Keeps the last minute of what plays in a deck's panes.
class PaneRings : public QObject
{
    Q_OBJECT

public:
    PaneRings(CPaneDeck* deck, DeckStreams* streams, QObject* parent);
    ~PaneRings() override;

    /// What is kept of a pane's video, from a key frame on; empty if nothing is.
    std::vector<std::shared_ptr<const EncodedPacket>> snapshot(int pane) const;

private Q_SLOTS:
    void updateLater();
    void update();

private:
    struct Kept
    {
        QPointer<VideoSource> source;
        std::shared_ptr<PacketRing> ring;
    };

    void drop(int pane);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    QHash<int, Kept> m_kept;
    bool m_isUpdatePending = false;
};
