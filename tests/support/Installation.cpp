#include "support/Installation.h"

#include "layouts/CSplitCatalog.h"
#include "toolbars/CSkinConfig.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

namespace {

void Clear(const QString& root)
{
    for (const char* name : {"Organization", "ResourcesBlank", "ResourcesWhite", "Resources", "Qss"})
        QDir(root + "/" + name).removeRecursively();
}

} // namespace

Installation::Installation(int style)
{
    CSplitCatalog::Release();
    CSkinConfig::Release();
    Clear(Root());
    if (style == 0)
        return;
    m_strStyleName = style == 1 ? "ResourcesBlank" : "ResourcesWhite";
    for (const QString& name : {QString("Organization"), m_strStyleName + "/Qss", QString("Resources/icons"),
                                QString("Resources/buttons")})
        QDir(Root()).mkpath(name);
    Write("Organization/Config.ini", "[style]\nstyle=" + QByteArray::number(style) + "\n");
}

Installation::~Installation()
{
    Clear(Root());
    CSplitCatalog::Release();
    CSkinConfig::Release();
}

QString Installation::Root() const
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/..");
}

QString Installation::Resources() const
{
    return Root() + "/" + m_strStyleName;
}

void Installation::Write(const QString& path, const QByteArray& content) const
{
    const QString full = Root() + "/" + path;
    QDir().mkpath(QFileInfo(full).path());
    QFile file(full);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        qFatal("can't write %s", qPrintable(full));
    // QSettings takes a file of the same size and time for the one that it has read before.
    static qint64 written = 1'000'000'000;
    file.setFileTime(QDateTime::fromSecsSinceEpoch(++written), QFileDevice::FileModificationTime);
}

void Installation::WritePicture(const QString& path, int width, int height, const QColor& color) const
{
    Write(path, QByteArray());
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    if (!image.save(Root() + "/" + path))
        qFatal("can't save %s", qPrintable(path));
}
