#include "decode/FrameConverter.h"
#include "decode/HalveRow.h"
#include "decode/MotionDetector.h"
#include "packets/FFmpeg.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <cstring>
#include <random>

namespace {

std::shared_ptr<Frame> plainFrame(QSize size, int grey, qint64 wallMs = 0)
{
    FramePool pool;
    const std::shared_ptr<Frame> frame = pool.take(size.width(), size.height());
    std::memset(frame->row(0), grey, size_t(frame->rowBytes()) * size_t(size.height()));
    frame->wallMs = wallMs;
    return frame;
}

} // namespace

class tst_pictures : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void convertsToPaddedRows_data();
    void convertsToPaddedRows();
    void scalesSmoothly();
    void halvesRowsOfAnyWidth();
    void refusesHugeFrames();
    void seesMotion_data();
    void seesMotion();
};

void tst_pictures::convertsToPaddedRows_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("format");
    for (const int width : {3, 17, 704}) {
        QTest::addRow("YUV, %d wide", width) << width << int(AV_PIX_FMT_YUV420P);
        QTest::addRow("full range, %d wide", width) << width << int(AV_PIX_FMT_YUVJ422P);
        QTest::addRow("grey, %d wide", width) << width << int(AV_PIX_FMT_GRAY8);
    }
}

/// Against a conversion into rows that have room to spare.
void tst_pictures::convertsToPaddedRows()
{
    QFETCH(int, width);
    QFETCH(int, format);
    const int height = 7;
    const AvFrame picture(av_frame_alloc());
    picture->width = width;
    picture->height = height;
    picture->format = format;
    QVERIFY(av_frame_get_buffer(picture.get(), 0) >= 0);
    std::minstd_rand random(7);
    for (int plane = 0; plane < 3 && picture->data[plane]; ++plane) {
        for (int i = 0; i < picture->linesize[plane] * (plane == 0 ? height : (height + 1) / 2); ++i)
            picture->data[plane][i] = uchar(random());
    }
    FrameConverter converter;
    const std::shared_ptr<Frame> frame = converter.convert(*picture);
    QVERIFY(frame);
    QCOMPARE(frame->rowBytes() % 4, 0);
    QVERIFY(frame->rowBytes() - width * 3 < 4);
    QCOMPARE(frame->image().size(), QSize(width, height));

    const int wide = (width * 3 + 255) & ~63;
    std::vector<uchar> expected(size_t(wide) * height + 256);
    const AvScaler scaler(sws_getContext(width, height, AVPixelFormat(format), width, height,
                                         AV_PIX_FMT_RGB24, SWS_FAST_BILINEAR, nullptr, nullptr, nullptr));
    uchar* rows[] = {expected.data(), nullptr, nullptr, nullptr};
    const int strides[] = {wide, 0, 0, 0};
    sws_scale(scaler.get(), picture->data, picture->linesize, 0, height, rows, strides);
    for (int y = 0; y < height; ++y)
        QVERIFY(std::memcmp(frame->row(y), rows[0] + y * wide, size_t(width) * 3) == 0);
}

/// Lines of one pixel become grey; the picture as it was can still be had, after the next ones too.
void tst_pictures::scalesSmoothly()
{
    const AvFrame picture(av_frame_alloc());
    picture->width = 640;
    picture->height = 360;
    picture->format = AV_PIX_FMT_GRAY8;
    picture->color_range = AVCOL_RANGE_JPEG;
    QVERIFY(av_frame_get_buffer(picture.get(), 0) >= 0);
    for (int y = 0; y < 360; ++y) {
        for (int x = 0; x < 640; ++x)
            picture->data[0][y * picture->linesize[0] + x] = x % 4 == 0 ? 240 : 0;
    }
    FrameConverter converter;
    const FramePtr small = converter.convert(*picture, {160, 90});
    QVERIFY(small);
    QCOMPARE(small->size(), QSize(160, 90));
    QCOMPARE(small->pictureSize, QSize(640, 360));
    QVERIFY(qAbs(qRed(small->image().pixel(80, 45)) - 60) <= 2);
    QCOMPARE(converter.convert(*picture, {1280, 720})->size(), QSize(1280, 720));
    QCOMPARE(FrameConverter::full(small)->image(), converter.convert(*picture)->image());
    QVERIFY(!converter.convert(*picture, {20000, 9}));
}

