#include "panes/PaneSound.h"

#include "common/EngineText.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "sound/SoundOutput.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QSettings>

namespace {

constexpr int FirstVolume = 7;
constexpr char VolumeKey[] = "sound/volume";

int volume()
{
    return QSettings().value(VolumeKey, FirstVolume).toInt();
}

} // namespace

PaneSound::PaneSound(CPaneDeck* deck, DeckStreams* streams, std::shared_ptr<SoundOutput> output,
                     QObject* parent)
    : QObject(parent), m_deck(deck), m_streams(streams), m_output(std::move(output))
{
    m_output->setVolume(volume());
    connect(streams, &DeckStreams::started, this, &PaneSound::paneStarted);
    connect(streams, &DeckStreams::stopped, this, &PaneSound::paneStopped);
    connect(deck, &CPaneDeck::sig_VoiceChanged, this, &PaneSound::setVolume);
    connect(m_output.get(), &SoundOutput::failed, this, &PaneSound::outputFailed);
}

void PaneSound::toggle(int pane)
{
    if (isHeard(pane)) {
        hush(pane);
        return;
    }
    if (!hasSound(pane)) {
        m_deck->SetWndBtnState(pane, BTN_AUDIO, 0);
        Q_EMIT told(word("pane %1 has no sound").arg(pane));
        return;
    }
    hush(m_heardPane);
    m_heardPane = pane;
    m_output->open();
    m_streams->sourceAt(pane)->setSoundSink(m_output);
    m_deck->SetWndBtnState(pane, BTN_AUDIO, 1);
    Q_EMIT told(word("pane %1 audio on").arg(pane));
    Q_EMIT changed(pane);
}

void PaneSound::hush(int pane)
{
    if (pane < 0 || !isHeard(pane))
        return;
    m_heardPane = -1;
    if (VideoSource* source = m_streams->sourceAt(pane))
        source->setSoundSink(nullptr);
    m_deck->SetWndBtnState(pane, BTN_AUDIO, 0);
    Q_EMIT told(word("pane %1 audio off").arg(pane));
    Q_EMIT changed(pane);
}

bool PaneSound::hasSound(int pane) const
{
    const VideoSource* source = m_streams->sourceAt(pane);
    return source && source->hasSound();
}

void PaneSound::showVolume()
{
    m_deck->SetVoiceValue(m_deck->GetCurrentWnd(), volume());
}

void PaneSound::paneStarted(int pane)
{
    connect(m_streams->sourceAt(pane), &VideoSource::stateChanged, this, &PaneSound::sourceStateChanged,
            Qt::UniqueConnection);
    Q_EMIT changed(pane);
}

void PaneSound::paneStopped(int pane)
{
    hush(pane);
    Q_EMIT changed(pane);
}

void PaneSound::sourceStateChanged()
{
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        if (m_streams->sourceAt(pane) == sender())
            Q_EMIT changed(pane);
    }
}

void PaneSound::outputFailed(const QString& error)
{
    if (m_heardPane < 0)
        return;
    Q_EMIT told(engineText(error));
    hush(m_heardPane);
}

void PaneSound::setVolume(int, int value)
{
    QSettings().setValue(VolumeKey, value);
    m_output->setVolume(value);
}
