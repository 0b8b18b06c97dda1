#pragma once

#include "archive/KeyPictures.h"

class ClientArchive;
class DayRows;
class DayScale;
class ScalePlace;
class ScaleTip;

/// While the thumb is dragged: the picture of the active camera at the thumb's time, above it. Whatever the
/// thumb has left behind by then is not made.
class ScalePreview : public QObject
{
    Q_OBJECT

public:
    ScalePreview(ScalePlace* place, ScaleTip* tip, const DayRows* rows, const DayScale* scale,
                 const ClientArchive* archive);

private:
    void ask(int second);
    void take(const QString& key, qint64 ms, const QImage& picture);

    ScaleTip* m_tip;
    const DayRows* m_rows;
    const DayScale* m_scale;
    const ClientArchive* m_archive;
    QString m_key; ///< of the camera that was asked for last
    KeyPictures m_maker;
};
