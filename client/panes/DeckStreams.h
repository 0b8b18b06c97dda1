#pragma once

#include "decode/Frame.h"

#include <QImage>
#include <QObject>
#include <QSharedPointer>
#include <QVector>

#include <functional>

enum class StreamKind;
class CameraHub;
class CPaneDeck;
class FramePump;
class PaneNotice;
class QWidget;
class VideoSource;
class ZoomView;
struct CameraRecord;

/// Which camera lies in which pane of a deck, and the video that plays there. A camera plays while its pane
/// is on screen; a pane that is hidden, on another page, behind another tab or in a minimized window, costs
/// nothing. Where a camera has a smaller stream, each pane takes the one that has its pixels.
class DeckStreams : public QObject
{
    Q_OBJECT

public:
    DeckStreams(CPaneDeck* deck, int paneCount, CameraHub* hub, QObject* parent);
    ~DeckStreams() override;

    /// What makes the source of a pane's camera; null if there is none.
    using SourceMaker =
        std::function<QSharedPointer<VideoSource>(int pane, const CameraRecord& camera, StreamKind kind)>;

    /// Takes the place of the cameras' live sources.
    void setSourceMaker(SourceMaker maker) { m_makeSource = std::move(maker); }

    /// Puts a camera into a pane in place of whatever was there. An index that names no pane does nothing.
    void assign(int pane, const CameraRecord& camera);

    /// Takes the camera out and brings the pane back to idle.
    void clear(int pane);

    /// A pane's camera has another address or name now.
    void reload(int pane);

    /// Exchanges what lies in two panes.
    void swap(int first, int second);

    /// Shows another source in place of a pane's live one, which plays on unseen; null for the live one
    /// again. Lasts no longer than the pane is on screen.
    void setReplay(int pane, VideoSource* replay);

    /// Shows that part of a pane's pictures, in the main stream's own pixels.
    void setZoom(int pane, const ZoomView& zoom);

    /// What a pane says until its camera plays; empty leaves the pane's own text.
    void setWaitingText(const QString& text) { m_waitingText = text; }

    /// The camera of a pane; null if there is none.
    const CameraRecord* cameraAt(int pane) const;

    /// The source that plays in a pane now; null while none does.
    VideoSource* sourceAt(int pane) const;

    /// A pane shows video now.
    bool isShown(int pane) const;

    /// A pane shows another source than its live one.
    bool isReplayed(int pane) const { return isPane(pane) && m_panes[pane].replay; }

    /// What a pane shows now, in some size; null if it shows nothing.
    FramePtr frameAt(int pane) const;

    /// A pane shows its camera's small stream.
    bool showsSmall(int pane) const;

    /// The whole picture in some size that a zoom leaves it in, small and at no cost.
    QImage wholeAt(int pane) const;

    /// How many panes on screen show video now.
    int playingCount() const;

    int paneCount() const { return m_panes.size(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// A pane's source plays from now on, or is about to be let go.
    void started(int pane);
    void stopped(int pane);

    /// A camera was taken out of a pane.
    void cleared(int pane);

    /// What an operator must know of a pane's picture may be new.
    void shownChanged(int pane);

    /// Which panes are on screen, and in what size, has been settled anew.
    void placed();

    /// A pane's camera plays now, or was lost with a reason, as a line for the log; empty when it has gone.
    void stateChanged(int pane, const QString& text);

private Q_SLOTS:
    void sync();
    void syncLater();
    void takeNext();
    void sourceStateChanged();

private:
    struct Pane
    {
        QWidget* label = nullptr;
        const CameraRecord* camera = nullptr;
        QSharedPointer<VideoSource> source;
        QSharedPointer<VideoSource> next; ///< takes the place of the source with its first picture
        StreamKind kind{};                ///< that of the source, or of the next one
        QSize smallSize;                  ///< of the small stream's pictures; empty while it is unknown
        FramePump* pump = nullptr;
        PaneNotice* notice = nullptr;
        VideoSource* replay = nullptr;
        bool playing = false;
        QString toldReason; ///< of the loss that lasts
    };

    bool isOnScreen(const Pane& pane) const;
    static QSize wholeSize(const Pane& pane);
    void tellSizes();
    bool isPane(int pane) const { return pane >= 0 && pane < m_panes.size(); }
    void start(int pane);
    void stop(int pane);
    void showState(int pane);
    void chooseKind(int pane);

    CPaneDeck* m_deck;
    QVector<Pane> m_panes;
    QString m_waitingText;
    SourceMaker m_makeSource;
    bool m_isSyncPending = false;
};
