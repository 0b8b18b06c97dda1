#include "playback/ScalePreview.h"

#include "cameras/ClientArchive.h"
#include "playback/DayRows.h"
#include "playback/DayScale.h"
#include "playback/ScalePlace.h"
#include "playback/ScaleTip.h"

ScalePreview::ScalePreview(ScalePlace* place, ScaleTip* tip, const DayRows* rows, const DayScale* scale,
                           const ClientArchive* archive)
    : QObject(tip), m_tip(tip), m_rows(rows), m_scale(scale), m_archive(archive),
      m_maker(archive->readerMaker(), ScaleTip::PictureSize, 1)
{
    connect(place, &ScalePlace::draggedTo, this, &ScalePreview::ask);
    connect(&m_maker, &KeyPictures::made, this, &ScalePreview::take);
}

void ScalePreview::ask(int second)
{
    const int row = m_rows->activeRow();
    m_key = row < 0 ? QString() : m_archive->keyOf(m_rows->rows()[row].camera);
    if (row >= 0)
        m_maker.ask(m_key, m_scale->momentAt(second));
}

void ScalePreview::take(const QString& key, qint64, const QImage& picture)
{
    if (key == m_key)
        m_tip->showPicture(picture);
}
