#include "frames/FramePainter.h"
#include "panes/FramePictures.h"
#include "panes/GuardedFrame.h"
#include "support/DeckTestCase.h"
#include "support/SeededGenerator.h"

#include <QPainter>

#include <hwy/targets.h>

namespace {

/// Paints a frame of one size to the other by both ways, at a place where it partly leaves the picture. Qt
/// rounds otherwise where it scales 32-bit pixels; a frame of these is to look as one of RGB888.
QString Compare(const QSize& source, const QSize& target, QRandomGenerator& random, bool& direct)
{
    const GuardedFrame frame(source, random,
                             random.bounded(2) ? QImage::Format_RGB32 : QImage::Format_RGB888);
    const QPoint origin(Between(random, -3, 5), Between(random, -3, 5));
    QImage ours = Noise((target + QSize(3, 3)).boundedTo(QSize(32767, 32767)), QImage::Format_RGB32);
    QImage plain = ours.copy();
    direct = PaintFrame(ours, origin, frame.View(), target);
    {
        QPainter painter(&plain);
        painter.translate(origin);
        const QImage plainFrame = frame.Copy().convertToFormat(QImage::Format_RGB888);
        painter.drawImage(0, 0, plainFrame.scaled(target, Qt::IgnoreAspectRatio, Qt::FastTransformation));
    }
    const QString difference = direct ? Difference(ours, plain) : QString();
    return difference.isEmpty() ? QString() : TextOf(source) + " to " + TextOf(target) + " " + difference;
}

} // namespace

/// How a frame is sampled into a picture, without a window.
class tst_frame_samples : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void samplesAsQtDoes();
    void samplesAtTheBounds();
    void samplesOnEachProcessor();
    void knowsWhenToKeepOut();

private:
    QRandomGenerator m_random = SeededGenerator();
};

void tst_frame_samples::samplesAsQtDoes()
{
    // A few pixels, reduced, enlarged, and frames and panes as they come; some of nearly the frame's width,
    // where a load is too short here and there.
    const std::tuple<int, int, int> rows[] = {
        {9, 30, 1500}, {700, 120, 100}, {100, 900, 100}, {1920, 1920, 15}};
    for (const auto& [sourceLimit, targetLimit, count] : rows) {
        int directly = 0;
        for (int i = 0; i < count; ++i) {
            const QSize source(Between(m_random, 1, sourceLimit), Between(m_random, 1, sourceLimit));
            QSize target(Between(m_random, 1, targetLimit), Between(m_random, 1, targetLimit));
            if (i % 8 == 0)
                target.setWidth(source.width());
            if (i % 8 == 4)
                target.setWidth(qMax(1, source.width() - source.width() * (i % 5) / 64));
            if (i % 16 == 0)
                target.setHeight(source.height());
            bool direct = false;
            QCOMPARE(Compare(source, target, m_random, direct), QString());
            directly += direct;
        }
        QVERIFY(directly > count * 8 / 10);
    }
}

void tst_frame_samples::samplesAtTheBounds()
{
    const std::tuple<const char*, QSize, QSize, bool> rows[] = {
        {"one pixel", {1, 1}, {40, 30}, true},
        {"to one pixel", {40, 30}, {1, 1}, true},
        {"last step for which there is a plan, down", {989, 989}, {10, 10}, true},
        {"down beyond it", {990, 20}, {10, 10}, false},
        {"last step, up", {3, 3}, {764, 764}, true},
        {"up beyond it", {10, 3}, {10, 765}, false},
        {"several chunks of columns", {1500, 2}, {9001, 3}, true},
        {"widest", {32767, 2}, {32767, 5}, true},
        {"widest, from less", {700, 2}, {32767, 3}, true},
        {"highest", {3, 700}, {7, 32767}, true},
        {"wider", {700, 2}, {32768, 3}, false},
        {"from wider", {32768, 2}, {700, 3}, false}};
    for (const auto& [name, source, target, directly] : rows) {
        bool direct = false;
        QCOMPARE(Compare(source, target, m_random, direct), QString());
        QVERIFY2(direct == directly, name);
    }
}

void tst_frame_samples::samplesOnEachProcessor()
{
    QVERIFY2(hwy::SupportedTargets() & ~(HWY_SCALAR | HWY_EMU128), "no vectors here");
    for (const int64_t processor : {int64_t(HWY_SCALAR), int64_t(HWY_SSSE3), int64_t(HWY_SSE4),
                                    int64_t(HWY_AVX2), int64_t(HWY_AVX3), int64_t(HWY_NEON)}) {
        if ((hwy::SupportedTargets() & processor) == 0)
            continue;
        hwy::SetSupportedTargetsForTest(processor);
        hwy::GetChosenTarget().DeInit();
        for (int i = 0; i < 60; ++i) {
            const QSize source(Between(m_random, 1, 50 << i % 4), Between(m_random, 1, 20));
            const QSize target(Between(m_random, 1, 200), Between(m_random, 1, 20));
            bool direct = false;
            const QString difference = Compare(source, target, m_random, direct);
            QVERIFY2(difference.isEmpty(), qPrintable(hwy::TargetName(processor) + (" " + difference)));
        }
        hwy::SetSupportedTargetsForTest(0);
        hwy::GetChosenTarget().DeInit();
    }
}

void tst_frame_samples::knowsWhenToKeepOut()
{
    const QSize size(70, 50);
    QImage fine = Noise(size, QImage::Format_RGB32);
    fine.setDevicePixelRatio(1.5);
    const QImage shared = Noise(size, QImage::Format_RGB32);
    const std::tuple<const char*, QImage, bool> rows[] = {
        {"opaque", Noise(size, QImage::Format_RGB32), true},
        {"premultiplied", Noise(size, QImage::Format_ARGB32_Premultiplied), true},
        {"not premultiplied", Noise(size, QImage::Format_ARGB32), false},
        {"16 bits", Noise(size, QImage::Format_RGB16), false},
        {"another order of bytes", Noise(size, QImage::Format_RGBX8888), false},
        {"fine screen", fine, true},
        {"wider than Qt paints", Noise(QSize(32768, 45), QImage::Format_RGB32), false},
        {"pixels that another picture shares", shared, false},
    };
    const GuardedFrame frame(QSize(31, 17), m_random);
    for (const auto& [name, picture, directly] : rows) {
        QImage image = picture;
        if (picture.constBits() != shared.constBits())
            image.detach();
        const QImage before = image.copy();
        QVERIFY2(PaintFrame(image, QPoint(3, -3), frame.View(), QSize(60, 40)) == directly, name);
        QVERIFY2(Difference(image, before).isEmpty() == !directly, name);
    }
}

QTEST_MAIN(tst_frame_samples)

#include "tst_frame_samples.moc"
