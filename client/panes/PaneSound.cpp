#include "panes/PaneSound.h"

#include "panes/DeckStreams.h"
#include "sound/SoundOutput.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QSettings>

namespace {

constexpr int FirstVolume = 7;
const char* const VolumeKey = "sound/volume";

int Volume()
{
    return QSettings().value(VolumeKey, FirstVolume).toInt();
}

} // namespace

PaneSound::PaneSound(CPaneDeck* deck, DeckStreams* streams, std::shared_ptr<SoundOutput> output,
                     QObject* parent)
    : QObject(parent), m_pDeck(deck), m_pStreams(streams), m_output(std::move(output))
{
    m_output->setVolume(Volume());
    connect(streams, SIGNAL(started(int)), SLOT(slot_started(int)));
    connect(streams, SIGNAL(stopped(int)), SLOT(slot_stopped(int)));
    connect(deck, SIGNAL(sig_VoiceChanged(int,int)), SLOT(slot_volume(int,int)));
    connect(m_output.get(), SIGNAL(failed(QString)), SLOT(slot_failed(QString)));
}

void PaneSound::Toggle(int pane)
{
    if (IsHeard(pane)) {
        Hush(pane);
        return;
    }
    if (!HasSound(pane)) {
        m_pDeck->SetWndBtnState(pane, BTN_AUDIO, 0);
        Q_EMIT told(QString("pane %1 has no sound").arg(pane));
        return;
    }
    Hush(m_nHeard);
    m_nHeard = pane;
    m_output->open();
    m_pStreams->SourceAt(pane)->setSoundSink(m_output);
    m_pDeck->SetWndBtnState(pane, BTN_AUDIO, 1);
    Q_EMIT told(QString("pane %1 audio on").arg(pane));
    Q_EMIT changed(pane);
}

void PaneSound::Hush(int pane)
{
    if (pane < 0 || !IsHeard(pane))
        return;
    m_nHeard = -1;
    if (VideoSource* source = m_pStreams->SourceAt(pane))
        source->setSoundSink(nullptr);
    m_pDeck->SetWndBtnState(pane, BTN_AUDIO, 0);
    Q_EMIT told(QString("pane %1 audio off").arg(pane));
    Q_EMIT changed(pane);
}

bool PaneSound::HasSound(int pane) const
{
    const VideoSource* source = m_pStreams->SourceAt(pane);
    return source && source->hasSound();
}

void PaneSound::ShowVolume()
{
    m_pDeck->SetVoiceValue(m_pDeck->GetCurrentWnd(), Volume());
}

void PaneSound::slot_started(int pane)
{
    connect(m_pStreams->SourceAt(pane), SIGNAL(stateChanged()), SLOT(slot_sourceState()),
                                                                     Qt::UniqueConnection);
    Q_EMIT changed(pane);
}

void PaneSound::slot_stopped(int pane)
{
    Hush(pane);
    Q_EMIT changed(pane);
}

void PaneSound::slot_sourceState()
{
    for (int pane = 0; pane < m_pStreams->PaneCount(); ++pane) {
        if (m_pStreams->SourceAt(pane) == sender())
            Q_EMIT changed(pane);
    }
}

void PaneSound::slot_failed(const QString& error)
{
    if (m_nHeard < 0)
        return;
    Q_EMIT told(error);
    Hush(m_nHeard);
}

void PaneSound::slot_volume(int, int value)
{
    QSettings().setValue(VolumeKey, value);
    m_output->setVolume(value);
}
