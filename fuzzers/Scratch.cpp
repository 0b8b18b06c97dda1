#include "Scratch.h"

#include <QDateTime>
#include <QFile>

Scratch::Scratch() : m_dir("/dev/shm/panedeck-fuzz-XXXXXX")
{
    if (!m_dir.isValid())
        qFatal("no scratch directory: %s", qPrintable(m_dir.errorString()));
}

QString Scratch::Write(const QString& name, const uint8_t* data, size_t size)
{
    QFile file(Path(name));
    const auto length = static_cast<qint64>(size);
    if (!file.open(QIODevice::WriteOnly) || file.write(reinterpret_cast<const char*>(data), length) != length)
        qFatal("can't write %s", qPrintable(file.fileName()));
    file.flush();
    file.setFileTime(QDateTime::fromMSecsSinceEpoch(1000000000000 + 10 * ++m_nWritten),
                     QFileDevice::FileModificationTime);
    return file.fileName();
}

void SilenceQt()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString&) {
        if (type == QtFatalMsg)
            abort();
    });
}
