#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QString>

class QWidget;

/// Keeps a file that tells where every named widget now lies on the screen, for scripts that work the client
/// with a pointer. A line each: name, left, top, width, height; of several with one name on screen, in the
/// order of the tree, the second is name#1, and those of the parent's window come first. Tree rows are there
/// by their text.
class PlaceWriter : public QObject
{
    Q_OBJECT

public:
    PlaceWriter(const QString& path, QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QString m_path;
    QBasicTimer m_timer;
};
