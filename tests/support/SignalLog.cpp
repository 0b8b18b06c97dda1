#include "support/SignalLog.h"

#include <QPoint>
#include <QtDebug>

namespace {

QString TextOfPoint(const QPoint& point)
{
    return QString("(%1,%2)").arg(point.x()).arg(point.y());
}

QString TextOf(const QByteArray& type, const void* value)
{
    if (type == "bool")
        return *static_cast<const bool*>(value) ? "true" : "false";
    if (type == "QPoint")
        return TextOfPoint(*static_cast<const QPoint*>(value));
    if (type == "QString")
        return *static_cast<const QString*>(value);
    if (type.endsWith('*'))
        return *static_cast<void* const*>(value) ? "pointer" : "null";
    return QString::number(*static_cast<const int*>(value));
}

} // namespace

void SignalLog::Watch(QObject* sender, const char* signal, const QString& prefix)
{
    const QByteArray signature = QMetaObject::normalizedSignature(signal + 1);
    const int index = sender->metaObject()->indexOfSignal(signature);
    if (index < 0)
        qWarning("SignalLog: no signal %s", signature.constData());
    else
        Add(sender, index, prefix);
}

void SignalLog::WatchAll(QObject* sender, const QString& prefix)
{
    const QMetaObject* meta = sender->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == QMetaMethod::Signal)
            Add(sender, i, prefix);
    }
}

void SignalLog::Add(QObject* sender, int signalIndex, const QString& prefix)
{
    const int slot = QObject::staticMetaObject.methodCount() + m_vecSources.size();
    m_vecSources.append({sender->metaObject()->method(signalIndex), prefix});
    QMetaObject::connect(sender, signalIndex, this, slot, Qt::DirectConnection);
}

QStringList SignalLog::Take()
{
    const QStringList taken = m_listEntries;
    m_listEntries.clear();
    return taken;
}

int SignalLog::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod || id >= m_vecSources.size())
        return id;
    const Source source = m_vecSources.at(id);
    QStringList texts;
    const QList<QByteArray> types = source.method.parameterTypes();
    for (int i = 0; i < types.size(); ++i)
        texts.append(TextOf(types.at(i), arguments[i + 1]));
    const QString entry = source.prefix + source.method.name() + "(" + texts.join(",") + ")";
    m_listEntries.append(entry);
    if (onSignal)
        onSignal(entry);
    return -1;
}
