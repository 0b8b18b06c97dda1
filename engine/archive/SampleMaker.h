#pragma once

#include "archive/ArchiveKeeper.h"
#include "synthetic/Caption.h"

#include <QObject>

#include <atomic>
#include <memory>

/// Makes short recordings of synthetic cameras spread over a day, in the background and faster than they
/// play, with what moved in them and an alarm.
class SampleMaker : public QObject
{
    Q_OBJECT

public:
    static constexpr int PiecesPerCamera = 4;
    static constexpr qint64 PieceMs = 150'000;

    /// The keeper, the archive's recorder, must outlive the maker.
    explicit SampleMaker(ArchiveKeeper* keeper, CaptionPainter caption = {}, QObject* parent = nullptr);
    /// Breaks off.
    ~SampleMaker() override;

    /// Of the cameras 1 to names.size(), between two moments. Once only.
    void start(const QStringList& names, qint64 fromMs, qint64 toMs, qint64 pieceMs = PieceMs);

Q_SIGNALS:
    void finished();

private:
    struct Piece
    {
        int number;
        QString camera;
        qint64 startMs;
        qint64 endMs;
        QString path;
        QVector<Span> spans;
    };

    static bool make(Piece& piece, const CaptionPainter& caption, const std::atomic<bool>& isStopped);
    void take(const Piece& piece);
    QVector<Piece> plan(const QStringList& names, qint64 fromMs, qint64 toMs, qint64 pieceMs) const;

    ArchiveKeeper* m_keeper;
    CaptionPainter m_caption;
    std::shared_ptr<std::atomic<bool>> m_isStopped = std::make_shared<std::atomic<bool>>(false);
};
