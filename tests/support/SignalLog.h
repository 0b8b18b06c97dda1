#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <functional>

/// Records signals of any number of objects in the order in which they fire, each as its name and arguments,
/// such as "sig_activeWnd(3)" or "sig_RectanglePoint(0,(1,2),(3,4))".
/// Enumerations and flags show as numbers, pointers as "null" or "pointer".
class SignalLog : public QObject
{
public:
    /// Watches one signal, written with SIGNAL(). An unknown signal fails the test through Qt's warning.
    void Watch(QObject* sender, const char* signal, const QString& prefix = QString());

    /// Watches all signals that the object's own class declares.
    void WatchAll(QObject* sender, const QString& prefix = QString());

    /// What has been recorded since the last Take(), which forgets it.
    QStringList Take();

    const QStringList& Entries() const { return m_listEntries; }

    /// Called at every recorded signal, inside the emit; for receivers that call back or delete.
    std::function<void(const QString&)> onSignal;

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    struct Source
    {
        QMetaMethod method;
        QString prefix;
    };

    void Add(QObject* sender, int signalIndex, const QString& prefix);

    QVector<Source> m_vecSources;
    QStringList m_listEntries;
};
