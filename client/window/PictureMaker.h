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
    void NextLayout();
    void TakePicture();

    MainWindow* m_pWindow;
    QString m_strDirectory;
    QVector<int> m_vecLayouts;
    int m_nWaited = -1;
    int m_nPlayed = 0;
};
