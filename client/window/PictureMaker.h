#pragma once

#include <QObject>
#include <QString>
#include <QVector>

class MainWindow;

/// Takes pictures of the window in several layouts, each when all panes on the page show video, and ends the
/// program.
class PictureMaker : public QObject
{
    Q_OBJECT

public:
    PictureMaker(MainWindow* window, const QString& directory);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void nextLayout();
    void takePicture();

    MainWindow* m_window;
    QString m_directory;
    QVector<int> m_layouts;
    int m_waitedMs = -1;
    int m_playedMs = 0;
};
