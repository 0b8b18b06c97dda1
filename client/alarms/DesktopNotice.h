#pragma once

#include <QObject>

/// Tells something by the desktop's own service of notices; silent where there is none.
class DesktopNotice : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Takes the place of the last notice that still shows.
    void show(const QString& title, const QString& text);

private:
    quint32 m_last = 0;
};