void tst_pictures::halvesRowsOfAnyWidth()
{
    std::minstd_rand random(3);
    for (int width = 0; width < 150; ++width) {
        std::vector<uint8_t> rows(size_t(width) * 4);
        std::generate(rows.begin(), rows.end(), [&random] { return uint8_t(random()); });
        std::vector<uint8_t> half(size_t(width) + 1, 77);
        const uint8_t* lower = rows.data() + 2 * width;
        halveRow(rows.data(), lower, half.data(), width);
        for (int x = 0; x < width; ++x)
            QCOMPARE(int(half[size_t(x)]),
                     (rows[2 * x] + rows[2 * x + 1] + lower[2 * x] + lower[2 * x + 1] + 2) / 4);
        QCOMPARE(int(half.back()), 77);
    }
}

void tst_pictures::refusesHugeFrames()
{
    FramePool pool;
    QVERIFY(!pool.take(0, 10));
    QVERIFY(!pool.take(10, -1));
    QVERIFY(!pool.take(16385, 2));
    QVERIFY(!pool.take(8192, 8192));
    QVERIFY(pool.take(1, 1));
}

void tst_pictures::seesMotion_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("contrast");
    QTest::addColumn<int>("sensitivity");
    QTest::addColumn<QRectF>("zone");
    QTest::addColumn<bool>("moves");
    const QRectF all;
    QTest::newRow("nothing") << 0 << 0 << 0 << 50 << all << false;
    QTest::newRow("something that stands") << 80 << 0 << 100 << 50 << all << false;
    QTest::newRow("something that walks") << 80 << 20 << 100 << 50 << all << true;
    QTest::newRow("something small") << 12 << 20 << 100 << 50 << all << false;
    QTest::newRow("something faint") << 80 << 20 << 12 << 50 << all << false;
    QTest::newRow("something darker") << 80 << 20 << -60 << 50 << all << true;
    QTest::newRow("walks, least sensitive") << 80 << 20 << 100 << 1 << all << false;
    QTest::newRow("smaller, most sensitive") << 28 << 20 << 100 << 100 << all << true;
    QTest::newRow("smaller, as usual") << 28 << 20 << 100 << 50 << all << false;
    QTest::newRow("walks outside the zone") << 80 << 20 << 100 << 100 << QRectF(0, 0.5, 1, 0.5) << false;
    QTest::newRow("small in a small zone") << 12 << 20 << 100 << 50 << QRectF(0, 0.16, 1, 0.04) << true;
    QTest::newRow("a zone of nothing") << 80 << 20 << 100 << 100 << QRectF(2, 2, 1, 1) << false;
}

void tst_pictures::seesMotion()
{
    QFETCH(int, side);
    QFETCH(int, speed);
    QFETCH(int, contrast);
    QFETCH(bool, moves);
    QFETCH(int, sensitivity);
    QFETCH(QRectF, zone);
    MotionDetector detector;
    detector.setRule({sensitivity, zone.isNull() ? QVector<QRectF>() : QVector<QRectF>(1, zone)});
    int x = 10;
    int firstLook = -1;
    const auto look = [&](int i) {
        const std::shared_ptr<Frame> frame = plainFrame({704, 576}, 100, 1'000'000 + i * 200);
        for (int y = 0; y < side; ++y)
            std::memset(frame->row(100 + y) + 3 * x, 100 + contrast, size_t(side) * 3);
        return detector.look(*frame);
    };
    for (int i = 0; i < 25; ++i) {
        if (look(i) && firstLook < 0)
            firstLook = i;
        x += speed;
    }
    QCOMPARE(firstLook >= 0, moves);
    QVERIFY(!moves || (firstLook >= 2 && firstLook <= 5));
    // It has come to rest: the background takes it in, and two quiet seconds later all is over.
    QCOMPARE(look(25), moves);
    QCOMPARE(look(26), moves);
    int i = 27;
    while (look(i) && i < 100)
        ++i;
    QVERIFY(!moves || i >= 36);
    QVERIFY(i < 70);
}

int main(int argc, char** argv)
{
    return RunTests<tst_pictures, QCoreApplication>(argc, argv);
}

#include "tst_pictures.moc"
