#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The whole of a file; none, with the reason on one line, for what is no file or holds more than
/// `mostBytes`.
std::optional<QByteArray> readPrivateFile(const QString& path, qint64 mostBytes, QString* error);

/// Makes that the content of a file which its owner alone may read, or leaves what was there before. The
/// directories on the way to it are made.
bool writePrivateFile(const QString& path, const QByteArray& content, QString* error);

/// The file of that name that systemd has handed this service, which only it can read; where there is none,
/// the other one.
QString credentialFile(const QString& name, const QString& otherwise);
