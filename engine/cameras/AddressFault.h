#pragma once

#include <QString>

/// Why a text that somebody types can't be a camera's address, on one line; empty if it can. Nothing is
/// opened. Stricter than SourceAddress, which takes each text that names no kind of stream for a file.
QString addressFault(const QString& url);
