#pragma once

#include <QImage>

/// A synthetic camera's name and the time, as a strip for its pictures. Any thread.
QImage captionStrip(const QString& name, const QString& time);
