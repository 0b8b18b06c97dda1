#include "archive/RecordingAccess.h"

#include <QFile>

namespace {

QString s_directory;

bool isRemote(const QString& path)
{
    return path.startsWith("http://") || path.startsWith("https://");
}

void setFile(AVDictionary** options, const char* name, const QString& file)
{
    if (!s_directory.isEmpty() && QFile::exists(s_directory + file))
        av_dict_set(options, name, QFile::encodeName(s_directory + file).constData(), 0);
}

} // namespace

void RecordingAccess::setDirectory(const QString& directory)
{
    s_directory = directory;
}

QByteArray RecordingAccess::location(const QString& path)
{
    return isRemote(path) ? path.toUtf8() : ("file:" + path).toUtf8();
}

/// A server that falls silent is given up after five seconds.
AVDictionary* RecordingAccess::options(const QString& path)
{
    AVDictionary* options = nullptr;
    if (!isRemote(path))
        return options;
    av_dict_set(&options, "rw_timeout", "5000000", 0);
    av_dict_set(&options, "multiple_requests", "1", 0);
    av_dict_set(&options, "tls_verify", "1", 0);
    setFile(&options, "ca_file", "/recordings-ca.crt");
    setFile(&options, "cert_file", "/recordings.crt");
    setFile(&options, "key_file", "/recordings.key");
    return options;
}
