#include "manager/CameraTest.h"

#include "cameras/CaptionStrip.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "panes/FramePump.h"
#include "synthetic/CameraSource.h"

#include <CPaneDeck.h>

#include <QDateTime>
#include <QTimerEvent>

namespace {

constexpr int TellMs = 500;

void letGo(VideoSource* source)
{
    source->disconnect();
    // It may be in one of its own signals.
    source->deleteLater();
}

} // namespace

CameraTest::CameraTest(CPaneDeck* deck, QObject* parent)
    : QObject(parent), m_deck(deck), m_pump(new FramePump(deck, 0, this)), m_source(nullptr, letGo)
{
}

CameraTest::~CameraTest()
{
    stop();
}

void CameraTest::start(const SourceAddress& address)
{
    stop();
    m_pump->clear();
    m_source.reset(makeCameraSource(address, captionStrip).release());
    m_probe = std::make_shared<StreamProbe>();
    m_source->addSink(m_probe);
    m_firstMs = -1;
    m_since.start();
    m_timer.start(TellMs, this);
    connect(m_source.get(), &VideoSource::stateChanged, this, &CameraTest::tell);
    connect(m_source.get(), &VideoSource::frameReady, this, [this] {
        if (m_firstMs < 0)
            m_firstMs = m_since.elapsed();
        if (const FramePtr frame = m_source->frame())
            m_delayMs = QDateTime::currentMSecsSinceEpoch() - frame->wallMs;
    });
    m_pump->setSource(m_source.get());
    m_source->start();
    tell();
}

void CameraTest::stop()
{
    m_timer.stop();
    m_pump->setSource(nullptr);
    if (m_source)
        m_source->removeSink(m_probe);
    m_source.reset();
}

void CameraTest::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        tell();
}

void CameraTest::tell()
{
    if (!m_source)
        return;
    if (m_source->state() != SourceState::Lost) {
        Q_EMIT told(m_firstMs < 0 ? word("Connecting ...") : finding());
        return;
    }
    const QString reason = engineText(m_source->reason());
    stop();
    Q_EMIT told(reason);
}

QString CameraTest::finding() const
{
    const StreamProbe::Finding stream = m_probe->finding();
    const QSize size = m_pump->videoSize();
    QStringList parts{word("%1 x %2").arg(size.width()).arg(size.height())};
    if (!stream.codec.isEmpty())
        parts.append(stream.codec);
    if (stream.rate > 0)
        parts.append(word("%1 pictures a second").arg(stream.rate, 0, 'f', 1));
    if (stream.kilobits > 0)
        parts.append(word("%1 kbit/s").arg(stream.kilobits));
    parts.append(word("first picture after %1 s").arg(double(m_firstMs) / 1000, 0, 'f', 1));
    parts.append(word("delay %1 ms").arg(m_delayMs));
    // Where words run from right to left each part keeps its own direction.
    for (QString& part : parts)
        part = QChar(0x2068) + part + QChar(0x2069);
    return parts.join(", ");
}
