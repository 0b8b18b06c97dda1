#pragma once

#include "packets/EncodedPacket.h"
#include "packets/PacketSink.h"
#include "source/SourceFeed.h"

#include <QImage>

#include <vector>

/// Small files whose pictures tell their number by their grey.
namespace TestVideo {

constexpr int PicturesPerSecond = 25;
constexpr qint64 StepMs = 1000 / PicturesPerSecond;

struct Recipe
{
    int pictures = 10;
    QSize size{64, 48};
    AVCodecID codec = AV_CODEC_ID_MPEG4;
    int keyDistance = 5;
    int reordered = 0;     ///< pictures that follow out of their order
    bool hasSound = false; ///< each picture's with its number as level
};

/// A level of sound, of 32768, for each number.
constexpr int SoundStep = 1000;

/// Writes a Matroska file; false if that fails.
bool write(const QString& path, const Recipe& recipe = {});
/// Plays a file or what else a URL names.
FeedMaker player(const QString& url);
/// The number of a decoded picture of such a file, up to 21.
int number(const QImage& picture);

/// The file's packets, as if their pictures had come one by one from `startMs` on.
std::vector<PacketPtr> packets(const QString& path, qint64 startMs = 0);
QByteArray data(const PacketPtr& packet);

} // namespace TestVideo
