#pragma once

#include <QObject>
#include <QSharedPointer>

class CameraHub;
class DeckStreams;
class VideoSource;
struct CameraRecord;

/// Saves what a deck's panes show as pictures, whole and in their own size, named after camera and time. Of a
/// pane that shows a camera's small stream the next picture of the main one is saved, unless that is long in
/// coming. Files are written beside the GUI.
class PaneSnapshots : public QObject
{
    Q_OBJECT

public:
    PaneSnapshots(DeckStreams* streams, CameraHub* hub, QObject* parent);

    void take(int pane);

Q_SIGNALS:
    /// A line for the log.
    void told(const QString& text);
    /// A picture lies there now.
    void saved(const QString& path);

private:
    void takeMain(const CameraRecord& camera, int pane);
    void save(const QImage& image, const QString& camera, qint64 wallMs);

    DeckStreams* m_streams;
    CameraHub* m_hub;
};
